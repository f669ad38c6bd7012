#include "platform/PainterDevice.h"

#include "platform/DashPattern.h"
#include "platform/Fonts.h"
#include "platform/Rings.h"

#include <QFontMetricsF>
#include <utility>

namespace {
/// Bounds the memory that held back lines take, and the length of a path that a viewer must take in at once.
constexpr int longestPath = 20000;

QColor qColor(Colour colour) {
    return QColor(redOf(colour), greenOf(colour), blueOf(colour));
}

QPointF qPoint(DevicePoint point) {
    return QPointF(point.X, point.Y);
}

QPen qPen(const Pen& pen) {
    if (pen.Style == PenStyle::Null)
        return QPen(Qt::NoPen);
    const int width = std::max(1, pen.Width);
    const bool wide = width > 1;
    const Qt::PenJoinStyle join = pen.Geometric && pen.BevelJoin ? Qt::BevelJoin : Qt::RoundJoin;
    QPen result(qColor(pen.Color), width, Qt::SolidLine, Qt::RoundCap, join);
    if (wide && !pen.Geometric)
        return result;
    QList<qreal> pattern;
    for (const int length : dashPattern(pen.Style, wide)) {
        // Round ends lie within a wide line's dash, but Qt puts them on it, and drops a dash of no length.
        const bool gap = pattern.size() % 2 != 0;
        pattern += !wide ? length : gap ? length + 1 : std::max(length - 1.0, 0.01);
    }
    if (pattern.isEmpty())
        return result;
    if (!wide)
        result.setCapStyle(Qt::FlatCap);
    result.setDashPattern(pattern);
    return result;
}

QBrush qBrush(const Brush& brush) {
    constexpr Qt::BrushStyle hatches[] = {Qt::HorPattern,   Qt::VerPattern,   Qt::FDiagPattern,
                                          Qt::BDiagPattern, Qt::CrossPattern, Qt::DiagCrossPattern};
    if (brush.Hollow)
        return QBrush(Qt::NoBrush);
    const bool hatched = brush.Hatch >= 0 && brush.Hatch < int(std::size(hatches));
    return QBrush(qColor(brush.Color), hatched ? hatches[brush.Hatch] : Qt::SolidPattern);
}

/// As a rectangle of the shifted painter, in which an area begins half a unit before its first unit's middle.
QRectF areaOf(const DeviceRect& rect) {
    return QRectF(QPointF(rect.Left - 0.5, rect.Top - 0.5), QPointF(rect.Right - 0.5, rect.Bottom - 0.5));
}
} // namespace

QString PainterDevice::Printable(QString text) {
    for (QChar& c : text)
        if (c < u' ' || c == QChar(0x7f) || c >= QChar(0xfffe))
            c = u' ';
    return text;
}

PainterDevice::PainterDevice(QPainter& painter, int width, int height, int dotsPerInchX, int dotsPerInchY)
    : m_painter(painter), m_measures{width, height, std::max(1, dotsPerInchX), std::max(1, dotsPerInchY)} {
    m_painter.save();
    m_painter.translate(0.5, 0.5);
    SelectPen(stockPen(Stock::BlackPen));
    SelectBrush(stockBrush(Stock::WhiteBrush));
    SelectFont(stockFont(Stock::SystemFont, m_measures.DotsPerInchY));
}

PainterDevice::~PainterDevice() {
    flushLines();
    m_painter.restore();
}

void PainterDevice::SaveDC() {
    m_saved.push_back(m_state);
}

void PainterDevice::RestoreDC() {
    if (m_saved.empty())
        return;
    const State before = std::exchange(m_state, m_saved.back());
    m_saved.pop_back();
    m_pen = qPen(m_state.CurrentPen);
    m_brush = qBrush(m_state.CurrentBrush);
    if (before.Clip != m_state.Clip)
        applyClip();
}

Pen PainterDevice::SelectPen(const Pen& pen) {
    m_pen = qPen(pen);
    return std::exchange(m_state.CurrentPen, pen);
}

Brush PainterDevice::SelectBrush(const Brush& brush) {
    m_brush = qBrush(brush);
    return std::exchange(m_state.CurrentBrush, brush);
}

Font PainterDevice::SelectFont(const Font& font) {
    return std::exchange(m_state.CurrentFont, font);
}

void PainterDevice::SetTextColor(Colour colour) {
    m_state.TextColor = colour;
}

void PainterDevice::ClipRect(const DeviceRect& rect) {
    m_state.Clip = rect;
    applyClip();
}

void PainterDevice::ClipNone() {
    m_state.Clip.reset();
    applyClip();
}

void PainterDevice::applyClip() {
    flushLines();
    if (m_state.Clip)
        m_painter.setClipRect(areaOf(*m_state.Clip));
    else
        m_painter.setClipping(false);
}

void PainterDevice::MoveTo(DevicePoint point) {
    m_state.Position = point;
}

void PainterDevice::LineTo(DevicePoint point) {
    addLine(std::exchange(m_state.Position, point), point);
}

