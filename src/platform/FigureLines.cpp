// The lines of FigurePainter.
#include "platform/FigurePainter.h"
#include "platform/RoundShapes.h"
#include "platform/ThinLine.h"

#include <cmath>

void FigurePainter::thinLine(DevicePoint from, DevicePoint to) const {
    if (rasterMode == RasterMode::CopyPen)
        ThinLine::Draw(surface, from, to, copyPlot());
    else
        ThinLine::Draw(surface, from, to, mixPlot());
}

void FigurePainter::dashedThinLine(const PathPosition& at, DevicePoint to) const {
    const auto start = std::int64_t(at.DashLength);
    ThinLine::Draw(surface, at.Point, to, [&, plot = mixPlot()](std::ptrdiff_t offset, std::int64_t step) {
        if (dashBits >> ((start + step) % dashPeriod) & 1u)
            plot(offset, step);
    });
}

void FigurePainter::dashedWideLine(const PathPosition& at, DevicePoint to) const {
    const double width = pen.Width;
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

    // The stretch of the line, in lengths from its start, that can touch the surface.
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
    narrow(at.Point.X, dx, surface.Left, surface.Right);
    narrow(at.Point.Y, dy, surface.Top, surface.Bottom);

    const double period = dashPeriod * width;
    double position = std::floor((first + at.DashLength) / period) * period - at.DashLength;
    while (position < last) {
        for (std::size_t i = 0; i < dashes.size(); position += dashes[i++] * width) {
            // A dash's round ends lie within its length; what is left of a dot is its middle.
            const double middle = position + dashes[i] * width / 2;
            const double half = (dashes[i] - 1) * width / 2;
            const double begin = std::max(middle - half, 0.0);
            const double end = std::min(middle + half, length);
            if (i % 2 == 0 && begin <= end)
                RoundShapes::Capsule(surface, penInk, along(begin), along(end), width);
        }
    }
}

void FigurePainter::LineTo(PathPosition& at, DevicePoint to) const {
    if (isThinSolid()) {
        thinLine(at.Point, to);
    } else if (hasPen() && dashes.empty()) {
        RoundShapes::Capsule(surface, penInk, {double(at.Point.X), double(at.Point.Y)}, {double(to.X), double(to.Y)},
                             pen.Width);
    } else if (hasPen()) {
        const double unit = isWide() ? pen.Width : 1;
        double length = 0;
        if (isWide()) {
            dashedWideLine(at, to);
            length = std::hypot(double(to.X) - at.Point.X, double(to.Y) - at.Point.Y);
        } else {
            dashedThinLine(at, to);
            length = double(ThinLine::Length(at.Point, to));
        }
        at.DashLength = std::fmod(at.DashLength + length, dashPeriod * unit);
    }
    at.Point = to;
}

void FigurePainter::Lines(PathPosition& at, std::span<const DevicePoint> points,
                          std::span<const std::int32_t> steps) const {
    // The mesh goes through here, a million elements at a time: what is the same for all lines is decided outside.
    const auto run = [&](const auto& lineTo) {
        for (const std::int32_t step : steps) {
            const auto index = std::size_t(step < 0 ? ~step : step);
            if (index >= points.size())
                continue;
            if (step < 0)
                at = {points[index], 0};
            else
                lineTo(points[index]);
        }
    };
    if (isThinSolid() && rasterMode == RasterMode::CopyPen) {
        run([&, plot = copyPlot()](DevicePoint to) {
            ThinLine::Draw(surface, at.Point, to, plot);
            at.Point = to;
        });
    } else {
        run([&](DevicePoint to) { LineTo(at, to); });
    }
}
