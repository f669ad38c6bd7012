#include "platform/device/DeviceContext.h"

#include "platform/base/Parallel.h"

Pen stockPen(int number) {
    Pen pen;
    pen.Style = number == Stock::NullPen ? PenStyle::Null : PenStyle::Solid;
    pen.Stock = number;
    return pen;
}

Brush stockBrush(int number) {
    Brush brush;
    brush.Color = number == Stock::GreyBrush ? makeColor(128, 128, 128) : makeColor(255, 255, 255);
    brush.Hollow = number == Stock::NullBrush;
    brush.Stock = number;
    return brush;
}

Font stockFont(int number, int dotsPerInch) {
    Font font;
    font.Face = number == Stock::GuiFont ? u"MS UI Gothic"_s : u"Arial"_s;
    font.Height = (9 * dotsPerInch + 36) / 72;
    return font;
}

void DeviceContext::Lines(std::span<const DevicePoint> points, std::span<const std::int32_t> steps) {
    for (const std::int32_t step : steps) {
        const std::size_t index = std::size_t(step < 0 ? ~step : step);
        if (index >= points.size())
            continue;
        if (step < 0)
            MoveTo(points[index]);
        else
            LineTo(points[index]);
    }
}

void DeviceContext::LinePieces(std::span<const DevicePoint> points, int pieces, const CollectLines& collect) {
    std::vector<std::vector<std::int32_t>> group(std::size_t(std::min(pieces, 4 * coreCount())));
    for (int first = 0; first < pieces; first += int(group.size())) {
        const int count = std::min(int(group.size()), pieces - first);
        parallelFor(count, [&](int i) { collect(first + i, group[std::size_t(i)]); });
        for (std::vector<std::int32_t>& steps : group) {
            Lines(points, steps);
            steps.clear();
        }
    }
}

void DeviceContext::Polygons(std::span<const DevicePoint> points, std::span<const int> counts) {
    std::size_t first = 0;
    for (const int count : counts) {
        if (count < 0 || first + std::size_t(count) > points.size())
            return;
        Polygon(points.subspan(first, std::size_t(count)));
        first += std::size_t(count);
    }
}

void DeviceContext::Rectangles(std::span<const DeviceRect> rects) {
    for (const DeviceRect& rect : rects)
        Rectangle(rect);
}

void DeviceContext::Ellipses(std::span<const DeviceRect> rects) {
    for (const DeviceRect& rect : rects)
        Ellipse(rect);
}
