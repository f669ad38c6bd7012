// Where title, captions and axes stand, and the axes themselves.
#include "plot/clsPlot.h"

void clsPlot::LayoutTitleAndLabels(Frame&) {}
void clsPlot::DrawAxes(Frame&) {}
void clsPlot::ConvertPoint(float, float, int&, int&) const {}
void clsPlot::drawVerticalLine(DeviceContext&, const PickupLine&) const {}
void clsPlot::drawHorizontalLine(DeviceContext&, const PickupLine&) const {}
