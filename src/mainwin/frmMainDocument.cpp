// How a file enters the window, what is remembered of it, and how the window comes back as it was left.
#include "mainwin/frmMain.h"

#include "app/mdApplication.h"
#include "app/settingsStore.h"
#include "app/windows/GraphWindows.h"
#include "app/windows/ShowMessage.h"
#include "mainwin/StartPage.h"
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
#include <QEventLoop>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QStyle>
#include <QWindow>
#include <limits>

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

/// A file on its way into the window, with the step that it opens with.
struct frmMain::Opening {
    ResultModel Loaded;
    bool Good = false, Stopped = false;
    // As its property file wants them.
    int Step = -1, Item = -1, Reference = -1;
};

bool frmMain::readWith(qint64 bytes, const QString& caption, const std::function<void(const LoadProgress&)>& read,
                       bool givesWay) {
    constexpr qint64 bytesReadAtOnce = 16 << 20;
    if (bytes < bytesReadAtOnce) {
        read({});
        return true;
    }
    showAtOnce();
    LongWork work(caption + u" (Esc で中止)"_s, [this](const QString& text) { panels[0]->setText(text); });
    work.SetGivesWay(givesWay);
    return work.Run(read);
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

void frmMain::readResultFile(const QString& path, Opening& opening) {
    using namespace mdVelorinResultModel;
    ApplicationSettings asLeft = Settings;
    ResultModel& loaded = opening.Loaded;
    ResultModel named;
    named.FileName = NativePath::Absolute(path);
    propertyFile::LoadPropertyFile(asLeft, named);
    opening.Step = named.CurrentStep;
    opening.Item = named.CurrentItem;
    opening.Reference = asLeft.Difference.StandardStep;
    const bool derives = Settings.Window.DeriveStresses;
    // A series is as large as the files that it names.
    const bool isSeries = path.endsWith(u".pvd", Qt::CaseInsensitive);
    const qint64 bytes = isSeries ? std::numeric_limits<qint64>::max() : ReadHandle::Open(path).Size();
    opening.Stopped = !readWith(bytes, tr("読み込み中..."), [&](const LoadProgress& progress) {
        // Of the time until the picture, about.
        constexpr int untilMesh = 60;
        opening.Good = LoadResultFile(path, loaded, PartOf(progress, 0, untilMesh), {derives, derives});
        if (opening.Good)
            LoadStep(std::max(opening.Step, 0), std::max(opening.Item, 0), loaded, false, opening.Reference,
                     PartOf(progress, untilMesh, 100));
    });
}

void frmMain::openResultFile(const QString& path) {
    if (LongWork::IsRunning())
        return;
    // Read into a model of its own, so that a load that is stopped leaves everything as it was.
    Opening opening;
    opening.Loaded.Title = Model.Title;
    try {
        readResultFile(path, opening);
    } catch (const std::bad_alloc&) {
        opening = {};
        ShowMessage(path + noMemory, MessageStyle::Stop);
        return;
    }
    if (opening.Stopped)
        return;
    forgetTold();
    // What a show holds fixed is not the file's own, and must not be saved with it.
    if (slideShow.IsOn())
        endSlideShow();
    if (IsOpen() && Settings.Window.AutoSave)
        Tell(propertyFile::SavePropertyFile(Settings, Model));
    Selection.Clear();
    mdApplication::UnloadGraphWindows();
    if (opening.Good)
        takeUpFile(opening);
    else // which gives the earlier file up too
        dropFile(path + u"\r\nファイルの形式が不正です。"_s +
                 (opening.Loaded.Note.isEmpty() ? QString() : u"\r\n"_s + opening.Loaded.Note));
}

void frmMain::takeUpFile(const Opening& opening) {
    Current.TakeUp(opening.Loaded);
    const int step = Model.CurrentStep;
    // What is saved of a file that opens again may want another step than before.
    if (step == opening.Step && Model.CurrentItem == opening.Item &&
        Settings.Difference.StandardStep == opening.Reference) {
        Model.CurrentStep = opening.Loaded.CurrentStep;
        Model.CurrentItem = opening.Loaded.CurrentItem;
    } else {
        loadStep(std::max(step, 0), Model.CurrentItem);
    }
    followFile();
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
    findRange();
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

void frmMain::showRecentFiles() {
    const std::vector<FamilyEntry> entries = recentFiles.MenuEntries();
    commandFamilies::Set(*bars, u"recent-"_s, entries);
    startPage->Show(entries);
    if (startPage->isHidden() == IsOpen())
        return;
    startPage->setVisible(!IsOpen());
    (IsOpen() ? static_cast<QWidget*>(scene) : startPage)->setFocus();
}

bool frmMain::loadStep(int step, int item) {
    return load([=](const LoadProgress& progress) { return Current.ExchangeStep(step, item, progress); });
}

bool frmMain::load(const std::function<Session::StepLoad(const LoadProgress&)>& what) {
    try {
        Session::StepLoad outcome = Session::StepLoad::Done;
        readWith(Model.Look.Size(), tr("ステップを読み込み中..."),
                 [&](const LoadProgress& progress) { outcome = what(progress); });
        if (outcome == Session::StepLoad::Stopped)
            Tell(tr("読み込みを中止しました。"));
        if (outcome == Session::StepLoad::Changed)
            Tell(fileHasChanged());
        return outcome == Session::StepLoad::Done;
    } catch (const std::bad_alloc&) {
        ShowMessage(Model.FileName + noMemory, MessageStyle::Stop);
        return false;
    }
}

void frmMain::dropFile(const QString& why) {
    mdVelorinResultModel::CloseResultFile(Model);
    followFile();
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
