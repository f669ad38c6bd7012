// Points, sizes and rectangles in device units, and the platform's colour number. Plain values, no behaviour.
#pragma once

#include <cstdint>

/// 0x00BBGGRR, as result files' property stores and traces write it.
using ColorRef = std::uint32_t;

constexpr ColorRef makeColor(int red, int green, int blue) {
    return ColorRef(red & 0xff) | ColorRef(green & 0xff) << 8 | ColorRef(blue & 0xff) << 16;
}
constexpr int redOf(ColorRef color) {
    return int(color & 0xff);
}
constexpr int greenOf(ColorRef color) {
    return int(color >> 8 & 0xff);
}
constexpr int blueOf(ColorRef color) {
    return int(color >> 16 & 0xff);
}

/// A device position: X to the right, Y down, pixel (0, 0) at the left top.
struct DevicePoint {
    std::int32_t X = 0;
    std::int32_t Y = 0;
    bool operator==(const DevicePoint&) const = default;
};

struct DeviceSize {
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    bool operator==(const DeviceSize&) const = default;
};

/// How a picture lies that has been moved and scaled: its pixel p at `Scale` * p and the offset.
struct PictureShift {
    double Scale = 1, OffsetX = 0, OffsetY = 0;
    bool operator==(const PictureShift&) const = default;
};

/// Corners in device units; what is drawn in it leaves out `Right` and `Bottom` themselves.
struct DeviceRect {
    std::int32_t Left = 0;
    std::int32_t Top = 0;
    std::int32_t Right = 0;
    std::int32_t Bottom = 0;
    bool operator==(const DeviceRect&) const = default;
    int Width() const { return Right - Left; }
    int Height() const { return Bottom - Top; }
};

/// The same rectangle with its right not left of its left and its bottom not above its top.
constexpr DeviceRect normalised(const DeviceRect& rect) {
    const bool swapX = rect.Right < rect.Left, swapY = rect.Bottom < rect.Top;
    return {swapX ? rect.Right : rect.Left, swapY ? rect.Bottom : rect.Top, swapX ? rect.Left : rect.Right,
            swapY ? rect.Top : rect.Bottom};
}

/// What both rectangles hold; empty, and at the origin, when that is nothing.
constexpr DeviceRect intersection(const DeviceRect& a, const DeviceRect& b) {
    const DeviceRect rect{a.Left > b.Left ? a.Left : b.Left, a.Top > b.Top ? a.Top : b.Top,
                          a.Right < b.Right ? a.Right : b.Right, a.Bottom < b.Bottom ? a.Bottom : b.Bottom};
    return rect.Left < rect.Right && rect.Top < rect.Bottom ? rect : DeviceRect{};
}
