// Where title, captions and axes stand, and the axes themselves.
#include "app/mdTipsDrawing.h"
#include "plot/clsPlot.h"

void clsPlot::LayoutTitleAndLabels(Frame&) {}
void clsPlot::DrawAxes(Frame&) {}
void clsPlot::ConvertPoint(float, float, int&, int&) const {}

void clsPlot::drawVerticalLine(DeviceContext& device, const PickupLine& line) const {
    const Pen old = mdTips::SelectSolidPen(device, line.PickupLineColor, line.PickupLineWidth, line.PickupLineStyle);
    const int x = mapping.PositionAcross(line.PickupLineValue);
    device.MoveTo({x, dataPlotArea.Top + dataPlotArea.Height});
    device.LineTo({x, dataPlotArea.Top});
    mdTips::RestoreObject(device, old);
}

void clsPlot::drawHorizontalLine(DeviceContext& device, const PickupLine& line) const {
    const Pen old = mdTips::SelectSolidPen(device, line.PickupLineColor, line.PickupLineWidth, line.PickupLineStyle);
    const int y = mapping.PositionUp(line.PickupLineValue);
    device.MoveTo({dataPlotArea.Left, y});
    device.LineTo({dataPlotArea.Left + dataPlotArea.Width, y});
    mdTips::RestoreObject(device, old);
}
