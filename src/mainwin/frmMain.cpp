#include "mainwin/frmMain.h"

#include "app/mdApplication.h"
#include "platform/PictureBox.h"
#include "result/mdVelorinResultModel.h"
#include "view/mdScene.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QScrollBar>
#include <QStatusBar>

frmMain* frmMain::instance = nullptr;

frmMain* frmMain::Instance() {
    return instance;
}

frmMain::frmMain() {
    instance = this;
    Q_INIT_RESOURCE(mainwin);
    setObjectName(u"frmMain"_qs);
    setWindowIcon(QIcon(u":/icons/velorin.svg"_qs));
    buildPanels();
    buildMenus();
    constexpr QSize startSize(1024, 720);
    resize(startSize.boundedTo(screen()->availableSize()));
    move(screen()->availableGeometry().center() - rect().center());

    clsModel.SetClientName(mdApplication::ApplicationTitle);
    clsModel.SetScaleMode(PlotScaleMode::Fixed);
    clsModel.SetHeadless(false);
    clsModel.SetEventSink(
        {[this] { return view.ViewBounds; },
         [this](PlotCanvas& canvas) {
             mdScene::PaintScene(canvas, false, {mdApplication::Model, mdApplication::Settings, view});
         },
         [this] { return std::exchange(view.RefitPending, false); }});
    updateCaption();
    updateCommands();
}

frmMain::~frmMain() {
    mdVelorinResultModel::CloseResultFile(mdApplication::Model);
    instance = nullptr;
}

void frmMain::buildPanels() {
    auto* picContainer = new QWidget(this);
    picContainer->setObjectName(u"picContainer"_qs);
    picScreen = new PictureBox(picContainer);
    picScreen->setObjectName(u"picScreen"_qs);
    picScreen->setAccessibleName(tr("計算結果の図"));
    auto* layout = new QGridLayout(picContainer);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(picScreen, 0, 0);
    for (const ScrollBar bar : {ScrollBar::Horizontal, ScrollBar::Vertical}) {
        const bool across = bar == ScrollBar::Horizontal;
        auto* scrollBar = new QScrollBar(across ? Qt::Horizontal : Qt::Vertical, picContainer);
        scrollBar->setObjectName(u"scrScroll_%1"_qs.arg(int(bar)));
        scrollBar->setAccessibleName(across ? tr("横スクロール") : tr("縦スクロール"));
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

    auto* stbStatus = new QStatusBar(this);
    stbStatus->setObjectName(u"stbStatus"_qs);
    setStatusBar(stbStatus);
    const std::array<QString, 4> toolTips{QString(), tr("マウス座標"), tr("経過時間"), tr("倍率")};
    const std::array<QString, 4> widest{QString(), u"-0000.0000, -0000.0000"_qs, u"-0.0000000E-00"_qs, u"66.67 %00"_qs};
    for (std::size_t i = 0; i < panels.size(); ++i) {
        panels[i] = new QLabel(stbStatus);
        panels[i]->setObjectName(u"stbStatus_%1"_qs.arg(i + 1));
        panels[i]->setToolTip(toolTips[i]);
        panels[i]->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
        panels[i]->setMinimumWidth(panels[i]->fontMetrics().horizontalAdvance(widest[i]));
        stbStatus->addWidget(panels[i], i == 0 ? 1 : 0);
    }
}

void frmMain::buildMenus() {
    const auto add = [this](QMenu* menu, const QString& name, const QString& caption, const QKeySequence& key,
                            auto reaction) {
        QAction* action = menu->addAction(caption);
        action->setObjectName(name);
        action->setShortcut(key);
        connect(action, &QAction::triggered, this, reaction);
        return action;
    };
    QMenu* file = menuBar()->addMenu(tr("ファイル(&F)"));
    add(file, u"miFileOpen"_qs, tr("計算結果ファイルを開く(&O)..."), QKeySequence::Open, [this] { promptAndOpen(); });
    file->addSeparator();
    add(file, u"miFileQuit"_qs, tr("終了(&X)"), {}, [this] { close(); });
    QMenu* viewMenu = menuBar()->addMenu(tr("表示(&V)"));
    miViewZoomIn = add(viewMenu, u"miViewZoomIn"_qs, tr("拡大(&I)"), {}, [this] { SetZoom(Zoom() + 1); });
    miViewZoomOut = add(viewMenu, u"miViewZoomOut"_qs, tr("縮小(&O)"), {}, [this] { SetZoom(Zoom() - 1); });
    miViewZoomOff = add(viewMenu, u"miViewZoomOff"_qs, tr("全体表示(&A)"), {}, [this] { SetZoom(0); });
    viewMenu->addSeparator();
    add(viewMenu, u"miViewRefresh"_qs, tr("最新の情報に更新(&R)"), Qt::Key_F5, [this] { repaint(); });
}

void frmMain::updateCommands() {
    miViewZoomIn->setEnabled(IsOpen() && view.Zoom < ZoomMax);
    miViewZoomOut->setEnabled(IsOpen() && view.Zoom >= ZoomMin + 1);
    miViewZoomOff->setEnabled(IsOpen() && view.Zoom != 0);
}

void frmMain::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)
        onKey(event);
    else
        QMainWindow::keyPressEvent(event);
}

void frmMain::onKey(QKeyEvent* event) {
    const ResultModel& model = mdApplication::Model;
    const bool toEnd = event->modifiers() & Qt::ControlModifier;
    const int last = model.StepCount - 1;
    if (event->key() == Qt::Key_Up)
        selectStep(toEnd ? 0 : std::max(model.CurrentStep - 1, 0));
    else
        selectStep(toEnd ? last : std::min(model.CurrentStep + 1, last));
    event->accept();
}
