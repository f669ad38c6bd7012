#include "result/readers/realText.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

namespace {

/// Any spelling, and any number of digits.
bool parse(std::string_view word, double& value) {
    const char* const end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, value);
    if (error == std::errc::result_out_of_range)
        value = word.find("e-") != word.npos || word.find("E-") != word.npos ? 0
                : word.starts_with('-')                                      ? -HUGE_VAL
                                                                             : HUGE_VAL;
    return error != std::errc::invalid_argument && stop == end;
}

bool parseAny(std::string_view word, double& value) {
    if (word.starts_with('+'))
        word.remove_prefix(1);
    if (parse(word, value))
        return true;
    constexpr std::size_t longest = 60;
    if (word.size() > longest || word.find_first_of("dD") == word.npos)
        return false;
    std::string spelled(word);
    for (char& c : spelled)
        c = c == 'd' || c == 'D' ? 'e' : c;
    return parse(spelled, value);
}

bool isDigit(char c) {
    return static_cast<unsigned char>(c - '0') < 10;
}

constexpr auto powersOfTenAsWhole = [] {
    std::array<std::uint64_t, 9> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i)
        powers[i] = powers[i - 1] * 10;
    return powers;
}();

const char* takeDigits(const char* text, const char* end, std::uint64_t& digits) {
    for (; text != end && isDigit(*text); ++text)
        digits = digits * 10 + std::uint64_t(*text - '0');
    return text;
}

/// The digits, up to eight, that the next eight bytes begin with: all at once, so that nobody guesses how many come.
struct FewDigits {
    explicit FewDigits(const char* text) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, text, sizeof bytes);
        const std::uint64_t values = bytes - 0x3030303030303030;
        // The lowest bit that is set belongs to the first byte that is no digit.
        const std::uint64_t others = ((bytes + 0x4646464646464646) | values) & 0x8080808080808080;
        Count = std::countr_zero(others) / 8;
        // Those that count at the end, behind zeros. Neighbours make pairs, pairs fours, fours the whole.
        const std::uint64_t aligned = values << ((64 - 8 * Count) & 63);
        const std::uint64_t pairs = aligned * 10 + (aligned >> 8);
        constexpr std::uint64_t mask = 0x000000FF000000FF;
        Value = ((pairs & mask) * 0x000F424000000064 + ((pairs >> 16) & mask) * 0x0000271000000001) >> 32;
    }
    std::uint64_t Value = 0; ///< anything when there are none
    int Count = 0;
};

#ifdef __SIZEOF_INT128__
__extension__ using Wide = unsigned __int128;

/// 128 bits of a power of five from the first one that is set on; of a reciprocal the next above.
struct PowerOfFive {
    std::uint64_t High = 0, Low = 0;
};
constexpr int mostPower = 27; ///< its power of five has 63 bits
constexpr auto powersOfFive = [] {
    std::array<PowerOfFive, 2 * mostPower + 1> powers{};
    std::uint64_t power = 1;
    for (std::size_t p = 0; p <= mostPower; ++p, power *= 5) {
        const int bits = std::bit_width(power);
        powers[mostPower + p].High = power << (64 - bits);
        // 2 to so many bits, divided bit by bit.
        Wide quotient = 0;
        std::uint64_t rest = 1;
        for (int bit = std::bit_width(power - 1) + 127; p > 0 && bit > 0; --bit) {
            rest <<= 1;
            quotient = quotient << 1 | (rest >= power ? 1 : 0);
            rest -= rest >= power ? power : 0;
        }
        ++quotient;
        powers[mostPower - p] =
            p > 0 ? PowerOfFive{std::uint64_t(quotient >> 64), std::uint64_t(quotient)} : powers[mostPower];
    }
    return powers;
}();

/// `digits`, which are not 0, by a power of ten, rounded to the nearest and of two to the even one. The product with
/// the power's first 64 bits is mostly enough, with 128 it always is in this range (D. Lemire, Number Parsing at a
/// Gigabyte per Second, 2021).
double scaled(std::uint64_t digits, int exponent) {
    const PowerOfFive& power = powersOfFive[std::size_t(mostPower + exponent)];
    const int shift = std::countl_zero(digits);
    digits <<= shift;
    Wide product = Wide(digits) * power.High;
    constexpr std::uint64_t beyond = 0x1FF;
    if ((std::uint64_t(product >> 64) & beyond) == beyond)
        product += Wide(digits) * power.Low >> 64;
    const auto high = std::uint64_t(product >> 64), low = std::uint64_t(product);
    const int upper = int(high >> 63);
    std::uint64_t significand = high >> (upper + 9); // 54 bits, one to be rounded off
    // In the middle between two the even one counts. Only here can the product be exact.
    constexpr int leastExact = -4, mostExact = 23;
    if (low <= 1 && exponent >= leastExact && exponent <= mostExact && (significand & 3) == 1 &&
        significand << (upper + 9) == high)
        --significand;
    significand = (significand + (significand & 1)) >> 1;
    // The binary exponent of the power of ten: its logarithm, as a fraction of 65536.
    const int binary = ((217706 * exponent) >> 16) + 63 + upper - shift;
    constexpr int bias = 1023, fractionBits = 52;
    // A significand that was rounded up to the next power of two carries over into the exponent.
    return std::bit_cast<double>((std::uint64_t(binary + bias - 1) << fractionBits) + significand);
}
#endif

} // namespace

