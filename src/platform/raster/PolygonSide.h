// One side of a polygon, walked down row by row. Exact for all coordinates; inline, for it is called for each side.
#pragma once

#include "platform/base/Geometry.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

/// `X` is the first column at or right of the side in row `Top`, `Rest` / `Height` how far right of it.
/// Without initial values: most polygons are small, and clearing room for all their sides would cost more than filling
/// them.
struct PolygonSide {
    int Top;
    int Bottom;
    std::int64_t X;
    std::int64_t Rest;
    std::int64_t Height;
    std::int64_t Slope; ///< whole columns a row
    std::int64_t SlopeRest;

    /// One row down; not for a side of one row, which has no slope.
    void Advance() {
        X += Slope;
        Rest -= SlopeRest;
        if (Rest < 0) {
            ++X;
            Rest += Height;
        }
    }

    /// False when the side crosses none of the rows, `lastRow` left out.
    bool Make(int firstRow, int lastRow, DevicePoint from, DevicePoint to) {
        if (from.Y > to.Y)
            std::swap(from, to);
        Top = std::max(from.Y, firstRow);
        Bottom = std::min(to.Y, lastRow);
        if (Top >= Bottom)
            return false;
        const std::int64_t width = std::int64_t(to.X) - from.X;
        X = from.X;
        Rest = 0;
        Height = std::int64_t(to.Y) - from.Y;
        if (Height == 1)
            return true;
        Slope = floorQuotient(width, Height);
        SlopeRest = width - Slope * Height;
        if (Top != from.Y)
            skipTo(Top, from.Y, width);
        return true;
    }

private:
    __extension__ using Wide = __int128;

    void skipTo(int row, int firstRow, std::int64_t width) {
        const Wide across = Wide(std::int64_t(row) - firstRow) * width;
        Wide columns = across / Height;
        columns += across % Height > 0 ? 1 : 0;
        X += std::int64_t(columns);
        Rest = std::int64_t(columns * Height - across);
    }

    static std::int64_t floorQuotient(std::int64_t dividend, std::int64_t divisor) {
        // Sides of a fine mesh are steep or short: most need no division, or a narrow one.
        if (std::abs(dividend) < divisor)
            return dividend < 0 ? -1 : 0;
        if (std::abs(dividend) <= INT32_MAX && divisor <= INT32_MAX) {
            const auto narrow = std::int32_t(dividend) / std::int32_t(divisor);
            return narrow - (std::int64_t(narrow) * divisor > dividend ? 1 : 0);
        }
        const std::int64_t quotient = dividend / divisor;
        return quotient - (dividend % divisor < 0 ? 1 : 0);
    }
};
