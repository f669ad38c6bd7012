#include "platform/raster/Stroke.h"

#include "platform/device/DashPattern.h"
#include "platform/raster/ThinLine.h"

#include <cmath>

namespace {
std::uint32_t bitsOfDashes(std::span<const int> dashes) {
    std::uint32_t bits = 0;
    int position = 0;
    for (std::size_t i = 0; i < dashes.size(); position += dashes[i++]) {
        if (i % 2 == 0)
            bits |= ((1u << dashes[i]) - 1) << position;
    }
    return bits;
}
} // namespace

Stroke::Stroke(const Pen& pen) : visible(pen.Style != PenStyle::Null), width(std::max(pen.Width, 1)) {
    if (!IsWide() || pen.Geometric)
        dashes = dashPattern(pen.Style, IsWide());
    for (const int length : dashes)
        dashPeriod += length;
    if (!IsWide())
        dashBits = bitsOfDashes(dashes);
}

void Stroke::dashedWideLine(LineTarget& target, const PathPosition& at, DevicePoint to) const {
    const double dx = double(to.X) - at.Point.X;
    const double dy = double(to.Y) - at.Point.Y;
    const double length = std::hypot(dx, dy);
    if (length == 0)
        return;

    const double stepX = dx / length;
    const double stepY = dy / length;
    const auto along = [&](double distance) {
        return RoundShapes::Spot{at.Point.X + stepX * distance, at.Point.Y + stepY * distance};
    };

    // The stretch of the line, in lengths from its start, that can touch the target.
    double first = 0;
    double last = length;
    const auto narrow = [&](double start, double delta, double low, double high) {
        if (delta == 0)
            return;
        const double one = (low - width - start) / delta * length;
        const double other = (high + width - start) / delta * length;
        first = std::max(first, std::min(one, other));
        last = std::min(last, std::max(one, other));
    };
    narrow(at.Point.X, dx, target.Area().Left, target.Area().Right);
    narrow(at.Point.Y, dy, target.Area().Top, target.Area().Bottom);

    const double period = double(dashPeriod) * width;
    double position = std::floor((first + at.DashLength) / period) * period - at.DashLength;
    while (position < last) {
        for (std::size_t i = 0; i < dashes.size(); position += double(dashes[i++]) * width) {
            // A dash's round ends lie within its length; what is left of a dot is its middle.
            const double middle = position + double(dashes[i]) * width / 2;
            const double half = double(dashes[i] - 1) * width / 2;
            const double begin = std::max(middle - half, 0.0);
            const double end = std::min(middle + half, length);
            if (i % 2 == 0 && begin <= end)
                target.WideDash(along(begin), along(end), width);
        }
    }
}

void Stroke::LineTo(LineTarget& target, PathPosition& at, DevicePoint to) const {
    if (IsThinSolid()) {
        target.Thin(at.Point, to);
    } else if (visible && dashes.empty()) {
        target.Wide(at.Point, to, width);
    } else if (visible) {
        double length = 0;
        if (IsWide()) {
            dashedWideLine(target, at, to);
            length = std::hypot(double(to.X) - at.Point.X, double(to.Y) - at.Point.Y);
        } else {
            target.ThinDashed(at.Point, to, int(at.DashLength), dashPeriod, dashBits);
            length = double(ThinLine::Length(at.Point, to));
        }
        at.DashLength = std::fmod(at.DashLength + length, double(dashPeriod) * width);
    }
    at.Point = to;
}
