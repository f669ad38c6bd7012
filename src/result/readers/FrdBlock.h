// The blocks of a CalculiX file: lines in fixed columns, or binary; nodes and values are entries of so many reals, each
// with the number of its node. Knows no arrays and no steps.
#pragma once

#include "result/readers/ForeignResult.h"
#include "result/readers/TextStretches.h"

namespace frd {

/// How the numbers of a block are written; the files' own codes.
enum Form : std::int8_t { ShortText = 0, LongText = 1, Singles = 2, Doubles = 3 };

inline constexpr qint64 KeyWidth = 3, RealWidth = 12;
constexpr qint64 IdWidth(Form form) {
    return form == ShortText ? 5 : 10;
}

/// A column of a line without the blanks around it.
inline std::string_view Column(std::string_view line, qint64 first, qint64 width) {
    std::string_view text = line.substr(std::min(std::size_t(first), line.size()), std::size_t(width));
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}
/// The number in a column; 0 where there is none.
template<class T>
T NumberAt(std::string_view line, qint64 first, qint64 width) {
    T value{};
    return FileScanner::NumberOf(Column(line, first, width), value) ? value : T{};
}
/// Likewise a whole number, of which there are many in a mesh.
inline std::int64_t WholeAt(std::string_view line, qint64 first, qint64 width) {
    constexpr std::size_t mostDigits = 18;
    const auto end = std::min(std::size_t(first + width), line.size());
    auto at = std::size_t(first);
    while (at < end && line[at] == ' ')
        ++at;
    const std::size_t start = at;
    std::int64_t value = 0;
    for (; at < end && line[at] >= '0' && line[at] <= '9'; ++at)
        value = value * 10 + (line[at] - '0');
    return at >= end && at - start <= mostDigits ? value : NumberAt<std::int64_t>(line, first, width);
}
/// Likewise a real.
double RealAt(std::string_view line, qint64 first);
/// What a block's first line says of it.
struct BlockHead {
    Form Written = LongText;
    std::int64_t Entries = 0;
};
/// Nothing where that can't be.
std::optional<BlockHead> HeadOf(std::string_view line);

/// Whether the line begins with the mark.
inline bool IsKey(std::string_view line, std::string_view key) {
    return (line.starts_with(' ') && line.substr(1).starts_with(key)) || Column(line, 0, KeyWidth) == key;
}
/// The lines of a text one after the other.
class Lines {
public:
    explicit Lines(std::string_view text) : left(text), hasReturns(text.find('\r') != text.npos) {}
    bool AreOver() const { return left.empty(); }
    /// What has not been taken.
    std::size_t BytesLeft() const { return left.size(); }
    /// The next line without its end.
    std::string_view Take();

private:
    std::string_view left;
    const bool hasReturns;
};
/// Where an entry, or the mark of a block's end, begins: for stretches of whole entries.
std::size_t NextEntry(std::string_view text, std::size_t from);

struct Block {
    Form Written = LongText;
    std::int64_t Entries = 0;
    std::int32_t Components = 0;
    qint64 Offset = 0;
    qint64 EntryBytes = 0; ///< of each entry; 0 while they are not known to be of one length

    bool IsText() const { return Written < Singles; }
    /// Goes past the block, before which the scanner stands, and sees how long its entries are. False when it is cut
    /// short.
    bool Skip(FileScanner& in);
    /// Reads one component of a node out of its entry; `nodes` is asked as long as it lives.
    ReadRecord RecordReader(const IdIndex& nodes) const;
    /// Hands on the entries in pieces up to the mark of the block's end, its count, or where one can't be understood:
    /// their numbers, and the reals of each one after the other.
    using TakeEntries = std::function<void(std::span<const std::int64_t> ids, std::span<const double> reals)>;
    void Read(FileScanner& in, const TakeEntries& take) const;
};

} // namespace frd
