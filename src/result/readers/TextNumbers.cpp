#include "result/readers/TextNumbers.h"

namespace {

/// The words that begin in a text; what stands before it is a blank.
qint64 countWords(std::string_view text) {
    // In as many sums as a register has bytes, each as long as it holds.
    constexpr std::size_t lanes = 32, most = 255;
    qint64 count = !text.empty() && !IsBlank(text.front());
    std::size_t at = 1;
    while (at + lanes <= text.size()) {
        std::array<std::uint8_t, lanes> sums{};
        const std::size_t rounds = std::min((text.size() - at) / lanes, most);
        const char* before = text.data() + at - 1;
        for (std::size_t round = 0; round < rounds; ++round, before += lanes)
            for (std::size_t lane = 0; lane < lanes; ++lane)
                sums[lane] = std::uint8_t(sums[lane] + (!IsBlank(before[lane + 1]) & IsBlank(before[lane])));
        for (const std::uint8_t sum : sums)
            count += sum;
        at += rounds * lanes;
    }
    for (; at < text.size(); ++at)
        count += !IsBlank(text[at]) & IsBlank(text[at - 1]);
    return count;
}

} // namespace

template<class T>
TextNumbers<T>::TextNumbers(FileScanner& scanner, qint64 count, Lines lineMarks)
    : in(scanner), lines(lineMarks), expected(count), parts(TextStretches::Slots()),
      stretches(scanner, lineMarks == Marked ? NextLine : NextWords,
                [this](std::size_t made, std::string_view text) { parts[made].Parse(text, lines == Marked); }) {}

template<class T>
TextNumbers<T>::~TextNumbers() {
    if (!slot)
        return;
    in.Seek(stretches.Start(*slot));
    in.SkipWords(next - parts[*slot].All().data());
}

template<class T>
bool TextNumbers<T>::more() {
    while (next == there) {
        if (slot && !parts[*slot].IsWhole())
            return false;
        const qint64 from = in.Position();
        // Where more come than was said, there may be many more.
        const auto following = stretches.Next(wordLength.BytesFor(std::max(expected, seen / 8)));
        if (!following) {
            // The scanner stands behind the last number.
            slot = {};
            next = there = nullptr;
            return false;
        }
        slot = following;
        const std::span<const T> all = parts[*slot].All();
        wordLength.Add(std::ssize(all), in.Position() - from);
        expected -= std::ssize(all);
        seen += std::ssize(all);
        next = all.data();
        there = next + all.size();
    }
    return true;
}

template<class T>
std::span<const T> TextNumbers<T>::Some(qint64 most) {
    if (most < 1 || (next == there && !more()))
        return {};
    const std::span<const T> some(next, std::size_t(std::min<qint64>(most, there - next)));
    next += some.size();
    return some;
}

template<class T>
const T* TextNumbers<T>::rowAcross(std::size_t count) {
    for (std::size_t done = 0; done < count;) {
        const std::span<const T> some = Some(qint64(count - done));
        if (some.empty())
            return nullptr;
        std::ranges::copy(some, row.begin() + qsizetype(done));
        done += some.size();
    }
    return row.data();
}

template<class T>
void TextNumbers<T>::SkipLine() {
    if (!slot)
        return;
    // A stretch ends with a line.
    const WordNumbers<T>& part = parts[*slot];
    const auto taken = std::uint32_t(next - part.All().data());
    const auto end = std::ranges::lower_bound(part.LineEnds(), taken);
    next = end == part.LineEnds().end() ? there : part.All().data() + *end;
}

template class TextNumbers<double>;
template class TextNumbers<float>;
template class TextNumbers<std::int32_t>;
template class TextNumbers<std::int64_t>;

bool SkipWords(FileScanner& in, qint64 count) {
    std::vector<qint64> words(TextStretches::Slots());
    TextStretches stretches(in, NextWords,
                            [&words](std::size_t slot, std::string_view text) { words[slot] = countWords(text); });
    WordLength wordLength;
    while (count > 0) {
        const qint64 from = in.Position();
        const auto slot = stretches.Next(wordLength.BytesFor(count));
        if (!slot)
            return false;
        if (words[*slot] >= count) {
            in.Seek(stretches.Start(*slot));
            return in.SkipWords(count);
        }
        wordLength.Add(words[*slot], in.Position() - from);
        count -= words[*slot];
    }
    return true;
}

bool SkipTo(FileScanner& in, char wanted) {
    // Most are near, and there nobody need read beside the scanner.
    const std::string_view near = in.Ahead();
    if (const std::size_t found = near.find(wanted); found != near.npos) {
        in.Pass(qint64(found));
        return true;
    }
    in.Pass(qint64(near.size()));
    std::vector<std::size_t> places(TextStretches::Slots());
    TextStretches stretches(in, Anywhere,
                            [&](std::size_t slot, std::string_view text) { places[slot] = text.find(wanted); });
    const qint64 from = in.Position();
    while (const auto slot = stretches.Next(std::max(TextStretches::StretchBytes, in.Position() - from)))
        if (places[*slot] != std::string_view::npos) {
            in.Seek(stretches.Start(*slot) + qint64(places[*slot]));
            return true;
        }
    return false;
}
