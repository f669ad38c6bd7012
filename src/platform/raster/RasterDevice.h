// The drawing device for a picture in memory: the screen's picture, a film frame, a PNG. Lines and areas are its own,
// exact to the pixel and the same for any clip and any number of threads; text is Qt's, numbers out of a cache of
// glyphs.
#pragma once

#include "platform/device/DeviceState.h"
#include "platform/device/DrawingStopped.h"
#include "platform/raster/FigurePainter.h"
#include "platform/raster/GlyphCache.h"

#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <optional>
#include <vector>

/// Draws into the caller's image of format RGB32 or ARGB32_Premultiplied and device pixel ratio 1; any other image
/// stays as it is. Drawn pixels are opaque. The image must outlive the device and may be read between calls, but not be
/// replaced. Raster modes hold for lines and areas; text and `FillRect` always cover. The gaps of hatch patterns and
/// dash styles are transparent. `Polyline` neither uses nor moves the current position.
class RasterDevice : public StatefulDevice {
public:
    /// `threadLimit`: threads that a batch may use, 0 for one a core.
    RasterDevice(QImage& picture, int dotsPerInch, int threadLimit = 0);

    void LineTo(DevicePoint point) override;
    void Polyline(std::span<const DevicePoint> points) override;
    void Polygon(std::span<const DevicePoint> points) override;
    void PolyPolygon(std::span<const DevicePoint> points, std::span<const int> counts) override;
    void Rectangle(const DeviceRect& rect) override;
    void Ellipse(const DeviceRect& rect) override;
    void FillRect(const DeviceRect& rect, const Brush& brush) override;
    void DrawPicture(const DeviceRect& target, const QImage& picture) override;
    void Lines(std::span<const DevicePoint> points, std::span<const std::int32_t> steps) override;
    void LinePieces(std::span<const DevicePoint> points, int pieces, const CollectLines& collect) override;
    void Polygons(std::span<const DevicePoint> points, std::span<const int> counts) override;
    void Rectangles(std::span<const DeviceRect> rects) override;
    void Ellipses(std::span<const DeviceRect> rects) override;
    std::unique_ptr<RankedLayer> Ranked() override;

    void Text(DevicePoint leftTop, const QString& text) override;
    DeviceSize MeasureText(const QString& text) const override;

private:
    struct TextTools {
        QFont Face;
        QFontMetrics Metrics;
        std::optional<GlyphCache> Glyphs; ///< made for the first number
    };

    PixelSurface surface();
    FigurePainter figures() { return figuresOn(surface()); }
    FigurePainter figuresOn(const PixelSurface& part) const;
    template<class RowOf>
    std::vector<PixelSurface> bands(std::size_t count, std::size_t workSize, const RowOf& rowOf);
    template<class Item, class Draw>
    void drawShared(std::span<const Item> items, const Draw& draw);
    void closeText();
    TextTools& textTools() const;
    GlyphCache* glyphsFor(const QString& text) const;
    bool mayShow(DevicePoint leftTop, const QString& text) const;

    QImage& image;
    int threads;
    QPainter textPainter;       ///< open from one text to the next pixel call
    DeviceRect textPainterClip; ///< while it is open
    mutable Kept<Font, TextTools> keptText;
};
