// A device over a QPainter for vector output: printers and PDF. It never makes a raster image; for pictures in memory
// there is another device.
#pragma once

#include "platform/device/DeviceState.h"
#include "platform/device/VectorText.h"

#include <QBrush>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>
#include <functional>
#include <optional>
#include <vector>

/// One painter unit is one device unit. A filled area is [left, right) x [top, bottom) exactly; lines run through the
/// middle of their units, so that fills and lines meet as they do in a picture of pixels. A thin pen is one unit wide.
///
/// The painter belongs to the caller, must be active, and must outlive the device: runs of lines are held back, to be
/// written as one path, until something else is drawn or the device goes. The painter then is as it was found.
///
/// Raster modes do not exist in vector output: `SetRop2` is accepted and every mode draws as `CopyPen`. A clip sets
/// aside the painter's own.
class PainterDevice final : public StatefulDevice {
public:
    /// With a sheet, the painter's origin is the sheet's corner.
    PainterDevice(QPainter& activePainter, const DeviceMeasures& given);
    ~PainterDevice() override;
    /// Draws what has been collected and leaves the painter as it was found; nothing may be drawn afterwards. The
    /// device does it by itself when it goes, but can't tell then that there was no memory.
    void Finish();
    PainterDevice(const PainterDevice&) = delete;
    PainterDevice& operator=(const PainterDevice&) = delete;

    void LineTo(DevicePoint point) override;
    void Polyline(std::span<const DevicePoint> points) override;
    void Polygon(std::span<const DevicePoint> points) override;
    void PolyPolygon(std::span<const DevicePoint> points, std::span<const int> counts) override;
    void Rectangle(const DeviceRect& rect) override;
    void Ellipse(const DeviceRect& rect) override;
    void FillRect(const DeviceRect& rect, const Brush& brush) override;
    void DrawPicture(const DeviceRect& target, const QImage& picture) override;

    /// Control characters are written as blanks.
    void Text(DevicePoint leftTop, const QString& text) override;
    DeviceSize MeasureText(const QString& text) const override;

private:
    void addLine(DevicePoint from, DevicePoint to);
    void flushLines();
    void startFigure();
    void enterClip();
    const QPen& outlinePen();
    const VectorText& font() const;

    QPainter& painter;
    std::optional<DeviceRect> enteredClip; ///< the painter's
    Kept<Pen, QPen> keptPen;
    Kept<Brush, QBrush> keptBrush;
    mutable Kept<Font, VectorText> keptText;
    QPainterPath lines; ///< held back, to be drawn in `linesPen` under `enteredClip`
    Pen linesPen;
    DevicePoint linesEnd;
    QPolygonF corners; ///< kept for its memory
    bool finished = false;
};
