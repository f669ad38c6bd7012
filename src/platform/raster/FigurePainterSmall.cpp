// The way of all the small pieces of a fine mesh through FigurePainter: inside and outline are put together as bits
// before any pixel is touched.
#include "platform/raster/FigurePainter.h"
#include "platform/raster/ThinLine.h"

namespace {
/// Calls `turn(row, column)` where a side of a ring crosses a row, both from `left` and `top` on: all that is right of
/// it is turned from outside to inside or back. The ring must be less than 32 columns and rows large.
template<class Turn>
void forEachCrossing(DevicePoint start, DevicePoint end, int left, int top, const Turn& turn) {
    // Division by a height of 1 to 31 as multiplication, which is exact for the small dividends here.
    static constexpr auto reciprocals = [] {
        std::array<unsigned, 32> values{};
        for (unsigned height = 1; height < values.size(); ++height)
            values[height] = (65536 + height - 1) / height;
        return values;
    }();
    const bool down = start.Y < end.Y;
    const DevicePoint from = down ? start : end;
    const DevicePoint to = down ? end : start;
    const int height = to.Y - from.Y;
    const int width = to.X - from.X;
    const unsigned reciprocal = reciprocals[std::size_t(height)];
    // The quotient is kept positive and rounded up by the 33 heights, less one unit, that are added to it.
    for (int row = 0; row < height; ++row) {
        const auto dividend = unsigned(row * width + 33 * height - 1);
        turn(from.Y - top + row, from.X - left - 32 + int(dividend * reciprocal >> 16));
    }
}

/// The pixels of a side of a tiny polygon as bits, a row in each byte, from the left top of the side on.
struct TinySide {
    std::uint64_t Line = 0;      ///< its end left out
    std::uint64_t Crossings = 0; ///< where it crosses the rows
};

constexpr int tinyReach = 7;
using TinySides = std::array<std::array<TinySide, 2 * tinyReach + 1>, 2 * tinyReach + 1>;

/// By its rows and its columns, both from -`tinyReach` on.
const TinySides& tinySides() {
    static const TinySides sides = [] {
        constexpr int size = tinyReach + 1;
        const PixelSurface area{nullptr, size, 0, 0, size, size};
        TinySides made;
        for (int dy = -tinyReach; dy <= tinyReach; ++dy)
            for (int dx = -tinyReach; dx <= tinyReach; ++dx) {
                TinySide& side = made[std::size_t(dy + tinyReach)][std::size_t(dx + tinyReach)];
                const DevicePoint from{std::max(-dx, 0), std::max(-dy, 0)}, to{from.X + dx, from.Y + dy};
                ThinLine::Draw(area, from, to, [&side](std::ptrdiff_t offset, std::int64_t) {
                    side.Line |= std::uint64_t(1) << offset;
                });
                forEachCrossing(from, to, 0, 0, [&side](int row, int column) {
                    side.Crossings |= std::uint64_t(1) << (row * size + column);
                });
            }
        return made;
    }();
    return sides;
}

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
bool FigurePainter::isTiny(const Bounds& bounds) const {
    return bounds.Width() <= tinySize && bounds.Height() <= tinySize && rasterMode == RasterMode::CopyPen &&
           (brush.Hollow || !brushInk.Pattern);
}

/// Without branches that depend on the figure: which of a million little ones goes which way nobody can guess.
void FigurePainter::tinyPolygon(std::span<const DevicePoint> points, const Bounds& bounds) const {
    const bool open = surface.Contains({bounds.Left, bounds.Top}) && surface.Contains({bounds.Right, bounds.Bottom});
    const auto& sides = tinySides();
    std::uint64_t outline = bounds.Width() == 1 && bounds.Height() == 1 ? 1 : 0, inside = 0;
    DevicePoint previous = points.back();
    for (const DevicePoint point : points) {
        const TinySide& side =
            sides[std::size_t(point.Y - previous.Y + tinyReach)][std::size_t(point.X - previous.X + tinyReach)];
        const int place =
            (std::min(point.Y, previous.Y) - bounds.Top) * tinySize + std::min(point.X, previous.X) - bounds.Left;
        outline |= side.Line << place;
        inside ^= side.Crossings << place;
        previous = point;
    }
    // Each crossing turns all that is right of it in its row.
    inside ^= inside << 1 & 0xfefefefefefefefe;
    inside ^= inside << 2 & 0xfcfcfcfcfcfcfcfc;
    inside ^= inside << 4 & 0xf0f0f0f0f0f0f0f0;
    constexpr std::uint64_t everyRow = 0x0101010101010101;
    const std::uint64_t columns =
        bitsBetween(std::int64_t(surface.Left) - bounds.Left, std::int64_t(surface.Right) - bounds.Left, tinySize);
    const std::uint64_t rows = bitsBetween((std::int64_t(surface.Top) - bounds.Top) * tinySize,
                                           (std::int64_t(surface.Bottom) - bounds.Top) * tinySize, 64);
    const std::uint64_t seen = open ? ~std::uint64_t(0) : columns * everyRow & rows;
    const std::ptrdiff_t first = (std::int64_t(bounds.Top) - surface.Top) * surface.Stride + bounds.Left - surface.Left;
    const auto put = [&](std::uint64_t bits, std::uint32_t pixel) {
        for (bits &= seen; bits != 0; bits &= bits - 1) {
            const int bit = std::countr_zero(bits);
            surface.Bits[first + bit / tinySize * surface.Stride + bit % tinySize] = pixel;
        }
    };
    if (isOneInk()) {
        put(inside | outline, penInk.Pixel);
        return;
    }
    if (!brush.Hollow)
        put(hasPen() ? inside & ~outline : inside, brushInk.Pixel);
    if (hasPen())
        put(outline, penInk.Pixel);
}

void FigurePainter::smallPolygon(std::span<const DevicePoint> points, const Bounds& bounds) const {
    const auto height = std::size_t(bounds.Height());
    std::array<std::uint32_t, smallSize> inside;
    std::array<std::uint32_t, smallSize> outline;
    std::fill_n(inside.begin(), height, 0);
    std::fill_n(outline.begin(), height, 0);
    for (std::size_t i = 0; !brush.Hollow && i < points.size(); ++i)
        forEachCrossing(points[i > 0 ? i - 1 : points.size() - 1], points[i], bounds.Left, bounds.Top,
                        [&inside](int row, int column) { inside[std::size_t(row)] ^= ~0u << column; });
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
    const bool oneInk = isOneInk();
    const int last = std::min(bounds.Bottom, surface.Bottom - 1);
    for (int y = std::max(bounds.Top, surface.Top); y <= last; ++y) {
        const auto row = std::size_t(y - bounds.Top);
        if (!oneInk)
            fillBits(surface, brushInk, y, bounds.Left, inside[row] & ~outline[row]);
        fillBits(surface, penInk, y, bounds.Left, oneInk ? inside[row] | outline[row] : outline[row]);
    }
}
