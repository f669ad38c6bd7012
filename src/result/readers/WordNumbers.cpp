#include "result/readers/WordNumbers.h"

#include "result/readers/numberTypes.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

namespace {

/// Any spelling with any number of digits, save those that need the word as a whole.
const char* parseReal(const char* text, const char* end, double& value) {
    const auto [stop, error] = std::from_chars(text, end, value);
    if (error == std::errc::result_out_of_range) {
        const std::string_view word(text, std::size_t(stop - text));
        value = word.find("e-") != word.npos || word.find("E-") != word.npos ? 0
                : word.starts_with('-')                                      ? -HUGE_VAL
                                                                             : HUGE_VAL;
    }
    return error == std::errc::invalid_argument ? nullptr : stop;
}

/// With a sign + or an exponent's letter d.
bool parseOther(std::string_view word, double& value) {
    if (word.starts_with('+'))
        word.remove_prefix(1);
    constexpr std::size_t longest = 60;
    std::string spelled(word.substr(0, longest));
    std::ranges::replace(spelled, 'd', 'e');
    std::ranges::replace(spelled, 'D', 'e');
    const std::string_view text = word.size() > longest ? word : spelled;
    return parseReal(text.data(), text.data() + text.size(), value) == text.data() + text.size();
}

/// The word that `text` begins with. What stands behind it, or null when it is no number.
inline const char* nextReal(const char* text, const char* end, double& value) {
    const char* const behind = parseReal(text, end, value);
    if (behind && (behind == end || IsBlank(*behind)))
        return behind;
    const char* const wordEnd = std::find_if(text, end, IsBlank);
    return parseOther({text, std::size_t(wordEnd - text)}, value) ? wordEnd : nullptr;
}

/// Likewise a number of a kind.
template<class T>
inline const char* nextNumber(const char* text, const char* end, T& value) {
    if constexpr (std::is_integral_v<T>) {
        std::int64_t whole = 0;
        const auto [stop, error] = std::from_chars(text, end, whole);
        if (error == std::errc() && (stop == end || IsBlank(*stop))) {
            value = NumberAs<T>(whole);
            return stop;
        }
    }
    double real = 0;
    const char* const behind = nextReal(text, end, real);
    value = NumberAs<T>(real);
    return std::is_integral_v<T> && std::trunc(real) != real ? nullptr : behind;
}

} // namespace

bool RealOf(std::string_view word, double& value) {
    if (word.empty() || IsBlank(word.front()))
        return false;
    const char* const end = word.data() + word.size();
    return nextReal(word.data(), end, value) == end;
}

template<class T>
void WordNumbers<T>::Parse(std::string_view text, bool marksLines) {
    lineEnds.clear();
    if (const std::size_t most = text.size() / 2 + 1; most > room) {
        numbers = std::make_unique_for_overwrite<T[]>(most);
        room = most;
    }
    T* const first = numbers.get();
    T* number = first;
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at) {
        for (; at != end && IsBlank(*at); ++at)
            if (marksLines && (*at == '\n' || (*at == '\r' && (at + 1 == end || at[1] != '\n'))))
                lineEnds.push_back(std::uint32_t(number - first));
        if (at == end)
            break;
        at = nextNumber(at, end, *number);
        number += at ? 1 : 0;
    }
    count = std::size_t(number - first);
    isWhole = at;
}

template class WordNumbers<double>;
template class WordNumbers<float>;
template class WordNumbers<std::int32_t>;
template class WordNumbers<std::int64_t>;
