#include "app/NumberFormat.h"

#include <QList>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

namespace {
/// A finite number in decimal: 0.d1d2d3... times 10 to `Point`, with neither leading nor trailing zeros; 0 has no
/// digits.
struct Decimal {
    bool Negative = false;
    std::string Digits;
    int Point = 0;

    char digitAt(int weight) const {
        const int index = Point - 1 - weight;
        return index >= 0 && index < int(Digits.size()) ? Digits[std::size_t(index)] : '0';
    }
    int lastWeight() const { return Point - int(Digits.size()); }
};

void trimZeros(Decimal& number) {
    number.Digits.erase(number.Digits.find_last_not_of('0') + 1);
    if (number.Digits.empty())
        number.Point = 0;
}

/// `text` as std::to_chars writes it in scientific form: "-d.ddde-xx".
Decimal decimalOf(std::string_view text) {
    Decimal number;
    number.Negative = text.front() == '-';
    const std::size_t exponentAt = text.find('e');
    for (const char c : text.substr(0, exponentAt))
        if (c >= '0' && c <= '9')
            number.Digits += c;
    const std::size_t exponentDigits = exponentAt + (text[exponentAt + 1] == '+' ? 2 : 1);
    std::from_chars(text.data() + exponentDigits, text.data() + text.size(), number.Point);
    ++number.Point;
    if (number.Digits.find_first_not_of('0') == std::string::npos)
        number.Digits.clear();
    trimZeros(number);
    return number;
}

template<class Real>
Decimal shortestDecimal(Real value) {
    char text[64];
    const auto result = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific);
    return decimalOf({text, result.ptr});
}

Decimal decimalOf15Digits(double value) {
    char text[64];
    const auto result = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, 14);
    return decimalOf({text, result.ptr});
}

/// Keeps the first `count` digits, which may be none or fewer than none; a half is rounded away from zero.
void roundToDigits(Decimal& number, int count) {
    if (count >= int(number.Digits.size()))
        return;
    const bool up = count >= 0 && number.Digits[std::size_t(count)] >= '5';
    number.Digits.resize(std::size_t(std::max(count, 0)));
    if (up) {
        int last = count - 1;
        while (last >= 0 && number.Digits[std::size_t(last)] == '9')
            number.Digits[std::size_t(last--)] = '0';
        if (last >= 0) {
            ++number.Digits[std::size_t(last)];
        } else {
            number.Digits.insert(0, 1, '1');
            ++number.Point;
        }
    }
    trimZeros(number);
}

QString notFinite(double value) {
    if (std::isnan(value))
        return u"NaN"_s;
    return value < 0 ? u"-Infinity"_s : u"Infinity"_s;
}

QString generalForm(const Decimal& number) {
    const int size = int(number.Digits.size());
    if (size == 0)
        return u"0"_s;
    QString text = number.Negative ? u"-"_s : QString();
    const QString digits = QString::fromLatin1(number.Digits.data(), size);
    if (number.Point < -4 || number.Point > 16) {
        text += digits.front();
        if (size > 1)
            text += u'.' + digits.mid(1);
        return text + u'e' + QString::number(number.Point - 1);
    }
    if (number.Point <= 0)
        return text + u"0." + QString(-number.Point, u'0') + digits;
    if (size <= number.Point)
        return text + digits + QString(number.Point - size, u'0');
    return text + digits.left(number.Point) + u'.' + digits.mid(number.Point);
}

enum class Kind { Literal, Digit, Point, Exponent };

/// One piece of a mask. `Required` is the number of zeros in it: 0 or 1 for a digit.
struct Piece {
    Kind Is = Kind::Literal;
    QChar Char;
    int Required = 0;
    bool PlusShown = false;
};

struct Mask {
    QList<Piece> Pieces;
    int IntegerDigits = 0;
    int FractionDigits = 0;
    int IntegerRequired = 0;  ///< places from the first `0` to the point
    int FractionRequired = 0; ///< places from the point to the last `0`
    bool Grouped = false;
    bool Scientific = false;
};

/// Length of the exponent piece that starts at `at`, 0 when none does.
qsizetype exponentLength(QStringView mask, qsizetype at) {
    if (mask[at].toUpper() != u'E' || at + 2 >= mask.size() || (mask[at + 1] != u'-' && mask[at + 1] != u'+'))
        return 0;
    qsizetype end = at + 2;
    while (end < mask.size() && mask[end] == u'0')
        ++end;
    return end > at + 2 ? end - at : 0;
}

void addDigit(Mask& parsed, bool inFraction, bool required) {
    parsed.Pieces.append({Kind::Digit, u'0', required ? 1 : 0, false});
    if (inFraction) {
        ++parsed.FractionDigits;
        if (required)
            parsed.FractionRequired = parsed.FractionDigits;
    } else {
        ++parsed.IntegerDigits;
        if (required || parsed.IntegerRequired > 0)
            ++parsed.IntegerRequired;
    }
}

