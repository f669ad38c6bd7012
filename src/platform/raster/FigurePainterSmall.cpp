// The way of all the small pieces of a fine mesh through FigurePainter: inside and outline are put together as bits
// before any pixel is touched.
#include "platform/raster/FigurePainter.h"
#include "platform/raster/SmallFigure.h"
#include "platform/raster/ThinLine.h"

namespace {
/// The numbers of `size` from `first` up to, without, `last`, as far as there are such.
std::uint64_t bitsBetween(std::int64_t first, std::int64_t last, int size) {
    const auto below = [size](std::int64_t end) {
        const std::int64_t count = std::clamp<std::int64_t>(end, 0, size);
        return count == 64 ? ~std::uint64_t(0) : (std::uint64_t(1) << count) - 1;
    };
    return below(last) & ~below(first);
}
} // namespace

/// A row in each byte. Most elements of a mesh that is finer than the picture are so small.
bool FigurePainter::isTiny(const FigureBounds& bounds) const {
    return bounds.Fits(TinyFigure::Size) && rasterMode == RasterMode::CopyPen && (brush.Hollow || !brushInk.Pattern);
}

void FigurePainter::tinyPolygon(std::span<const DevicePoint> points, const FigureBounds& bounds) const {
    const bool open = surface.Contains({bounds.Left, bounds.Top}) && surface.Contains({bounds.Right, bounds.Bottom});
    const TinyFigure figure(points, {bounds.Left, bounds.Top});
    constexpr std::uint64_t everyRow = 0x0101010101010101;
    const std::uint64_t columns = bitsBetween(std::int64_t(surface.Left) - bounds.Left,
                                              std::int64_t(surface.Right) - bounds.Left, TinyFigure::Size);
    const std::uint64_t rows = bitsBetween((std::int64_t(surface.Top) - bounds.Top) * TinyFigure::Size,
                                           (std::int64_t(surface.Bottom) - bounds.Top) * TinyFigure::Size, 64);
    const std::uint64_t seen = open ? ~std::uint64_t(0) : columns * everyRow & rows;
    const std::ptrdiff_t first = (std::int64_t(bounds.Top) - surface.Top) * surface.Stride + bounds.Left - surface.Left;
    const auto put = [&](std::uint64_t bits, std::uint32_t pixel) {
        for (bits &= seen; bits != 0; bits &= bits - 1) {
            const int bit = std::countr_zero(bits);
            surface.Bits[first + bit / TinyFigure::Size * surface.Stride + bit % TinyFigure::Size] = pixel;
        }
    };
    if (isOneInk()) {
        put(figure.Inside | figure.Outline, penInk.Pixel);
        return;
    }
    if (!brush.Hollow)
        put(hasPen() ? figure.Inside & ~figure.Outline : figure.Inside, brushInk.Pixel);
    if (hasPen())
        put(figure.Outline, penInk.Pixel);
}

void FigurePainter::smallPolygon(std::span<const DevicePoint> points, const FigureBounds& bounds) const {
    std::array<std::uint32_t, smallSize> inside, outline;
    if (bounds.Fits(SmallFigure::Size)) {
        const SmallFigure figure(points, {bounds.Left, bounds.Top});
        std::ranges::copy(figure.Inside, inside.begin());
        std::ranges::copy(figure.Outline, outline.begin());
    } else {
        const auto height = std::size_t(bounds.Height());
        std::fill_n(inside.begin(), height, 0);
        std::fill_n(outline.begin(), height, 0);
        const PixelSurface area{nullptr, smallSize, bounds.Left, bounds.Top, bounds.Right + 1, bounds.Bottom + 1};
        DevicePoint previous = points.back();
        for (const DevicePoint point : points) {
            forEachCrossing(previous, point, bounds.Left, bounds.Top,
                            [&](int row, int column) { inside[std::size_t(row)] ^= ~0u << column; });
            ThinLine::Draw(area, previous, point, [&](std::ptrdiff_t offset, std::int64_t) {
                outline[std::size_t(offset / smallSize)] |= 1u << (offset % smallSize);
            });
            previous = point;
        }
    }
    const int last = std::min(bounds.Bottom, surface.Bottom - 1);
    for (int y = std::max(bounds.Top, surface.Top); y <= last; ++y) {
        const std::uint32_t within = inside[std::size_t(y - bounds.Top)], edge = outline[std::size_t(y - bounds.Top)];
        if (isOneInk()) {
            fillBits(surface, penInk, y, bounds.Left, within | edge);
            continue;
        }
        if (!brush.Hollow)
            fillBits(surface, brushInk, y, bounds.Left, hasPen() ? within & ~edge : within);
        if (hasPen())
            fillBits(surface, penInk, y, bounds.Left, edge);
    }
}
