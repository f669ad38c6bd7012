// What the devices for vector output share: where figures lie, how dashes are told to a renderer that knows no device
// units, which characters can be written. Draws nothing.
#pragma once

#include "platform/device/DashPattern.h"

#include <QRectF>
#include <QString>
#include <algorithm>
#include <optional>
#include <vector>

// Vector output counts from the middle of the unit (0, 0): lines run through the middle of their units, and an area
// begins half a unit before its first unit's middle.
namespace VectorRules {

/// Empty when the rectangle is.
inline QRectF AreaOf(const DeviceRect& corners) {
    const DeviceRect rect = normalised(corners);
    return QRectF(QPointF(rect.Left - 0.5, rect.Top - 0.5), QPointF(rect.Right - 0.5, rect.Bottom - 0.5));
}

/// What a rectangle's or an ellipse's outline runs along, of no width or height for a figure of one unit; without a
/// pen what the brush fills. Nothing for a figure of no unit.
inline std::optional<QRectF> FigureBounds(const DeviceRect& rect, const Pen& pen) {
    // The outline runs through the middle of the first and the last unit; without a pen one unit more is left out.
    const bool hasPen = pen.Style != PenStyle::Null;
    const QRectF area = AreaOf(rect);
    const QRectF bounds = hasPen ? area.adjusted(0.5, 0.5, -0.5, -0.5) : area.adjusted(0, 0, -1, -1);
    const bool drawn = hasPen ? bounds.width() >= 0 && bounds.height() >= 0 : bounds.isValid();
    return drawn ? std::optional(bounds) : std::nullopt;
}

/// Ready-made pens have pointed corners, the outlines of boxes among them; a corner reaches no further than the pen is
/// wide.
inline bool HasMitres(const Pen& pen) {
    return pen.Stock >= 0;
}
constexpr int MitreLimit = 2; ///< length of a corner in pen widths; a sharper one is cut off

/// Lengths of dash, gap, dash, gap ... in pen widths; empty for a line without gaps.
inline std::vector<double> DashesOf(const Pen& pen) {
    std::vector<double> lengths;
    const bool wide = pen.Width > 1;
    if (wide && !pen.Geometric)
        return lengths;
    for (const int length : dashPattern(pen.Style, wide)) {
        // Round ends lie within a wide line's dash, but renderers put them on it, and some drop a dash of no length.
        const bool gap = lengths.size() % 2 != 0;
        lengths.push_back(!wide ? length : gap ? length + 1 : std::max(length - 1.0, 0.01));
    }
    return lengths;
}

/// With a blank for each control character, line breaks among them, and U+FFFD for what is no character: halves of a
/// pair and the two last numbers.
inline QString Printable(QString text) {
    constexpr char16_t lastTwo = 0xfffe;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c < u' ' || c == QChar(0x7f))
            text[i] = u' ';
        else if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            ++i;
        else if (c.isSurrogate() || c >= lastTwo)
            text[i] = QChar::ReplacementCharacter;
    }
    return text;
}

} // namespace VectorRules
