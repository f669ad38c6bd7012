#include "mainwin/SceneMoving.h"

#include "platform/widgets/LongWork.h"
#include "platform/widgets/PictureBox.h"

#include <QKeyEvent>

SceneMoving::SceneMoving(Session& ofSession, PictureBox& pictureBox, std::function<bool()> isBoxPainting)
    : session(ofSession), box(pictureBox), isPainting(std::move(isBoxPainting)) {
    constexpr int restMs = 50;
    resting.setInterval(restMs);
    resting.setSingleShot(true);
    connect(&resting, &QTimer::timeout, this, &SceneMoving::comeToRest);
    box.SetTakesWheel(true);
    box.installEventFilter(this);
    connect(&box, &PictureBox::ZoomWheel, this, &SceneMoving::zoomAt);
    connect(&box, &PictureBox::MouseMoved, this, &SceneMoving::moveTo);
    connect(&box, &PictureBox::MouseReleased, this, [this](QPoint pixel, Qt::MouseButton button) {
        if (drag && drag->Button == button) {
            moveTo(pixel, button);
            endDrag();
        }
    });
    connect(&box, &PictureBox::MouseLost, this, &SceneMoving::endDrag);
    connect(&box, &PictureBox::Panned, this, &SceneMoving::moveBy);
}

bool SceneMoving::isMovable() const {
    return session.IsOpen() && session.View.CoordConverter && !isPainting();
}

void SceneMoving::zoomAt(QPointF pixel, int steps) {
    ViewState& view = session.View;
    if (!isMovable())
        return;
    float x = 0, y = 0;
    view.CoordConverter->DeviceToWorld(qRound(pixel.x()), qRound(pixel.y()), x, y);
    mdView::ZoomAt(view.Zoom + steps, x, y, view);
    Follow();
    if (drag)
        drag = Drag{pixel.toPoint(), view.ViewBounds, drag->Button};
}

void SceneMoving::moveBy(QPointF way) {
    if (!isMovable())
        return;
    mdView::MoveBy(way.x(), way.y(), session.View);
    Follow();
}

void SceneMoving::Follow() {
    resting.start();
    emit ViewChanged();
    // The band stands on a picture that stays.
    if (!painted || paintsQuickly || session.View.Dragging) {
        emit PaintWanted();
        return;
    }
    session.View.CoordConverter = session.Plotter.ConverterNow(*painted);
    box.ShowMoved(session.View.CoordConverter->ShiftFrom(*painted));
    isMoved = true;
}

void SceneMoving::comeToRest() {
    if (LongWork::IsRunning())
        resting.start();
    else if (isMoved)
        emit PaintAtRestWanted();
    else
        noteView();
}

void SceneMoving::TakePainted() {
    isMoved = false;
    painted = session.View.CoordConverter;
    noteView();
}

void SceneMoving::TakeGivenUp() {
    isMoved = true;
    session.View.CoordConverter = session.Plotter.ConverterNow(*painted);
    resting.start();
}

void SceneMoving::TakeLost() {
    isMoved = false;
    painted.reset();
    session.View.CoordConverter.reset();
}

/// A view that is only passed through does not count.
void SceneMoving::noteView() {
    if (!drag && !resting.isActive() && seen.Note(session.View))
        emit ViewChanged();
}

bool SceneMoving::GoTo(int by) {
    // Where one goes away from has been seen, even if only just.
    resting.stop();
    noteView();
    return seen.Go(by, session.View);
}

void SceneMoving::Forget() {
    endDrag();
    resting.stop();
    isMoved = false;
    seen.Forget();
}

bool SceneMoving::TakePress(QPoint pixel, Qt::MouseButton button) {
    if (button != Qt::MiddleButton && (button != Qt::LeftButton || !spaceHeld))
        return false;
    if (!isMovable())
        return true;
    emit Beginning();
    drag = Drag{pixel, session.View.ViewBounds, button};
    showCursor();
    return true;
}

void SceneMoving::moveTo(QPoint pixel, Qt::MouseButtons held) {
    if (!drag)
        return;
    // The release may have gone to someone else.
    if (!(held & drag->Button)) {
        endDrag();
        return;
    }
    if (!isMovable())
        return;
    const QPoint way = pixel - drag->From;
    const PlotRect before = session.View.ViewBounds;
    session.View.ViewBounds = drag->Bounds;
    mdView::MoveBy(way.x(), way.y(), session.View);
    if (session.View.ViewBounds != before)
        Follow();
}

void SceneMoving::endDrag() {
    if (!drag)
        return;
    drag.reset();
    showCursor();
    noteView();
}

void SceneMoving::showCursor() {
    if (drag)
        box.setCursor(Qt::ClosedHandCursor);
    else if (spaceHeld && isMovable())
        box.setCursor(Qt::OpenHandCursor);
    else
        box.unsetCursor();
}

bool SceneMoving::eventFilter(QObject* watched, QEvent* event) {
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
    return QObject::eventFilter(watched, event);
}
