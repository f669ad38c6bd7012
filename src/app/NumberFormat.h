// Numbers as text by masks such as "0.0##" or "0.000E-0", the same in every locale. Doesn't read numbers.
#pragma once

#include <QString>

namespace NumberFormat {
/// `value` by `mask`. `0` is a digit that always shows, `#` one that shows when it counts, `.` the point (which always
/// shows), `,` among the integer digits groups thousands; `E-`, `E+`, `e-` or `e+` before zeros gives a power of ten of
/// at least that many digits, with its plus sign shown for `E+` only; all else stands as it is. The number is taken at
/// 15 significant digits and a half is rounded away from zero. "-" comes first of all, unless every digit is 0.
/// An empty mask gives the shortest decimal form. Never fails: "NaN", "Infinity" and "-Infinity" are texts too.
QString Format(double value, QStringView mask);
/// Takes the single at its shortest decimal form, so that 0.1f is 0.1.
QString Format(float value, QStringView mask);

/// `text` right-aligned in as many places as `mask` has `@`; a longer text stays whole, and so does any text when the
/// mask has no `@`. Other characters of the mask stand as they are.
QString FormatText(const QString& text, QStringView mask);

/// The shortest text that reads back to the same number, with an exponent only outside 1e-5 to 1e15.
QString Shortest(double value);
QString Shortest(float value);
} // namespace NumberFormat
