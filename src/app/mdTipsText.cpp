#include "app/NumberFormat.h"
#include "app/mdTips.h"
#include "platform/base/Codepage.h"
#include "platform/base/Rounding.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace {
constexpr qsizetype mostGrowth = 65536;

bool separatesFields(QChar c) {
    return c == u' ' || c == u'\u3000' || c == u',' || c == u'\t' || c == u'\n' || c == u'\r';
}

ColorRef hexadecimal(QStringView digits) {
    bool good = false;
    const ColorRef value = digits.toUInt(&good, 16);
    return good && digits.front() != u'+' ? value : 0;
}

/// The number that `text` is as a whole; false when it is none.
bool numberOf(const QString& text, double& value) {
    bool good = false;
    const double number = text.toDouble(&good);
    if (!good || !std::isfinite(number))
        return false;
    value = number;
    return true;
}

void applyFontField(const QString& field, FontObject& font, ColorRef& color) {
    const QString word = field.toLower();
    double number = 0;
    if (word == u"b" || word == u"bold")
        font.Bold = true;
    else if (word == u"i" || word == u"italic")
        font.Italic = true;
    else if (word == u"u" || word == u"underline")
        font.Underline = true;
    else if (word == u"s" || word == u"strike" || word == u"strikeout" || word == u"strikethrough")
        font.StrikeThrough = true;
    else if (word.startsWith(u"0x"))
        color = mdTips::ParseColor(word);
    else if (numberOf(word, number))
        font.Size = number;
    else
        font.Name = field;
}
} // namespace

QString mdTips::FormatColor(ColorRef value, const QString& prefix) {
    return prefix + QString::number(value, 16).rightJustified(8, u'0');
}

ColorRef mdTips::ParseColor(const QString& text) {
    const QStringView view = QStringView(text).trimmed();
    if (view.startsWith(u"0x", Qt::CaseInsensitive) || view.startsWith(u"&h", Qt::CaseInsensitive))
        return view.size() > 2 ? hexadecimal(view.mid(2)) : 0;
    double number = 0;
    if (!numberOf(text, number) || std::abs(number) >= 2147483648.0)
        return 0;
    return ColorRef(Round(number));
}

FontObject mdTips::ParseFontString(const QString& text, ColorRef& color) {
    FontObject font;
    font.Name = u"ＭＳ ゴシック"_s;
    QStringList fields;
    int count = 0;
    SplitFields(text, fields, count);
    for (int i = 1; i <= count; ++i)
        applyFontField(fields[i], font, color);
    return font;
}

QString mdTips::MakeFontString(const FontObject& font, ColorRef color) {
    QString text =
        u'"' + font.Name + u"\", "_s + NumberFormat::Shortest(font.Size) + u',' + FormatColor(color, u"0x"_s);
    if (font.Bold)
        text += u",B"_s;
    if (font.Italic)
        text += u",I"_s;
    if (font.Underline)
        text += u",U"_s;
    if (font.StrikeThrough)
        text += u",S"_s;
    return text;
}

void mdTips::SplitFields(const QString& text, QStringList& fields, int& count, const QString& commentChar) {
    const QChar comment = commentChar.isEmpty() ? u'#' : commentChar.front();
    fields = {QString()};
    QString field;
    const auto endField = [&] {
        if (!field.isEmpty())
            fields.append(field);
        field.clear();
    };

    bool quoted = false;
    // The blank added at the end closes the last field, or stands in it when a quotation is left open.
    for (const QChar c : QString(text.trimmed() + u' ')) {
        if (separatesFields(c)) {
            if (quoted)
                field += c;
            else
                endField();
        } else if (c == u'"' || c == u'\'') {
            if (!quoted)
                endField();
            quoted = !quoted;
        } else if (c == comment) {
            field.clear();
            break;
        } else {
            field += c;
        }
    }
    endField();
    count = int(fields.size()) - 1;
}

double mdTips::Val(QStringView text) {
    std::string number;
    for (const QChar c : text) {
        if (c.isSpace())
            continue;
        if (!QStringView(u"0123456789+-.eE").contains(c))
            break;
        number += c.toLatin1();
    }
    const bool plus = number.starts_with('+') && !number.starts_with("+-");
    double value = 0;
    std::from_chars(number.data() + (plus ? 1 : 0), number.data() + number.size(), value);
    return value;
}

bool mdTips::Narrow(double number, float& target) {
    if (!(std::abs(number) <= double(std::numeric_limits<float>::max())))
        return false;
    target = float(number);
    return true;
}

int mdTips::AnsiLength(QStringView text) {
    return Codepage::ByteLength(text);
}

QString mdTips::CutAtNull(QStringView text) {
    return text.left(std::max<qsizetype>(text.indexOf(QChar(u'\0')), 0)).toString();
}

QString mdTips::CutAtNull(QByteArrayView ansi) {
    return CutAtNull(Codepage::Decode(ansi));
}

QString mdTips::ExpandLabelMacros(const QString& text, const LabelMacros& macros) {
    QString expanded = text;
    for (const auto& [key, value] : macros) {
        // A short text can name a long value often, and that value a further one.
        const qsizetype growth = key.isEmpty() ? 0 : expanded.count(key) * (value.size() - key.size());
        if (!key.isEmpty() && expanded.size() + growth <= std::max(expanded.size(), text.size() + mostGrowth))
            expanded.replace(key, value);
    }
    return expanded;
}
