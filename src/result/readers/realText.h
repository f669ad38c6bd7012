// Reals out of text in memory, the usual spellings fast. Knows no files.
#pragma once

#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

/// What stands between words: blanks, ends of lines and all else below them.
inline bool IsBlank(char c) {
    return static_cast<unsigned char>(c) <= ' ';
}

/// The word as a number, the nearest there is. It may have a sign + and the exponent's letter d; what lies beyond a
/// double comes near. False for what is no number.
bool RealOf(std::string_view word, double& value);

/// `digits` by a power of ten, the nearest there is; false where it would take longer to find out.
bool ScaledReal(std::uint64_t digits, int exponent, double& value);

/// Stands among numbers where a line ends, when lines are marked.
inline constexpr double LineEnd = -std::numeric_limits<double>::infinity();

/// The words of a text as numbers behind those that are there. False, with the numbers before it, when one is none.
bool AppendReals(std::string_view text, bool marksLines, std::vector<double>& numbers);