void PainterDevice::Polyline(std::span<const DevicePoint> points) {
    for (std::size_t i = 1; i < points.size(); ++i)
        addLine(points[i - 1], points[i]);
}

void PainterDevice::addLine(DevicePoint from, DevicePoint to) {
    // A line leaves out its end, so one without length is nothing; a round end would make it a dot.
    if (from == to || m_state.CurrentPen.Style == PenStyle::Null)
        return;
    if (m_lines.elementCount() >= longestPath || m_linesPen != m_state.CurrentPen)
        flushLines();
    if (m_lines.isEmpty() || m_linesEnd != from)
        m_lines.moveTo(qPoint(from));
    m_lines.lineTo(qPoint(to));
    m_linesPen = m_state.CurrentPen;
    m_linesEnd = to;
}

void PainterDevice::flushLines() {
    if (m_lines.isEmpty())
        return;
    m_painter.setPen(qPen(m_linesPen));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawPath(m_lines);
    m_lines.clear();
}

void PainterDevice::startFigure() {
    flushLines();
    m_painter.setPen(m_pen);
    m_painter.setBrush(m_brush);
}

void PainterDevice::Polygon(std::span<const DevicePoint> points) {
    if (points.size() < 2)
        return;
    startFigure();
    m_corners.clear();
    for (const DevicePoint& point : points)
        m_corners += qPoint(point);
    m_painter.drawPolygon(m_corners, Qt::OddEvenFill);
}

void PainterDevice::PolyPolygon(std::span<const DevicePoint> points, std::span<const int> counts) {
    QPainterPath rings;
    rings.setFillRule(Qt::OddEvenFill);
    forEachRing(points, counts, [&](std::span<const DevicePoint> ring) {
        if (ring.size() < 2)
            return;
        rings.moveTo(qPoint(ring.front()));
        for (const DevicePoint& point : ring.subspan(1))
            rings.lineTo(qPoint(point));
        rings.closeSubpath();
    });
    if (rings.isEmpty())
        return;
    startFigure();
    m_painter.drawPath(rings);
}

std::optional<QRectF> PainterDevice::figureBounds(const DeviceRect& rect) const {
    // The outline runs through the middle of the first and the last unit; without a pen one unit more is left out.
    const bool hasPen = m_state.CurrentPen.Style != PenStyle::Null;
    const QRectF area = areaOf(rect).normalized();
    const QRectF bounds = hasPen ? area.adjusted(0.5, 0.5, -0.5, -0.5) : area.adjusted(0, 0, -1, -1);
    const bool drawn = hasPen ? bounds.width() >= 0 && bounds.height() >= 0 : bounds.isValid();
    return drawn ? std::optional(bounds) : std::nullopt;
}

void PainterDevice::Rectangle(const DeviceRect& rect) {
    const std::optional<QRectF> bounds = figureBounds(rect);
    if (!bounds)
        return;
    startFigure();
    m_painter.drawRect(*bounds);
}

void PainterDevice::Ellipse(const DeviceRect& rect) {
    const std::optional<QRectF> bounds = figureBounds(rect);
    if (!bounds)
        return;
    startFigure();
    m_painter.drawEllipse(*bounds);
}

void PainterDevice::FillRect(const DeviceRect& rect, const Brush& brush) {
    const QRectF area = areaOf(rect);
    if (!area.isValid())
        return;
    flushLines();
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(qBrush(brush));
    m_painter.drawRect(area);
}

void PainterDevice::DrawPicture(const DeviceRect& target, const QImage& picture) {
    const QRectF area = areaOf(target).normalized();
    if (!area.isValid())
        return;
    flushLines();
    const bool lossless = m_painter.testRenderHint(QPainter::LosslessImageRendering);
    m_painter.setRenderHint(QPainter::LosslessImageRendering);
    m_painter.drawImage(area, picture);
    m_painter.setRenderHint(QPainter::LosslessImageRendering, lossless);
}

void PainterDevice::Text(DevicePoint leftTop, const QString& text) {
    if (text.isEmpty())
        return;
    flushLines();
    const QFont font = Fonts::ToQFont(m_state.CurrentFont);
    const qreal ascent = QFontMetricsF(font, m_painter.device()).ascent();
    const QPointF corner = qPoint(leftTop) - QPointF(0.5, 0.5);
    m_painter.setFont(font);
    m_painter.setPen(qColor(m_state.TextColor));
    if (m_state.CurrentFont.Escapement == 0) {
        m_painter.drawText(corner + QPointF(0, ascent), Printable(text));
        return;
    }
    const QTransform upright = m_painter.transform();
    m_painter.translate(corner);
    m_painter.rotate(-m_state.CurrentFont.Escapement / 10.0);
    m_painter.drawText(QPointF(0, ascent), Printable(text));
    m_painter.setTransform(upright);
}

DeviceSize PainterDevice::MeasureText(const QString& text) const {
    const QFontMetricsF metrics(Fonts::ToQFont(m_state.CurrentFont), m_painter.device());
    return {qRound(metrics.horizontalAdvance(Printable(text))), qRound(metrics.ascent() + metrics.descent())};
}
