#include "mainwin/frmMain.h"

#include "app/mdApplication.h"
#include "mainwin/commandState.h"
#include "mainwin/commandTable.h"
#include "mainwin/globals.h"
#include "platform/widgets/PictureBox.h"
#include "result/mdVelorinResultModel.h"
#include "view/scene/mdScene.h"

#include <QApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QScrollBar>
#include <QStatusBar>
#include <QStatusTipEvent>

frmMain* frmMain::instance = nullptr;

frmMain* frmMain::Instance() {
    return instance;
}

frmMain::frmMain() {
    instance = this;
    Q_INIT_RESOURCE(mainwin);
    setObjectName(u"frmMain"_s);
    setWindowIcon(QIcon(u":/icons/velorin.svg"_s));
    buildPanels();
    bars = new CommandBars(*this);
    commandTable::Build(*bars);
    bars->SetBandVisible(u"tbSlideShow"_s, false);
    connectEvents();
    constexpr QSize startSize(1024, 720);
    resize(startSize.boundedTo(screen()->availableSize()));
    move(screen()->availableGeometry().center() - rect().center());

    clsModel.SetClientName(mdApplication::ApplicationTitle);
    clsModel.SetScaleMode(PlotScaleMode::Fixed);
    clsModel.SetHeadless(false);
    clsModel.SetEventSink(
        {[this] { return view.ViewBounds; },
         [this](PlotCanvas& canvas) {
             mdScene::PaintScene(canvas, false, {mdApplication::Model, mdApplication::Settings, view, slideShow});
         },
         [this] { return std::exchange(view.RefitPending, false); }});
    loadRecentFiles();
    updateCaption();
    updateCommandState();
    commandState::BuildRecentMenu(*bars, recentFiles);
}

frmMain::~frmMain() {
    picScreen->disconnect(this);
    mdVelorinResultModel::CloseResultFile(mdApplication::Model);
    instance = nullptr;
}

void frmMain::buildPanels() {
    auto* picContainer = new QWidget(this);
    picContainer->setObjectName(u"picContainer"_s);
    picScreen = new PictureBox(picContainer);
    picScreen->setObjectName(u"picScreen"_s);
    picScreen->setAccessibleName(u"計算結果の図"_s);
    auto* layout = new QGridLayout(picContainer);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(picScreen, 0, 0);
    for (const ScrollBar bar : {ScrollBar::Horizontal, ScrollBar::Vertical}) {
        const bool across = bar == ScrollBar::Horizontal;
        auto* scrollBar = new QScrollBar(across ? Qt::Horizontal : Qt::Vertical, picContainer);
        scrollBar->setObjectName(u"scrScroll_%1"_s.arg(int(bar)));
        scrollBar->setAccessibleName(across ? u"横スクロール"_s : u"縦スクロール"_s);
        scrollBar->setRange(0, 100);
        scrollBar->setEnabled(false);
        connect(scrollBar, &QScrollBar::valueChanged, this, [this, bar](int value) { onScroll(bar, value); });
        layout->addWidget(scrollBar, across ? 1 : 0, across ? 0 : 1);
        scrScroll[std::size_t(bar)] = scrollBar;
    }
    setCentralWidget(picContainer);
    connect(picScreen, &PictureBox::Resized, this, &frmMain::onPictureResized);
    connect(picScreen, &PictureBox::MouseMoved, this, &frmMain::showMouseCoordinates);
    connect(picScreen, &PictureBox::ZoomWheel, this, &frmMain::zoomAt);
    connectPicking();

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
}

void frmMain::connectEvents() {
    connect(bars, &CommandBars::Clicked, this, &frmMain::ExecuteCommand);
    connect(bars, &CommandBars::ComboSelected, this, &frmMain::onComboSelection);
    connect(bars, &CommandBars::BandOpening, this, [this](const QString& band) {
        if (band == u"pbTools" || band == u"pbPopup")
            bars->SetEnabled(u"miToolsImageCopy"_s, IsOpen());
    });
    // Keys come to the window before the control that has the focus, as far as they choose a step.
    qApp->installEventFilter(this);
}

bool frmMain::event(QEvent* event) {
    if (event->type() == QEvent::StatusTip) {
        panels[0]->setText(static_cast<QStatusTipEvent*>(event)->tip());
        return true;
    }
    return QMainWindow::event(event);
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    const bool here = watched->isWidgetType() && static_cast<QWidget*>(watched)->window() == this;
    const bool free = !QApplication::activePopupWidget() && !QApplication::activeModalWidget();
    if (event->type() == QEvent::KeyPress && here && free && takeStepKey(*static_cast<QKeyEvent*>(event)))
        return true;
    return QMainWindow::eventFilter(watched, event);
}

bool frmMain::takeStepKey(const QKeyEvent& event) {
    if (event.key() != Qt::Key_Up && event.key() != Qt::Key_Down)
        return false;
    const QString combo = u"miDrawStep"_s;
    const bool toEnd = event.modifiers() & Qt::ControlModifier;
    const int last = bars->ListCount(combo) - 1;
    if (event.key() == Qt::Key_Up)
        bars->SetListIndex(combo, toEnd ? std::min(0, last) : std::min(std::max(bars->ListIndex(combo) - 1, 0), last));
    else
        bars->SetListIndex(combo, toEnd ? last : std::min(bars->ListIndex(combo) + 1, last));
    return true;
}
