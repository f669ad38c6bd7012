// A font as vector output uses it: how large its texts are and how they are drawn with a painter, for devices that have
// one. Picks no font itself.
#pragma once

#include "platform/device/DeviceContext.h"

#include <QFont>
#include <QFontMetricsF>

class QPainter;

class VectorText {
public:
    /// On the painter's device; null for a picture.
    VectorText(const Font& font, QPaintDevice* on);

    DeviceSize Measure(const QString& text) const;
    /// Control characters are written as blanks. The painter's font and pen are then others.
    void Draw(QPainter& painter, QPointF leftTop, int escapement, ColorRef color, const QString& text) const;
    /// The same on a painter that makes pixels of it at any scale: letters stand where a PDF has them, and those of
    /// faces that have no bold ones are as bold as there.
    void DrawAsPrinted(QPainter& painter, QPointF leftTop, int escapement, ColorRef color, const QString& text) const;

private:
    template<class DrawLine>
    void draw(QPainter& painter, QPointF leftTop, int escapement, ColorRef color, const DrawLine& drawLine) const;

    QFont face;
    QFontMetricsF metrics;
};
