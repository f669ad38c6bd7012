#include "result/readers/FileScanner.h"

#include "platform/base/Parallel.h"

namespace {

constexpr qint64 bufferBytes = 1 << 17;
constexpr qint64 longestText = 1 << 16;

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

bool FileScanner::GoesOn() {
    stopped = stopped || (progress && !progress(Position(), file.Size()));
    return !stopped;
}

/// Reads on behind what has not been taken. False when nothing comes.
bool FileScanner::refill() {
    GoesOn();
    std::copy(buffer.begin() + next, buffer.begin() + filled, buffer.begin());
    bufferStart += next;
    filled -= next;
    next = 0;
    const qint64 from = bufferStart + filled;
    const qint64 wanted = std::min(std::ssize(buffer) - filled, fileEnd - from);
    const qint64 got = stopped || wanted < 1 ? 0 : file.ReadAt(from, buffer.data() + filled, wanted);
    filled += got;
    isCut = isCut || (got == 0 && !stopped);
    tidyVectorRegisters(); // now come numbers
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
        if (!std::ranges::all_of(*line, IsBlank))
            return line;
    return {};
}

std::string_view FileScanner::Word() {
    while (hasMore() && IsBlank(buffer[std::size_t(next)]))
        ++next;
    qint64 length = 0;
    while (true) {
        while (next + length < filled && !IsBlank(buffer[std::size_t(next + length)]))
            ++length;
        if (next + length < filled || length >= longestText || !refill())
            break;
    }
    const std::string_view word(buffer.data() + next, std::size_t(length));
    next += length;
    return word;
}

bool FileScanner::SkipWords(qint64 count) {
    while (count > 0 && !Word().empty())
        --count;
    return count == 0;
}

std::string_view FileScanner::Ahead() {
    return hasMore() ? std::string_view(buffer.data() + next, std::size_t(filled - next)) : std::string_view();
}

bool FileScanner::readAcross(void* target, qint64 count) {
    if (!CanGive(count))
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

std::vector<std::string_view> WordsOf(std::string_view line) {
    std::vector<std::string_view> words;
    for (std::size_t first = 0, last = 0; first < line.size(); first = last) {
        while (first < line.size() && IsBlank(line[first]))
            ++first;
        for (last = first; last < line.size() && !IsBlank(line[last]);)
            ++last;
        if (last > first)
            words.push_back(line.substr(first, last - first));
    }
    return words;
}
