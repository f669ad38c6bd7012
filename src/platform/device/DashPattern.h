// The dash styles of pens as lengths along the line. Nothing is drawn here.
#pragma once

#include "platform/device/DeviceContext.h"

#include <span>

/// Lengths of dash, gap, dash, gap ... of a pen style, in device units for a thin line and in pen widths for a wide
/// one; empty for a style without gaps.
inline std::span<const int> dashPattern(int style, bool wide) {
    static constexpr int thinDash[] = {18, 6};
    static constexpr int thinDot[] = {3, 3};
    static constexpr int thinDashDot[] = {9, 6, 3, 6};
    static constexpr int thinDashDotDot[] = {9, 3, 3, 3, 3, 3};
    static constexpr int wideDash[] = {3, 1};
    static constexpr int wideDot[] = {1, 1};
    static constexpr int wideDashDot[] = {3, 1, 1, 1};
    static constexpr int wideDashDotDot[] = {3, 1, 1, 1, 1, 1};
    switch (style) {
    case PenStyle::Dash:
        return wide ? std::span<const int>(wideDash) : std::span<const int>(thinDash);
    case PenStyle::Dot:
        return wide ? std::span<const int>(wideDot) : std::span<const int>(thinDot);
    case PenStyle::DashDot:
        return wide ? std::span<const int>(wideDashDot) : std::span<const int>(thinDashDot);
    case PenStyle::DashDotDot:
        return wide ? std::span<const int>(wideDashDotDot) : std::span<const int>(thinDashDotDot);
    default:
        return {};
    }
}
