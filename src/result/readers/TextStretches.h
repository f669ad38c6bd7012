// Long runs of text that the cores share: read and parsed in stretches, which are taken in their order. Knows no
// format.
#pragma once

#include "result/readers/FileScanner.h"
#include "result/readers/numberTypes.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <span>
#include <thread>

/// Where the next piece of a text begins: the first index from `from` (1 or more) on, npos for none in this text.
using CutRule = std::size_t (*)(std::string_view text, std::size_t from);

/// Behind a blank, so that words are whole.
std::size_t NextWords(std::string_view text, std::size_t from);
/// Behind a line's end.
std::size_t NextLine(std::string_view text, std::size_t from);
/// Just there: for who looks at bytes alone.
std::size_t Anywhere(std::string_view text, std::size_t from);

class TextStretches {
public:
    /// How long a stretch is. Tests make it short, so that small files have many.
    inline static qint64 StretchBytes = 1 << 18;
    /// As many are at work or done and not taken yet at most.
    static std::size_t Slots();

    /// Does what is to be done with a stretch; what comes of it is kept by slot. Called from several threads at once.
    using ParseStretch = std::function<void(std::size_t slot, std::string_view text)>;

    /// From where the scanner stands. No piece may be longer than 64 KB.
    TextStretches(FileScanner& scanner, CutRule rule, ParseStretch work);
    /// Waits for what is at work.
    ~TextStretches();
    TextStretches(const TextStretches&) = delete;
    TextStretches& operator=(const TextStretches&) = delete;

    /// The slot of the next stretch, the caller's until the next call; the scanner stands behind the stretch. Nothing
    /// at the file's end, once the scanner's watch says no, and where a piece is too long. `wanted`: about how many
    /// bytes will still be taken, as others go on reading meanwhile, and what they read in vain costs time.
    std::optional<std::size_t> Next(qint64 wanted);
    /// Where the stretch in a slot begins in the file.
    qint64 Start(std::size_t slot) const { return stretches[slot].Start; }

private:
    struct Stretch {
        qint64 From = 0, To = 0;   ///< what it was to be
        qint64 Start = 0, End = 0; ///< and is, by whole pieces
        bool IsReady = false;
        std::exception_ptr Failure;
    };
    Stretch& stretchAt(std::int64_t index) { return stretches[std::size_t(index) % stretches.size()]; }
    bool canBegin() const { return planned < oldest + std::ssize(stretches) && plannedEnd < limit; }
    void workOnOne(std::unique_lock<std::mutex>& guard, std::vector<char>& buffer);
    std::string_view textOf(Stretch& stretch, std::vector<char>& buffer, bool isFirst) const;
    void startHelpers();

    FileScanner& in;
    const CutRule cut;
    const ParseStretch parse;
    std::vector<Stretch> stretches;
    std::vector<char> ownBuffer;
    std::int64_t oldest = 0;  ///< the one that the caller has, or the next one
    std::int64_t next = 0;    ///< to be taken
    std::int64_t planned = 0; ///< so many have begun
    qint64 plannedEnd, limit; ///< where those end, and where the last may
    bool isOver = false;
    std::mutex lock;                 ///< of all above, but for what somebody works on
    std::condition_variable changed; ///< when one is ready, and when there is more to do
    std::vector<std::jthread> helpers;
};

/// How many bytes some words will take, by those that have been there.
class WordLength {
public:
    qint64 BytesFor(qint64 count) const { return qint64(double(count) * bytes / words) + 1; }
    void Add(qint64 moreWords, qint64 moreBytes) {
        words += double(moreWords);
        bytes += double(moreBytes);
    }

private:
    double words = 1, bytes = 8;
};

/// The words of a file as numbers, one after the other, of the types that `WordNumbers` has.
template<class T>
class TextNumbers {
public:
    enum Lines : std::uint8_t { Ignored, Marked };

    /// `count`: about how many there are.
    TextNumbers(FileScanner& scanner, qint64 count, Lines lines = Ignored);
    /// The scanner then stands behind the last number that was taken.
    ~TextNumbers();
    TextNumbers(const TextNumbers&) = delete;
    TextNumbers& operator=(const TextNumbers&) = delete;

    /// Up to `most` of those that come next; none at the file's end and where a word is no number. Valid until the next
    /// call.
    std::span<const T> Some(qint64 most);
    /// The next `count`, at most 256, together; null when there are fewer. Valid until the next call.
    const T* Row(std::size_t count) {
        if (count > std::size_t(there - next))
            return rowAcross(count);
        return std::exchange(next, next + count);
    }
    /// To the end of the line of the last number that was taken, when lines are marked.
    void SkipLine();
    /// Hands the next `count` on in pieces, `take(numbers)` each. False when there are fewer.
    template<class Take>
    bool Hand(qint64 count, const Take& take) {
        while (count > 0) {
            const std::span<const T> some = Some(count);
            if (some.empty())
                return false;
            take(some);
            count -= qint64(some.size());
        }
        return true;
    }

private:
    bool more();
    const T* rowAcross(std::size_t count);

    FileScanner& in;
    const Lines lines;
    qint64 expected, seen = 0;
    WordLength wordLength;
    std::vector<WordNumbers<T>> parts;
    TextStretches stretches;
    std::optional<std::size_t> slot;
    const T *next = nullptr, *there = nullptr;
    std::array<T, 256> row;
};

/// Past so many words; false when there are fewer.
bool SkipWords(FileScanner& in, qint64 count);
/// To the next such byte, or to the file's end; however far that is.
bool SkipTo(FileScanner& in, char wanted);
