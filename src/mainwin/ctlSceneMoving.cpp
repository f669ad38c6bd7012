// The view moved about by wheel, mouse and scroll bars. What takes long to paint is shown moved at once, as the picture
// that is there; the exact one follows when the view has come to rest, and gives way when it is moved on.
#include "mainwin/ctlScene.h"

#include "platform/widgets/PictureBox.h"

#include <QKeyEvent>
#include <QScrollBar>

void ctlScene::connectMoving() {
    constexpr int restMs = 50;
    resting.setInterval(restMs);
    resting.setSingleShot(true);
    connect(&resting, &QTimer::timeout, this, &ctlScene::comeToRest);
    picScreen->SetTakesWheel(true);
    picScreen->installEventFilter(this);
    connect(picScreen, &PictureBox::ZoomWheel, this, &ctlScene::zoomAt);
    connect(picScreen, &PictureBox::MouseMoved, this, &ctlScene::moveTo);
    connect(picScreen, &PictureBox::MouseReleased, this, [this](QPoint pixel, Qt::MouseButton button) {
        if (move && move->Button == button) {
            moveTo(pixel, button);
            endMove();
        }
    });
    connect(picScreen, &PictureBox::MouseLost, this, &ctlScene::endMove);
    connect(picScreen, &PictureBox::Panned, this, [this](QPointF way) {
        if (!isMovable())
            return;
        mdView::MoveBy(way.x(), way.y(), session.View);
        follow();
    });
}

bool ctlScene::isMovable() const {
    return session.IsOpen() && session.View.CoordConverter && !paint->IsRunning();
}

void ctlScene::zoomAt(QPointF pixel, int steps) {
    ViewState& view = session.View;
    if (!isMovable())
        return;
    float x = 0, y = 0;
    view.CoordConverter->DeviceToWorld(qRound(pixel.x()), qRound(pixel.y()), x, y);
    mdView::ZoomAt(view.Zoom + steps, x, y, view);
    follow();
    if (move)
        move = Move{pixel.toPoint(), view.ViewBounds, move->Button};
}

/// Shows the view as it is now.
void ctlScene::follow() {
    updateScrollBars();
    resting.start();
    // The band stands on a picture that stays.
    if (!painted || isQuick || session.View.Dragging) {
        Paint();
    } else {
        session.View.CoordConverter = session.Plotter.ConverterNow(*painted);
        picScreen->ShowMoved(session.View.CoordConverter->ShiftFrom(*painted));
        isMoved = true;
    }
    emit Zoomed();
}

void ctlScene::comeToRest() {
    if (LongWork::IsRunning())
        resting.start();
    else if (isMoved)
        takeUp(paint->PaintAtRest([this](DeviceContext& device) { session.Draw(device); }));
    else
        noteView();
}

void ctlScene::paintExactly() {
    if (isMoved)
        Paint();
}

/// A view that is only passed through does not count.
void ctlScene::noteView() {
    if (move || resting.isActive())
        return;
    if (seen.Note(session.View))
        emit Zoomed();
}

void ctlScene::GoTo(int by) {
    // Where one goes away from has been seen, even if only just.
    resting.stop();
    noteView();
    if (seen.Go(by, session.View))
        finishZoom();
}

void ctlScene::ForgetViews() {
    endMove();
    resting.stop();
    isMoved = false;
    seen.Forget();
}

void ctlScene::beginMove(QPoint pixel, Qt::MouseButton button) {
    if (!isMovable())
        return;
    cancelDrag();
    move = Move{pixel, session.View.ViewBounds, button};
    showCursor();
}

void ctlScene::moveTo(QPoint pixel, Qt::MouseButtons held) {
    if (!move)
        return;
    // The release may have gone to someone else.
    if (!(held & move->Button)) {
        endMove();
        return;
    }
    if (!isMovable())
        return;
    const QPoint way = pixel - move->From;
    const PlotRect before = session.View.ViewBounds;
    session.View.ViewBounds = move->Bounds;
    mdView::MoveBy(way.x(), way.y(), session.View);
    if (session.View.ViewBounds != before)
        follow();
}

void ctlScene::endMove() {
    if (!move)
        return;
    move.reset();
    showCursor();
    noteView();
}

void ctlScene::showCursor() {
    if (move)
        picScreen->setCursor(Qt::ClosedHandCursor);
    else if (spaceHeld && isMovable())
        picScreen->setCursor(Qt::OpenHandCursor);
    else
        picScreen->unsetCursor();
}

bool ctlScene::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    const auto isSpace = [event] {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        return key.key() == Qt::Key_Space && key.modifiers() == Qt::NoModifier;
    };
    if (isKey && isSpace()) {
        if (!static_cast<const QKeyEvent&>(*event).isAutoRepeat()) {
            spaceHeld = event->type() == QEvent::KeyPress;
            showCursor();
        }
        return true;
    }
    if (event->type() == QEvent::FocusOut && std::exchange(spaceHeld, false))
        showCursor();
    return QWidget::eventFilter(watched, event);
}
