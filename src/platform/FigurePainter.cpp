#include "platform/FigurePainter.h"

#include "platform/AreaFill.h"
#include "platform/DashPattern.h"
#include "platform/Rings.h"
#include "platform/RoundShapes.h"
#include "platform/ThinLine.h"

#include <bit>
#include <vector>

namespace {
using Pattern = std::array<std::uint8_t, 8>;

const Pattern* hatchPattern(int hatch) {
    static constexpr std::array<Pattern, 6> patterns = {{
        {0, 0, 0, 0xff, 0, 0, 0, 0},
        {0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08},
        {0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80},
        {0x80, 0x40, 0x20, 0x10, 0x08, 0x04, 0x02, 0x01},
        {0x08, 0x08, 0x08, 0xff, 0x08, 0x08, 0x08, 0x08},
        {0x81, 0x42, 0x24, 0x18, 0x18, 0x24, 0x42, 0x81},
    }};
    return hatch >= 0 && hatch < int(patterns.size()) ? &patterns[std::size_t(hatch)] : nullptr;
}

std::uint32_t bitsOfDashes(std::span<const int> dashes) {
    std::uint32_t bits = 0;
    int position = 0;
    for (std::size_t i = 0; i < dashes.size(); position += dashes[i++]) {
        if (i % 2 == 0)
            bits |= ((1u << dashes[i]) - 1) << position;
    }
    return bits;
}

/// Width and height of what counts as a small polygon: a row of it fits the bits of a number.
constexpr int smallSize = 32;
} // namespace

/// The smallest rectangle about points, its edges included.
struct FigurePainter::Bounds {
    int Left = INT32_MAX;
    int Top = INT32_MAX;
    int Right = INT32_MIN;
    int Bottom = INT32_MIN;

    explicit Bounds(std::span<const DevicePoint> points) {
        for (const DevicePoint point : points) {
            Left = std::min(Left, point.X);
            Top = std::min(Top, point.Y);
            Right = std::max(Right, point.X);
            Bottom = std::max(Bottom, point.Y);
        }
    }
    std::int64_t Width() const { return std::int64_t(Right) - Left + 1; }
    std::int64_t Height() const { return std::int64_t(Bottom) - Top + 1; }
};

