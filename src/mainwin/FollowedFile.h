// The open file of a session while somebody writes to it: what has become of it is told, and it is read anew, on
// command or by itself as it grows. What shows of it then is its owner's business.
#pragma once

#include "mainwin/DocumentReading.h"
#include "mainwin/FileWatch.h"

#include <QElapsedTimer>

class FollowedFile : public QObject {
    Q_OBJECT

public:
    /// Both must outlive it.
    FollowedFile(Session& session, DocumentReading& reading);

    /// Makes what has been read the document.
    std::function<void(const DocumentReading::Anew&)> TakeUp;
    /// Whether it may be read by itself now, as far as its owner is concerned.
    std::function<bool()> MayRead;

    /// Begins with the file as it is open, or ends it when none is.
    void Begin();
    void LookNow() { watch.LookNow(); }
    /// Reads it as it is now; the user is told what came of it.
    void Reload();
    /// What has become of the file since it was opened; empty while there is nothing to tell.
    const QString& Note() const { return note; }

signals:
    void NoteChanged();
    void Told(const QString& line);

private:
    void onLooked();
    bool mayFollow() const;
    void noteChange();
    void follow();

    Session& session;
    DocumentReading& reading;
    FileWatch watch;
    QString note;
    QElapsedTimer sinceReading;
    qint64 readingMs = 0;    ///< what the last one took
    qint64 awaitedBytes = 0; ///< with fewer bytes of the file there is nothing new
    qint64 triedBytes = -1;  ///< with so many nothing came of it
    bool wasRefused = false; ///< since the file could not be read
};
