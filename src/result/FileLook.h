// What a result file looked like at one moment, and what has become of it since. Knows no format and no model.
#pragma once

#include "platform/base/ReadHandle.h"

#include <QByteArray>
#include <limits>

enum class FileChange {
    None,
    Grown,    ///< there is more of it, behind what was there
    Replaced, ///< it holds something else now, or less
    Gone      ///< it can't be opened any more
};

/// Size and time of a file, and some of its bytes here and there. Keeps the file open, and so knows whether what was
/// opened still holds what it held, also when another file has got its name.
class FileLook {
public:
    FileLook() = default;
    /// At a file, or at its first `bytes` as if there were no more of it.
    explicit FileLook(const ReadHandle& openFile, qint64 bytes = std::numeric_limits<qint64>::max());
    /// With one of these changed the file counts as replaced.
    void AddParts(const std::vector<NamedStamp>& otherFiles) { parts = otherFiles; }
    const std::vector<NamedStamp>& Parts() const { return parts; }

    /// The file's bytes at the time of the look.
    qint64 Size() const { return stamp.Size; }
    /// What `now` is in place of the file, which may be another one that begins in the same way.
    FileChange ChangeTo(const ReadHandle& now) const;
    /// What has become of the very file that was looked at. `None` for a look at nothing.
    FileChange ChangeInPlace() const;

private:
    ReadHandle file;
    FileStamp stamp;
    QByteArray probes;
    std::vector<NamedStamp> parts;
};

/// Looks at a file again and again, and tells what has changed since it was opened. When to look is its owner's
/// business.
class FileFollower {
public:
    /// From now on it is this file, which looked so when it was opened.
    void Follow(const QString& filePath, const FileLook& whenOpened);
    FileChange Look();
    /// How many of its first bytes the last two looks found to be the same; what is beyond is still being written.
    qint64 SettledBytes() const { return settled; }

private:
    QString path;
    FileLook opened, last;
    qint64 settled = 0;
};
