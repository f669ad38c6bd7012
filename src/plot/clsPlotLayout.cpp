// Where everything stands: title, captions, the room for the numbers, and from values to device positions.
#include "app/mdTipsDrawing.h"
#include "plot/clsPlot.h"
#include "plot/scaleNumbers.h"

#include <algorithm>
#include <cmath>

namespace {

/// Takes strips off the four sides. By way of reals: huge fonts and areas stay at the end of the device's range.
void takeOff(PlotArea& area, double left, double top, double right, double bottom) {
    area = {Round(area.Left + left), Round(area.Top + top), Round(area.Width - left - right),
            Round(area.Height - top - bottom)};
}

void setWorkLimits(PlotScale& scale, bool flipped) {
    scale.WorkMax = flipped ? scale.ScaleMin : scale.ScaleMax;
    scale.WorkMin = flipped ? scale.ScaleMax : scale.ScaleMin;
    scale.WorkMScale = flipped ? -scale.ScaleMScale : scale.ScaleMScale;
    scale.WorkHScale = flipped ? -scale.ScaleHScale : scale.ScaleHScale;
}

/// Limits that are equal, or no finite distance apart, leave the units of the last drawing.
void setUnits(float& units, int length, float range) {
    if (std::isfinite(range))
        mdTips::Narrow(length / double(range), units);
}

} // namespace

void clsPlot::placeText(Frame& frame, Edge edge, const PlotScaleLabel& label, int gap) const {
    if (label.ScaleLabel.isEmpty())
        return;
    const bool turned = edge == Edge::Left || edge == Edge::Right;
    constexpr int quarterTurn = 900;
    const Font old = selectPlotFont(frame.Device, label.ScaleLabelFont, turned ? quarterTurn : 0);
    frame.Device.SetTextColor(label.ScaleLabelColor);
    const DeviceSize size = mdTips::MeasureText(frame.Device, label.ScaleLabel);
    const auto write = [&](double x, double y, int anchor) {
        mdTips::DrawAnchoredText(frame.Device, Round(x), Round(y), label.ScaleLabel, anchor);
    };
    constexpr int leftTop = 1, centreTop = 2, centreBottom = 8;
    PlotArea& area = frame.Area;
    const double strip = double(size.Height) + gap;
    const double middle = area.Left + area.Width * 0.5;
    // A turned text starts at its lower end.
    const double lowerEnd = area.Top + (double(area.Height) + size.Width) * 0.5;
    switch (edge) {
    case Edge::Left:
        write(area.Left, lowerEnd, leftTop);
        takeOff(area, strip, 0, 0, 0);
        break;
    case Edge::Top:
        write(middle, area.Top, centreTop);
        takeOff(area, 0, strip, 0, 0);
        break;
    case Edge::Right:
        write(double(area.Left) + area.Width - size.Height, lowerEnd, leftTop);
        takeOff(area, 0, 0, strip, 0);
        break;
    case Edge::Bottom:
        write(middle, double(area.Top) + area.Height, centreBottom);
        takeOff(area, 0, 0, 0, strip);
        break;
    }
    mdTips::RestoreObject(frame.Device, old);
}

void clsPlot::LayoutTitleAndLabels(Frame& frame) {
    const auto across = std::size_t(scaleAcross()), up = std::size_t(scaleUp());
    setWorkLimits(scales[across], IsFlipped(scales[across], true));
    setWorkLimits(scales[up], IsFlipped(scales[up], false));

    constexpr double marginPoints = 9;
    frame.Margin = Round(std::abs(mdTips::PointsToDevice(frame.Device, marginPoints) * 0.5));
    takeOff(frame.Area, frame.Margin, frame.Margin, frame.Margin, frame.Margin);
    const bool atBottom = GraphTitlePos < int(Edge::Left) || GraphTitlePos > int(Edge::Right);
    placeText(frame, atBottom ? Edge::Bottom : Edge(GraphTitlePos), {GraphTitle, GraphTitleColor, GraphTitleFont}, 0);
    placeText(frame, Edge::Bottom, scaleLabels[across], frame.Margin);
    placeText(frame, Edge::Left, scaleLabels[up], frame.Margin);
}

QString clsPlot::numberAt(const PlotScale& scale, float value) const {
    return FormatScaleValue(value, scale.WorkRange(), ScaleMask);
}

int clsPlot::makeRoomForNumbers(Frame& frame) const {
    const PlotScale& across = scales[std::size_t(scaleAcross())];
    const PlotScale& up = scales[std::size_t(scaleUp())];
    int width = 0, height = 0;
    if (across.HasTicks()) {
        const Font old = selectPlotFont(frame.Device, across.ScaleFont, 0);
        const DeviceSize last = mdTips::MeasureText(frame.Device, numberAt(across, across.WorkMax));
        mdTips::RestoreObject(frame.Device, old);
        width = Round(last.Width * 0.5 + frame.Margin);
        height = last.Height;
        takeOff(frame.Area, 0, 0, width, 2.0 * height);
    }
    if (up.HasTicks()) {
        // The column is also as wide as what is kept free on the other side.
        const Font old = selectPlotFont(frame.Device, up.ScaleFont, 0);
        int lastHeight = 0;
        for (const float value : TickValues(up, up.WorkMScale)) {
            const DeviceSize size = mdTips::MeasureText(frame.Device, numberAt(up, value));
            width = std::max(width, size.Width);
            lastHeight = size.Height;
        }
        mdTips::RestoreObject(frame.Device, old);
        height = std::max(height, lastHeight);
        takeOff(frame.Area, double(width) + frame.Margin, 0, 0, 0);
    }
    const int tickLength = Round(height * 0.8);
    takeOff(frame.Area, tickLength, tickLength, 0, 0);
    return tickLength;
}

void clsPlot::setMapping(const PlotArea& area) {
    const PlotScale& across = scales[std::size_t(scaleAcross())];
    const PlotScale& up = scales[std::size_t(scaleUp())];
    mapping.Left = area.Left;
    mapping.Top = area.Top;
    mapping.SmallestAcross = across.WorkMin;
    mapping.SmallestUp = up.WorkMin;
    setUnits(mapping.UnitsAcross, area.Width, across.WorkRange());
    setUnits(mapping.UnitsUp, area.Height, up.WorkRange());
}

void clsPlot::ConvertPoint(float x, float y, int& px, int& py) const {
    px = mapping.Across(x);
    py = mapping.Up(y);
}
