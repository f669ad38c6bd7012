// A file open for reading, shared by all copies of the handle; closed with the last of them. Knows no format.
#pragma once

#include <QString>
#include <cstring>
#include <memory>
#include <optional>

/// What the system tells of a file: the same again as long as nobody writes to it or puts another in its place.
struct FileStamp {
    quint64 Device = 0, Number = 0; ///< which file it is
    qint64 Size = 0;
    qint64 ModifiedNs = 0;
    bool operator==(const FileStamp&) const = default;
};

/// A file by its name, and what the system told of it at one moment; nothing when it was not there.
struct NamedStamp {
    QString Path;
    std::optional<FileStamp> Stamp;
};

class ReadHandle {
public:
    /// Opens a regular file for reading and lets others read it too. The handle is closed when that fails: no such
    /// file, a folder, a pipe, no permission.
    static ReadHandle Open(const QString& path);

    bool IsOpen() const { return descriptor != nullptr; }
    /// Gives up this copy's share.
    void Close() { descriptor.reset(); }
    /// The file's size in bytes when it was opened; 0 when closed.
    qint64 Size() const;
    /// Of the open file as it is now, whatever name it has by now; nothing when closed.
    std::optional<FileStamp> Stamp() const;
    /// Reads up to `count` bytes from `offset` on; the number read, less than `count` only at the file's end or on an
    /// error. May be called from several threads at once.
    qint64 ReadAt(qint64 offset, void* target, qint64 count) const;
    /// A system descriptor of the same file for code that is not ours: for reading alone, with a position of its own
    /// where the system can give one. The caller closes it; -1 when there is none.
    int Duplicate() const;

private:
    struct Descriptor;
    std::shared_ptr<const Descriptor> descriptor;
};

/// Reads a file from front to back, little-endian numbers, and skips without reading what is skipped. A read that meets
/// the file's end delivers nothing and leaves the position at the end.
class SequentialReader {
public:
    explicit SequentialReader(const ReadHandle& file, qint64 position = 0, qint64 bufferBytes = 65536);
    ~SequentialReader();

    qint64 Position() const { return bufferStart + next; }
    qint64 Remaining() const { return file.Size() - Position(); }
    /// How many bytes were to be read or skipped that the file does not have.
    qint64 Missed() const { return missed; }
    bool ReadInt32(std::int32_t& value) { return read(value); }
    bool ReadDouble(double& value) { return read(value); }
    /// All `count` bytes or none.
    bool ReadBytes(void* target, qint64 count);
    /// Moves on by `count` bytes, at most to the file's end; a negative count moves nothing.
    void Skip(qint64 count);

private:
    /// Meshes are read number by number: one that stands in the buffer costs no call.
    template<class T>
    bool read(T& value) {
        if (filled - next < qint64(sizeof value))
            return ReadBytes(&value, sizeof value);
        std::memcpy(&value, buffer.get() + next, sizeof value);
        next += qint64(sizeof value);
        return true;
    }

    const ReadHandle& file;
    std::unique_ptr<char[]> buffer;
    qint64 bufferBytes;
    qint64 bufferStart; ///< file offset of the buffer's first byte
    qint64 filled = 0;
    qint64 next = 0; ///< first unread byte of the buffer
    qint64 missed = 0;
};
