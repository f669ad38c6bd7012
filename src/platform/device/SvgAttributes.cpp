#include "platform/device/SvgAttributes.h"

#include "platform/device/Fonts.h"
#include "platform/device/VectorRules.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>

using namespace VectorRules;

namespace SvgAttributes {

QByteArray Number(double value) {
    char digits[64];
    const double rounded = std::round(value * 100) / 100 + 0.0; // no minus before a zero
    const char* const end = std::to_chars(digits, std::end(digits), rounded, std::chars_format::fixed).ptr;
    return QByteArray(digits, end - digits);
}

QByteArray Attribute(const char* name, const QByteArray& value) {
    return ' ' + QByteArray(name) + "=\"" + value + '"';
}

QByteArray Escaped(const QString& text) {
    return Printable(text).toHtmlEscaped().toUtf8();
}

QByteArray ColorOf(ColorRef color) {
    const int parts[] = {redOf(color), greenOf(color), blueOf(color)};
    const bool isShort = std::all_of(std::begin(parts), std::end(parts), [](int part) { return part % 17 == 0; });
    QByteArray text = "#";
    for (const int part : parts) {
        text += "0123456789abcdef"[part >> 4];
        if (!isShort)
            text += "0123456789abcdef"[part & 15];
    }
    return text;
}

QByteArray BoundsOf(const QRectF& rect) {
    return Attribute("x", rect.x()) + Attribute("y", rect.y()) + Attribute("width", rect.width()) +
           Attribute("height", rect.height());
}

QByteArray StrokeOf(const Pen& pen) {
    if (pen.Style == PenStyle::Null)
        return {};
    QByteArray look = Attribute("stroke", ColorOf(pen.Color));
    if (pen.Width > 1)
        look += Attribute("stroke-width", pen.Width);
    if (HasMitres(pen))
        look += " stroke-linejoin=\"miter\"" + Attribute("stroke-miterlimit", MitreLimit);
    else if (pen.Geometric && pen.BevelJoin)
        look += " stroke-linejoin=\"bevel\"";
    QByteArray dashes;
    for (const double length : DashesOf(pen)) {
        dashes += dashes.isEmpty() ? "" : " ";
        dashes += Number(length * std::max(1, pen.Width));
    }
    if (!dashes.isEmpty())
        look += Attribute("stroke-dasharray", dashes);
    if (!dashes.isEmpty() && pen.Width <= 1)
        look += " stroke-linecap=\"butt\"";
    return look;
}

QByteArray PatternOf(const HatchPattern& rows, ColorRef color) {
    QByteArray runs;
    for (std::size_t y = 0; y < rows.size(); ++y)
        for (unsigned rest = rows[y]; rest != 0;) {
            const int first = std::countr_zero(rest), length = std::countr_one(rest >> first);
            const QByteArray way = 'h' + QByteArray::number(length);
            runs +=
                'M' + QByteArray::number(first) + ' ' + QByteArray::number(int(y)) + way + "v1h-" + way.mid(1) + 'z';
            rest &= ~0u << (first + length);
        }
    // The middle of the unit (0, 0) is the document's origin; the pattern begins at the unit's corner.
    return " width=\"8\" height=\"8\" patternUnits=\"userSpaceOnUse\" patternTransform=\"translate(-0.5 -0.5)\"><path" +
           Attribute("fill", ColorOf(color)) + Attribute("d", runs) + "/>";
}

QByteArray FontOf(const Font& font) {
    const QStringList names = Fonts::FamiliesFor(font);
    QByteArray families;
    for (qsizetype i = 0; i + 1 < names.size(); ++i)
        families += '\'' + Escaped(QString(names[i]).remove(u'\'').remove(u'\\')) + "',";
    families += names.last().toUtf8(); // quoted it would be no generic one
    QByteArray look = Attribute("font-family", families) + Attribute("font-size", Fonts::ToQFont(font).pixelSize());
    constexpr int step = 100, normal = 400;
    const int weight = std::clamp(qRound(font.Weight / double(step)), 1, 9) * step;
    if (weight != normal)
        look += Attribute("font-weight", weight);
    if (font.Italic)
        look += " font-style=\"italic\"";
    return look;
}

QByteArray DecorationOf(const Font& font) {
    QByteArray lines = font.Underline ? "underline" : "";
    if (font.StrikeOut)
        lines += font.Underline ? " line-through" : "line-through";
    return lines.isEmpty() ? QByteArray() : Attribute("text-decoration", lines);
}

} // namespace SvgAttributes
