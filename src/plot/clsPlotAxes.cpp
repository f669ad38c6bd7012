// The two axes with their ticks, numbers and grids, the frame, and the reference lines beneath the series.
#include "app/mdTipsDrawing.h"
#include "plot/clsPlot.h"
#include "plot/scaleNumbers.h"

#include <algorithm>

namespace {

void drawLine(DeviceContext& device, DevicePoint from, DevicePoint to) {
    device.MoveTo(from);
    device.LineTo(to);
}

struct Tick {
    float Value = 0;
    int Along = 0;
};

/// One axis on the page, so that both are drawn by the same procedures. Positions on it are the device coordinate that
/// it runs along, and the distance out from its line, away from the plot.
struct AxisSide {
    AxisSide(const PlotScale& scale, bool across, const PlotArea& area, const PlotMapping& valueMapping,
             const QString& mask)
        : Scale(scale), IsAcross(across), Mapping(valueMapping), Mask(mask) {
        const double right = double(area.Left) + area.Width, bottom = double(area.Top) + area.Height;
        Low = across ? area.Left : area.Top;
        High = across ? right : bottom;
        Line = across ? bottom : area.Left;
        Depth = across ? area.Height : area.Width;
        for (const float value : TickValues(scale, scale.WorkMScale))
            Ticks.push_back({value, Along(value)});
    }

    int Along(float value) const { return IsAcross ? Mapping.Across(value) : Mapping.Up(value); }
    DevicePoint At(double along, double out) const {
        return IsAcross ? DevicePoint{Round(along), Round(Line + out)} : DevicePoint{Round(Line - out), Round(along)};
    }

    const PlotScale& Scale;
    bool IsAcross;
    const PlotMapping& Mapping;
    const QString& Mask;      ///< of the numbers
    double Low = 0, High = 0; ///< ends of the plot rectangle along the axis
    double Line = 0;          ///< where the axis stands: the rectangle's bottom or its left side
    double Depth = 0;         ///< from there to the opposite side
    std::vector<Tick> Ticks;
};

/// What goes for both axes.
struct AxisStyle {
    int TickLength = 0;
    int MinorTickLength = 0;
    bool Outline = false;
};

void drawFromFirstToLastTick(DeviceContext& device, const AxisSide& axis, double out) {
    if (!axis.Ticks.empty())
        drawLine(device, axis.At(axis.Ticks.front().Along, out), axis.At(axis.Ticks.back().Along, out));
}

void drawNumbersAndTicks(DeviceContext& device, const AxisSide& axis, int length) {
    constexpr int centreTop = 2, rightMiddle = 6;
    for (const Tick& tick : axis.Ticks) {
        const bool atEnd = &tick == &axis.Ticks.front() || &tick == &axis.Ticks.back();
        const DevicePoint tip = axis.At(tick.Along, length);
        if (axis.Scale.ScaleValueDraw == 0 || (axis.Scale.ScaleValueDraw == 1 && atEnd))
            mdTips::DrawAnchoredText(device, tip.X, tip.Y,
                                     FormatScaleValue(tick.Value, axis.Scale.WorkRange(), axis.Mask),
                                     axis.IsAcross ? centreTop : rightMiddle);
        drawLine(device, axis.At(tick.Along, 0), tip);
    }
    drawFromFirstToLastTick(device, axis, 0);
}

/// Half the width of an arrow head: a millimetre, at most a tenth of the axis.
int arrowSize(const DeviceContext& device, const AxisSide& axis) {
    const double millimetre = mdTips::UnitsPerMillimetre(device, axis.IsAcross);
    return Round(std::min(millimetre, (axis.High - axis.Low) * 0.1));
}

void drawArrow(DeviceContext& device, const AxisSide& axis) {
    drawLine(device, axis.At(axis.Low, 0), axis.At(axis.High, 0));
    const double size = arrowSize(device, axis);
    const bool tipIsLow = IsFlipped(axis.Scale, axis.IsAcross);
    const double tip = tipIsLow ? axis.Low : axis.High;
    const double base = tipIsLow ? tip + 5 * size : tip - 5 * size;
    const DevicePoint head[] = {axis.At(tip, 0), axis.At(base, -size), axis.At(base, size)};
    const Brush old = mdTips::SelectBrush(device, axis.Scale.ScaleLineColor, -1);
    device.Polygon(head);
    mdTips::RestoreObject(device, old);
}

void drawGrid(DeviceContext& device, const AxisSide& axis) {
    const PlotScale& scale = axis.Scale;
    const Pen old = mdTips::SelectSolidPen(device, scale.GridColor, scale.GridWidth, scale.GridStyle);
    for (std::size_t i = 1; i + 1 < axis.Ticks.size(); ++i)
        drawLine(device, axis.At(axis.Ticks[i].Along, 0), axis.At(axis.Ticks[i].Along, -axis.Depth));
    mdTips::RestoreObject(device, old);
}

void drawMinorTicks(DeviceContext& device, const AxisSide& axis, int length) {
    for (const float value : TickValues(axis.Scale, axis.Scale.WorkHScale)) {
        const int along = axis.Along(value);
        drawLine(device, axis.At(along, 0), axis.At(along, length));
    }
}

/// The axis in the font that is selected.
void drawAxis(DeviceContext& device, const AxisSide& axis, const AxisStyle& style) {
    const PlotScale& scale = axis.Scale;
    constexpr int arrow = 1;
    device.SetTextColor(scale.ScaleFontColor);
    const Pen old = mdTips::SelectSolidPen(device, scale.ScaleLineColor, scale.ScaleLineWidth, scale.ScaleLineStyle);
    if (scale.ScaleDraw && scale.ScaleType == arrow)
        drawArrow(device, axis);
    else if (scale.ScaleDraw)
        drawNumbersAndTicks(device, axis, style.TickLength);
    if (scale.GridDraw)
        drawGrid(device, axis);
    if (style.Outline) {
        drawFromFirstToLastTick(device, axis, 0);
        drawFromFirstToLastTick(device, axis, -axis.Depth);
    }
    // The axis up the page has them even when it is not to be drawn or is an arrow.
    if (scale.HasTicks() || !axis.IsAcross)
        drawMinorTicks(device, axis, style.MinorTickLength);
    mdTips::RestoreObject(device, old);
}

void drawFrame(DeviceContext& device, const AxisSide& across, ColorRef color, int width) {
    const Pen old = mdTips::SelectSolidPen(device, color, width, PenStyle::Solid);
    const DevicePoint leftTop = across.At(across.Low, -across.Depth);
    device.MoveTo(leftTop);
    device.LineTo(across.At(across.High, -across.Depth));
    device.LineTo(across.At(across.High, 0));
    device.LineTo(across.At(across.Low, 0));
    device.LineTo(leftTop);
    mdTips::RestoreObject(device, old);
}

} // namespace

