#include "result/readers/FrdBlock.h"

namespace frd {

namespace {

constexpr std::int32_t realsPerLine = 6;

NumberType binaryType(Form form) {
    return form == Singles ? NumberType::Float32 : NumberType::Float64;
}

/// The powers of ten that a double has exactly.
constexpr auto exactPowers = [] {
    std::array<double, 23> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i)
        powers[i] = powers[i - 1] * 10;
    return powers;
}();

/// The entries of a stretch of text.
struct Part {
    std::vector<std::int64_t> Ids;
    std::vector<double> Reals;
    bool HasEnd = false;
    std::size_t Used = 0; ///< bytes, with the line that ends the block
};

/// The reals of an entry, whose first line was taken. False when some of them are missing.
bool readEntry(std::string_view line, Lines& lines, const Block& block, Part& part) {
    const qint64 start = KeyWidth + IdWidth(block.Written);
    part.Ids.push_back(WholeAt(line, KeyWidth, IdWidth(block.Written)));
    std::int32_t onLine = 0;
    for (std::int32_t c = 0; c < block.Components; ++c, ++onLine) {
        if (onLine == realsPerLine) {
            line = lines.Take();
            onLine = 0;
            if (!IsKey(line, "-2"))
                return false;
        }
        part.Reals.push_back(RealAt(line, start + onLine * RealWidth));
    }
    return true;
}

void parse(std::string_view text, const Block& block, Part& part) {
    part.Ids.clear();
    part.Reals.clear();
    part.HasEnd = false;
    Lines lines(text);
    while (!lines.AreOver() && !part.HasEnd) {
        const std::string_view line = lines.Take();
        part.HasEnd = !IsKey(line, "-1") || !readEntry(line, lines, block, part);
    }
    // Those that have all their reals.
    part.Ids.resize(part.Reals.size() / std::size_t(block.Components));
    part.Reals.resize(part.Ids.size() * std::size_t(block.Components));
    part.Used = text.size() - lines.BytesLeft();
}

void readText(FileScanner& in, const Block& block, const Block::TakeEntries& take) {
    const qint64 entryBytes = KeyWidth + IdWidth(block.Written) + block.Components * RealWidth + 1;
    std::vector<Part> parts(TextStretches::Slots());
    TextStretches stretches(in, NextEntry,
                            [&](std::size_t slot, std::string_view text) { parse(text, block, parts[slot]); });
    std::int64_t left = block.Entries;
    while (const auto slot = stretches.Next(left * entryBytes)) {
        const Part& part = parts[*slot];
        take(part.Ids, part.Reals);
        left -= std::ssize(part.Ids);
        if (part.HasEnd) {
            in.Seek(stretches.Start(*slot) + qint64(part.Used));
            return;
        }
    }
}

void readBinary(FileScanner& in, const Block& block, const Block::TakeEntries& take) {
    constexpr std::int64_t mostAtOnce = 1024;
    const NumberType type = binaryType(block.Written);
    const auto components = std::size_t(block.Components);
    const qint64 entryBytes = qint64(sizeof(std::int32_t)) + block.Components * BytesOf(type);
    std::int64_t left = std::min<std::int64_t>(block.Entries, in.Remaining() / entryBytes);
    std::vector<std::int64_t> ids(std::size_t(std::min(left, mostAtOnce)));
    std::vector<double> reals(ids.size() * components);
    std::vector<char> bytes(ids.size() * std::size_t(entryBytes));
    for (std::size_t here = 0; left > 0; left -= std::int64_t(here)) {
        here = std::size_t(std::min(left, mostAtOnce));
        if (!in.ReadBytes(bytes.data(), qint64(here) * entryBytes))
            return;
        const char* entry = bytes.data();
        for (std::size_t i = 0; i < here; ++i, entry += entryBytes) {
            ConvertNumbers(entry, 1, NumberType::Int32, false, &ids[i]);
            ConvertNumbers(entry + sizeof(std::int32_t), block.Components, type, false, &reals[i * components]);
        }
        take(std::span(ids).first(here), std::span(reals).first(here * components));
    }
}

} // namespace

std::optional<BlockHead> HeadOf(std::string_view line) {
    const auto entries = NumberAt<std::int64_t>(line, 24, 12);
    const auto code = NumberAt<int>(line, 73, 2);
    if (entries < 1 || entries > std::numeric_limits<std::int32_t>::max() || code < ShortText || code > Doubles)
        return {};
    return BlockHead{Form(code), entries};
}

