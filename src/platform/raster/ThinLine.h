// Lines one pixel wide. Along its longer direction a line has one pixel per step, the one nearest to the true line; of
// two equally near ones that with the smaller coordinate. So both directions, and any clip, give the same pixels.
#pragma once

#include "platform/raster/PixelSurface.h"

#include <cstdlib>

namespace ThinLine {
/// A walk over the pixels of a line from step `First` up to, without, `Last`; step 0 is the line's start.
struct Walk {
    std::ptrdiff_t Offset = 0; ///< of the pixel of step `First`, from the surface's first
    std::int64_t First = 0;
    std::int64_t Last = 0;
    std::ptrdiff_t MajorStep = 0;
    std::ptrdiff_t MinorStep = 0;
    std::int64_t Error = 0; ///< reaching `ErrorLimit` moves one pixel across
    std::int64_t ErrorStep = 0;
    std::int64_t ErrorLimit = 0;
};

/// Number of pixels of a line, its end left out.
inline std::int64_t Length(DevicePoint from, DevicePoint to) {
    return std::max(std::abs(std::int64_t(to.X) - from.X), std::abs(std::int64_t(to.Y) - from.Y));
}

/// The walk over the part of a line that lies on the surface, found without going along the rest; an empty one when
/// nothing does.
Walk Clipped(const PixelSurface& surface, DevicePoint from, DevicePoint to);

/// The walk over a line with both ends on the surface.
inline Walk Inside(const PixelSurface& surface, DevicePoint from, DevicePoint to) {
    const int dx = to.X - from.X;
    const int dy = to.Y - from.Y;
    const int lengthX = std::abs(dx);
    const int lengthY = std::abs(dy);
    const std::ptrdiff_t stepX = dx < 0 ? -1 : 1;
    const std::ptrdiff_t stepY = dy < 0 ? -surface.Stride : surface.Stride;
    const bool alongX = lengthX >= lengthY;
    Walk walk;
    walk.Offset = surface.Offset(from.X, from.Y);
    walk.Last = alongX ? lengthX : lengthY;
    walk.MajorStep = alongX ? stepX : stepY;
    walk.MinorStep = alongX ? stepY : stepX;
    walk.Error = walk.Last - (walk.MinorStep > 0 ? 1 : 0);
    walk.ErrorStep = 2 * std::int64_t(alongX ? lengthY : lengthX);
    walk.ErrorLimit = 2 * walk.Last;
    return walk;
}

/// Calls `plot(offset, step)` for each pixel of the walk.
template<class Plot>
void Run(const Walk& walk, const Plot& plot) {
    std::ptrdiff_t offset = walk.Offset;
    std::int64_t error = walk.Error;
    for (std::int64_t step = walk.First; step < walk.Last; ++step) {
        plot(offset, step);
        offset += walk.MajorStep;
        error += walk.ErrorStep;
        // No branch: which way a line goes on is what a processor guesses worst.
        const std::int64_t across = error >= walk.ErrorLimit ? -1 : 0;
        error -= walk.ErrorLimit & across;
        offset += walk.MinorStep & across;
    }
}

/// Calls `plot(offset, step)` for each pixel of a line that lies on the surface: how far it is from the surface's first
/// pixel, and from the line's start.
template<class Plot>
void Draw(const PixelSurface& surface, DevicePoint from, DevicePoint to, const Plot& plot) {
    if (surface.Contains(from) && surface.Contains(to)) {
        const int dx = to.X - from.X;
        const int dy = to.Y - from.Y;
        if (unsigned(dx + 1) <= 2u && unsigned(dy + 1) <= 2u) {
            if (dx != 0 || dy != 0)
                plot(surface.Offset(from.X, from.Y), 0);
            return;
        }
        Run(Inside(surface, from, to), plot);
        return;
    }
    const auto apart = [](int a, int b, int low, int high) { return (a < low && b < low) || (a >= high && b >= high); };
    if (apart(from.Y, to.Y, surface.Top, surface.Bottom) || apart(from.X, to.X, surface.Left, surface.Right))
        return;
    Run(Clipped(surface, from, to), plot);
}
} // namespace ThinLine
