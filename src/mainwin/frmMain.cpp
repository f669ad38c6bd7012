#include "mainwin/frmMain.h"

#include "app/NumberFormat.h"
#include "app/mdApplication.h"
#include "app/windows/GraphWindows.h"
#include "mainwin/StartPage.h"
#include "mainwin/commandState.h"
#include "mainwin/commandTable.h"
#include "mainwin/ctlScene.h"
#include "mainwin/globals.h"
#include "output/mdPage.h"
#include "platform/base/NativePath.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QStatusBar>
#include <QStatusTipEvent>

frmMain* frmMain::instance = nullptr;

frmMain* frmMain::Instance() {
    return instance;
}

frmMain::frmMain()
    : reading(mdApplication::Current), followed(mdApplication::Current, reading),
      slideShow(mdApplication::Current,
                [this](std::int32_t step) { return reading.LoadStep(step, mdApplication::Model.CurrentItem); }) {
    instance = this;
    Q_INIT_RESOURCE(mainwin);
    setObjectName(u"frmMain"_s);
    setWindowIcon(QIcon(u":/icons/velorin.svg"_s));
    mdPage::Serve(mdApplication::Current);
    DocPlotter().SetClientName(mdApplication::ApplicationTitle);
    DocPlotter().SetScaleMode(PlotScaleMode::Fixed);
    scene = new ctlScene(mdApplication::Current, Selection, this);
    setCentralWidget(scene);
    startPage = new StartPage(*scene->focusProxy());
    buildPanels();
    bars = new CommandBars(*this);
    commandTable::Build(*bars);
    bars->SetBandVisible(u"tbSlideShow"_s, false);
    connectEvents();
    constexpr QSize startSize(1024, 720);
    resize(startSize.boundedTo(screen()->availableSize() - roomForFrame()));
    move(screen()->availableGeometry().center() - rect().center());

    recentFiles.Load();
    updateCaption();
    updateCommandState();
    showRecentFiles();
}

frmMain::~frmMain() {
    mdVelorinResultModel::CloseResultFile(mdApplication::Model);
    instance = nullptr;
}

DocumentPlotter& frmMain::DocPlotter() {
    return mdApplication::Current.Plotter;
}

int frmMain::Zoom() const {
    return mdApplication::Current.View.Zoom;
}

void frmMain::SetZoom(int value) {
    scene->SetZoom(value);
}

void frmMain::repaint() {
    if (!updatingUi)
        scene->Paint();
}

namespace {

/// Sentences that stand in one line.
QString together(const QString& first, const QString& second) {
    const bool needsStop = !first.isEmpty() && !second.isEmpty() && !first.endsWith(u'。');
    return QString(first + (needsStop ? u"。 "_s : u" "_s) + second).trimmed();
}

} // namespace

void frmMain::Tell(const QString& line) {
    notice = together(notice, NativePath::Shown(line).trimmed());
    showTold();
}

void frmMain::forgetTold() {
    notice.clear();
    showTold();
}

void frmMain::showTold() {
    panels[0]->setText(together(followed.Note(), notice));
}

void frmMain::buildPanels() {
    auto* stbStatus = new QStatusBar(this);
    stbStatus->setObjectName(u"stbStatus"_s);
    setStatusBar(stbStatus);
    const std::array<QString, 4> toolTips{QString(), u"マウス座標"_s, u"経過時間"_s, u"倍率"_s};
    const std::array<QString, 4> widest{QString(), u"-0000.0000, -0000.0000"_s, u"-0.0000000E-00"_s, u"66.67 %00"_s};
    for (std::size_t i = 0; i < panels.size(); ++i) {
        panels[i] = new QLabel(stbStatus);
        panels[i]->setObjectName(u"stbStatus_%1"_s.arg(i + 1));
        panels[i]->setToolTip(toolTips[i]);
        panels[i]->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
        panels[i]->setMinimumWidth(panels[i]->fontMetrics().horizontalAdvance(widest[i]));
        stbStatus->addWidget(panels[i], i == 0 ? 1 : 0);
    }
    pickedPanel = new QLabel(stbStatus);
    pickedPanel->setObjectName(u"stbStatus_5"_s);
    pickedPanel->setToolTip(u"選択中のオブジェクト"_s);
    pickedPanel->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    pickedPanel->hide();
    stbStatus->insertWidget(1, pickedPanel);
    // What these two say may be long, and must not hold the window wide.
    for (QLabel* panel : {panels[0], pickedPanel})
        panel->setMinimumWidth(1);
}

