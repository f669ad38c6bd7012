#include "result/readers/FrdBlock.h"

namespace frd {

namespace {

constexpr std::int32_t realsPerLine = 6;

using TakeEntry = std::function<void(std::int64_t, std::span<const double>)>;

/// The entries of a stretch of text.
struct Part {
    std::vector<std::int64_t> Ids;
    std::vector<double> Reals;
    bool HasEnd = false;
    std::size_t Used = 0; ///< bytes, with the line that ends the block
};

/// The reals of an entry, whose later lines `text` begins with. False when some of them are missing.
bool readEntry(std::string_view line, std::string_view& text, const Block& block, Part& part) {
    const qint64 start = KeyWidth + IdWidth(block.Written);
    part.Ids.push_back(WholeAt(line, KeyWidth, IdWidth(block.Written)));
    std::int32_t onLine = 0;
    for (std::int32_t c = 0; c < block.Components; ++c, ++onLine) {
        if (onLine == realsPerLine) {
            line = TakeLine(text);
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
    const std::size_t whole = text.size();
    part.HasEnd = false;
    while (!text.empty() && !part.HasEnd) {
        const std::string_view line = TakeLine(text);
        part.HasEnd = !IsKey(line, "-1") || !readEntry(line, text, block, part);
    }
    part.Ids.resize(part.Reals.size() / std::size_t(block.Components)); // those that have all their reals
    part.Used = whole - text.size();
}

void readText(FileScanner& in, const Block& block, const TakeEntry& take) {
    const auto components = std::size_t(block.Components);
    TextStretches stretches(in, NextEntry, block.Entries * (KeyWidth + 10 + block.Components * RealWidth + 1));
    std::vector<Part> parts(std::size_t(stretches.MostAtOnce()));
    while (true) {
        const int got =
            stretches.Read([&](int slot, std::string_view text) { parse(text, block, parts[std::size_t(slot)]); });
        for (int slot = 0; slot < got; ++slot) {
            const Part& part = parts[std::size_t(slot)];
            for (std::size_t entry = 0; entry < part.Ids.size(); ++entry)
                take(part.Ids[entry], std::span(part.Reals).subspan(entry * components, components));
            if (part.HasEnd) {
                in.Seek(stretches.Start(slot) + qint64(part.Used));
                return;
            }
        }
        if (got == 0)
            return;
    }
}

void readBinary(FileScanner& in, const Block& block, const TakeEntry& take) {
    const NumberType type = block.Written == Singles ? NumberType::Float32 : NumberType::Float64;
    std::vector<double> reals(std::size_t(block.Components));
    std::vector<char> bytes(sizeof(std::int32_t) + reals.size() * std::size_t(BytesOf(type)));
    for (std::int64_t left = block.Entries; left > 0 && in.ReadBytes(bytes.data(), std::ssize(bytes)); --left) {
        std::int64_t id = 0;
        ConvertNumbers(bytes.data(), 1, NumberType::Int32, false, &id);
        ConvertNumbers(bytes.data() + sizeof(std::int32_t), block.Components, type, false, reals.data());
        take(id, reals);
    }
}

} // namespace

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
        const int power = int(digitAt(10) * 10 + digitAt(11));
        double value = 0;
        if (most < 10 && (text[0] == ' ' || text[0] == '-') && text[2] == '.' && text[8] == 'E' &&
            (isUp || text[9] == '-') && ScaledReal(digits, (isUp ? power : -power) - 5, value))
            return text[0] == '-' ? -value : value;
    }
    return NumberAt<double>(line, first, RealWidth);
}

std::string_view TakeLine(std::string_view& text) {
    std::size_t length = std::min(text.find('\n'), text.size());
    length = std::min(text.substr(0, length).find('\r'), length);
    const std::string_view line = text.substr(0, length);
    text.remove_prefix(length);
    const bool isPair = text.starts_with("\r\n");
    text.remove_prefix(std::min<std::size_t>(isPair ? 2 : 1, text.size()));
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

bool Block::Skip(FileScanner& in) const {
    if (!IsText()) {
        const qint64 bytes = Entries * (4 + Components * (Written == Singles ? 4 : 8));
        const bool isThere = bytes <= in.Remaining();
        in.Seek(Offset + std::min(bytes, in.Remaining()));
        return isThere;
    }
    // Where all entries are as long as the first, one look at the end is enough.
    for (qint64 left = (Components - 1) / realsPerLine + 1; left > 0; --left)
        in.Line();
    const qint64 end = Offset + Entries * (in.Position() - Offset);
    if (end < in.End()) {
        in.Seek(end);
        if (const auto line = in.Line(); line && IsKey(*line, "-3"))
            return true;
        in.Seek(Offset);
    }
    auto line = in.Line();
    while (line && (IsKey(*line, "-1") || IsKey(*line, "-2")))
        line = in.Line();
    return line && IsKey(*line, "-3");
}

void Block::Read(FileScanner& in, const TakeEntry& take) const {
    in.Seek(Offset);
    // In text it is the mark that counts.
    IsText() ? readText(in, *this, take) : readBinary(in, *this, take);
}

} // namespace frd