bool ScaledReal(std::uint64_t digits, int exponent, double& value) {
    constexpr std::uint64_t exactDigits = 1ULL << 53;
    if (exponent == 0 && digits <= exactDigits) {
        value = double(std::int64_t(digits));
        return true;
    }
#ifdef __SIZEOF_INT128__
    if (std::abs(exponent) <= mostPower) {
        value = digits == 0 ? 0 : scaled(digits, exponent);
        return true;
    }
#endif
    return false;
}

namespace {

/// The usual spellings of a number without its sign: a few digits, perhaps a point and up to sixteen more, and no
/// exponent. Null for others.
const char* usualReal(const char* text, const char* end, double& value) {
    constexpr std::ptrdiff_t most = 8 + 1 + 8 + 8 + 1;
    if (std::endian::native != std::endian::little || end - text < most)
        return nullptr;
    const FewDigits whole(text);
    if (whole.Count == 0 || whole.Count > 7)
        return nullptr;
    text += whole.Count;
    if (IsBlank(*text)) {
        value = double(std::int64_t(whole.Value));
        return text;
    }
    if (*text != '.')
        return nullptr;
    const FewDigits fraction(++text);
    std::uint64_t digits = whole.Value * powersOfTenAsWhole[std::size_t(fraction.Count)] + fraction.Value;
    int count = fraction.Count;
    if (count == 8) {
        const FewDigits rest(text + 8);
        digits = rest.Count > 0 ? digits * powersOfTenAsWhole[std::size_t(rest.Count)] + rest.Value : digits;
        count += rest.Count;
    }
    constexpr int mostDigits = 19;
    text += count;
    return count > 0 && whole.Count + count <= mostDigits && IsBlank(*text) && ScaledReal(digits, -count, value)
               ? text
               : nullptr;
}

/// The word that begins at `text`, which is no blank; `text` then stands behind it.
inline bool nextReal(const char*& text, const char* end, double& value) {
    const char* const start = text;
    const bool isNegative = *text == '-';
    if (isNegative || *text == '+')
        ++text;
    if (const char* const behind = usualReal(text, end, value)) {
        value = isNegative ? -value : value;
        text = behind;
        return true;
    }
    std::uint64_t digits = 0;
    const char* const first = text;
    text = takeDigits(text, end, digits);
    auto count = text - first;
    int exponent = 0;
    if (text != end && *text == '.') {
        const char* const fraction = ++text;
        text = takeDigits(text, end, digits);
        count += text - fraction;
        exponent = -int(std::min<std::ptrdiff_t>(text - fraction, 1000));
    }
    if (text != end && (*text == 'e' || *text == 'E') && count > 0) {
        const char* digit = text + 1;
        const bool isDown = digit != end && *digit == '-';
        if (digit != end && (isDown || *digit == '+'))
            ++digit;
        int power = 0;
        for (text = digit; text != end && isDigit(*text) && text - digit < 5; ++text)
            power = power * 10 + (*text - '0');
        count = text == digit ? 0 : count; // no exponent after all
        exponent += isDown ? -power : power;
    }
    const bool isWord = text == end || IsBlank(*text);
    constexpr std::ptrdiff_t mostDigits = 19;
    if (isWord && count > 0 && count <= mostDigits && ScaledReal(digits, exponent, value)) {
        value = isNegative ? -value : value;
        return true;
    }
    while (text != end && !IsBlank(*text))
        ++text;
    return parseAny({start, std::size_t(text - start)}, value);
}

} // namespace

bool RealOf(std::string_view word, double& value) {
    if (word.empty() || IsBlank(word.front()))
        return false;
    const char* text = word.data();
    const char* const end = text + word.size();
    return nextReal(text, end, value) && text == end;
}

bool AppendReals(std::string_view text, bool marksLines, std::vector<double>& numbers) {
    const char* at = text.data();
    const char* const end = at + text.size();
    while (true) {
        for (; at != end && IsBlank(*at); ++at)
            if (marksLines && (*at == '\n' || (*at == '\r' && (at + 1 == end || at[1] != '\n'))))
                numbers.push_back(LineEnd);
        if (at == end)
            return true;
        double number = 0;
        if (!nextReal(at, end, number))
            return false;
        numbers.push_back(number);
    }
}