double RealAt(std::string_view line, qint64 first) {
    // -1.23456E-07: each character has its place.
    const auto digitAt = [text = line.data() + first](qint64 place) { return unsigned(text[place]) - '0'; };
    if (first + RealWidth <= qint64(line.size())) {
        const char* const text = line.data() + first;
        unsigned most = std::max({digitAt(1), digitAt(10), digitAt(11)}), digits = digitAt(1);
        for (qint64 place = 3; place < 8; ++place) {
            most = std::max(most, digitAt(place));
            digits = digits * 10 + digitAt(place);
        }
        const bool isUp = text[9] == '+';
        const int power = int(digitAt(10) * 10 + digitAt(11)), exponent = (isUp ? power : -power) - 5;
        if (most < 10 && (text[0] == ' ' || text[0] == '-') && text[2] == '.' && text[8] == 'E' &&
            (isUp || text[9] == '-') && std::abs(exponent) < std::ssize(exactPowers)) {
            // Both are exact, and so what they give is rounded once.
            const double scale = exactPowers[std::size_t(std::abs(exponent))];
            const double value = exponent < 0 ? digits / scale : digits * scale;
            return text[0] == '-' ? -value : value;
        }
    }
    return NumberAt<double>(line, first, RealWidth);
}

std::string_view Lines::Take() {
    std::size_t length = std::min(left.find('\n'), left.size());
    if (hasReturns)
        length = std::min(left.substr(0, length).find('\r'), length);
    const std::string_view line = left.substr(0, length);
    left.remove_prefix(length);
    const bool isPair = left.starts_with("\r\n");
    left.remove_prefix(std::min<std::size_t>(isPair ? 2 : 1, left.size()));
    return line;
}

std::size_t NextEntry(std::string_view text, std::size_t from) {
    constexpr std::size_t keyWidth = KeyWidth;
    for (; from + keyWidth <= text.size(); ++from) {
        const char before = text[from - 1];
        const std::string_view key = text.substr(from, keyWidth);
        if ((before == '\n' || before == '\r') && (key == " -1" || key == " -3"))
            return from;
    }
    return text.npos;
}

bool Block::Skip(FileScanner& in) {
    if (!IsText()) {
        EntryBytes = qint64(sizeof(std::int32_t)) + Components * BytesOf(binaryType(Written));
        const qint64 bytes = Entries * EntryBytes;
        const bool isThere = in.CanGive(bytes);
        in.Seek(Offset + std::min(bytes, in.Remaining()));
        return isThere;
    }
    // Where all entries are as long as the first, one look at the end is enough.
    for (qint64 left = (Components - 1) / realsPerLine + 1; left > 0; --left)
        in.Line();
    const qint64 entryBytes = in.Position() - Offset, end = Offset + Entries * entryBytes;
    if (end < in.End()) {
        in.Seek(end);
        if (const auto line = in.Line(); line && IsKey(*line, "-3")) {
            EntryBytes = entryBytes;
            return true;
        }
        in.Seek(Offset);
    }
    auto line = in.Line();
    while (line && (IsKey(*line, "-1") || IsKey(*line, "-2")))
        line = in.Line();
    return line && IsKey(*line, "-3");
}

ReadRecord Block::RecordReader(const IdIndex& nodes) const {
    if (!IsText())
        return BinaryRecord(binaryType(Written), false, &nodes);
    return [&nodes, form = Written](std::span<const char> record, std::int32_t place, std::int32_t component,
                                    float& value) {
        Lines lines({record.data(), record.size()});
        std::string_view line = lines.Take();
        if (!IsKey(line, "-1") || nodes.Of(WholeAt(line, KeyWidth, IdWidth(form))) != place)
            return false;
        for (; component >= realsPerLine; component -= realsPerLine) {
            line = lines.Take();
            if (!IsKey(line, "-2"))
                return false;
        }
        value = float(RealAt(line, KeyWidth + IdWidth(form) + component * RealWidth));
        return true;
    };
}

void Block::Read(FileScanner& in, const TakeEntries& take) const {
    in.Seek(Offset);
    // In text it is the mark that counts.
    IsText() ? readText(in, *this, take) : readBinary(in, *this, take);
}

} // namespace frd
