#include "mainwin/FollowedFile.h"

#include "app/windows/ShowMessage.h"
#include "platform/base/ReadHandle.h"
#include "platform/widgets/LongWork.h"

using Outcome = DocumentReading::Outcome;

FollowedFile::FollowedFile(Session& ofSession, DocumentReading& readBy) : session(ofSession), reading(readBy) {
    connect(&watch, &FileWatch::Looked, this, &FollowedFile::onLooked);
}

void FollowedFile::Begin() {
    note.clear();
    awaitedBytes = 0;
    triedBytes = -1;
    wasRefused = false;
    sinceReading.start();
    if (session.IsOpen())
        watch.Follow(session.Model.FileName, session.Model.Look);
    else
        watch.Stop();
}

void FollowedFile::onLooked() {
    // One that is written anew begins with nothing settled.
    if (watch.SettledBytes() == 0)
        awaitedBytes = 0;
    if (!session.IsOpen() || LongWork::IsRunning())
        return;
    if (watch.SettledBytes() != triedBytes) {
        triedBytes = -1;
        wasRefused = false;
    }
    noteChange();
    if (mayFollow())
        follow();
}

bool FollowedFile::mayFollow() const {
    constexpr qint64 pauses = 4; // A file that is written all the time is not to take all the time.
    const bool isMoreOrElse = watch.Change() == FileChange::Grown || watch.Change() == FileChange::Replaced;
    const qint64 bytes = watch.SettledBytes();
    return session.Settings.Window.FollowFile && isMoreOrElse && bytes > 0 && bytes >= awaitedBytes &&
           bytes != triedBytes && sinceReading.elapsed() >= pauses * readingMs && MayRead();
}

void FollowedFile::noteChange() {
    const FileChange change = watch.Change();
    const bool follows = session.Settings.Window.FollowFile;
    QString text;
    if (change == FileChange::Grown && !follows)
        text = tr("計算結果ファイルに追加がありました。Ctrl+R で読み直します。");
    if (change == FileChange::Replaced)
        text = follows ? tr("計算結果ファイルが書き換えられています。終わりしだい読み直します。")
                       : tr("計算結果ファイルが書き換えられました。Ctrl+R で読み直します。");
    if (follows && wasRefused && (change == FileChange::Grown || change == FileChange::Replaced))
        text = tr("計算結果ファイルが変わりましたが、いまは読み直すことができません。");
    if (change == FileChange::Gone)
        text = tr("計算結果ファイルを開くことができなくなりました。");
    if (text == note)
        return;
    note = text;
    emit NoteChanged();
}

void FollowedFile::Reload() {
    DocumentReading::Anew anew;
    const QString path = session.Model.FileName;
    const ReadHandle file = ReadHandle::Open(path);
    switch (reading.ReadAnew(file.Size(), false, anew)) {
    case Outcome::Done:
        TakeUp(anew);
        emit Told(tr("読み直しました。"));
        break;
    case Outcome::Stopped:
        emit Told(tr("読み直しを中止しました。"));
        break;
    case Outcome::Refused:
        mdApplication::ShowMessage(
            path + u"\r\n"_s +
                (file.IsOpen() ? tr("書き込みの途中か、計算結果ファイルではないため、読み直すことができません。")
                               : tr("開くことができないため、読み直すことができません。")),
            MessageStyle::Stop);
        break;
    case Outcome::NoMemory:
        mdApplication::ShowMessage(path + u"\r\nメモリが不足しています。"_s, MessageStyle::Stop);
    }
}

/// What could not be read stays as it shows until there is more of the file, or something else.
void FollowedFile::follow() {
    DocumentReading::Anew anew;
    const qint64 bytes = watch.SettledBytes();
    sinceReading.start();
    const Outcome outcome = reading.ReadAnew(bytes, true, anew);
    readingMs = sinceReading.restart();
    if (outcome == Outcome::Stopped)
        return;
    triedBytes = bytes;
    wasRefused = outcome != Outcome::Done;
    if (wasRefused)
        return;
    const bool isOther = watch.Change() == FileChange::Replaced;
    if (anew.Loaded.StepCount <= (isOther ? 0 : mdVelorinResultModel::WholeSteps(session.Model))) {
        awaitedBytes = anew.Loaded.Source->EndOf(anew.Loaded.StepCount);
        return;
    }
    TakeUp(anew);
    emit Told(tr("ステップ %1 まで読み直しました。").arg(session.Model.StepCount));
}
