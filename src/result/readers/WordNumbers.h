// Numbers out of text in memory. Knows no files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

/// What stands between words: blanks, ends of lines and all else below them.
inline bool IsBlank(char c) {
    return static_cast<unsigned char>(c) <= ' ';
}

/// The word as a number, the nearest there is. It may have a sign + and the exponent's letter d; what lies beyond a
/// double comes near. False for what is no number.
bool RealOf(std::string_view word, double& value);

/// The words of a text as numbers. For double, float, int32 and int64; words that are no whole numbers are none of the
/// latter, and what lies beyond one is as `NumberAs` has it.
template<class T>
class WordNumbers {
public:
    /// In place of those that were there. Ends before a word that is no number.
    void Parse(std::string_view text, bool marksLines);

    std::span<const T> All() const { return {numbers.get(), count}; }
    bool IsWhole() const { return isWhole; } ///< up to the text's end
    /// Where lines are marked: how many numbers stand before each line's end.
    const std::vector<std::uint32_t>& LineEnds() const { return lineEnds; }

private:
    std::unique_ptr<T[]> numbers; ///< not set beyond `count`: few texts need all the room
    std::size_t count = 0, room = 0;
    std::vector<std::uint32_t> lineEnds;
    bool isWhole = true;
};
