// The open file when somebody writes to it: that it has changed is told, and it is read anew, on command or by itself.
#include "mainwin/frmMain.h"

#include "app/windows/ShowMessage.h"
#include "mainwin/ctlScene.h"
#include "mainwin/globals.h"
#include "platform/widgets/LongWork.h"

#include <QApplication>
#include <QLabel>
#include <new>

using mdApplication::Current;
using mdApplication::Model;
using mdApplication::Settings;
using mdApplication::ShowMessage;

namespace {

/// The picked objects that a mesh of that size still has.
void keepPicked(clsMouse& selection, const MeshData& mesh) {
    const std::int32_t count = selection.ObjectType() == PickedKind::Nodes ? mesh.NodeCount : mesh.ElementCount;
    for (std::int32_t i = selection.Count() - 1; i >= 0; --i)
        if (selection.Item(i) >= count)
            selection.Remove(i);
}

std::int32_t kindOf(const ResultModel& model) {
    return model.CurrentItem >= 0 && model.CurrentItem < model.ItemCount ? model.Items.at(model.CurrentItem).ElementType
                                                                         : -1;
}

} // namespace

QString frmMain::fileHasChanged() {
    return tr("計算結果ファイルが書き換えられたため、読み込めません。[表示] - [ファイルを読み直す] (Ctrl+R) "
              "で読み直してください。");
}

/// Begins with the file as it is open, or ends it when none is.
void frmMain::followFile() {
    fileNote.clear();
    awaitedBytes = 0;
    sinceReload.start();
    if (IsOpen())
        fileWatch.Follow(Model.FileName, Model.Look);
    else
        fileWatch.Stop();
}

void frmMain::onFileLooked() {
    if (!IsOpen() || LongWork::IsRunning())
        return;
    noteFileChange();
    if (mayFollow())
        followGrowth();
}

bool frmMain::mayFollow() const {
    constexpr qint64 pauses = 4; // A file that is written all the time is not to take all the time.
    const bool isMoreOrElse = fileWatch.Change() == FileChange::Grown || fileWatch.Change() == FileChange::Replaced;
    return Settings.Window.FollowFile && isMoreOrElse && fileWatch.SettledBytes() > 0 &&
           fileWatch.SettledBytes() >= awaitedBytes && !slideShow.IsOn() && !QApplication::activeModalWidget() &&
           !QApplication::activePopupWidget() && !Current.View.Dragging && sinceReload.elapsed() >= pauses * reloadMs;
}

void frmMain::noteFileChange() {
    const FileChange change = fileWatch.Change();
    const bool follows = Settings.Window.FollowFile;
    QString note;
    if (change == FileChange::Grown && !follows)
        note = tr("計算結果ファイルに追加がありました。Ctrl+R で読み直します。");
    if (change == FileChange::Replaced)
        note = follows ? tr("計算結果ファイルが書き換えられています。終わりしだい読み直します。")
                       : tr("計算結果ファイルが書き換えられました。Ctrl+R で読み直します。");
    if (change == FileChange::Gone)
        note = tr("計算結果ファイルを開くことができなくなりました。");
    if (note == fileNote)
        return;
    fileNote = note;
    showTold();
}

/// `fresh` is the file as far as its first `bytes` go, with the step that is to show. What nobody asked for gives way
/// to input.
frmMain::Reading frmMain::readAnew(qint64 bytes, bool following, ResultModel& fresh, bool& grown) {
    using namespace mdVelorinResultModel;
    bool good = false;
    grown = false;
    fresh.Title = Model.Title;
    const auto read = [&](const LoadProgress& progress) {
        constexpr int untilMesh = 60;
        const LoadProgress meshProgress = PartOf(progress, 0, untilMesh);
        grown = following && ExtendSettledFile(Model, bytes, fresh, meshProgress);
        if (!grown && !LoadSettledFile(Model.FileName, bytes, fresh, meshProgress, Model.Derived))
            return;
        const StepAndItem place = SamePlace(Model, fresh, following);
        // What shows of a file that has grown is still there, unless it was half, or its reference step has come.
        const std::int32_t needed = std::max(place.Step, Settings.Difference.StandardStep);
        const bool stays = grown && place.Step == fresh.CurrentStep && needed < WholeSteps(Model);
        if (!stays)
            LoadStep(place.Step, place.Item, fresh, false, Settings.Difference.StandardStep,
                     PartOf(progress, untilMesh, 100));
        good = StillHolds(fresh, fresh.StepCount - 1);
    };
    if (!readWith(bytes, tr("読み直し中..."), read, following))
        return Reading::Stopped;
    return good ? Reading::Done : Reading::Refused;
}

void frmMain::reloadFile() {
    ResultModel fresh;
    bool grown = false;
    const QString path = Model.FileName;
    const ReadHandle file = ReadHandle::Open(path);
    try {
        switch (readAnew(file.Size(), false, fresh, grown)) {
        case Reading::Done:
            takeUpAnew(fresh, grown);
            Tell(tr("読み直しました。"));
            break;
        case Reading::Stopped:
            Tell(tr("読み直しを中止しました。"));
            break;
        case Reading::Refused:
            ShowMessage(path + u"\r\n"_s +
                            (file.IsOpen()
                                 ? tr("書き込みの途中か、計算結果ファイルではないため、読み直すことができません。")
                                 : tr("開くことができないため、読み直すことができません。")),
                        MessageStyle::Stop);
        }
    } catch (const std::bad_alloc&) {
        fresh = {};
        ShowMessage(path + u"\r\nメモリが不足しています。"_s, MessageStyle::Stop);
    }
}

/// Whatever else comes of it, the next look tries again; what shows stays until then.
void frmMain::followGrowth() {
    ResultModel fresh;
    bool grown = false;
    Reading reading = Reading::Refused;
    sinceReload.start();
    try {
        reading = readAnew(fileWatch.SettledBytes(), true, fresh, grown);
    } catch (const std::bad_alloc&) {
        fresh = {};
    }
    reloadMs = sinceReload.restart();
    const std::int32_t before =
        fileWatch.Change() == FileChange::Replaced ? 0 : mdVelorinResultModel::WholeSteps(Model);
    if (reading == Reading::Done && fresh.StepCount > before) {
        takeUpAnew(fresh, grown);
        notice.clear();
        Tell(tr("ステップ %1 まで読み直しました。").arg(Model.StepCount));
    } else if (reading == Reading::Done) {
        awaitedBytes = fresh.Source->EndOf(fresh.StepCount);
    }
}

void frmMain::takeUpAnew(const ResultModel& fresh, bool grown) {
    const bool sameKind = kindOf(fresh) == kindOf(Model);
    if (sameKind)
        keepPicked(Selection, fresh.Mesh);
    else
        Selection.Clear();
    if (Current.TakeUpAnew(fresh, grown))
        scene->ForgetViews();
    followFile();
    updateCommandState();
    findRange();
    scene->ShowView();
}
