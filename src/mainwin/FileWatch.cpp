#include "mainwin/FileWatch.h"

#include <QStorageInfo>
#include <algorithm>
#include <array>

namespace {

bool isFarAway(const QString& path) {
    const QByteArray kind = QStorageInfo(path).fileSystemType();
    constexpr std::array<const char*, 7> far{"nfs", "cifs", "smb", "fuse.", "9p", "ceph", "afs"};
    return std::ranges::any_of(far, [&](const char* name) { return kind.startsWith(name); });
}

} // namespace

FileWatch::FileWatch() {
    connect(&fromTimeToTime, &QTimer::timeout, this, &FileWatch::LookNow);
    connect(&afterWriting, &QTimer::timeout, this, &FileWatch::LookNow);
    // Who writes a file writes often.
    constexpr int pauseMs = 150;
    afterWriting.setSingleShot(true);
    afterWriting.setInterval(pauseMs);
    connect(&watcher, &QFileSystemWatcher::fileChanged, this, [this] {
        if (!afterWriting.isActive())
            afterWriting.start();
    });
}

void FileWatch::Follow(const QString& filePath, const FileLook& whenOpened) {
    constexpr int everyMs = 1000, everyMsFarAway = 5000;
    Stop();
    path = filePath;
    follower.Follow(path, whenOpened);
    watcher.addPath(path);
    fromTimeToTime.start(isFarAway(path) ? everyMsFarAway : everyMs);
}

void FileWatch::Stop() {
    fromTimeToTime.stop();
    afterWriting.stop();
    if (!watcher.files().isEmpty())
        watcher.removePaths(watcher.files());
    change = FileChange::None;
    path.clear();
}

void FileWatch::LookNow() {
    if (path.isEmpty())
        return;
    change = follower.Look();
    // A name that another file has got is no longer watched.
    if (watcher.files().isEmpty() && change != FileChange::Gone)
        watcher.addPath(path);
    emit Looked();
}
