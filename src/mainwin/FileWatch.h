// When the open file is looked at: from time to time, and soon after somebody has written to it. What follows from what
// has become of it is its owner's business.
#pragma once

#include "result/FileLook.h"

#include <QFileSystemWatcher>
#include <QTimer>

class FileWatch : public QObject {
    Q_OBJECT

public:
    FileWatch();

    /// Begins with a file that looked so when it was opened.
    void Follow(const QString& filePath, const FileLook& whenOpened);
    void Stop();
    /// Not only when it is time; nothing when no file is followed.
    void LookNow();

    FileChange Change() const { return change; }
    /// How many of the file's first bytes are no longer being written.
    qint64 SettledBytes() const { return follower.SettledBytes(); }

signals:
    void Looked();

private:
    QString path;
    FileFollower follower;
    FileChange change = FileChange::None;
    QFileSystemWatcher watcher;
    QTimer fromTimeToTime, afterWriting;
};
