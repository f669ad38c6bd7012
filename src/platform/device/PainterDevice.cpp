#include "platform/device/PainterDevice.h"

#include "platform/base/Lists.h"
#include "platform/device/DrawingStopped.h"
#include "platform/device/Rings.h"
#include "platform/device/VectorRules.h"

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
    const Qt::PenJoinStyle join = HasMitres(pen)                   ? Qt::MiterJoin
                                  : pen.Geometric && pen.BevelJoin ? Qt::BevelJoin
                                                                   : Qt::RoundJoin;
    QPen result(qColor(pen.Color), width, Qt::SolidLine, Qt::RoundCap, join);
    result.setMiterLimit(MitreLimit);
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

/// What a path that grows takes at most. It does not look whether it got it.
constexpr std::size_t bytesAPoint = 100;

} // namespace

PainterDevice::PainterDevice(QPainter& activePainter, const DeviceMeasures& given)
    : StatefulDevice(given), painter(activePainter) {
    painter.save();
    painter.translate(given.OffsetX + 0.5, given.OffsetY + 0.5);
}

PainterDevice::~PainterDevice() {
    try {
        Finish();
    } catch (const std::bad_alloc&) {
        // Most likely another such exception is on its way, and two of them would end the program.
    }
}

void PainterDevice::Finish() {
    if (std::exchange(finished, true))
        return;
    flushLines();
    painter.restore();
}

void PainterDevice::enterClip() {
    if (enteredClip == state.Clip)
        return;
    enteredClip = state.Clip;
    if (enteredClip)
        painter.setClipRect(AreaOf(*enteredClip));
    else
        painter.setClipping(false);
}

const QPen& PainterDevice::outlinePen() {
    return keptPen.For(state.LinePen, [this] { return qPen(state.LinePen); });
}

const VectorText& PainterDevice::font() const {
    return keptText.For(state.TextFont, [this] { return VectorText(state.TextFont, painter.device()); });
}

void PainterDevice::LineTo(DevicePoint point) {
    addLine(std::exchange(state.Position.Point, point), point);
}

void PainterDevice::Polyline(std::span<const DevicePoint> points) {
    for (std::size_t i = 1; i < points.size(); ++i)
        addLine(points[i - 1], points[i]);
}

void PainterDevice::addLine(DevicePoint from, DevicePoint to) {
    // A line leaves out its end, so one without length is nothing; a round end would make it a dot.
    if (from == to || state.LinePen.Style == PenStyle::Null)
        return;
    if (lines.elementCount() >= longestPath)
        stopIfAsked();
    if (lines.elementCount() >= longestPath || linesPen != state.LinePen || enteredClip != state.Clip)
        flushLines();
    if (lines.isEmpty()) {
        enterClip();
        requireMemory(bytesAPoint * longestPath);
    }
    if (lines.isEmpty() || linesEnd != from)
        lines.moveTo(qPoint(from));
    lines.lineTo(qPoint(to));
    linesPen = state.LinePen;
    linesEnd = to;
}

void PainterDevice::flushLines() {
    if (lines.isEmpty())
        return;
    painter.setPen(keptPen.For(linesPen, [this] { return qPen(linesPen); }));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(lines);
    lines.clear();
}

void PainterDevice::startFigure() {
    stopIfAsked();
    flushLines();
    enterClip();
    painter.setPen(outlinePen());
    painter.setBrush(keptBrush.For(state.AreaBrush, [this] { return qBrush(state.AreaBrush); }));
}

void PainterDevice::Polygon(std::span<const DevicePoint> points) {
    if (points.size() < 2)
        return;
    startFigure();
    requireMemory(bytesAPoint * points.size());
    corners.clear();
    for (const DevicePoint& point : points)
        corners += qPoint(point);
    painter.drawPolygon(corners, Qt::OddEvenFill);
}

void PainterDevice::PolyPolygon(std::span<const DevicePoint> points, std::span<const int> counts) {
    requireMemory(bytesAPoint * points.size());
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
    const std::optional<QRectF> bounds = FigureBounds(rect, state.LinePen);
    if (!bounds)
        return;
    startFigure();
    painter.drawRect(*bounds);
}

void PainterDevice::Ellipse(const DeviceRect& rect) {
    const std::optional<QRectF> bounds = FigureBounds(rect, state.LinePen);
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
    enterClip();
    painter.setPen(Qt::NoPen);
    painter.setBrush(qBrush(brush));
    painter.drawRect(area);
}

void PainterDevice::DrawPicture(const DeviceRect& target, const QImage& picture) {
    const QRectF area = AreaOf(target);
    if (!area.isValid())
        return;
    flushLines();
    enterClip();
    const bool lossless = painter.testRenderHint(QPainter::LosslessImageRendering);
    painter.setRenderHint(QPainter::LosslessImageRendering);
    painter.drawImage(area, picture);
    painter.setRenderHint(QPainter::LosslessImageRendering, lossless);
}

void PainterDevice::Text(DevicePoint leftTop, const QString& text) {
    if (text.isEmpty())
        return;
    flushLines();
    enterClip();
    const QPointF corner = qPoint(leftTop) - QPointF(0.5, 0.5);
    font().Draw(painter, corner, state.TextFont.Escapement, state.TextColor, text);
}

DeviceSize PainterDevice::MeasureText(const QString& text) const {
    return font().Measure(text);
}
