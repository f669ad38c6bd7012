#include "result/readers/FileScanner.h"

#include <cmath>
#include <string>

namespace {

constexpr qint64 bufferBytes = 1 << 17;
constexpr qint64 longestText = 1 << 16;

bool isBlank(char c) {
    return static_cast<unsigned char>(c) <= ' ';
}

bool isLineEnd(char c) {
    return c == '\n' || c == '\r';
}

} // namespace

FileScanner::FileScanner(const ReadHandle& openFile, const LoadProgress& watch)
    : file(openFile), progress(watch), fileEnd(openFile.Size()), buffer(bufferBytes) {}

FileScanner::FileScanner(const ReadHandle& openFile, qint64 position, qint64 end)
    : file(openFile), fileEnd(std::min(end, openFile.Size())),
      buffer(std::size_t(std::clamp(end - position, qint64(1), bufferBytes))), bufferStart(position) {}

void FileScanner::Seek(qint64 position) {
    if (position >= bufferStart && position <= bufferStart + filled) {
        next = position - bufferStart;
        return;
    }
    bufferStart = position;
    next = filled = 0;
}

/// Reads on behind what has not been taken. False when nothing comes.
bool FileScanner::refill() {
    if (progress && !stopped && !progress(Position(), file.Size()))
        stopped = true;
    std::copy(buffer.begin() + next, buffer.begin() + filled, buffer.begin());
    bufferStart += next;
    filled -= next;
    next = 0;
    const qint64 from = bufferStart + filled;
    const qint64 wanted = std::min(std::ssize(buffer) - filled, fileEnd - from);
    const qint64 got = stopped || wanted < 1 ? 0 : file.ReadAt(from, buffer.data() + filled, wanted);
    filled += got;
    return got > 0;
}

std::optional<std::string_view> FileScanner::Line() {
    if (!hasMore())
        return {};
    qint64 length = 0;
    // The end may be two characters, and both have to be there to be seen.
    while (true) {
        const char* const text = buffer.data() + next;
        const qint64 there = filled - next;
        while (length < there && !isLineEnd(text[length]))
            ++length;
        if (length + 1 < there || length >= longestText || !refill())
            break;
    }
    const std::string_view line(buffer.data() + next, std::size_t(std::min(length, longestText)));
    next += length;
    if (length >= longestText) {
        // Taken off without moving the buffer, as the line stands in it; the rest is found when more is asked for.
        return line;
    }
    if (next < filled && buffer[std::size_t(next++)] == '\r' && next < filled && buffer[std::size_t(next)] == '\n')
        ++next;
    return line;
}

std::optional<std::string_view> FileScanner::FilledLine() {
    while (const auto line = Line())
        if (!std::ranges::all_of(*line, isBlank))
            return line;
    return {};
}

std::string_view FileScanner::Word() {
    while (hasMore() && isBlank(buffer[std::size_t(next)]))
        ++next;
    qint64 length = 0;
    while (true) {
        while (next + length < filled && !isBlank(buffer[std::size_t(next + length)]))
            ++length;
        if (next + length < filled || length >= longestText || !refill())
            break;
    }
    const std::string_view word(buffer.data() + next, std::size_t(length));
    next += length;
    return word;
}

bool FileScanner::SkipWords(qint64 count) {
    constexpr qint64 stretchBytes = 4096;
    bool inWord = false;
    while (count > 0 && hasMore()) {
        const char* const text = buffer.data() + next;
        const qint64 stretch = std::min(filled - next, stretchBytes);
        if (stretch / 2 + 1 < count) {
            // The words can't come to their end within the stretch: it's enough to count those that begin there.
            std::int32_t begun = !inWord && !isBlank(text[0]);
            for (qint64 i = 1; i < stretch; ++i)
                begun += !isBlank(text[i]) & isBlank(text[i - 1]);
            count -= begun;
            inWord = !isBlank(text[stretch - 1]);
            next += stretch;
            continue;
        }
        for (; inWord && hasMore(); ++next)
            inWord = !isBlank(buffer[std::size_t(next)]);
        if (Word().empty())
            return false;
        --count;
    }
    return count == 0;
}

bool FileScanner::SkipTo(char wanted) {
    for (; hasMore(); next = filled) {
        const char* const start = buffer.data() + next;
        if (const void* found = std::memchr(start, wanted, std::size_t(filled - next))) {
            next += static_cast<const char*>(found) - start;
            return true;
        }
    }
    return false;
}

std::string_view FileScanner::Ahead() {
    return hasMore() ? std::string_view(buffer.data() + next, std::size_t(filled - next)) : std::string_view();
}

bool FileScanner::readAcross(void* target, qint64 count) {
    if (count > Remaining())
        return false;
    auto* out = static_cast<char*>(target);
    while (count > 0) {
        if (!hasMore())
            return false;
        const qint64 part = std::min(count, filled - next);
        std::copy_n(buffer.data() + next, part, out);
        out += part;
        next += part;
        count -= part;
    }
    return true;
}

bool FileScanner::NumberOf(std::string_view text, double& value) {
    if (text.starts_with('+'))
        text.remove_prefix(1);
    const auto parse = [&value](std::string_view spelled) {
        const char* const end = spelled.data() + spelled.size();
        const auto [stop, error] = std::from_chars(spelled.data(), end, value);
        if (error == std::errc::result_out_of_range)
            value = spelled.find("e-") != spelled.npos || spelled.find("E-") != spelled.npos ? 0 : HUGE_VAL;
        return error != std::errc::invalid_argument && stop == end;
    };
    if (parse(text))
        return true;
    constexpr std::size_t longest = 60;
    if (text.size() > longest || text.find_first_of("dD") == text.npos)
        return false;
    std::string spelled(text);
    for (char& c : spelled)
        c = c == 'd' || c == 'D' ? 'e' : c;
    return parse(spelled);
}

std::vector<std::string_view> WordsOf(std::string_view line) {
    std::vector<std::string_view> words;
    for (std::size_t first = 0, last = 0; first < line.size(); first = last) {
        while (first < line.size() && isBlank(line[first]))
            ++first;
        for (last = first; last < line.size() && !isBlank(line[last]);)
            ++last;
        if (last > first)
            words.push_back(line.substr(first, last - first));
    }
    return words;
}
