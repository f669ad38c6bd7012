// What is drawn between the axes: background, series, dots and reference lines.
#include "app/mdTipsDrawing.h"
#include "plot/clsPlot.h"

void clsPlot::DrawSeries(DeviceContext&) const {}
void clsPlot::DrawPickupLines(DeviceContext&) const {}
void clsPlot::paintBackground(DeviceContext&) const {}
Font clsPlot::selectPlotFont(DeviceContext& device, const FontReference& font, int turn) const {
    if (font)
        return mdTips::SelectFontFor(device, hSimulatedDC ? *hSimulatedDC : device, *font, turn);
    // There is no asking a device for its font but by selecting another.
    const Font current = device.SelectFont({});
    device.SelectFont(current);
    return current;
}
void clsPlot::SpecialPlot_Dot(DeviceContext&, int, Colour, Colour, int, int, int, int, int) const {}
void clsPlot::SpecialPlot_Line(DeviceContext&, int, Colour, int, int, int, int, int) const {}
