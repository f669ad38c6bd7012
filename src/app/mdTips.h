// Text, number, colour, font and path helpers that the whole program leans on. No drawing: that is mdTipsDrawing. None
// of them fails; what can't be read gives the empty text or 0.
#pragma once

#include "platform/base/Geometry.h"

#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <type_traits>

/// A font as the user chooses it, in points.
struct FontObject {
    QString Name;
    double Size = 9; ///< points
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;
    bool StrikeThrough = false;
    bool operator==(const FontObject&) const = default;
};

/// Keys such as "%item%" and what stands for them, in the order in which they are replaced.
using LabelMacros = QList<std::pair<QString, QString>>;

/// One entry of a file of "key=value" lines.
struct KeyValue {
    QString Key;
    QString Value;        ///< without the double quotes around it; empty for a line without "="
    bool IsBlock = false; ///< the value starts with "{" and ends with "}"
};

namespace mdTips {
/// `prefix`, then 8 small hexadecimal digits.
QString FormatColor(ColorRef value, const QString& prefix);
/// A colour from "0x" and hexadecimal digits, from "&H" and such, or from a whole decimal number; a real is rounded.
ColorRef ParseColor(const QString& text);

/// A font string is a list of fields in any order, as `SplitFields` makes them: the face, the size in points, "b" or
/// "bold", "i" or "italic", "u" or "underline", "s" or "strike", "strikeout" or "strikethrough", and a colour that
/// starts with "0x". What isn't given is "ＭＳ ゴシック", 9 points, plain; `color` then stays as it is.
FontObject ParseFontString(const QString& text, ColorRef& color);
QString MakeFontString(const FontObject& font, ColorRef color);

/// Splits a line at blanks (also full-width ones), tabs, commas and line ends; `"` and `'` hold a field together.
/// `fields` counts from 1 to `count`, its entry 0 is empty. The first character of `commentChar`, "#" when that is
/// empty, ends the line and takes the field before it along, unless that has ended. Fields are never empty.
void SplitFields(const QString& text, QStringList& fields, int& count, const QString& commentChar = {});

/// `line` without leading tabs and without what follows the first `commentChar` outside double quotes.
QString StripComment(const QString& line, QChar commentChar);

/// Takes the first line off `text`, without its end, which is CR LF or LF alone; false, and an empty line, when nothing
/// is left. A line end at the very end starts no further line.
bool TakeLine(QStringView& text, QStringView& line);

/// Takes the next entry off `text`; false at the end. Lines are stripped of comments (`comment` as for `SplitFields`)
/// and blanks (U+0020) and passed over when nothing is left; a "\" at the end joins the next such line.
bool ReadKeyValueLine(QStringView& text, KeyValue& record, const QString& comment = {});

/// Replaces each macro throughout `text`, one after the other: a value may hold a macro that comes later. A macro that
/// would make the text longer than it was by more than 65536 characters stays as it is.
QString ExpandLabelMacros(const QString& text, const LabelMacros& macros);

/// The longest number at the front of `text`, blanks anywhere in it passed over: "1 2.5e3x" is 12500. The point is
/// "." in every locale. 0 when there is none or it is beyond range.
double Val(QStringView text);

/// Bytes of `text` in code page 932.
int AnsiLength(QStringView text);

/// The text before the first NUL; empty if there is none. Bytes are decoded from code page 932.
QString CutAtNull(QStringView text);
QString CutAtNull(QByteArrayView ansi);

/// A file in code page 932, at most `maxBytes` of it if that is above 0, and never more than 256 MB.
QString ReadTextFile(const QString& path, qint64 maxBytes = 0);
/// Writes `text` in code page 932. When that fails, which gives false, an earlier file of that name stays whole.
bool WriteTextFile(const QString& path, const QString& text);

/// `text` with `trailing` at its end, added or removed when needed. "\" ends a folder as "/" does.
QString AddTrailingChar(const QString& text, QChar trailing = u'/');
QString RemoveTrailingChar(const QString& text, QChar trailing = u'/');

/// `relative`, unless it is absolute, placed beneath `base` (the current folder if empty), with "." and ".." worked
/// out and `separator` between the parts. A ".." too many stays at the root.
QString ResolveRelativePath(const QString& relative, const QString& base, QChar separator = u'/');

/// For menus: a path of `maxBytes` bytes or more in code page 932 becomes its first three characters, "..." and as many
/// of its last folders as `maxBytes` - 3 hold; it stays whole if not even the file name fits.
QString ShortenPath(const QString& path, int maxBytes);

/// For display: small letters, with a capital at the front of each folder and of the name, and for a drive.
QString NormalizePathCase(const QString& path);

/// Stores `number` as a single. False, and `target` stays, when that would be no finite number.
bool Narrow(double number, float& target);

/// The larger and the smaller of two numbers, which may be of different types.
template<class A, class B>
constexpr std::common_type_t<A, B> MaxOf(A a, B b) {
    static_assert(std::is_signed_v<A> == std::is_signed_v<B>, "a negative number would turn into a large one");
    const std::common_type_t<A, B> first = a, second = b;
    return first < second ? second : first;
}
template<class A, class B>
constexpr std::common_type_t<A, B> MinOf(A a, B b) {
    static_assert(std::is_signed_v<A> == std::is_signed_v<B>, "a negative number would turn into a large one");
    const std::common_type_t<A, B> first = a, second = b;
    return second < first ? second : first;
}

/// Truth as a number: -1 if `n` is not 0, else 0.
constexpr int Bool(int n) {
    return n != 0 ? -1 : 0;
}
} // namespace mdTips