void clsPlot::DrawAxes(Frame& frame) {
    AxisStyle style;
    style.TickLength = makeRoomForNumbers(frame);
    style.Outline = Outline;
    setMapping(frame.Area);
    dataPlotArea = frame.Area;

    const AxisSide across(scales[std::size_t(scaleAcross())], true, frame.Area, mapping, ScaleMask);
    const AxisSide up(scales[std::size_t(scaleUp())], false, frame.Area, mapping, ScaleMask);
    // Both axes go by what the one across has: without ticks there, the minor ticks of the other have no length.
    if (across.Scale.HasTicks())
        style.MinorTickLength = Round(style.TickLength * 0.5);
    for (const AxisSide* axis : {&across, &up}) {
        const Font old = selectPlotFont(frame.Device, axis->Scale.ScaleFont, 0);
        drawAxis(frame.Device, *axis, style);
        mdTips::RestoreObject(frame.Device, old);
    }
    if (Outline)
        drawFrame(frame.Device, across, OutlineColor, OutlineWidth);
    if (PickupLineDraw)
        drawLinesBeneath(frame.Device);
}

void clsPlot::drawLinesBeneath(DeviceContext& device) const {
    constexpr int ofBase = 0, ofBoth = 2;
    for (const PickupLine& line : pickupLines) {
        const Pen old =
            mdTips::SelectSolidPen(device, line.PickupLineColor, line.PickupLineWidth, line.PickupLineStyle);
        const bool both = line.PickupLineType == ofBoth, base = line.PickupLineType == ofBase;
        if (both || Orientation == (base ? 0 : 1))
            drawVerticalLine(device, line);
        if (both || Orientation == (base ? 1 : 0))
            drawHorizontalLine(device, line);
        mdTips::RestoreObject(device, old);
    }
}

void clsPlot::drawVerticalLine(DeviceContext& device, const PickupLine& line) const {
    const int x = mapping.Across(line.PickupLineValue);
    drawLine(device, {x, Round(double(dataPlotArea.Top) + dataPlotArea.Height)}, {x, dataPlotArea.Top});
}

void clsPlot::drawHorizontalLine(DeviceContext& device, const PickupLine& line) const {
    const int y = mapping.Up(line.PickupLineValue);
    drawLine(device, {dataPlotArea.Left, y}, {Round(double(dataPlotArea.Left) + dataPlotArea.Width), y});
}
