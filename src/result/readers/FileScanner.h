// A file of text, or of text and binary in turn, from front to back: lines, words, numbers, bytes. Knows no format.
#pragma once

#include "platform/base/ReadHandle.h"
#include "result/readers/WordNumbers.h"
#include "result/readers/readerTable.h"

#include <charconv>
#include <optional>
#include <string_view>

/// What the file no longer has reads as nothing. Words and lines of more than 64 KB are cut there.
class FileScanner {
public:
    /// `watch`, when given, is told of each piece that is read; once it says no, all reads as the file's end.
    explicit FileScanner(const ReadHandle& openFile, const LoadProgress& watch = {});
    /// From `position` on, as if the file ended at `end`.
    FileScanner(const ReadHandle& openFile, qint64 position, qint64 end);

    qint64 Position() const { return bufferStart + next; }
    qint64 Remaining() const { return stopped ? 0 : std::max<qint64>(fileEnd - Position(), 0); }
    bool WasStopped() const { return stopped; }
    /// Whether so many bytes could still come; when not, the file is taken to be cut.
    bool CanGive(qint64 bytes) {
        isCut = isCut || (bytes > Remaining() && !stopped);
        return bytes <= Remaining();
    }
    /// Whether more was asked for than the file has.
    bool IsCut() const { return isCut; }
    /// Asks the watch, for who reads the file beside the scanner.
    bool GoesOn();
    const ReadHandle& File() const { return file; }
    /// Where what is read ends.
    qint64 End() const { return fileEnd; }
    /// Room for who reads beside the scanner, left here to be used again.
    std::vector<char>& SpareBuffer() { return spareBuffer; }
    void Seek(qint64 position);

    /// The next line without its end, which is \n, \r\n or \r; nothing at the file's end. Valid until the next call.
    std::optional<std::string_view> Line();
    /// The next line that isn't blank.
    std::optional<std::string_view> FilledLine();
    /// What stands up to the next blank or line's end; empty at the file's end. Valid until the next call.
    std::string_view Word();
    bool SkipWords(qint64 count);
    /// The next byte; nothing at the file's end.
    std::optional<char> Byte() { return hasMore() ? std::optional(buffer[std::size_t(next++)]) : std::nullopt; }
    /// Some of the bytes that come next, none only at the file's end; `Pass` goes on behind the first of them.
    std::string_view Ahead();
    void Pass(qint64 count) { next += count; }
    /// All `count` bytes or none.
    bool ReadBytes(void* target, qint64 count) {
        // Binary meshes are read number by number.
        if (count > filled - next)
            return readAcross(target, count);
        if (count > 0) // nothing may have no target
            std::memcpy(target, buffer.data() + next, std::size_t(count));
        next += count;
        return true;
    }

    /// The next word as a number.
    template<class T>
    bool Number(T& value) {
        return NumberOf(Word(), value);
    }
    /// A text as a number.
    static bool NumberOf(std::string_view text, double& value) { return RealOf(text, value); }
    template<std::integral T>
    static bool NumberOf(std::string_view text, T& value) {
        const auto end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, value);
        return error == std::errc() && stop == end;
    }

private:
    bool refill();
    bool readAcross(void* target, qint64 count);
    bool hasMore() { return next < filled || refill(); }

    ReadHandle file;
    LoadProgress progress;
    qint64 fileEnd;
    std::vector<char> buffer;
    std::vector<char> spareBuffer;
    qint64 bufferStart = 0; ///< file offset of the buffer's first byte
    qint64 filled = 0;
    qint64 next = 0; ///< first byte of the buffer that has not been taken
    bool stopped = false, isCut = false;
};

/// The words between the blanks of a line.
std::vector<std::string_view> WordsOf(std::string_view line);
