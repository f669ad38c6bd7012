#include "mainwin/ctlScene.h"

#include "platform/base/Parallel.h"
#include "platform/raster/RasterDevice.h"
#include "platform/widgets/LongWork.h"
#include "platform/widgets/PictureBox.h"

#include <QGridLayout>
#include <QScrollBar>
#include <QWindow>
#include <new>

ctlScene::ctlScene(Session& source, clsMouse& picked, QWidget* parent)
    : QWidget(parent), session(source), selection(picked) {
    setObjectName(u"picContainer"_s);
    buildControls();
    session.Plotter.SetHeadless(false);
    session.View.Dragging = false;
    constexpr int patienceMs = 500;
    settling.setInterval(patienceMs);
    settling.setSingleShot(true);
    connect(&settling, &QTimer::timeout, this, [this] {
        if (!isOnScreen())
            settling.start();
    });
}

ctlScene::~ctlScene() {
    // On its way out it may still lose the mouse and its size.
    picScreen->disconnect(this);
}

void ctlScene::buildControls() {
    picScreen = new PictureBox(this);
    picScreen->setObjectName(u"picScreen"_s);
    picScreen->setAccessibleName(u"計算結果の図"_s);
    setFocusProxy(picScreen);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(picScreen, 0, 0);
    for (const ScrollBar bar : {ScrollBar::Horizontal, ScrollBar::Vertical}) {
        const bool across = bar == ScrollBar::Horizontal;
        auto* scrollBar = new QScrollBar(across ? Qt::Horizontal : Qt::Vertical, this);
        scrollBar->setObjectName(u"scrScroll_%1"_s.arg(int(bar)));
        scrollBar->setAccessibleName(across ? u"横スクロール"_s : u"縦スクロール"_s);
        scrollBar->setRange(0, 100);
        scrollBar->setEnabled(false);
        connect(scrollBar, &QScrollBar::valueChanged, this, [this, bar](int value) { onScroll(bar, value); });
        layout->addWidget(scrollBar, across ? 1 : 0, across ? 0 : 1);
        scrScroll[std::size_t(bar)] = scrollBar;
    }
    connect(picScreen, &PictureBox::Resized, this, &ctlScene::onResized);
    connect(picScreen, &PictureBox::MouseMoved, this, &ctlScene::showMouseCoordinates);
    connect(picScreen, &PictureBox::ZoomWheel, this, &ctlScene::zoomAt);
    connectPicking();
}

void ctlScene::Paint(const std::function<void()>& meanwhile) {
    if (!session.IsOpen())
        return;
    // Only a new size can ask for a paint while one goes on, and it wants the last word.
    paintAgain = true;
    paintDue = false;
    if (painting)
        return;
    painting = true;
    bool whole = true;
    auto beside = meanwhile;
    while (whole && std::exchange(paintAgain, false))
        whole = paintSheet(std::exchange(beside, {}));
    painting = paintAgain = false;
    if (whole) {
        picScreen->ShowSheet();
        emit Painted();
        return;
    }
    session.View.CoordConverter.reset();
    session.View.NodePoints.clear();
    session.View.ElementCentres.clear();
    picScreen->RefreshLayer();
    emit PaintStopped(whyStopped);
}

/// False, with `whyStopped`, when the sheet is not whole.
bool ctlScene::paintSheet(const std::function<void()>& meanwhile) {
    try {
        whyStopped = u"描画を中止しました。"_s;
        return drawSheet(meanwhile);
    } catch (const std::bad_alloc&) {
        whyStopped = u"メモリが足りないため、描画を中止しました。"_s;
        return false;
    }
}

bool ctlScene::drawSheet(const std::function<void()>& meanwhile) {
    LongWork work(u"描画中... (Esc で中止)"_s, [this](const QString& text) { emit Progress(text); });
    QImage& sheet = picScreen->BlankSheet();
    if (sheet.isNull() && !picScreen->size().isEmpty())
        throw std::bad_alloc();
    RasterDevice device(sheet, picScreen->DotsPerInch());
    return work.Run([&](const LongWork::Progress& progress) {
        device.GoesOn = [&progress] { return progress(0, 0); };
        parallelFor(meanwhile ? 2 : 1, [&](int piece) {
            try {
                piece == 0 ? session.Draw(device) : meanwhile();
            } catch (const DrawingStopped&) {
                // Run tells.
            }
        });
    });
}

const QImage& ctlScene::Picture() const {
    return picScreen->Image();
}

DeviceSize ctlScene::PixelSize() const {
    return picScreen->PixelSize();
}

int ctlScene::DotsPerInch() const {
    return picScreen->DotsPerInch();
}

void ctlScene::Clear() {
    session.View.CoordConverter.reset();
    picScreen->BlankSheet();
    picScreen->ShowSheet();
}

void ctlScene::SetZoom(int value) {
    mdView::ApplyZoom(value, session.View);
    finishZoom();
}

void ctlScene::zoomAt(QPointF pixel, int steps) {
    ViewState& view = session.View;
    if (!session.IsOpen() || !view.CoordConverter)
        return;
    float x = 0, y = 0;
    view.CoordConverter->DeviceToWorld(qRound(pixel.x()), qRound(pixel.y()), x, y);
    mdView::ZoomAt(view.Zoom + steps, x, y, view);
    finishZoom();
}

void ctlScene::finishZoom() {
    updateScrollBars();
    emit Zoomed();
    Paint();
}

void ctlScene::updateScrollBars() {
    for (const ScrollBar bar : {ScrollBar::Horizontal, ScrollBar::Vertical}) {
        QScrollBar* scrollBar = scrScroll[std::size_t(bar)];
        const ScrollBarState state = mdView::ScrollState(session.View, bar);
        // The bar follows the view here; moving the view to the bar's whole percents would make it jump.
        const QSignalBlocker quiet(scrollBar);
        scrollBar->setEnabled(state.Enabled);
        if (state.PageStep)
            scrollBar->setPageStep(*state.PageStep);
        if (state.Value)
            scrollBar->setValue(*state.Value);
    }
}

void ctlScene::onScroll(ScrollBar bar, int value) {
    mdView::Scroll(session.View, bar, value);
    Paint();
}

void ctlScene::showMouseCoordinates(QPoint pixel) {
    if (takesMouse() && session.View.CoordConverter)
        emit MouseAt(mdView::MouseCoordinates(session.View, session.Plotter.Window().Width(), pixel.x(), pixel.y()));
}

bool ctlScene::isOnScreen() const {
    const QWindow* shown = window()->windowHandle();
    return shown && shown->isExposed();
}

void ctlScene::FitUntilSettled() {
    settling.start();
}

void ctlScene::onResized() {
    if (settling.isActive()) {
        session.View.RefitPending = true;
        settling.start();
    }
    session.Plotter.Viewport().SetWindow(picScreen->PixelSize());
    if (isOnScreen()) {
        Paint();
        return;
    }
    // On its way to the screen the window would not come up before a paint that takes long has ended.
    paintDue = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (paintDue)
                Paint();
        },
        Qt::QueuedConnection);
}
