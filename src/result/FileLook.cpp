#include "result/FileLook.h"

namespace {

/// Some of a file's first `size` bytes: the first, the last and some in between, where a new calculation has others.
QByteArray probesOf(const ReadHandle& file, qint64 size) {
    constexpr qint64 atTheEnds = 512, between = 64, places = 16;
    QByteArray probes;
    const auto take = [&](qint64 first, qint64 count) {
        QByteArray bytes(std::min(count, size - first), Qt::Uninitialized);
        bytes.resize(file.ReadAt(first, bytes.data(), bytes.size()));
        probes += bytes;
    };
    take(0, atTheEnds);
    if (size <= atTheEnds)
        return probes;
    for (qint64 i = 1; i < places; ++i)
        take(size / places * i, between);
    take(std::max(size - atTheEnds, atTheEnds), atTheEnds);
    return probes;
}

} // namespace

FileLook::FileLook(const ReadHandle& openFile, qint64 bytes)
    : file(openFile), stamp(file.Stamp().value_or(FileStamp())) {
    stamp.Size = std::min(stamp.Size, bytes);
    probes = probesOf(file, stamp.Size);
}

FileChange FileLook::ChangeTo(const ReadHandle& now) const {
    const std::optional<FileStamp> found = now.Stamp();
    if (!found)
        return FileChange::Gone;
    const bool isOther = std::ranges::any_of(
        parts, [](const NamedStamp& part) { return ReadHandle::Open(part.Path).Stamp() != part.Stamp; });
    if (isOther)
        return FileChange::Replaced;
    if (*found == stamp)
        return FileChange::None;
    return found->Size > stamp.Size && probesOf(now, stamp.Size) == probes ? FileChange::Grown : FileChange::Replaced;
}

FileChange FileLook::ChangeInPlace() const {
    return file.IsOpen() ? ChangeTo(file) : FileChange::None;
}

void FileFollower::Follow(const QString& filePath, const FileLook& whenOpened) {
    path = filePath;
    opened = last = whenOpened;
    settled = opened.Size();
}

FileChange FileFollower::Look() {
    const ReadHandle now = ReadHandle::Open(path);
    const FileChange lately = last.ChangeTo(now);
    const bool begunAnew = lately == FileChange::Replaced || lately == FileChange::Gone;
    settled = begunAnew ? 0 : last.Size();
    if (lately != FileChange::None)
        last = FileLook(now);
    return opened.ChangeTo(now);
}
