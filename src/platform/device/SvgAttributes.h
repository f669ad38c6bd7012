// Pens, fonts, hatches and texts in the words of SVG. Pure functions; knows no device and no document.
#pragma once

#include "platform/device/DeviceContext.h"
#include "platform/device/HatchPattern.h"

#include <QByteArray>
#include <QRectF>

/// Attributes begin with a blank, so that they can be put together and behind the name of an element.
namespace SvgAttributes {

/// To a hundredth, as short as it can be written, without an exponent.
QByteArray Number(double value);

/// `value` must be escaped.
QByteArray Attribute(const char* name, const QByteArray& value);
inline QByteArray Attribute(const char* name, double value) {
    return Attribute(name, Number(value));
}

/// What can be written of a text, with what XML keeps for itself escaped.
QByteArray Escaped(const QString& text);

QByteArray ColorOf(ColorRef color);

/// Place and size.
QByteArray BoundsOf(const QRectF& rect);

/// What differs from a line one unit wide with round ends and joins; empty when the pen draws nothing.
QByteArray StrokeOf(const Pen& pen);

/// What follows the id of a `pattern`, without its end tag.
QByteArray PatternOf(const HatchPattern& rows, ColorRef color);

/// Families, size, weight and style.
QByteArray FontOf(const Font& font);

/// Lines under and through a text: not every viewer hands them on from a group to its texts.
QByteArray DecorationOf(const Font& font);

} // namespace SvgAttributes
