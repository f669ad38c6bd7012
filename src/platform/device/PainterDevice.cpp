#include "platform/device/PainterDevice.h"

#include "platform/device/Fonts.h"
#include "platform/device/Rings.h"
#include "platform/device/VectorRules.h"

#include <QFontMetricsF>
#include <utility>

using namespace VectorRules;

namespace {
/// Bounds the memory that held back lines take, and the length of a path that a viewer must take in at once.
constexpr int longestPath = 20000;

QColor qColor(ColorRef color) {
    return QColor(redOf(color), greenOf(color), blueOf(color));
}

QPointF qPoint(DevicePoint point) {
    return QPointF(point.X, point.Y);
}

QPen qPen(const Pen& pen) {
    if (pen.Style == PenStyle::Null)
        return QPen(Qt::NoPen);
    const int width = std::max(1, pen.Width);
    const Qt::PenJoinStyle join = pen.Geometric && pen.BevelJoin ? Qt::BevelJoin : Qt::RoundJoin;
    QPen result(qColor(pen.Color), width, Qt::SolidLine, Qt::RoundCap, join);
    const std::vector<double> dashes = DashesOf(pen);
    if (dashes.empty())
        return result;
    if (width == 1)
        result.setCapStyle(Qt::FlatCap);
    result.setDashPattern({dashes.begin(), dashes.end()});
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

} // namespace

PainterDevice::PainterDevice(QPainter& activePainter, int width, int height, int dotsPerInchX, int dotsPerInchY)
    : painter(activePainter), measures{width, height, std::max(1, dotsPerInchX), std::max(1, dotsPerInchY)} {
    painter.save();
    painter.translate(0.5, 0.5);
    SelectPen(stockPen(Stock::BlackPen));
    SelectBrush(stockBrush(Stock::WhiteBrush));
    SelectFont(stockFont(Stock::SystemFont, measures.DotsPerInchY));
}

PainterDevice::~PainterDevice() {
    flushLines();
    painter.restore();
}

void PainterDevice::SaveDC() {
    saved.push_back(state);
}

void PainterDevice::RestoreDC() {
    if (saved.empty())
        return;
    const State before = std::exchange(state, saved.back());
    saved.pop_back();
    outlinePen = qPen(state.CurrentPen);
    areaBrush = qBrush(state.CurrentBrush);
    if (before.Clip != state.Clip)
        applyClip();
}

Pen PainterDevice::SelectPen(const Pen& pen) {
    outlinePen = qPen(pen);
    return std::exchange(state.CurrentPen, pen);
}

Brush PainterDevice::SelectBrush(const Brush& brush) {
    areaBrush = qBrush(brush);
    return std::exchange(state.CurrentBrush, brush);
}

Font PainterDevice::SelectFont(const Font& font) {
    return std::exchange(state.CurrentFont, font);
}

void PainterDevice::SetTextColor(ColorRef color) {
    state.TextColor = color;
}

void PainterDevice::ClipRect(const DeviceRect& rect) {
    state.Clip = rect;
    applyClip();
}

void PainterDevice::ClipNone() {
    state.Clip.reset();
    applyClip();
}

void PainterDevice::applyClip() {
    flushLines();
    if (state.Clip)
        painter.setClipRect(AreaOf(*state.Clip));
    else
        painter.setClipping(false);
}

void PainterDevice::MoveTo(DevicePoint point) {
    state.Position = point;
}

void PainterDevice::LineTo(DevicePoint point) {
    addLine(std::exchange(state.Position, point), point);
}

void PainterDevice::Polyline(std::span<const DevicePoint> points) {
    for (std::size_t i = 1; i < points.size(); ++i)
        addLine(points[i - 1], points[i]);
}

void PainterDevice::addLine(DevicePoint from, DevicePoint to) {
    // A line leaves out its end, so one without length is nothing; a round end would make it a dot.
    if (from == to || state.CurrentPen.Style == PenStyle::Null)
        return;
    if (lines.elementCount() >= longestPath || linesPen != state.CurrentPen)
        flushLines();
    if (lines.isEmpty() || linesEnd != from)
        lines.moveTo(qPoint(from));
    lines.lineTo(qPoint(to));
    linesPen = state.CurrentPen;
    linesEnd = to;
}

void PainterDevice::flushLines() {
    if (lines.isEmpty())
        return;
    painter.setPen(qPen(linesPen));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(lines);
    lines.clear();
}

void PainterDevice::startFigure() {
    flushLines();
    painter.setPen(outlinePen);
    painter.setBrush(areaBrush);
}

void PainterDevice::Polygon(std::span<const DevicePoint> points) {
    if (points.size() < 2)
        return;
    startFigure();
    corners.clear();
    for (const DevicePoint& point : points)
        corners += qPoint(point);
    painter.drawPolygon(corners, Qt::OddEvenFill);
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
    painter.drawPath(rings);
}

void PainterDevice::Rectangle(const DeviceRect& rect) {
    const std::optional<QRectF> bounds = FigureBounds(rect, state.CurrentPen);
    if (!bounds)
        return;
    startFigure();
    painter.drawRect(*bounds);
}

void PainterDevice::Ellipse(const DeviceRect& rect) {
    const std::optional<QRectF> bounds = FigureBounds(rect, state.CurrentPen);
    if (!bounds)
        return;
    startFigure();
    painter.drawEllipse(*bounds);
}

void PainterDevice::FillRect(const DeviceRect& rect, const Brush& brush) {
    const QRectF area = AreaOf(rect);
    if (!area.isValid())
        return;
    flushLines();
    painter.setPen(Qt::NoPen);
    painter.setBrush(qBrush(brush));
    painter.drawRect(area);
}

void PainterDevice::DrawPicture(const DeviceRect& target, const QImage& picture) {
    const QRectF area = AreaOf(target);
    if (!area.isValid())
        return;
    flushLines();
    const bool lossless = painter.testRenderHint(QPainter::LosslessImageRendering);
    painter.setRenderHint(QPainter::LosslessImageRendering);
    painter.drawImage(area, picture);
    painter.setRenderHint(QPainter::LosslessImageRendering, lossless);
}

void PainterDevice::Text(DevicePoint leftTop, const QString& text) {
    if (text.isEmpty())
        return;
    flushLines();
    const QFont font = Fonts::ToQFont(state.CurrentFont);
    const qreal ascent = QFontMetricsF(font, painter.device()).ascent();
    const QPointF corner = qPoint(leftTop) - QPointF(0.5, 0.5);
    painter.setFont(font);
    painter.setPen(qColor(state.TextColor));
    if (state.CurrentFont.Escapement == 0) {
        painter.drawText(corner + QPointF(0, ascent), Printable(text));
        return;
    }
    const QTransform upright = painter.transform();
    painter.translate(corner);
    painter.rotate(-state.CurrentFont.Escapement / 10.0);
    painter.drawText(QPointF(0, ascent), Printable(text));
    painter.setTransform(upright);
}

DeviceSize PainterDevice::MeasureText(const QString& text) const {
    const QFontMetricsF metrics(Fonts::ToQFont(state.CurrentFont), painter.device());
    return {qRound(metrics.horizontalAdvance(Printable(text))), qRound(metrics.ascent() + metrics.descent())};
}
