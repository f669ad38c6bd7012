#include "mainwin/ctlScene.h"

#include "platform/widgets/PictureBox.h"

#include <QElapsedTimer>
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
    paint = std::make_unique<LongPaint>(*picScreen, [this](const QString& text) { emit Progress(text); });
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
    connectPicking();
    connectTip();
    moving = std::make_unique<SceneMoving>(session, *picScreen, [this] { return paint->IsRunning(); });
    connect(moving.get(), &SceneMoving::Beginning, this, &ctlScene::cancelDrag);
    connect(moving.get(), &SceneMoving::ViewChanged, this, &ctlScene::onViewChanged);
    connect(moving.get(), &SceneMoving::PaintWanted, this, [this] { Paint(); });
    connect(moving.get(), &SceneMoving::PaintAtRestWanted, this,
            [this] { takeUp(paint->PaintAtRest([this](DeviceContext& device) { session.Draw(device); })); });
}

void ctlScene::Paint(const std::function<void()>& meanwhile) {
    if (!session.IsOpen())
        return;
    paintDue = false;
    emit AboutToPaint();
    QElapsedTimer clock;
    clock.start();
    const auto outcome = paint->Paint([this](DeviceContext& device) { session.Draw(device); }, meanwhile);
    constexpr int quickMs = 12;
    moving->NoteSpeed(clock.elapsed() <= quickMs);
    takeUp(outcome);
}

void ctlScene::takeUp(LongPaint::Outcome outcome) {
    using enum LongPaint::Outcome;
    ViewState& view = session.View;
    if (outcome == Later)
        return;
    if (outcome == Shown) {
        moving->TakePainted();
        emit Painted();
        return;
    }
    // Positions of a picture that is not shown are nobody's.
    view.NodePoints.clear();
    view.ElementCentres.clear();
    if (outcome == GaveWay) {
        moving->TakeGivenUp();
        return;
    }
    moving->TakeLost();
    picScreen->RefreshLayer();
    emit PaintStopped(paint->WhyStopped());
}

const QImage& ctlScene::Picture() {
    paintExactly();
    return picScreen->Image();
}

DeviceSize ctlScene::PixelSize() const {
    return picScreen->PixelSize();
}

int ctlScene::DotsPerInch() const {
    return picScreen->DotsPerInch();
}

void ctlScene::Clear() {
    moving->Forget();
    moving->TakeLost();
    picScreen->BlankSheet();
    picScreen->ShowSheet();
}

void ctlScene::fitView() {
    if (session.Settings.Window.FitDisplaced)
        session.ShowAllDisplaced(picScreen->PixelSize(), picScreen->DotsPerInch());
    else
        session.ShowAll();
}

void ctlScene::Fit() {
    if (!session.IsOpen())
        return;
    fitView();
    finishZoom();
}

void ctlScene::SetZoom(int value) {
    mdView::ApplyZoom(value, session.View);
    finishZoom();
}

void ctlScene::finishZoom() {
    onViewChanged();
    Paint();
}

void ctlScene::GoTo(int by) {
    if (moving->GoTo(by))
        finishZoom();
}

void ctlScene::paintExactly() {
    if (moving->ShowsMoved())
        Paint();
}

void ctlScene::onViewChanged() {
    updateScrollBars();
    emit Zoomed();
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
    if (scrScroll[std::size_t(bar)]->isSliderDown())
        moving->Follow();
    else
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
        if (session.Settings.Window.FitDisplaced && session.IsOpen())
            fitView();
        settling.start();
    }
    session.Plotter.Viewport().SetWindow(picScreen->PixelSize());
    // Not before the layout is done: a paint that takes long lets others have their turn, which a window in the midst
    // of its layout does not stand, and on its way to the screen it would not come up before the paint has ended.
    paintDue = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (paintDue)
                Paint();
        },
        Qt::QueuedConnection);
}
