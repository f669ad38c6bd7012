// The lines of FigurePainter: one by one straight onto the surface, or a whole figure of them by a stencil.
#include "platform/raster/FigurePainter.h"
#include "platform/raster/Stencil.h"
#include "platform/raster/StencilLines.h"
#include "platform/raster/ThinLine.h"

#include <atomic>

namespace {
auto copyPlot(const PixelSurface& surface, const Ink& ink) {
    return [bits = surface.Bits, pixel = ink.Pixel](std::ptrdiff_t offset, std::int64_t) { bits[offset] = pixel; };
}

auto mixPlot(const PixelSurface& surface, const Ink& ink) {
    return [bits = surface.Bits, pixel = ink.Pixel, mode = ink.RasterMode](std::ptrdiff_t offset, std::int64_t) {
        bits[offset] = combinePixels(mode, pixel, bits[offset]);
    };
}

class SurfaceLines final : public LineTarget {
public:
    SurfaceLines(const PixelSurface& surface, const Ink& lineInk) : LineTarget(surface), ink(lineInk) {}

    void Thin(DevicePoint from, DevicePoint to) override {
        if (ink.RasterMode == RasterMode::CopyPen)
            ThinLine::Draw(area, from, to, copyPlot(area, ink));
        else
            ThinLine::Draw(area, from, to, mixPlot(area, ink));
    }
    void ThinDashed(DevicePoint from, DevicePoint to, int start, int period, std::uint32_t dashes) override {
        ThinLine::Draw(area, from, to, [&, plot = mixPlot(area, ink)](std::ptrdiff_t offset, std::int64_t step) {
            if (dashes >> ((start + step) % period) & 1u)
                plot(offset, step);
        });
    }
    void Wide(DevicePoint from, DevicePoint to, int width) override {
        WideDash({double(from.X), double(from.Y)}, {double(to.X), double(to.Y)}, width);
    }
    void WideDash(RoundShapes::Spot from, RoundShapes::Spot to, int width) override {
        RoundShapes::Capsule(from, to, width).ForEachRow(area, [this](int y, RoundShapes::Columns columns) {
            fillSpan(area, ink, y, columns.First, columns.Last);
        });
    }

private:
    const Ink& ink;
};

/// Whether a path has enough to draw for a stencil to pay, which costs a walk over all its words.
bool fillsStencil(const PixelSurface& part, std::span<const DevicePoint> points, const Stroke& stroke) {
    constexpr std::int64_t pixelsPerWord = 4, pixelsPerRoundEnd = 16;
    const std::int64_t enough = pixelsPerWord * Stencil::WordCount(part);
    const std::int64_t longest = part.Right - part.Left + part.Bottom - part.Top;
    std::int64_t pixels = 0;
    for (std::size_t i = 1; i < points.size() && pixels < enough; ++i)
        pixels += std::min(ThinLine::Length(points[i - 1], points[i]), longest) * stroke.Width() +
                  (stroke.IsWide() ? pixelsPerRoundEnd : 0);
    return pixels >= enough;
}

void drawPath(const Stroke& stroke, LineTarget& target, std::span<const DevicePoint> points) {
    PathPosition at{points[0], 0};
    for (const DevicePoint point : points.subspan(1))
        stroke.LineTo(target, at, point);
}
} // namespace

void FigurePainter::LineTo(PathPosition& at, DevicePoint to) const {
    SurfaceLines lines(surface, penInk);
    stroke.LineTo(lines, at, to);
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
    if (MayShareLines()) {
        // Others may be giving the same pixels the same ink.
        const auto plot = [bits = surface.Bits, pixel = penInk.Pixel](std::ptrdiff_t offset, std::int64_t) {
            std::atomic_ref(bits[offset]).store(pixel, std::memory_order_relaxed);
        };
        run([&](DevicePoint to) {
            ThinLine::Draw(surface, at.Point, to, plot);
            at.Point = to;
        });
    } else {
        SurfaceLines lines(surface, penInk);
        run([&](DevicePoint to) { stroke.LineTo(lines, at, to); });
    }
}

void FigurePainter::Polyline(std::span<const DevicePoint> points) const {
    if (!stroke.IsVisible() || points.size() < 2)
        return;
    const PixelSurface part = touchedPart(FigureBounds(points));
    if (part.IsEmpty())
        return;
    // One line over another must not show under a mode that mixes, and is work for nothing under any.
    if (rasterMode == RasterMode::CopyPen && !fillsStencil(part, points, stroke)) {
        SurfaceLines lines(part, penInk);
        drawPath(stroke, lines, points);
        return;
    }
    Stencil stencil(part);
    StencilLines lines(stencil);
    drawPath(stroke, lines, points);
    stencil.PutOn(surface, penInk);
}
