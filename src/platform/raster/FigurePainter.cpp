#include "platform/raster/FigurePainter.h"

#include "platform/device/Rings.h"
#include "platform/raster/AreaFill.h"

#include <vector>

FigurePainter::FigurePainter(const PixelSurface& target, const Pen& linePen, const Brush& areaBrush, int mode)
    : surface(target), pen(linePen), brush(areaBrush), rasterMode(mode), stroke(linePen) {
    penInk = {toPixel(pen.Color), mode, nullptr};
    brushInk = {toPixel(brush.Color), mode, hatchPattern(brush.Hatch)};
}

/// Under a raster mode that mixes, what is drawn twice would show. A figure is therefore first drawn on a sheet of its
/// own, where drawing over does no harm, and the sheet is put on the picture.
template<class Draw>
void FigurePainter::asOneFigure(const PixelSurface& part, const Draw& draw) const {
    if (part.IsEmpty())
        return;
    if (rasterMode == RasterMode::CopyPen) {
        draw(*this);
        return;
    }
    const int width = part.Right - part.Left;
    std::vector<std::uint32_t> pixels(std::size_t(width) * std::size_t(part.Bottom - part.Top));
    PixelSurface sheet = part;
    sheet.Bits = pixels.data();
    sheet.Stride = width;
    draw(FigurePainter(sheet, pen, brush, RasterMode::CopyPen));
    for (int y = part.Top; y < part.Bottom; ++y) {
        std::uint32_t* const target = part.Pixel(part.Left, y);
        const std::uint32_t* const source = sheet.Pixel(part.Left, y);
        for (int i = 0; i < width; ++i) {
            if (source[i] != 0)
                target[i] = combinePixels(rasterMode, source[i], target[i]);
        }
    }
}

PixelSurface FigurePainter::touchedPart(const FigureBounds& bounds) const {
    const std::int64_t margin = hasPen() && stroke.IsWide() ? std::int64_t(stroke.Width()) / 2 + 1 : 0;
    return surface.Within(bounds.Left - margin, bounds.Top - margin, bounds.Right + margin + 1,
                          bounds.Bottom + margin + 1);
}

void FigurePainter::ring(std::span<const DevicePoint> points) const {
    if (points.size() < 2)
        return;
    if (std::all_of(points.begin(), points.end(), [&](DevicePoint point) { return point == points[0]; })) {
        // A figure too small for any length is still there.
        const RoundShapes::Spot spot{double(points[0].X), double(points[0].Y)};
        if (stroke.IsWide())
            RoundShapes::Capsule(spot, spot, stroke.Width()).ForEachRow(surface, [&](int y, RoundShapes::Columns row) {
                fillSpan(surface, penInk, y, row.First, row.Last);
            });
        else
            AreaFill::Rectangle(surface, penInk, points[0].X, points[0].Y, std::int64_t(points[0].X) + 1,
                                std::int64_t(points[0].Y) + 1);
        return;
    }
    PathPosition at{points[0], 0};
    for (const DevicePoint point : points.subspan(1))
        LineTo(at, point);
    LineTo(at, points[0]);
}

void FigurePainter::PolyPolygon(std::span<const DevicePoint> points, std::span<const int> counts) const {
    if (!hasPen()) {
        if (!brush.Hollow)
            AreaFill::Polygons(surface, brushInk, points, counts);
        return;
    }
    asOneFigure(touchedPart(FigureBounds(points)), [&](const FigurePainter& painter) {
        if (!brush.Hollow)
            AreaFill::Polygons(painter.surface, painter.brushInk, points, counts);
        forEachRing(points, counts, [&](std::span<const DevicePoint> corners) { painter.ring(corners); });
    });
}

/// Whether figures of one ink have lain on each other so often that they are drawn only where they can still be seen.
bool FigurePainter::remembersInk(const PixelSurface& touched) {
    constexpr int manyLayers = 8;
    if (remembered)
        return true;
    const bool plain = rasterMode == RasterMode::CopyPen && !brush.Hollow && !brushInk.Pattern;
    if (!plain || (hasPen() && !(isOneInk() && stroke.IsThinSolid())))
        return false;
    touchedPixels += touched.PixelCount();
    if (touchedPixels > manyLayers * surface.PixelCount())
        remembered.emplace(surface);
    return remembered.has_value();
}

