// How a file enters the window, what is remembered of it, and how the window comes back as it was left.
#include "mainwin/frmMain.h"

#include "app/mdApplication.h"
#include "app/settingsStore.h"
#include "app/windows/GraphWindows.h"
#include "app/windows/ShowMessage.h"
#include "mainwin/ctlScene.h"
#include "mainwin/globals.h"
#include "mainwin/windowPlace.h"
#include "platform/base/NativePath.h"
#include "platform/base/ReadHandle.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/LongWork.h"
#include "property/propertyFile.h"
#include "result/readers/readerTable.h"
#include "view/scene/Session.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QStyle>

using mdApplication::Current;
using mdApplication::Model;
using mdApplication::Settings;
using mdApplication::ShowMessage;

namespace {

const QString noMemory = u"\r\nメモリが不足しています。"_s;

enum WindowStateNumber : int { Normal = 0, Minimised = 1, Maximised = 2 };

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

bool frmMain::readResultFile(const QString& path, ResultModel& loaded, bool& stopped) {
    constexpr qint64 bytesReadAtOnce = 16 << 20;
    const bool derives = Settings.Window.DeriveStresses;
    const DerivedItems derived{derives, derives};
    // A series is as large as the files that it names.
    if (ReadHandle::Open(path).Size() < bytesReadAtOnce && !path.endsWith(u".pvd", Qt::CaseInsensitive))
        return mdVelorinResultModel::LoadResultFile(path, loaded, {}, derived);
    bool good = false;
    LongWork work(u"読み込み中... (Esc で中止)"_s, [this](const QString& text) { panels[0]->setText(text); });
    stopped = !work.Run([&](const LongWork::Progress& progress) {
        good = mdVelorinResultModel::LoadResultFile(path, loaded, progress, derived);
    });
    return good;
}

void frmMain::openResultFile(const QString& path) {
    if (LongWork::IsRunning())
        return;
    // Read into a model of its own, so that a load that is stopped leaves everything as it was.
    ResultModel loaded;
    loaded.Title = Model.Title;
    bool stopped = false, good = false;
    try {
        good = readResultFile(path, loaded, stopped);
    } catch (const std::bad_alloc&) {
        loaded = {};
        ShowMessage(path + noMemory, MessageStyle::Stop);
        return;
    }
    if (stopped)
        return;
    forgetTold();
    // What a show holds fixed is not the file's own, and must not be saved with it.
    if (slideShow.IsOn())
        endSlideShow();
    if (IsOpen() && Settings.Window.AutoSave)
        Tell(propertyFile::SavePropertyFile(Settings, Model));
    Selection.Clear();
    mdApplication::UnloadGraphWindows();
    if (good)
        takeUpFile(loaded);
    else // which gives the earlier file up too
        dropFile(path + u"\r\nファイルの形式が不正です。"_s +
                 (loaded.Note.isEmpty() ? QString() : u"\r\n"_s + loaded.Note));
}

void frmMain::takeUpFile(const ResultModel& loaded) {
    Current.TakeUp(loaded);
    const int step = Model.CurrentStep;
    if (!loadStep(std::max(step, 0), Model.CurrentItem))
        return;
    recentFiles.Add(Model.FileName);
    commandFamilies::Set(*bars, u"recent-"_s, recentFiles.MenuEntries());
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

bool frmMain::loadStep(int step, int item) {
    return load([=] { Current.LoadStep(step, item); });
}

bool frmMain::load(const std::function<void()>& what) {
    try {
        what();
        return true;
    } catch (const std::bad_alloc&) {
        const QString path = Model.FileName;
        Model = {};
        dropFile(path + noMemory);
        return false;
    }
}

void frmMain::dropFile(const QString& why) {
    mdVelorinResultModel::CloseResultFile(Model);
    if (slideShow.IsOn())
        endSlideShow();
    updateCaption();
    updateCommandState();
    ShowMessage(why, MessageStyle::Stop);
    for (QLabel* panel : std::span(panels).subspan(1))
        panel->clear();
    scene->Clear();
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

bool frmMain::restoreWindow() {
    const WindowSettings& saved = Settings.Window;
    if (saved.WindowState < Normal || saved.WindowState > Maximised)
        return false;
    constexpr Qt::WindowState states[] = {Qt::WindowNoState, Qt::WindowMinimized, Qt::WindowMaximized};
    const Qt::WindowStates before = windowState();
    setWindowState(states[saved.WindowState]);
    if (saved.WindowState != Normal)
        return windowState() != before;
    std::vector<QRect> screens{screen()->availableGeometry()};
    for (const QScreen* other : QGuiApplication::screens())
        screens.push_back(other->availableGeometry());
    const auto place = windowPlace::Restored(saved.WindowPos, minimumSizeHint(), roomForFrame(), screens);
    if (!place)
        return false;
    const bool changes = windowState() != before || place->size() != size();
    move(place->topLeft());
    resize(place->size());
    return changes;
}

void frmMain::storeWindow() {
    Settings.Window.WindowState = isMinimized() ? Minimised : isMaximized() ? Maximised : Normal;
    constexpr int twips = windowPlace::TwipsPerPixel;
    const QRect place = isFullScreen() ? placeBefore : QRect(pos(), size());
    Settings.Window.WindowPos = {place.x() * twips, place.y() * twips, place.width() * twips, place.height() * twips};
}

QSize frmMain::roomForFrame() const {
    return isVisible() ? frameGeometry().size() - size() : QSize(0, style()->pixelMetric(QStyle::PM_TitleBarHeight));
}
