// A device over a QPainter for vector output: printers and PDF. It never makes a raster image; for pictures in memory
// there is another device.
#pragma once

#include "platform/device/DeviceMeasures.h"

#include <QBrush>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>
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
class PainterDevice final : public DeviceContext {
public:
    PainterDevice(QPainter& activePainter, int width, int height, int dotsPerInchX, int dotsPerInchY);
    ~PainterDevice() override;
    PainterDevice(const PainterDevice&) = delete;
    PainterDevice& operator=(const PainterDevice&) = delete;

    void SaveDC() override;
    void RestoreDC() override;
    Pen SelectPen(const Pen& pen) override;
    Brush SelectBrush(const Brush& brush) override;
    Font SelectFont(const Font& font) override;
    void SetTextColor(ColorRef color) override;
    void SetRop2(int) override {}
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
    void DrawPicture(const DeviceRect& target, const QImage& picture) override;

    /// Control characters are written as blanks.
    void Text(DevicePoint leftTop, const QString& text) override;
    DeviceSize MeasureText(const QString& text) const override;
    int GetDeviceCaps(DeviceCaps caps) const override { return measures.Get(caps); }

private:
    struct State {
        Pen CurrentPen;
        Brush CurrentBrush;
        Font CurrentFont;
        ColorRef TextColor = 0;
        DevicePoint Position;
        std::optional<DeviceRect> Clip;
    };

    void addLine(DevicePoint from, DevicePoint to);
    void flushLines();
    void startFigure();
    void applyClip();

    QPainter& painter;
    DeviceMeasures measures;
    State state;
    std::vector<State> saved;
    QPen outlinePen;    ///< of `state.CurrentPen`
    QBrush areaBrush;   ///< of `state.CurrentBrush`
    QPainterPath lines; ///< held back, to be drawn in `linesPen`
    Pen linesPen;
    DevicePoint linesEnd;
    QPolygonF corners; ///< kept for its memory
};
