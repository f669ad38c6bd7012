// Draws lines and filled figures in one pen, brush and raster mode on a surface. Keeps no device state: any number
// of painters may draw on separate surfaces of one picture at the same time.
#pragma once

#include "platform/raster/FigureBits.h"
#include "platform/raster/InkedPixels.h"
#include "platform/raster/SmallFigure.h"
#include "platform/raster/Stroke.h"

#include <optional>

class FigurePainter {
public:
    FigurePainter(const PixelSurface& surface, const Pen& pen, const Brush& brush, int rasterMode);

    /// One line, its end left out; a wide line has round ends. `at` moves on to `to`.
    void LineTo(PathPosition& at, DevicePoint to) const;
    /// Whether `Lines` may be called by several threads for the same pixels: it is all one which line is drawn first.
    bool MayShareLines() const { return stroke.IsThinSolid() && rasterMode == RasterMode::CopyPen; }
    /// The steps of `DeviceContext::Lines`, beginning at `at`, which moves on to the last point named.
    void Lines(PathPosition& at, std::span<const DevicePoint> points, std::span<const std::int32_t> steps) const;
    void Polyline(std::span<const DevicePoint> points) const;
    /// One figure of several rings.
    void PolyPolygon(std::span<const DevicePoint> points, std::span<const int> counts) const;
    /// Figures of one ring each. What pixels they have given their ink is remembered, once that saves work: nobody else
    /// may draw on the surface from the first call to the last.
    void Polygons(std::span<const DevicePoint> points, std::span<const int> counts);
    /// The brush alone; left not above right, top not above bottom.
    void FillRect(const DeviceRect& rect) const;
    void Rectangles(std::span<const DeviceRect> rects) const;
    /// Their outlines have no dashes.
    void Ellipses(std::span<const DeviceRect> rects) const;

private:
    bool hasPen() const { return stroke.IsVisible(); }
    /// Whether pen and brush give each pixel the same, so that they need not be told apart.
    bool isOneInk() const { return hasPen() && !brush.Hollow && penInk.Pixel == brushInk.Pixel && !brushInk.Pattern; }
    void ring(std::span<const DevicePoint> points) const;
    void polygon(std::span<const DevicePoint> points);
    bool areRowsFar(std::span<const DevicePoint> points) const;
    bool remembersInk(const PixelSurface& touched);
    void openPolygon(const PixelSurface& open, std::span<const DevicePoint> points);
    bool isTiny(const FigureBounds& bounds) const;
    void tinyPolygon(std::span<const DevicePoint> points, const FigureBounds& bounds) const;
    void smallPolygon(std::span<const DevicePoint> points, const FigureBounds& bounds) const;
    void rectangle(const DeviceRect& rect) const;
    bool isFar(const DeviceRect& rect) const;
    void fillRow(int y, std::int64_t left, const RoundShapes::RimmedRow& row) const;
    PixelSurface touchedPart(const FigureBounds& bounds) const;
    template<class Draw>
    void asOneFigure(const PixelSurface& part, const Draw& draw) const;

    /// Width and height of what counts as a small polygon: a row of it fits the bits of a number.
    static constexpr int smallSize = 32;

    PixelSurface surface;
    Pen pen;
    Brush brush;
    int rasterMode;
    Stroke stroke;
    Ink penInk;
    Ink brushInk;
    /// What polygons of one ink that are not small have drawn, once they are many.
    struct Remembered {
        InkedPixels Inked;
        FigureBits Figure; ///< the one that is being drawn
        explicit Remembered(const PixelSurface& surface) : Inked(surface), Figure(surface) {}
    };
    std::int64_t touchedPixels = 0; ///< by such polygons so far
    std::optional<Remembered> remembered;
};