Mask parseMask(QStringView mask) {
    Mask parsed;
    bool inFraction = false;
    for (qsizetype i = 0; i < mask.size(); ++i) {
        const QChar c = mask[i];
        const bool anyDigit = parsed.IntegerDigits + parsed.FractionDigits > 0;
        const qsizetype exponent = anyDigit && !parsed.Scientific ? exponentLength(mask, i) : 0;
        if (exponent > 0) {
            parsed.Pieces.append({Kind::Exponent, c, int(exponent - 2), mask[i + 1] == u'+'});
            parsed.Scientific = true;
            i += exponent - 1;
        } else if ((c == u'0' || c == u'#') && !parsed.Scientific) {
            addDigit(parsed, inFraction, c == u'0');
        } else if (c == u'.' && !inFraction && !parsed.Scientific) {
            parsed.Pieces.append({Kind::Point, c});
            inFraction = true;
        } else if (c == u',' && anyDigit && !inFraction && !parsed.Scientific) {
            parsed.Grouped = true;
        } else {
            parsed.Pieces.append({Kind::Literal, c});
        }
    }
    return parsed;
}

/// As numbers come by the thousand with one mask, the last one is kept.
const Mask& lastMask(QStringView mask) {
    thread_local QString text;
    thread_local Mask parsed;
    if (text != mask) {
        text = mask.toString();
        parsed = parseMask(mask);
    }
    return parsed;
}

/// Appends the integer digits from weight `from` down to `to`, as far as they count or are required.
void appendInteger(QString& text, const Decimal& number, const Mask& mask, int from, int to) {
    for (int weight = from; weight >= to; --weight) {
        if (weight >= number.Point && weight >= mask.IntegerRequired)
            continue;
        text += QLatin1Char(number.digitAt(weight));
        if (mask.Grouped && weight > 0 && weight % 3 == 0)
            text += u',';
    }
}

void appendExponent(QString& text, const Piece& piece, int exponent) {
    text += piece.Char;
    if (exponent < 0)
        text += u'-';
    else if (piece.PlusShown)
        text += u'+';
    text += QString::number(std::abs(exponent)).rightJustified(piece.Required, u'0');
}

QString applyMask(Decimal number, const Mask& mask) {
    int exponent = 0;
    if (mask.Scientific) {
        roundToDigits(number, mask.IntegerDigits + mask.FractionDigits);
        if (!number.Digits.empty()) {
            exponent = number.Point - mask.IntegerDigits;
            number.Point = mask.IntegerDigits;
        }
    } else {
        roundToDigits(number, number.Point + mask.FractionDigits);
    }

    QString text = number.Negative && !number.Digits.empty() ? u"-"_s : QString();
    int weight = mask.IntegerDigits - 1;
    for (const Piece& piece : mask.Pieces) {
        switch (piece.Is) {
        case Kind::Digit:
            if (weight >= 0) {
                // Digits that the mask has no place for go out with its first place.
                const bool first = weight == mask.IntegerDigits - 1;
                appendInteger(text, number, mask, first ? std::max(weight, number.Point - 1) : weight, weight);
            } else if (weight >= number.lastWeight() || -weight <= mask.FractionRequired) {
                text += QLatin1Char(number.digitAt(weight));
            }
            --weight;
            break;
        case Kind::Point:
            // A mask without integer places still shows the integer digits there are.
            if (mask.IntegerDigits == 0)
                appendInteger(text, number, mask, number.Point - 1, 0);
            text += piece.Char;
            break;
        case Kind::Exponent:
            appendExponent(text, piece, exponent);
            break;
        case Kind::Literal:
            text += piece.Char;
            break;
        }
    }
    return text;
}
} // namespace

QString NumberFormat::Format(double value, QStringView mask) {
    if (!std::isfinite(value))
        return notFinite(value);
    const Decimal number = decimalOf15Digits(value);
    return mask.isEmpty() ? generalForm(number) : applyMask(number, lastMask(mask));
}

QString NumberFormat::Format(float value, QStringView mask) {
    if (!std::isfinite(value))
        return notFinite(value);
    const Decimal number = shortestDecimal(value);
    return mask.isEmpty() ? generalForm(number) : applyMask(number, lastMask(mask));
}

QString NumberFormat::FormatText(const QString& text, QStringView mask) {
    const qsizetype places = mask.count(u'@');
    if (places == 0)
        return text;
    const QString padded = text.rightJustified(places);
    qsizetype next = 0;
    QString result;
    for (const QChar c : mask) {
        if (c != u'@') {
            result += c;
            continue;
        }
        // What is longer than the mask goes out with its first place.
        const qsizetype length = next == 0 ? padded.size() - places + 1 : 1;
        result += padded.mid(next, length);
        next += length;
    }
    return result;
}

QString NumberFormat::Shortest(double value) {
    return std::isfinite(value) ? generalForm(shortestDecimal(value)) : notFinite(value);
}

QString NumberFormat::Shortest(float value) {
    return std::isfinite(value) ? generalForm(shortestDecimal(value)) : notFinite(value);
}
