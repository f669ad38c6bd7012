// How a file enters the window and leaves it, and what is remembered of it.
#include "mainwin/frmMain.h"

#include "app/mdApplication.h"
#include "app/settingsStore.h"
#include "app/windows/GraphWindows.h"
#include "app/windows/ShowMessage.h"
#include "mainwin/StartPage.h"
#include "mainwin/ctlScene.h"
#include "mainwin/globals.h"
#include "platform/base/NativePath.h"
#include "platform/base/ReadHandle.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/LongWork.h"
#include "property/propertyFile.h"
#include "result/readers/readerTable.h"
#include "view/scene/Session.h"

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLabel>
#include <QWindow>

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

/// What is known of a file beyond that it can't be used; empty when nothing is.
QString whyRefused(const QString& path, const ResultModel& refused) {
    if (!mdApplication::FileExists(path))
        return frmMain::tr("ファイルがありません。");
    if (!ReadHandle::Open(path).IsOpen())
        return frmMain::tr("ファイルを読むことができません。");
    return refused.Note;
}

} // namespace

bool frmMain::IsOpen() const {
    return Current.IsOpen();
}

void frmMain::FirstStep(const QString& commandLine) {
    DocPlotter().SetScaleMode(PlotScaleMode(Settings.Window.ScaleMode));
    applyBarVisibility();
    buildAddinMenu();
    buildToolsMenu();
    sizeToCome = (Settings.Window.RestoreWindowStatus && restoreWindow()) || !isVisible();
    QString path = commandLine;
    if (path.isEmpty() && Settings.Window.RestoreLastFile && recentFiles.Count() > 0)
        path = recentFiles.Path(0);
    if (mdApplication::FileExists(path))
        openResultFile(path);
    else if (!path.isEmpty())
        ShowMessage(u"無効なパラメータです。"_s, MessageStyle::Stop);
}

void frmMain::showAtOnce() {
    constexpr int patienceMs = 500, intervalMs = 20;
    if (isVisible())
        return;
    show();
    QElapsedTimer elapsed;
    for (elapsed.start(); !windowHandle()->isExposed() && elapsed.elapsed() < patienceMs;)
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, intervalMs);
}

void frmMain::openResultFile(const QString& path) {
    using enum DocumentReading::Outcome;
    if (LongWork::IsRunning())
        return;
    DocumentReading::Opening opening;
    const DocumentReading::Outcome outcome = reading.Open(path, opening);
    if (outcome == NoMemory)
        ShowMessage(path + u"\r\nメモリが不足しています。"_s, MessageStyle::Stop);
    if (outcome == NoMemory || outcome == Stopped)
        return;
    forgetTold();
    // What a show holds fixed is not the file's own, and must not be saved with it.
    if (slideShow.IsOn())
        endSlideShow();
    if (IsOpen() && Settings.Window.AutoSave)
        Tell(propertyFile::SavePropertyFile(Settings, Model));
    Selection.Clear();
    mdApplication::UnloadGraphWindows();
    if (outcome == Done)
        takeUpFile(opening);
    else // which gives the earlier file up too
        dropFile(QString(path + u"\r\nファイルの形式が不正です。\r\n"_s + whyRefused(path, opening.Loaded)).trimmed());
}

void frmMain::takeUpFile(const DocumentReading::Opening& opening) {
    Current.TakeUp(opening.Loaded);
    const int step = Model.CurrentStep;
    // What is saved of a file that opens again may want another step than before.
    if (step == opening.Step && Model.CurrentItem == opening.Item &&
        Settings.Difference.StandardStep == opening.Reference) {
        Model.CurrentStep = opening.Loaded.CurrentStep;
        Model.CurrentItem = opening.Loaded.CurrentItem;
    } else {
        reading.LoadStep(std::max(step, 0), Model.CurrentItem);
    }
    followed.Begin();
    recentFiles.Add(Model.FileName);
    showRecentFiles();
    if (!isVisible())
        show();
    updateCaption();
    updateCommandState();
    tellWhatIsMissing(step);
    if (std::exchange(sizeToCome, false))
        scene->FitUntilSettled();
    else
        scene->Settled();
    scene->ForgetViews();
    scene->Fit();
}

