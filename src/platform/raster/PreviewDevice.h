// A printer's sheet as a picture: takes what is drawn in the printer's units and with its measures, and draws it as
// large as the sheet is there. Texts end where they end in print; figures are those of RasterDevice.
#pragma once

#include "platform/device/VectorText.h"
#include "platform/raster/RasterDevice.h"

/// The picture is the whole sheet, whatever the printer can reach of it, and is drawn into as by `RasterDevice`. Lines
/// are at least one pixel wide.
class PreviewDevice final : public StatefulDevice {
public:
    PreviewDevice(QImage& picture, const DeviceMeasures& printer);

    /// As `GoesOn` of the device that it draws with.
    void SetGoesOn(std::function<bool()> goesOn) { target.GoesOn = std::move(goesOn); }

    void SaveDC() override;
    void RestoreDC() override;
    Pen SelectPen(const Pen& pen) override;
    Brush SelectBrush(const Brush& brush) override;
    void SetRop2(int mode) override;
    void ClipRect(const DeviceRect& rect) override;
    void ClipNone() override;

    void MoveTo(DevicePoint point) override;
    void LineTo(DevicePoint point) override;
    void Polyline(std::span<const DevicePoint> points) override;
    void Polygon(std::span<const DevicePoint> points) override;
    void PolyPolygon(std::span<const DevicePoint> points, std::span<const int> counts) override;
    void Rectangle(const DeviceRect& rect) override;
    void Ellipse(const DeviceRect& rect) override;
    void FillRect(const DeviceRect& rect, const Brush& brush) override;
    void DrawPicture(const DeviceRect& area, const QImage& shown) override;
    void Lines(std::span<const DevicePoint> points, std::span<const std::int32_t> steps) override;
    void Polygons(std::span<const DevicePoint> points, std::span<const int> counts) override;

    void Text(DevicePoint leftTop, const QString& text) override;
    DeviceSize MeasureText(const QString& text) const override;

private:
    RasterDevice& figures();
    DevicePoint pixelAt(DevicePoint point) const;
    DeviceRect pixelsOf(const DeviceRect& rect) const;
    std::span<const DevicePoint> pixelsOf(std::span<const DevicePoint> points);
    const VectorText& font() const;

    QImage& picture;
    RasterDevice target;
    double scaleX, scaleY;           ///< pixels a unit
    QPainter textPainter;            ///< open from one text to the next figure
    std::vector<DevicePoint> mapped; ///< kept for its memory
    mutable Kept<Font, VectorText> keptText;
};
