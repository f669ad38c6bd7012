// Words of long texts on all cores: as numbers, or passed over. Knows no format.
#pragma once

#include "result/readers/TextStretches.h"

#include <array>
#include <utility>

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
    static constexpr std::size_t MostInRow = 256;

    /// `count`: about how many there are.
    TextNumbers(FileScanner& scanner, qint64 count, Lines lines = Ignored);
    /// The scanner then stands behind the last number that was taken.
    ~TextNumbers();
    TextNumbers(const TextNumbers&) = delete;
    TextNumbers& operator=(const TextNumbers&) = delete;

    /// Up to `most` of those that come next; none at the file's end and where a word is no number. Valid until the next
    /// call.
    std::span<const T> Some(qint64 most);
    /// The next `count`, at most `MostInRow`, together; null when there are fewer. Valid until the next call.
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
    std::array<T, MostInRow> row;
};

/// Past so many words; false when there are fewer.
bool SkipWords(FileScanner& in, qint64 count);
/// To the next such byte, or to the file's end; however far that is.
bool SkipTo(FileScanner& in, char wanted);