FigurePainter::FigurePainter(const PixelSurface& target, const Pen& linePen, const Brush& areaBrush, int mode)
    : surface(target), pen(linePen), brush(areaBrush), rasterMode(mode) {
    penInk = {toPixel(pen.Color), mode, nullptr};
    brushInk = {toPixel(brush.Color), mode, hatchPattern(brush.Hatch)};
    if (!isWide() || pen.Geometric)
        dashes = dashPattern(pen.Style, isWide());
    for (const int length : dashes)
        dashPeriod += length;
    if (!isWide())
        dashBits = bitsOfDashes(dashes);
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

PixelSurface FigurePainter::touchedPart(const Bounds& bounds) const {
    const std::int64_t margin = hasPen() && isWide() ? std::int64_t(pen.Width) / 2 + 1 : 0;
    return surface.Within(bounds.Left - margin, bounds.Top - margin, bounds.Right + margin + 1,
                          bounds.Bottom + margin + 1);
}

void FigurePainter::Polyline(std::span<const DevicePoint> points) const {
    if (!hasPen() || points.size() < 2)
        return;
    asOneFigure(touchedPart(Bounds(points)), [&](const FigurePainter& painter) {
        PathPosition at{points[0], 0};
        for (const DevicePoint point : points.subspan(1))
            painter.LineTo(at, point);
    });
}

void FigurePainter::ring(std::span<const DevicePoint> points) const {
    if (points.size() < 2)
        return;
    if (std::all_of(points.begin(), points.end(), [&](DevicePoint point) { return point == points[0]; })) {
        // A figure too small for any length is still there.
        if (isWide())
            RoundShapes::Capsule(surface, penInk, {double(points[0].X), double(points[0].Y)},
                                 {double(points[0].X), double(points[0].Y)}, pen.Width);
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
    asOneFigure(touchedPart(Bounds(points)), [&](const FigurePainter& painter) {
        if (!brush.Hollow)
            AreaFill::Polygons(painter.surface, painter.brushInk, points, counts);
        forEachRing(points, counts, [&](std::span<const DevicePoint> corners) { painter.ring(corners); });
    });
}

void FigurePainter::fillBits(const Ink& ink, int left, int y, std::uint32_t bits) const {
    while (bits != 0) {
        const int first = std::countr_zero(bits);
        const int length = std::countr_one(bits >> first);
        fillSpan(surface, ink, y, std::int64_t(left) + first, std::int64_t(left) + first + length);
        bits &= length == smallSize ? 0 : ~(((1u << length) - 1) << first);
    }
}

/// The way of all the small pieces of a fine mesh: inside and outline are put together before any pixel is touched.
void FigurePainter::smallPolygon(std::span<const DevicePoint> points, const Bounds& bounds) const {
    const auto height = std::size_t(bounds.Height());
    std::array<std::uint32_t, smallSize> inside;
    std::array<std::uint32_t, smallSize> outline;
    std::fill_n(inside.begin(), height, 0);
    std::fill_n(outline.begin(), height, 0);
    if (!brush.Hollow)
        AreaFill::Bits(std::span(inside).first(height), bounds.Left, bounds.Top, points);
    if (hasPen()) {
        const PixelSurface area{nullptr, smallSize, bounds.Left, bounds.Top, bounds.Right + 1, bounds.Bottom + 1};
        outline[0] |= bounds.Width() == 1 && height == 1 ? 1u : 0u;
        DevicePoint previous = points.back();
        for (const DevicePoint point : points) {
            ThinLine::Draw(area, previous, point, [&](std::ptrdiff_t offset, std::int64_t) {
                outline[std::size_t(offset / smallSize)] |= 1u << (offset % smallSize);
            });
            previous = point;
        }
    }
    const bool oneInk = hasPen() && penInk.Pixel == brushInk.Pixel && !brushInk.Pattern;
    const int last = std::min(bounds.Bottom, surface.Bottom - 1);
    for (int y = std::max(bounds.Top, surface.Top); y <= last; ++y) {
        const auto row = std::size_t(y - bounds.Top);
        if (!oneInk)
            fillBits(brushInk, bounds.Left, y, inside[row] & ~outline[row]);
        fillBits(penInk, bounds.Left, y, oneInk ? inside[row] | outline[row] : outline[row]);
    }
}

void FigurePainter::polygon(std::span<const DevicePoint> points) const {
    const Bounds bounds(points);
    if (points.size() < 2 || touchedPart(bounds).IsEmpty())
        return;
    if ((!hasPen() || isThinSolid()) && bounds.Width() <= smallSize && bounds.Height() <= smallSize) {
        smallPolygon(points, bounds);
        return;
    }
    const int count = int(points.size());
    PolyPolygon(points, {&count, 1});
}

void FigurePainter::Polygons(std::span<const DevicePoint> points, std::span<const int> counts) const {
    forEachRing(points, counts, [this](std::span<const DevicePoint> corners) { polygon(corners); });
}

void FigurePainter::FillRect(const DeviceRect& rect) const {
    if (!brush.Hollow)
        AreaFill::Rectangle(surface, brushInk, rect.Left, rect.Top, rect.Right, rect.Bottom);
}

void FigurePainter::Rectangle(const DeviceRect& rect) const {
    if (rect.Left == rect.Right || rect.Top == rect.Bottom)
        return;
    if (!hasPen()) {
        FillRect({rect.Left, rect.Top, rect.Right - 1, rect.Bottom - 1});
        return;
    }
    const DevicePoint corners[] = {{rect.Left, rect.Top},
                                   {rect.Right - 1, rect.Top},
                                   {rect.Right - 1, rect.Bottom - 1},
                                   {rect.Left, rect.Bottom - 1}};
    asOneFigure(touchedPart(Bounds(corners)), [&](const FigurePainter& painter) {
        painter.FillRect(rect);
        painter.ring(corners);
    });
}

void FigurePainter::Ellipse(const DeviceRect& rect) const {
    const int shrink = hasPen() ? 0 : 1;
    if (rect.Left == rect.Right || rect.Top == rect.Bottom)
        return;
    RoundShapes::Ellipse(surface, hasPen() ? &penInk : nullptr, brush.Hollow ? nullptr : &brushInk,
                         {rect.Left, rect.Top, rect.Right - shrink, rect.Bottom - shrink}, pen.Width);
}
