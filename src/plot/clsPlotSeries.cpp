// What is drawn between the axes: background, series, dots and reference lines.
#include "plot/clsPlot.h"

void clsPlot::DrawSeries(DeviceContext&) const {}
void clsPlot::DrawPickupLines(DeviceContext&) const {}
void clsPlot::paintBackground(DeviceContext&) const {}
Font clsPlot::selectPlotFont(DeviceContext&, const FontReference&, int) const {
    return {};
}
void clsPlot::SpecialPlot_Dot(DeviceContext&, int, Colour, Colour, int, int, int, int, int) const {}
void clsPlot::SpecialPlot_Line(DeviceContext&, int, Colour, int, int, int, int, int) const {}