/// Inside and outline are put together before any pixel is touched.
void FigurePainter::openPolygon(const PixelSurface& open, std::span<const DevicePoint> points) {
    const int count = int(points.size());
    FigureBits& figure = remembered->Figure;
    figure.Begin(open);
    figure.Fill(points, {&count, 1});
    for (std::size_t i = 0; hasPen() && i < points.size(); ++i)
        figure.AddLine(points[i > 0 ? i - 1 : points.size() - 1], points[i]);
    figure.Take([&](int y, int column, std::uint64_t bits) {
        fillBits(open, brushInk, y, column, remembered->Inked.Add(y, column, bits));
    });
}

void FigurePainter::polygon(std::span<const DevicePoint> points) {
    const FigureBounds bounds(points);
    if (points.size() < 2)
        return;
    if (!hasPen() || stroke.IsThinSolid()) {
        if (bounds.Right < surface.Left || bounds.Left >= surface.Right || bounds.Bottom < surface.Top ||
            bounds.Top >= surface.Bottom)
            return;
        if (isTiny(bounds)) {
            // Between pixels that lie side by side there is none: the polygon is its corners.
            const bool cornersOnly = hasPen() && bounds.Fits(2);
            if (cornersOnly && surface.Contains({bounds.Left, bounds.Top}) &&
                surface.Contains({bounds.Right, bounds.Bottom}))
                for (const DevicePoint point : points)
                    *surface.Pixel(point.X, point.Y) = penInk.Pixel;
            else
                tinyPolygon(points, bounds);
            return;
        }
        if (bounds.Fits(smallSize)) {
            smallPolygon(points, bounds);
            return;
        }
    }
    const PixelSurface touched = touchedPart(bounds);
    if (touched.IsEmpty())
        return;
    if (remembersInk(touched)) {
        remembered->Inked.ForEachOpenPart(touched, [&](const PixelSurface& open) { openPolygon(open, points); });
        return;
    }
    const int count = int(points.size());
    PolyPolygon(points, {&count, 1});
}

/// Whether all points lie so far above or below the surface that no figure of them reaches it.
bool FigurePainter::areRowsFar(std::span<const DevicePoint> points) const {
    int top = INT32_MAX, bottom = INT32_MIN;
    for (const DevicePoint point : points) {
        top = std::min(top, point.Y);
        bottom = std::max(bottom, point.Y);
    }
    const std::int64_t reach = stroke.Width();
    return top - reach >= surface.Bottom || bottom + reach < surface.Top;
}

void FigurePainter::Polygons(std::span<const DevicePoint> points, std::span<const int> counts) {
    // A batch goes to several painters, a part of the picture each, of which most have nothing to do with some of it.
    if (areRowsFar(points))
        return;
    // The same figure once more changes nothing, unless the mode mixes.
    std::span<const DevicePoint> previous;
    forEachRing(points, counts, [&](std::span<const DevicePoint> corners) {
        const bool again =
            !previous.empty() && corners.front() == previous.front() && rasterMode == RasterMode::CopyPen;
        if (again && std::ranges::equal(corners, previous))
            return;
        polygon(corners);
        previous = corners;
    });
}

void FigurePainter::FillRect(const DeviceRect& rect) const {
    if (!brush.Hollow)
        AreaFill::Rectangle(surface, brushInk, rect.Left, rect.Top, rect.Right, rect.Bottom);
}

/// Whether a figure in a rectangle, with its pen's width about it, lies beyond one side of the surface.
bool FigurePainter::isFar(const DeviceRect& rect) const {
    const std::int64_t reach = stroke.Width();
    return rect.Left - reach >= surface.Right || rect.Right + reach < surface.Left ||
           rect.Top - reach >= surface.Bottom || rect.Bottom + reach < surface.Top;
}

