// Long runs of text that the cores share: read and parsed in stretches, which are taken in their order. Knows no
// format.
#pragma once

#include "result/readers/FileScanner.h"

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
