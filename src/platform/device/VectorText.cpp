#include "platform/device/VectorText.h"

#include "platform/device/Fonts.h"
#include "platform/device/VectorRules.h"

#include <QPainter>

VectorText::VectorText(const Font& font, QPaintDevice* on)
    : face(Fonts::ToQFont(font)), metrics(on ? QFontMetricsF(face, on) : QFontMetricsF(face)) {}

DeviceSize VectorText::Measure(const QString& text) const {
    Fonts::LeaveRoomFor(text);
    return {qRound(metrics.horizontalAdvance(VectorRules::Printable(text))),
            qRound(metrics.ascent() + metrics.descent())};
}

void VectorText::Draw(QPainter& painter, QPointF leftTop, int escapement, ColorRef color, const QString& text) const {
    Fonts::LeaveRoomFor(text);
    painter.setFont(face);
    painter.setPen(QColor(redOf(color), greenOf(color), blueOf(color)));
    const QPointF onBaseLine(0, metrics.ascent());
    if (escapement == 0) {
        painter.drawText(leftTop + onBaseLine, VectorRules::Printable(text));
        return;
    }
    const QTransform upright = painter.transform();
    painter.translate(leftTop);
    painter.rotate(-escapement / 10.0);
    painter.drawText(onBaseLine, VectorRules::Printable(text));
    painter.setTransform(upright);
}