bool frmMain::mayFollow() const {
    return !slideShow.IsOn() && !QApplication::activeModalWidget() && !QApplication::activePopupWidget() &&
           !Current.View.Dragging;
}

void frmMain::takeUpAnew(const DocumentReading::Anew& anew) {
    notice.clear();
    if (kindOf(anew.Loaded) == kindOf(Model))
        keepPicked(Selection, anew.Loaded.Mesh);
    else
        Selection.Clear();
    if (Current.TakeUpAnew(anew.Loaded, anew.Grown))
        scene->ForgetViews();
    followed.Begin();
    updateCommandState();
    scene->ShowView();
}

void frmMain::tellWhatIsMissing(int step) {
    QStringList lines;
    if (step >= Model.StepCount)
        lines.append(u"ステップ %1 はこのファイルにありません。"_s.arg(qint64(step) + 1));
    if (const int reference = Settings.Difference.StandardStep; reference >= Model.StepCount)
        lines.append(u"基準ステップ %1 はこのファイルにありません。"_s.arg(qint64(reference) + 1));
    if (!Model.Note.isEmpty())
        lines.append(Model.Note);
    Tell(lines.join(u' '));
}

void frmMain::showRecentFiles() {
    const std::vector<FamilyEntry> entries = recentFiles.MenuEntries();
    commandFamilies::Set(*bars, u"recent-"_s, entries);
    startPage->Show(entries);
    if (startPage->isHidden() == IsOpen())
        return;
    startPage->setVisible(!IsOpen());
    (IsOpen() ? static_cast<QWidget*>(scene) : startPage)->setFocus();
}

void frmMain::dropFile(const QString& why) {
    mdVelorinResultModel::CloseResultFile(Model);
    followed.Begin();
    if (slideShow.IsOn())
        endSlideShow();
    updateCaption();
    updateCommandState();
    ShowMessage(why, MessageStyle::Stop);
    for (QLabel* panel : std::span(panels).subspan(1))
        panel->clear();
    showPicked();
    scene->Clear();
    showRecentFiles();
}

void frmMain::promptAndOpen() {
    QString path = Model.FileName;
    if (promptFileName(path))
        openResultFile(path);
}

bool frmMain::promptFileName(QString& path) {
    QString filter;
    QStringList endings;
    for (const ResultReader& reader : ResultReaders()) {
        filter += u"%1(%2)|%2|"_s.arg(QStringView(reader.Name), QStringView(reader.Endings));
        endings += QStringView(reader.Endings).toString();
    }
    filter += tr("開けるファイル(%1)|%1|").arg(endings.join(u';'));
    filter += u"すべてのファイル(*.*)|*.*"_s;
    mdApplication::HideGraphWindows();
    Dialogs::FileSwitch derive{tr("応力からミーゼス応力と主応力を求める(&M)"), Settings.Window.DeriveStresses};
    const auto chosen = Dialogs::OpenFileName(this, u"計算結果ファイルを開く"_s,
                                              path.isEmpty() ? NativePath::CurrentFolder() : path, filter, &derive);
    Settings.Window.DeriveStresses = derive.On;
    mdApplication::ShowGraphWindows();
    path = chosen.value_or(path);
    return chosen.has_value();
}

void frmMain::updateCaption() {
    const QString title = IsOpen() ? mdApplication::PathPart(Model.FileName, mdApplication::BaseName) : u"(未定義)"_s;
    const QString mode = slideShow.IsOn() ? u" [スライドショー]"_s : QString();
    setWindowTitle(mdApplication::ApplicationTitle + u" - "_s + NativePath::Shown(title) + mode);
}

void frmMain::closeEvent(QCloseEvent* event) {
    if (slideShow.IsOn()) {
        ExecuteCommand(u"miSlideStop"_s);
        event->ignore();
        return;
    }
    if (IsOpen() && Settings.Window.AutoSave)
        propertyFile::SavePropertyFile(Settings, Model);
    storeWindow();
    mdApplication::UnloadGraphWindows();
    settingsStore::SaveSettings(Settings);
    recentFiles.Save();
    event->accept();
}
