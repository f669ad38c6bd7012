// Draws lines and filled figures in one pen, brush and raster mode on a surface. Keeps no device state: any number
// of painters may draw on separate surfaces of one picture at the same time.
#pragma once

#include "platform/PixelSurface.h"

/// Where a line has come to: the point, and how far into the dash pattern its pen is there.
struct PathPosition {
    DevicePoint Point;
    double DashLength = 0;
};

class FigurePainter {
public:
    FigurePainter(const PixelSurface& surface, const Pen& pen, const Brush& brush, int rasterMode);

    /// One line, its end left out; a wide line has round ends. `at` moves on to `to`.
    void LineTo(PathPosition& at, DevicePoint to) const;
    /// The steps of `DeviceContext::Lines`, beginning at `at`, which moves on to the last point named.
    void Lines(PathPosition& at, std::span<const DevicePoint> points, std::span<const std::int32_t> steps) const;
    void Polyline(std::span<const DevicePoint> points) const;
    /// One figure of several rings.
    void PolyPolygon(std::span<const DevicePoint> points, std::span<const int> counts) const;
    /// Figures of one ring each.
    void Polygons(std::span<const DevicePoint> points, std::span<const int> counts) const;
    /// The brush alone. For this and the next two: left not above right, top not above bottom.
    void FillRect(const DeviceRect& rect) const;
    void Rectangle(const DeviceRect& rect) const;
    /// Its outline has no dashes.
    void Ellipse(const DeviceRect& rect) const;

private:
    bool hasPen() const { return pen.Style != PenStyle::Null; }
    bool isWide() const { return pen.Width > 1; }
    bool isThinSolid() const { return hasPen() && !isWide() && dashes.empty(); }
    auto copyPlot() const {
        return
            [bits = surface.Bits, pixel = penInk.Pixel](std::ptrdiff_t offset, std::int64_t) { bits[offset] = pixel; };
    }
    auto mixPlot() const {
        return [bits = surface.Bits, pixel = penInk.Pixel, mode = rasterMode](std::ptrdiff_t offset, std::int64_t) {
            bits[offset] = combinePixels(mode, pixel, bits[offset]);
        };
    }
    void thinLine(DevicePoint from, DevicePoint to) const;
    void dashedThinLine(const PathPosition& at, DevicePoint to) const;
    void dashedWideLine(const PathPosition& at, DevicePoint to) const;
    void ring(std::span<const DevicePoint> points) const;
    void polygon(std::span<const DevicePoint> points) const;
    struct Bounds;
    void smallPolygon(std::span<const DevicePoint> points, const Bounds& bounds) const;
    void fillBits(const Ink& ink, int left, int y, std::uint32_t bits) const;
    PixelSurface touchedPart(const Bounds& bounds) const;
    template<class Draw>
    void asOneFigure(const PixelSurface& part, const Draw& draw) const;

    PixelSurface surface;
    Pen pen;
    Brush brush;
    int rasterMode;
    Ink penInk;
    Ink brushInk;
    std::span<const int> dashes; ///< thin: device units; wide: pen widths
    int dashPeriod = 0;          ///< sum of `dashes`
    std::uint32_t dashBits = 0;  ///< thin: bit i is set when a dash lies over unit i of the pattern
};