void frmMain::connectEvents() {
    connect(bars, &CommandBars::Clicked, this, &frmMain::ExecuteCommand);
    connect(bars, &CommandBars::ComboSelected, this, &frmMain::onComboSelection);
    connect(bars, &CommandBars::BandOpening, this, &frmMain::onBandOpening);
    connect(bars, &CommandBars::BandClosed, this, [this](const QString& band) { bars->SetBandVisible(band, true); });
    connect(&timSlideShow, &QTimer::timeout, this, &frmMain::showNextSlide);
    connect(&reading, &DocumentReading::WindowWanted, this, &frmMain::showAtOnce);
    connect(&reading, &DocumentReading::Progress, panels[0], &QLabel::setText);
    connect(&reading, &DocumentReading::Told, this, &frmMain::Tell);
    followed.TakeUp = [this](const DocumentReading::Anew& anew) { takeUpAnew(anew); };
    followed.MayRead = [this] { return mayFollow(); };
    connect(&followed, &FollowedFile::NoteChanged, this, &frmMain::showTold);
    connect(&followed, &FollowedFile::Told, this, &frmMain::Tell);
    connect(scene, &ctlScene::AboutToPaint, &reading, &DocumentReading::FindRange);
    connect(scene, &ctlScene::Painted, this, &frmMain::onPainted);
    connect(scene, &ctlScene::Progress, panels[0], &QLabel::setText);
    connect(scene, &ctlScene::PaintStopped, this, &frmMain::pauseSlideShow);
    connect(scene, &ctlScene::PaintStopped, this, &frmMain::Tell);
    connect(scene, &ctlScene::Zoomed, this, &frmMain::onZoomed);
    connect(scene, &ctlScene::Picked, this, &frmMain::showPicked);
    connect(scene, &ctlScene::MouseAt, panels[1], &QLabel::setText);
    connect(scene, &ctlScene::PopupWanted, this, [this](QPoint place) { bars->ShowPopup(u"pbPopup"_s, place); });
    connect(scene, &ctlScene::FileDropped, this, &frmMain::FirstStep);
    connect(startPage, &StartPage::Chosen, this, &frmMain::ExecuteCommand);
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            mdApplication::ShowGraphWindows();
        else
            mdApplication::HideGraphWindows();
    });
    // Keys come to the window before the control that has the focus, as far as they choose a step or ask for the popup.
    qApp->installEventFilter(this);
}

bool frmMain::event(QEvent* event) {
    if (event->type() == QEvent::StatusTip) {
        const QString tip = static_cast<QStatusTipEvent*>(event)->tip();
        panels[0]->setText(tip);
        if (tip.isEmpty())
            showTold();
        return true;
    }
    return QMainWindow::event(event);
}

void frmMain::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::WindowStateChange)
        return;
    bars->SetChecked(u"miViewFullScreen"_s, isFullScreen());
    if (isMinimized())
        mdApplication::HideGraphWindows();
    else
        mdApplication::ShowGraphWindows();
}

void frmMain::onPainted() {
    const ResultModel& model = mdApplication::Model;
    updatingUi = true;
    commandState::ShowChosen(*bars, facts());
    updatingUi = false;
    offerHelp();
    showTold();
    showPicked();
    const bool hasStep = model.CurrentStep >= 0 && model.CurrentStep < model.Steps.size();
    panels[2]->setText(hasStep ? NumberFormat::Shortest(model.Steps.at(model.CurrentStep).Time) : QString());
    showZoom();
    bars->SetNote(u"tbSlideShow"_s, slideShowNote());
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    const bool here = watched->isWidgetType() && static_cast<QWidget*>(watched)->window() == this;
    const bool free = !QApplication::activePopupWidget() && !QApplication::activeModalWidget();
    if (event->type() == QEvent::KeyPress && here && free && takeKey(*static_cast<QKeyEvent*>(event)))
        return true;
    return QMainWindow::eventFilter(watched, event);
}

bool frmMain::takeKey(const QKeyEvent& event) {
    const bool menuKey =
        event.key() == Qt::Key_Menu || (event.key() == Qt::Key_F10 && event.modifiers() == Qt::ShiftModifier);
    if (menuKey)
        scene->AskForPopup();
    // In a show the menu that has this key is hidden; it goes on meanwhile.
    const bool screenKey = slideShow.IsOn() && event.key() == Qt::Key_F11 && event.modifiers() == Qt::NoModifier;
    if (screenKey)
        toggleFullScreen();
    return menuKey || screenKey || takeStepKey(event);
}

bool frmMain::takeStepKey(const QKeyEvent& event) {
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    const bool isArrow = event.key() == Qt::Key_Up || event.key() == Qt::Key_Down;
    // Without a show these two are the keys of commands.
    const bool isPage = slideShow.IsOn() && (event.key() == Qt::Key_PageUp || event.key() == Qt::Key_PageDown);
    if ((!isArrow || modifiers & ~Qt::ControlModifier) && (!isPage || modifiers != Qt::NoModifier))
        return false;
    const int step = bars->ListIndex(u"miDrawStep"_s);
    const int last = bars->ListCount(u"miDrawStep"_s) - 1;
    const bool toEnd = modifiers != Qt::NoModifier;
    if (event.key() == Qt::Key_Up || event.key() == Qt::Key_PageUp)
        goToStep(toEnd ? 0 : step - 1);
    else
        goToStep(toEnd ? last : step + 1);
    return true;
}
