// Long runs of text that the cores share: read and parsed in stretches, which are taken in their order. Knows no
// format.
#pragma once

#include "result/readers/FileScanner.h"
#include "result/readers/numberTypes.h"

#include <functional>
#include <mutex>
#include <span>

/// Where the next piece of a text begins: the first index from `from` (1 or more) on, npos for none in this text.
using CutRule = std::size_t (*)(std::string_view text, std::size_t from);

/// Behind a blank, so that words are whole.
std::size_t NextWords(std::string_view text, std::size_t from);
/// Behind a line's end.
std::size_t NextLine(std::string_view text, std::size_t from);

class TextStretches {
public:
    /// How long a stretch is. Tests make it short, so that small files have many.
    inline static qint64 StretchBytes = 1 << 18;

    /// From where the scanner stands, over about so many bytes: with more it goes on, but what is read ahead in vain
    /// costs time. No piece may be longer than 64 KB.
    TextStretches(FileScanner& scanner, CutRule rule, qint64 expectedBytes);

    /// Calls `parse(slot, text)` for some further stretches, slots from 0 on, from several threads at once. Gives their
    /// number: 0 at the file's end, once the scanner's watch says no, and where a piece is too long. The scanner stands
    /// behind them.
    int Read(const std::function<void(int slot, std::string_view text)>& parse);
    /// As many slots are used at most.
    int MostAtOnce() const { return int(stretches.size()); }
    /// Where the stretch in a slot begins in the file.
    qint64 Start(int slot) const { return stretches[std::size_t(slot)].Start; }

private:
    struct Stretch {
        qint64 Start = 0, End = 0;
    };
    /// A buffer while a stretch is at work: few are in use at once, and the processor's cache holds them.
    class Buffer;
    std::string_view textOf(Stretch& stretch, std::vector<char>& buffer, qint64 from, qint64 to, bool isFirst) const;

    FileScanner& in;
    const CutRule cut;
    qint64 expected;
    std::vector<Stretch> stretches;
    std::mutex lock; ///< of the spare buffers
};

/// The words of a file as numbers, one after the other.
class TextNumbers {
public:
    enum Lines : std::uint8_t { Ignored, Marked }; ///< by `LineEnd`

    /// `count`: about how many there are.
    TextNumbers(FileScanner& scanner, qint64 count, Lines lines = Ignored);
    /// The scanner then stands behind the last number that was taken.
    ~TextNumbers();
    TextNumbers(const TextNumbers&) = delete;
    TextNumbers& operator=(const TextNumbers&) = delete;

    /// Up to `most` of those that come next; none at the file's end and where a word is no number. Valid until the next
    /// call.
    std::span<const double> Some(qint64 most);
    /// Hands the next `count` on in pieces, `take(numbers)` each. False when there are fewer.
    template<class T, class Take>
    bool Hand(qint64 count, const Take& take) {
        constexpr qint64 mostAtOnce = 8192;
        std::vector<T> numbers(std::size_t(std::clamp<qint64>(count, 1, mostAtOnce)));
        while (count > 0) {
            const std::span<const double> some = Some(std::min(count, mostAtOnce));
            if (some.empty())
                return false;
            std::ranges::transform(some, numbers.begin(), [](double number) { return NumberAs<T>(number); });
            take(std::span<const T>(numbers).first(some.size()));
            count -= qint64(some.size());
        }
        return true;
    }
    bool Next(double& value) {
        if (next == there && !more())
            return false;
        value = *next++;
        return true;
    }

private:
    struct Part {
        std::vector<double> Numbers;
        bool IsWhole = true; ///< up to the stretch's end
    };
    bool more();

    FileScanner& in;
    TextStretches stretches;
    const Lines lines;
    std::vector<Part> parts;
    int slot = -1, ready = 0;
    const double *next = nullptr, *there = nullptr;
};

/// Past so many words; false when there are fewer.
bool SkipWords(FileScanner& in, qint64 count);
