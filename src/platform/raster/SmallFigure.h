// The pixels of a small figure of one ring as bits: its inside by the alternate rule, and its outline one pixel wide.
// Put together from tables of all sides that a small figure can have, so that no branch depends on its shape: which of
// a million little ones goes which way nobody can guess. Knows neither ink nor picture.
#pragma once

#include "platform/raster/PixelSurface.h"

#include <span>

/// The smallest rectangle about points, its edges included.
struct FigureBounds {
    int Left = INT32_MAX;
    int Top = INT32_MAX;
    int Right = INT32_MIN;
    int Bottom = INT32_MIN;

    explicit FigureBounds(std::span<const DevicePoint> points) {
        for (const DevicePoint point : points) {
            Left = std::min(Left, point.X);
            Top = std::min(Top, point.Y);
            Right = std::max(Right, point.X);
            Bottom = std::max(Bottom, point.Y);
        }
    }
    std::int64_t Width() const { return std::int64_t(Right) - Left + 1; }
    std::int64_t Height() const { return std::int64_t(Bottom) - Top + 1; }
    bool Fits(int size) const { return Width() <= size && Height() <= size; }
};

/// A figure of which all lies in 8 x 8 pixels from its `leftTop` on: the rows in a byte each, the column at the left in
/// the lowest bit.
struct TinyFigure {
    static constexpr int Size = 8;
    std::uint64_t Inside = 0, Outline = 0;

    /// `points` must not be empty.
    TinyFigure(std::span<const DevicePoint> points, DevicePoint leftTop);
};

/// The same in 16 x 16 pixels, a row in each number.
struct SmallFigure {
    static constexpr int Size = 16;
    std::array<std::uint16_t, Size> Inside, Outline;

    SmallFigure(std::span<const DevicePoint> points, DevicePoint leftTop);
};

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
