#include "result/readers/TextStretches.h"

#include "platform/base/Parallel.h"
#include "result/readers/realText.h"

namespace {

constexpr qint64 fewestBytes = 1 << 12;
constexpr qint64 longestPiece = 1 << 16;
constexpr qint64 bytesAhead = 256; ///< in which a piece mostly ends
constexpr qint64 usualWord = 20;

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

std::size_t NextWords(std::string_view text, std::size_t from) {
    for (; from <= text.size(); ++from)
        if (IsBlank(text[from - 1]))
            return from;
    return text.npos;
}

std::size_t NextLine(std::string_view text, std::size_t from) {
    for (; from < text.size(); ++from)
        if (text[from - 1] == '\n' || (text[from - 1] == '\r' && text[from] != '\n'))
            return from;
    return text.npos;
}

TextStretches::TextStretches(FileScanner& scanner, CutRule rule, qint64 expectedBytes)
    : in(scanner), cut(rule), expected(expectedBytes), stretches(std::size_t(coreCount()) * 4) {}

class TextStretches::Buffer {
public:
    explicit Buffer(TextStretches& owner) : all(owner) {
        const std::lock_guard guard(all.lock);
        auto& spare = all.in.SpareBuffers();
        if (!spare.empty()) {
            Bytes = std::move(spare.back());
            spare.pop_back();
        }
    }
    ~Buffer() {
        const std::lock_guard guard(all.lock);
        all.in.SpareBuffers().push_back(std::move(Bytes));
    }
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;

    std::vector<char> Bytes;

private:
    TextStretches& all;
};

/// The pieces that begin from `from` up to before `to`.
std::string_view TextStretches::textOf(Stretch& stretch, std::vector<char>& buffer, qint64 from, qint64 to,
                                       bool isFirst) const {
    // With the byte before, by which the beginning is found.
    const qint64 start = isFirst ? from : from - 1;
    qint64 filled = 0;
    std::size_t end = std::string_view::npos;
    for (const qint64 ahead : {bytesAhead, longestPiece}) {
        const qint64 wanted = std::min(to + ahead, in.End()) - start;
        buffer.resize(std::size_t(std::max<qint64>(wanted, std::ssize(buffer))));
        filled += in.File().ReadAt(start + filled, buffer.data() + filled, wanted - filled);
        const std::string_view text(buffer.data(), std::size_t(filled));
        end = to - start <= filled ? cut(text, std::size_t(to - start)) : text.npos;
        if (end != text.npos || start + filled >= in.End() || filled < wanted)
            break;
    }
    std::string_view text(buffer.data(), std::size_t(filled));
    if (end == text.npos && start + filled < in.End()) {
        stretch.Start = stretch.End = from;
        return {};
    }
    text = text.substr(0, end);
    const std::size_t begin = isFirst ? 0 : std::min(cut(text, 1), text.size());
    stretch.Start = start + qint64(begin);
    stretch.End = start + qint64(text.size());
    return text.substr(begin);
}

int TextStretches::Read(const std::function<void(int, std::string_view)>& parse) {
    const qint64 from = in.Position();
    if (in.Remaining() == 0 || !in.GoesOn())
        return 0;
    const qint64 most = std::min(in.Remaining(), StretchBytes * MostAtOnce());
    const qint64 bytes = std::min(std::max(expected, fewestBytes), most);
    const int count = int((bytes - 1) / StretchBytes) + 1;
    parallelFor(count, [&](int slot) {
        const qint64 first = from + slot * StretchBytes;
        const qint64 last = std::min(first + StretchBytes, from + bytes);
        Buffer buffer(*this);
        parse(slot, textOf(stretches[std::size_t(slot)], buffer.Bytes, first, last, slot == 0));
    });
    expected -= bytes;
    // A stretch that could not be cut ends what counts.
    int whole = 0;
    while (whole < count && stretches[std::size_t(whole)].End >= from + std::min((whole + 1) * StretchBytes, bytes))
        ++whole;
    if (whole > 0)
        in.Seek(stretches[std::size_t(whole) - 1].End);
    return whole;
}

TextNumbers::TextNumbers(FileScanner& scanner, qint64 count, Lines lineMarks)
    : in(scanner), stretches(scanner, lineMarks == Marked ? NextLine : NextWords, count * usualWord), lines(lineMarks),
      parts(std::size_t(stretches.MostAtOnce())) {}

TextNumbers::~TextNumbers() {
    if (slot < 0 || slot >= ready)
        return;
    const Part& part = parts[std::size_t(slot)];
    const double* const first = part.Numbers.data();
    in.Seek(stretches.Start(slot));
    in.SkipWords(next - first - (lines == Marked ? std::count(first, next, LineEnd) : 0));
}

bool TextNumbers::more() {
    while (next == there) {
        if (slot >= 0 && slot < ready && !parts[std::size_t(slot)].IsWhole)
            return false;
        if (slot + 1 < ready) {
            ++slot;
        } else {
            const int got = stretches.Read([this](int made, std::string_view text) {
                Part& part = parts[std::size_t(made)];
                part.Numbers.clear();
                part.IsWhole = AppendReals(text, lines == Marked, part.Numbers);
            });
            ready = got;
            slot = 0;
            if (got == 0) // the scanner stands behind the last number
                return false;
        }
        const Part& part = parts[std::size_t(slot)];
        next = part.Numbers.data();
        there = next + part.Numbers.size();
    }
    return true;
}

std::span<const double> TextNumbers::Some(qint64 most) {
    if (most < 1 || (next == there && !more()))
        return {};
    const std::span<const double> some(next, std::size_t(std::min<qint64>(most, there - next)));
    next += some.size();
    return some;
}

bool SkipWords(FileScanner& in, qint64 count) {
    TextStretches stretches(in, NextWords, count * usualWord);
    std::vector<qint64> words(std::size_t(stretches.MostAtOnce()));
    while (count > 0) {
        const int got =
            stretches.Read([&words](int slot, std::string_view text) { words[std::size_t(slot)] = countWords(text); });
        if (got == 0)
            return false;
        for (int slot = 0; slot < got; ++slot) {
            const qint64 here = words[std::size_t(slot)];
            if (here >= count) {
                in.Seek(stretches.Start(slot));
                return in.SkipWords(count);
            }
            count -= here;
        }
    }
    return true;
}
