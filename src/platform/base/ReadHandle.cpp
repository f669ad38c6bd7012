#include "platform/base/ReadHandle.h"

#include "platform/base/NativePath.h"

#include <bit>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

static_assert(std::endian::native == std::endian::little, "numbers are read as they stand in the file");

struct ReadHandle::Descriptor {
    int number;
    qint64 size;
    Descriptor(int openNumber, qint64 openSize) : number(openNumber), size(openSize) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { ::close(number); }
};

ReadHandle ReadHandle::Open(const QString& path) {
    ReadHandle handle;
    // Without O_NONBLOCK the open of a pipe would wait for its writer.
    const int number = ::open(NativePath::Of(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (number < 0)
        return handle;
    struct stat status = {};
    if (::fstat(number, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(number);
        return handle;
    }
    handle.descriptor = std::make_shared<const Descriptor>(number, qint64(status.st_size));
    return handle;
}

qint64 ReadHandle::Size() const {
    return descriptor ? descriptor->size : 0;
}

std::optional<FileStamp> ReadHandle::Stamp() const {
    struct stat status = {};
    if (!descriptor || ::fstat(descriptor->number, &status) != 0)
        return {};
    constexpr qint64 nsPerSecond = 1'000'000'000;
    return FileStamp{quint64(status.st_dev), quint64(status.st_ino), qint64(status.st_size),
                     qint64(status.st_mtim.tv_sec) * nsPerSecond + status.st_mtim.tv_nsec};
}

qint64 ReadHandle::ReadAt(qint64 offset, void* target, qint64 count) const {
    qint64 done = 0;
    while (descriptor && done < count) {
        const ssize_t part =
            ::pread(descriptor->number, static_cast<char*>(target) + done, std::size_t(count - done), offset + done);
        if (part < 0 && errno == EINTR)
            continue;
        if (part <= 0)
            break;
        done += part;
    }
    return done;
}

int ReadHandle::Duplicate() const {
    if (!descriptor)
        return -1;
    // A mere copy of the descriptor would share its position with every other one.
    const std::string own = "/proc/self/fd/" + std::to_string(descriptor->number);
    const int number = ::open(own.c_str(), O_RDONLY | O_CLOEXEC);
    return number >= 0 ? number : ::fcntl(descriptor->number, F_DUPFD_CLOEXEC, 0);
}

SequentialReader::SequentialReader(const ReadHandle& source, qint64 position, qint64 bytes)
    : file(source), buffer(new char[std::size_t(bytes)]), bufferBytes(bytes), bufferStart(position) {}

SequentialReader::~SequentialReader() = default;

bool SequentialReader::ReadBytes(void* target, qint64 count) {
    if (filled - next >= count) {
        std::memcpy(target, buffer.get() + next, std::size_t(count));
        next += count;
        return true;
    }
    if (Remaining() < count) {
        Skip(count);
        return false;
    }
    auto* out = static_cast<char*>(target);
    const qint64 buffered = filled - next;
    std::memcpy(out, buffer.get() + next, std::size_t(buffered));
    out += buffered;
    count -= buffered;
    bufferStart += filled;
    next = filled = 0;
    if (count >= bufferBytes) {
        const qint64 got = file.ReadAt(bufferStart, out, count);
        bufferStart += got;
        return got == count;
    }
    filled = file.ReadAt(bufferStart, buffer.get(), bufferBytes);
    next = std::min(count, filled);
    std::memcpy(out, buffer.get(), std::size_t(next));
    return next == count;
}

void SequentialReader::Skip(qint64 count) {
    missed += std::max<qint64>(count - Remaining(), 0);
    count = std::min(count, Remaining());
    if (count <= 0)
        return;
    if (count <= filled - next) {
        next += count;
        return;
    }
    bufferStart += next + count;
    next = filled = 0;
}
