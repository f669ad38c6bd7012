// The mouse on the picture: picks by click and drag, the marks of what is picked, dropped files.
#include "mainwin/ctlScene.h"

#include "platform/widgets/PictureBox.h"
#include "view/picking.h"

#include <QApplication>
#include <QScreen>

namespace {

DevicePoint toPoint(QPoint pixel) {
    return {pixel.x(), pixel.y()};
}

/// The pixels that a band between two corners covers.
QRegion bandRegion(const std::array<DevicePoint, 2>& corners) {
    const auto [left, right] = std::minmax(corners[0].X, corners[1].X);
    const auto [top, bottom] = std::minmax(corners[0].Y, corners[1].Y);
    return {left, top, right - left, bottom - top};
}

/// Shift wins over Ctrl.
int pickMode(Qt::KeyboardModifiers modifiers) {
    if (modifiers & Qt::ShiftModifier)
        return mdPicking::Mode::Add;
    return modifiers & Qt::ControlModifier ? mdPicking::Mode::Toggle : mdPicking::Mode::Replace;
}

} // namespace

void ctlScene::connectPicking() {
    picScreen->Layer = [this](DeviceContext& device) { paintLayer(device); };
    connect(picScreen, &PictureBox::MousePressed, this, &ctlScene::onMousePressed);
    connect(picScreen, &PictureBox::MouseMoved, this, [this](QPoint pixel) { moveRubberBand(toPoint(pixel)); });
    connect(picScreen, &PictureBox::MouseReleased, this, &ctlScene::onMouseReleased);
    connect(picScreen, &PictureBox::MouseLost, this, &ctlScene::cancelDrag);
    // Only after the drop is over: the program that the files come from waits for its end, and opening takes long.
    connect(
        picScreen, &PictureBox::FilesDropped, this,
        [this](const QStringList& paths) {
            // A dialog that is open works on the file that is open.
            if (!QApplication::activeModalWidget())
                emit FileDropped(paths.first());
        },
        Qt::QueuedConnection);
}

bool ctlScene::takesMouse() const {
    return session.IsOpen() && !session.SlideShow.SlideShowRunning && !paint->IsRunning();
}

int ctlScene::screenWidth() const {
    return qRound(screen()->size().width() * picScreen->devicePixelRatioF());
}

void ctlScene::onMousePressed(QPoint pixel, Qt::MouseButton button) {
    if (!moving->TakePress(pixel, button) && button == Qt::LeftButton && takesMouse() && !moving->IsDragging()) {
        paintExactly();
        beginDrag(toPoint(pixel));
    }
}

void ctlScene::onMouseReleased(QPoint pixel, Qt::MouseButton button, Qt::KeyboardModifiers modifiers) {
    if (!takesMouse()) {
        cancelDrag();
        return;
    }
    if (button == Qt::LeftButton && session.View.Dragging) {
        endDrag(toPoint(pixel), modifiers);
    } else if (button == Qt::RightButton) {
        // The popup takes the mouse, and with it the release that would end a drag.
        cancelDrag();
        emit PopupWanted(picScreen->mapToGlobal(QPointF(pixel) / picScreen->devicePixelRatioF()).toPoint());
    }
}

void ctlScene::AskForPopup() {
    if (takesMouse())
        emit PopupWanted(picScreen->mapToGlobal(picScreen->rect().center()));
}

void ctlScene::beginDrag(DevicePoint corner) {
    session.View.RubberBand = {corner, corner};
    session.View.Dragging = true;
}

void ctlScene::moveRubberBand(DevicePoint corner) {
    if (!session.View.Dragging || !takesMouse())
        return;
    const QRegion before = bandRegion(session.View.RubberBand);
    session.View.RubberBand[1] = corner;
    const QRegion visible(QRect(QPoint(), picScreen->Image().size()));
    const QRegion changed = before.xored(bandRegion(session.View.RubberBand)) & visible;
    // The band is the same wherever it lies, so its changed parts alone take it from the old place to the new one.
    picScreen->DrawOnLayer(changed, [&changed](DeviceContext& device) {
        for (const QRect& part : changed)
            mdPicking::DrawRubberBand(
                device, std::array<DevicePoint, 2>{{{part.left(), part.top()}, {part.right() + 1, part.bottom() + 1}}});
    });
}

void ctlScene::endDrag(DevicePoint corner, Qt::KeyboardModifiers modifiers) {
    session.View.RubberBand[1] = corner;
    session.View.Dragging = false;
    const auto& [first, second] = session.View.RubberBand;
    const int tolerance = mdPicking::PickTolerance(session.Plotter.Viewport().DeviceWidth(), screenWidth());
    const auto across = std::abs(std::int64_t(second.X) - first.X);
    const auto down = std::abs(std::int64_t(second.Y) - first.Y);
    const int mode = pickMode(modifiers);
    if (tolerance > std::max(across, down))
        mdPicking::PickPoint(session.Model, session.View, selection, mode, second, tolerance);
    else
        mdPicking::PickRectangle(session.Model, session.View, selection, mode, session.View.RubberBand, tolerance);
    picScreen->RefreshLayer();
    emit Picked();
}

void ctlScene::cancelDrag() {
    if (std::exchange(session.View.Dragging, false))
        picScreen->RefreshLayer();
}

/// Marks and band stand over the picture and never in it: copies, pages and films show the scene alone.
void ctlScene::paintLayer(DeviceContext& device) {
    if (paint->IsRunning())
        return;
    mdPicking::DrawSelection(device, session.Model, session.View, selection,
                             mdPicking::NodeMarkSize(picScreen->PixelSize().Width, screenWidth()));
    if (session.View.Dragging)
        mdPicking::DrawRubberBand(device, session.View.RubberBand);
}
