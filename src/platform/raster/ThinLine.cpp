#include "platform/raster/ThinLine.h"

namespace {
__extension__ using Wide = __int128;

Wide ceilingQuotient(Wide dividend, Wide divisor) {
    const Wide quotient = dividend / divisor;
    return dividend % divisor > 0 ? quotient + 1 : quotient;
}

/// One direction of a line within the surface: from `Start`, `Length` units up or down, of which `Low` up to, without,
/// `High` can be seen. Distances count away from the start.
struct Extent {
    std::int64_t Length;
    bool Ascending;
    std::int64_t Low;
    std::int64_t High;

    Extent(std::int64_t start, std::int64_t end, std::int64_t low, std::int64_t high)
        : Length(std::abs(end - start)), Ascending(end >= start), Low(Ascending ? low - start : start - high + 1),
          High(Ascending ? high - start : start - low + 1) {}
};
} // namespace

ThinLine::Walk ThinLine::Clipped(const PixelSurface& surface, DevicePoint from, DevicePoint to) {
    Walk walk;
    if (surface.IsEmpty() || from == to)
        return walk;
    const Extent x(from.X, to.X, surface.Left, surface.Right);
    const Extent y(from.Y, to.Y, surface.Top, surface.Bottom);
    const bool alongX = x.Length >= y.Length;
    const Extent& major = alongX ? x : y;
    const Extent& minor = alongX ? y : x;

    // At step k the line is floor((2 k m + n - bias) / 2 n) across, with n and m its lengths along and across; solving
    // that for k gives the steps that can be seen, in numbers of up to 67 bits.
    const Wide offset = major.Length - (minor.Ascending ? 1 : 0);
    const Wide twiceLength = Wide(2) * major.Length;
    const Wide twiceAcross = Wide(2) * minor.Length;
    Wide first = std::max<std::int64_t>(major.Low, 0);
    Wide last = std::min(major.High, major.Length);
    if (minor.Length == 0) {
        if (minor.Low > 0 || minor.High <= 0)
            return walk;
    } else {
        first = std::max(first, ceilingQuotient(twiceLength * minor.Low - offset, twiceAcross));
        last = std::min(last, ceilingQuotient(twiceLength * minor.High - offset, twiceAcross));
    }
    if (first >= last)
        return walk;

    const Wide across = (first * twiceAcross + offset) / twiceLength;
    const auto along = std::int64_t(first);
    const std::int64_t alongSigned = major.Ascending ? along : -along;
    const std::int64_t acrossSigned = minor.Ascending ? std::int64_t(across) : -std::int64_t(across);
    const std::ptrdiff_t stepX = x.Ascending ? 1 : -1;
    const std::ptrdiff_t stepY = y.Ascending ? surface.Stride : -surface.Stride;
    walk.Offset = surface.Offset(int(from.X + (alongX ? alongSigned : acrossSigned)),
                                 int(from.Y + (alongX ? acrossSigned : alongSigned)));
    walk.First = along;
    walk.Last = std::int64_t(last);
    walk.MajorStep = alongX ? stepX : stepY;
    walk.MinorStep = alongX ? stepY : stepX;
    walk.Error = std::int64_t(first * twiceAcross + offset - across * twiceLength);
    walk.ErrorStep = std::int64_t(twiceAcross);
    walk.ErrorLimit = std::int64_t(twiceLength);
    return walk;
}
