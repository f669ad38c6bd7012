#include "platform/device/VectorText.h"

#include "platform/device/Fonts.h"
#include "platform/device/VectorRules.h"

#include <QFontDatabase>
#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>
#include <QTextLayout>
#include <algorithm>

namespace {
bool hasBoldLetters(const QString& family) {
    const QStringList styles = QFontDatabase::styles(family);
    return std::ranges::any_of(styles, [&](const QString& style) { return QFontDatabase::bold(family, style); });
}
} // namespace

VectorText::VectorText(const Font& font, QPaintDevice* on)
    : face(Fonts::ToQFont(font)), metrics(on ? QFontMetricsF(face, on) : QFontMetricsF(face)) {}

DeviceSize VectorText::Measure(const QString& text) const {
    Fonts::LeaveRoomFor(text);
    return {qRound(metrics.horizontalAdvance(VectorRules::Printable(text))),
            qRound(metrics.ascent() + metrics.descent())};
}

/// `drawLine` takes the left end of the base line.
template<class DrawLine>
void VectorText::draw(QPainter& painter, QPointF leftTop, int escapement, ColorRef color,
                      const DrawLine& drawLine) const {
    painter.setFont(face);
    painter.setPen(QColor(redOf(color), greenOf(color), blueOf(color)));
    const QPointF onBaseLine(0, metrics.ascent());
    if (escapement == 0) {
        drawLine(leftTop + onBaseLine);
        return;
    }
    const QTransform upright = painter.transform();
    painter.translate(leftTop);
    painter.rotate(-escapement / 10.0);
    drawLine(onBaseLine);
    painter.setTransform(upright);
}

void VectorText::Draw(QPainter& painter, QPointF leftTop, int escapement, ColorRef color, const QString& text) const {
    Fonts::LeaveRoomFor(text);
    draw(painter, leftTop, escapement, color, [&](QPointF at) { painter.drawText(at, VectorRules::Printable(text)); });
}

void VectorText::DrawAsPrinted(QPainter& painter, QPointF leftTop, int escapement, ColorRef color,
                               const QString& text) const {
    Fonts::LeaveRoomFor(text);
    // A PDF makes a letter bold by writing it once more, this part of its size to the right.
    const QPointF boldness(face.pixelSize() * 0.0254, 0);
    QTextLayout layout(VectorRules::Printable(text), face);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    draw(painter, leftTop, escapement, color, [&](QPointF at) {
        for (const QGlyphRun& run : line.glyphRuns()) {
            const QPointF corner = at - QPointF(0, line.ascent());
            painter.drawGlyphRun(corner, run);
            if (face.bold() && !hasBoldLetters(run.rawFont().familyName()))
                painter.drawGlyphRun(corner + boldness, run);
        }
    });
}
