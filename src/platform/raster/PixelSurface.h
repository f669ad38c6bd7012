// The part of a picture's pixels that may be written, what is written into them, and the raster modes. The innermost
// operations of the raster device, inline; they know neither pens nor figures.
#pragma once

#include "platform/device/DeviceContext.h"
#include "platform/device/HatchPattern.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>

/// A picture's pixels from (Left, Top) up to, without, (Right, Bottom), 0xffRRGGBB each. `Bits` is the pixel
/// (Left, Top) and belongs to the picture; `Stride` counts pixels. Narrowing it is the one way to clip.
struct PixelSurface {
    std::uint32_t* Bits = nullptr;
    std::ptrdiff_t Stride = 0;
    int Left = 0;
    int Top = 0;
    int Right = 0;
    int Bottom = 0;

    bool IsEmpty() const { return Left >= Right || Top >= Bottom; }
    std::int64_t PixelCount() const { return IsEmpty() ? 0 : (std::int64_t(Right) - Left) * (Bottom - Top); }
    /// Differences are taken unsigned: no coordinate can overflow them.
    bool Contains(DevicePoint point) const {
        return std::uint32_t(point.X) - std::uint32_t(Left) < std::uint32_t(Right - Left) &&
               std::uint32_t(point.Y) - std::uint32_t(Top) < std::uint32_t(Bottom - Top);
    }
    std::ptrdiff_t Offset(int x, int y) const { return (y - Top) * Stride + (x - Left); }
    std::uint32_t* Pixel(int x, int y) const { return Bits + Offset(x, y); }

    /// The part inside the given edges; empty when they leave nothing.
    PixelSurface Within(std::int64_t left, std::int64_t top, std::int64_t right, std::int64_t bottom) const {
        PixelSurface part;
        if (std::max<std::int64_t>(Left, left) >= std::min<std::int64_t>(Right, right) ||
            std::max<std::int64_t>(Top, top) >= std::min<std::int64_t>(Bottom, bottom))
            return part;
        part.Left = int(std::max<std::int64_t>(Left, left));
        part.Top = int(std::max<std::int64_t>(Top, top));
        part.Right = int(std::min<std::int64_t>(Right, right));
        part.Bottom = int(std::min<std::int64_t>(Bottom, bottom));
        part.Bits = Pixel(part.Left, part.Top);
        part.Stride = Stride;
        return part;
    }
};

constexpr std::uint32_t toPixel(ColorRef color) {
    return 0xff000000u | std::uint32_t(redOf(color)) << 16 | std::uint32_t(greenOf(color)) << 8 |
           std::uint32_t(blueOf(color));
}

/// What a pixel becomes when `drawn` is put on `present`; any mode that is not named copies.
constexpr std::uint32_t combinePixels(int rasterMode, std::uint32_t drawn, std::uint32_t present) {
    switch (rasterMode) {
    case RasterMode::Not:
        return ~present | 0xff000000u;
    case RasterMode::XorPen:
        return (drawn ^ present) | 0xff000000u;
    case RasterMode::MergePenNot:
        return drawn | ~present | 0xff000000u;
    default:
        return drawn;
    }
}

/// All channels of a pixel times `share` / 255, two at once, rounded as Qt rounds them.
constexpr std::uint32_t scalePixel(std::uint32_t pixel, unsigned share) {
    constexpr std::uint32_t pair = 0xff00ff, half = 0x800080;
    std::uint32_t even = (pixel & pair) * share;
    even = (even + (even >> 8 & pair) + half) >> 8 & pair;
    std::uint32_t odd = (pixel >> 8 & pair) * share;
    odd = (odd + (odd >> 8 & pair) + half) & ~pair;
    return even | odd;
}

/// What pixels are filled with. Pixels at a 0 bit of the pattern stay as they are.
struct Ink {
    std::uint32_t Pixel = 0xff000000u;
    int RasterMode = RasterMode::CopyPen;
    const HatchPattern* Pattern = nullptr;
};

/// One row from `left` up to, without, `right`, cut to the surface's columns; `y` must be one of its rows.
inline void fillSpan(const PixelSurface& surface, const Ink& ink, int y, std::int64_t left, std::int64_t right) {
    left = std::max<std::int64_t>(left, surface.Left);
    right = std::min<std::int64_t>(right, surface.Right);
    if (left >= right)
        return;
    const int first = int(left);
    const int length = int(right - left);
    std::uint32_t* const row = surface.Pixel(first, y);
    if (ink.Pattern) {
        const unsigned bits = (*ink.Pattern)[std::size_t(y & 7)];
        for (int i = 0; i < length; ++i) {
            if (bits >> ((first + i) & 7) & 1u)
                row[i] = combinePixels(ink.RasterMode, ink.Pixel, row[i]);
        }
    } else if (ink.RasterMode != RasterMode::CopyPen) {
        for (int i = 0; i < length; ++i)
            row[i] = combinePixels(ink.RasterMode, ink.Pixel, row[i]);
    } else if (length > 8) {
        std::fill_n(row, length, ink.Pixel);
    } else {
        // Most spans of a fine mesh are this short; the vector code of a fill would cost more than it saves.
        int i = 0;
        do
            row[i] = ink.Pixel;
        while (++i < length);
    }
}

/// The pixels of a row from `left` on for which `bits`, the lowest first, are set; cut to the surface's columns.
inline void fillBits(const PixelSurface& surface, const Ink& ink, int y, std::int64_t left, std::uint64_t bits) {
    constexpr int size = 64;
    // With more than three runs, finding each takes longer than going over all pixels.
    std::uint64_t runs = bits & ~(bits << 1);
    for (int i = 0; i < 3; ++i)
        runs &= runs - 1;
    if (runs != 0 && !ink.Pattern && ink.RasterMode == RasterMode::CopyPen && left >= surface.Left &&
        left + size <= surface.Right) {
        static constexpr auto masks = [] {
            std::array<std::array<std::uint32_t, 4>, 16> values{};
            for (unsigned i = 0; i < 64; ++i)
                values[i / 4][i % 4] = i / 4 >> i % 4 & 1u ? ~0u : 0u;
            return values;
        }();
        std::uint32_t* row = surface.Pixel(int(left), y);
        for (int i = 0; i < size; i += 4, bits >>= 4, row += 4) {
            const std::array<std::uint32_t, 4>& mask = masks[bits & 15];
            for (std::size_t k = 0; k < 4; ++k)
                row[k] = (row[k] & ~mask[k]) | (ink.Pixel & mask[k]);
        }
        return;
    }
    while (bits != 0) {
        const int first = std::countr_zero(bits);
        const int length = std::countr_one(bits >> first);
        fillSpan(surface, ink, y, left + first, left + first + length);
        bits &= first + length == size ? 0 : ~std::uint64_t(0) << (first + length);
    }
}
