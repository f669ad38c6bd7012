// A device over a QPainter for vector output: printers, PDF and SVG. It never makes a raster image; for pictures in
// memory there is another device.
#pragma once

#include "platform/DeviceMeasures.h"

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
/// aside the painter's own; Qt's SVG generator (6.4) knows no clips and draws all.
class PainterDevice final : public DeviceContext {
public:
    PainterDevice(QPainter& painter, int width, int height, int dotsPerInchX, int dotsPerInchY);
    ~PainterDevice() override;
    PainterDevice(const PainterDevice&) = delete;
    PainterDevice& operator=(const PainterDevice&) = delete;

    void SaveDC() override;
    void RestoreDC() override;
    Pen SelectPen(const Pen& pen) override;
    Brush SelectBrush(const Brush& brush) override;
    Font SelectFont(const Font& font) override;
    void SetTextColor(Colour colour) override;
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

    /// `text` with blanks for what XML does not have, control characters above all, and for line breaks, which mean
    /// nothing in a line of text. `Text` and `MeasureText` take every text so.
    static QString Printable(QString text);
    void Text(DevicePoint leftTop, const QString& text) override;
    DeviceSize MeasureText(const QString& text) const override;
    int GetDeviceCaps(DeviceCaps caps) const override { return m_measures.Get(caps); }

private:
    struct State {
        Pen CurrentPen;
        Brush CurrentBrush;
        Font CurrentFont;
        Colour TextColor = 0;
        DevicePoint Position;
        std::optional<DeviceRect> Clip;
    };

    void addLine(DevicePoint from, DevicePoint to);
    void flushLines();
    void startFigure();
    void applyClip();
    std::optional<QRectF> figureBounds(const DeviceRect& rect) const;

    QPainter& m_painter;
    DeviceMeasures m_measures;
    State m_state;
    std::vector<State> m_saved;
    QPen m_pen;           ///< of `m_state.CurrentPen`
    QBrush m_brush;       ///< of `m_state.CurrentBrush`
    QPainterPath m_lines; ///< held back, to be drawn in `m_linesPen`
    Pen m_linesPen;
    DevicePoint m_linesEnd;
    QPolygonF m_corners; ///< kept for its memory
};
