// What is drawn between the axes: series, dots and reference lines.
#include "app/mdTipsDrawing.h"
#include "plot/clsPlot.h"

#include <cmath>

namespace {

std::vector<DeviceRect> boxesAt(std::span<const DevicePoint> centres, int radius) {
    std::vector<DeviceRect> boxes;
    boxes.reserve(centres.size());
    const double r = radius;
    for (const auto [x, y] : centres)
        boxes.push_back({Round(x - r), Round(y - r), Round(x + r), Round(y + r)});
    return boxes;
}

void drawTriangles(DeviceContext& device, std::span<const DevicePoint> centres, int radius) {
    constexpr double halfSide = 0.866025403784439, below = 0.5; // of the radius of an equilateral triangle
    const double r = radius;
    std::vector<DevicePoint> corners;
    corners.reserve(3 * centres.size());
    for (const auto [x, y] : centres) {
        const int base = Round(y + below * r);
        corners.insert(corners.end(),
                       {{x, Round(y - r)}, {Round(x - halfSide * r), base}, {Round(x + halfSide * r), base}});
    }
    device.Polygons(corners, std::vector<int>(centres.size(), 3));
}

void drawCrosses(DeviceContext& device, std::span<const DevicePoint> centres, int radius) {
    std::vector<DevicePoint> ends;
    std::vector<std::int32_t> steps;
    ends.reserve(4 * centres.size());
    steps.reserve(4 * centres.size());
    for (const DeviceRect& box : boxesAt(centres, radius)) {
        const auto [x, y] = centres[ends.size() / 4];
        const auto first = std::int32_t(ends.size());
        ends.insert(ends.end(), {{x, box.Top}, {x, box.Bottom}, {box.Left, y}, {box.Right, y}});
        steps.insert(steps.end(), {~first, first + 1, ~(first + 2), first + 3});
    }
    device.Lines(ends, steps);
}

/// A dot of the style at each of the points. Positions come from reals: one at the end of the range stays there.
void DrawDotAt(DeviceContext& device, std::span<const DevicePoint> centres, int style, int radius) {
    switch (style) {
    case DotStyle::Circle:
        return device.Ellipses(boxesAt(centres, radius));
    case DotStyle::Square:
        return device.Rectangles(boxesAt(centres, radius));
    case DotStyle::Triangle:
        return drawTriangles(device, centres, radius);
    case DotStyle::Cross:
        return drawCrosses(device, centres, radius);
    default:
        return;
    }
}

/// Dots in the pen and the brush that `look` asks for; of its points and its line nothing is taken.
void drawDots(DeviceContext& device, std::span<const DevicePoint> centres, const PlotSeries& look, int radius) {
    if (look.DataDotStyle == DotStyle::None)
        return;
    const Pen oldPen = mdTips::SelectSolidPen(device, look.DataDotColor, 1, PenStyle::Solid);
    std::optional<Brush> oldBrush;
    if (look.DataDotFillStyle != -1)
        oldBrush = mdTips::SelectBrush(device, look.DataDotFillColor, look.DataDotFillStyle);
    DrawDotAt(device, centres, look.DataDotStyle, radius);
    if (oldBrush)
        mdTips::RestoreObject(device, *oldBrush);
    mdTips::RestoreObject(device, oldPen);
}

} // namespace

std::optional<DevicePoint> clsPlot::placeOf(const PlotSeries& series, std::size_t index) const {
    const double across = Orientation == 0 ? series.BaseValues[index] : series.PlotValues[index];
    const double up = Orientation == 0 ? series.PlotValues[index] : series.BaseValues[index];
    if (!std::isfinite(across) || !std::isfinite(up))
        return {};
    return DevicePoint{mapping.Across(across), mapping.Up(up)};
}

std::vector<std::size_t> clsPlot::placePoints(const PlotSeries& series, std::vector<DevicePoint>& points) const {
    std::vector<std::size_t> stretches;
    points.clear();
    points.reserve(series.BaseValues.size());
    const auto endStretch = [&] {
        if (points.size() > (stretches.empty() ? 0 : stretches.back()))
            stretches.push_back(points.size());
    };
    for (std::size_t i = 0; i < series.BaseValues.size(); ++i) {
        if (const std::optional<DevicePoint> place = placeOf(series, i))
            points.push_back(*place);
        else
            endStretch();
    }
    endStretch();
    return stretches;
}

void clsPlot::DrawSeries(DeviceContext& device) const {
    std::vector<DevicePoint> points;
    for (const PlotSeries& series : seriesList) {
        if (series.DataLegendHidden || series.BaseValues.empty())
            continue;
        const std::vector<std::size_t> stretches = placePoints(series, points);
        const Pen old = device.SelectPen({.Style = series.DataLineStyle,
                                          .Width = series.DataLineWidth,
                                          .Color = series.DataLineColor,
                                          .Geometric = true,
                                          .BevelJoin = true});
        std::size_t first = 0;
        for (const std::size_t end : stretches) {
            device.Polyline(std::span(points).subspan(first, end - first));
            first = end;
        }
        mdTips::RestoreObject(device, old);
        drawDots(device, points, series, DotSize);
    }
}

void clsPlot::DrawPickupLines(DeviceContext& device) const {
    const auto drawLine = [&](const PickupLine& line, bool vertical) {
        if (vertical)
            drawVerticalLine(device, line);
        else
            drawHorizontalLine(device, line);
    };
    constexpr int ofBase = 0, ofPlot = 1, ofBoth = 2;
    for (const PickupLine& line : pickupLines) {
        const int type = line.PickupLineType;
        const Pen old =
            mdTips::SelectSolidPen(device, line.PickupLineColor, line.PickupLineWidth, line.PickupLineStyle);
        // An orientation that is neither 0 nor 1 gets horizontal lines for either axis, here alone.
        if (type == ofBase || type == ofBoth)
            drawLine(line, Orientation == 0);
        if (type == ofPlot || type == ofBoth)
            drawLine(line, Orientation == 1);
        mdTips::RestoreObject(device, old);
    }
}

Font clsPlot::selectPlotFont(DeviceContext& device, const FontReference& font, int turn) const {
    if (font)
        return mdTips::SelectFontFor(device, hSimulatedDC ? *hSimulatedDC : device, *font, turn);
    // There is no asking a device for its font but by selecting another.
    const Font current = device.SelectFont({});
    device.SelectFont(current);
    return current;
}

void clsPlot::SpecialPlot_Dot(DeviceContext& device, int dotStyle, ColorRef color, ColorRef fillColor, int fillStyle,
                              int, int x, int y, int radius) const {
    PlotSeries look;
    look.DataDotStyle = dotStyle;
    look.DataDotColor = color;
    look.DataDotFillColor = fillColor;
    look.DataDotFillStyle = fillStyle;
    const DevicePoint centre{x, y};
    drawDots(device, {&centre, 1}, look, radius < 1 ? DotSize : radius);
}

void clsPlot::SpecialPlot_Line(DeviceContext& device, int style, ColorRef color, int width, int x1, int y1, int x2,
                               int y2) const {
    const Pen old = mdTips::SelectGeometricPen(device, style, width, color);
    device.MoveTo({x1, y1});
    device.LineTo({x2, y2});
    mdTips::RestoreObject(device, old);
}