void FigurePainter::fillRow(int y, std::int64_t left, const RoundShapes::RimmedRow& row) const {
    if (row.Outer.IsEmpty())
        return;
    const std::int64_t first = left + row.Outer.First;
    const std::int64_t last = left + row.Outer.Last;
    if (isOneInk()) {
        fillSpan(surface, penInk, y, first, last);
        return;
    }
    const bool filled = !row.Inner.IsEmpty();
    const std::int64_t innerFirst = filled ? left + row.Inner.First : last;
    const std::int64_t innerLast = filled ? left + row.Inner.Last : last;
    if (hasPen()) {
        fillSpan(surface, penInk, y, first, innerFirst);
        fillSpan(surface, penInk, y, innerLast, last);
    }
    if (!brush.Hollow)
        fillSpan(surface, brushInk, y, innerFirst, innerLast);
}

void FigurePainter::rectangle(const DeviceRect& rect) const {
    if (rect.Left == rect.Right || rect.Top == rect.Bottom)
        return;
    if (!hasPen()) {
        FillRect({rect.Left, rect.Top, rect.Right - 1, rect.Bottom - 1});
        return;
    }
    if (stroke.IsThinSolid()) {
        const std::int64_t width = std::int64_t(rect.Right) - rect.Left;
        const int last = std::min(rect.Bottom, surface.Bottom);
        for (int y = std::max(rect.Top, surface.Top); y < last; ++y) {
            const bool edge = y == rect.Top || y == rect.Bottom - 1;
            fillRow(y, rect.Left, {{0, width}, edge ? RoundShapes::Columns() : RoundShapes::Columns{1, width - 1}});
        }
        return;
    }
    const DevicePoint corners[] = {{rect.Left, rect.Top},
                                   {rect.Right - 1, rect.Top},
                                   {rect.Right - 1, rect.Bottom - 1},
                                   {rect.Left, rect.Bottom - 1}};
    asOneFigure(touchedPart(FigureBounds(corners)), [&](const FigurePainter& painter) {
        painter.FillRect(rect);
        painter.ring(corners);
    });
}

void FigurePainter::Rectangles(std::span<const DeviceRect> rects) const {
    for (const DeviceRect& rect : rects)
        rectangle(normalised(rect));
}

void FigurePainter::Ellipses(std::span<const DeviceRect> rects) const {
    // Dots are of one size mostly: its rows are worked out once. Of a great ellipse only those that can be seen are.
    constexpr std::int64_t greatestKept = 64;
    const int rim = hasPen() ? stroke.Width() : 0;
    const int shrink = hasPen() ? 0 : 1;
    DeviceRect previous;
    std::int64_t width = 0, height = 0;
    RoundShapes::Ellipse shape(width, height, rim);
    std::vector<RoundShapes::RimmedRow> rows;
    for (const DeviceRect& corners : rects) {
        const DeviceRect rect = normalised(corners);
        const bool again = rasterMode == RasterMode::CopyPen && rect == previous;
        if (again || rect.Left == rect.Right || rect.Top == rect.Bottom || isFar(rect))
            continue;
        previous = rect;
        const std::int64_t newWidth = std::int64_t(rect.Right) - rect.Left - shrink;
        const std::int64_t newHeight = std::int64_t(rect.Bottom) - rect.Top - shrink;
        if (newWidth != width || newHeight != height) {
            width = newWidth;
            height = newHeight;
            shape = RoundShapes::Ellipse(width, height, rim);
            rows.clear();
            if (rects.size() > 1 && shape.Bottom() - shape.Top() <= greatestKept) {
                for (std::int64_t y = shape.Top(); y < shape.Bottom(); ++y)
                    rows.push_back(shape.Row(y));
            }
        }
        const std::int64_t first = rect.Top + shape.Top();
        const std::int64_t last = std::min<std::int64_t>(rect.Top + shape.Bottom(), surface.Bottom);
        for (std::int64_t y = std::max<std::int64_t>(first, surface.Top); y < last; ++y)
            fillRow(int(y), rect.Left, rows.empty() ? shape.Row(y - rect.Top) : rows[std::size_t(y - first)]);
    }
}
