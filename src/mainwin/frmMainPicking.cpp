// The mouse on the picture: picks by click and drag, the marks of what is picked, dropped files.
#include "mainwin/frmMain.h"

#include "app/mdApplication.h"
#include "mainwin/globals.h"
#include "platform/widgets/CommandBars.h"
#include "platform/widgets/PictureBox.h"
#include "view/picking.h"

#include <QApplication>
#include <QScreen>

using mdApplication::Model;

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

void frmMain::connectPicking() {
    picScreen->Layer = [this](DeviceContext& device) { paintLayer(device); };
    connect(picScreen, &PictureBox::MousePressed, this, &frmMain::onMousePressed);
    connect(picScreen, &PictureBox::MouseMoved, this, [this](QPoint pixel) { moveRubberBand(toPoint(pixel)); });
    connect(picScreen, &PictureBox::MouseReleased, this, &frmMain::onMouseReleased);
    connect(picScreen, &PictureBox::MouseLost, this, &frmMain::cancelDrag);
    // Only after the drop is over: the program that the files come from waits for its end, and opening takes long.
    connect(
        picScreen, &PictureBox::FilesDropped, this,
        [this](const QStringList& paths) {
            // A dialog that is open works on the file that is open.
            if (!QApplication::activeModalWidget())
                FirstStep(paths.first());
        },
        Qt::QueuedConnection);
}

bool frmMain::takesMouse() const {
    return IsOpen() && !slideShow.SlideShowRunning;
}

int frmMain::screenWidth() const {
    return qRound(screen()->size().width() * picScreen->devicePixelRatioF());
}

void frmMain::onMousePressed(QPoint pixel, Qt::MouseButton button) {
    if (button == Qt::LeftButton && takesMouse())
        beginDrag(toPoint(pixel));
}

void frmMain::onMouseReleased(QPoint pixel, Qt::MouseButton button, Qt::KeyboardModifiers modifiers) {
    if (!takesMouse()) {
        cancelDrag();
        return;
    }
    if (button == Qt::LeftButton && view.Dragging) {
        endDrag(toPoint(pixel), modifiers);
    } else if (button == Qt::RightButton) {
        // The popup takes the mouse, and with it the release that would end a drag.
        cancelDrag();
        showPopup(picScreen->mapToGlobal(QPointF(pixel) / picScreen->devicePixelRatioF()).toPoint());
    }
}

void frmMain::beginDrag(DevicePoint corner) {
    view.RubberBand = {corner, corner};
    view.Dragging = true;
}

void frmMain::moveRubberBand(DevicePoint corner) {
    if (!view.Dragging || !takesMouse())
        return;
    const QRegion before = bandRegion(view.RubberBand);
    view.RubberBand[1] = corner;
    const QRegion visible(QRect(QPoint(), picScreen->Image().size()));
    const QRegion changed = before.xored(bandRegion(view.RubberBand)) & visible;
    // The band is the same wherever it lies, so its changed parts alone take it from the old place to the new one.
    picScreen->DrawOnLayer(changed, [&changed](DeviceContext& device) {
        for (const QRect& part : changed)
            mdPicking::DrawRubberBand(
                device, std::array<DevicePoint, 2>{{{part.left(), part.top()}, {part.right() + 1, part.bottom() + 1}}});
    });
}

void frmMain::endDrag(DevicePoint corner, Qt::KeyboardModifiers modifiers) {
    view.RubberBand[1] = corner;
    view.Dragging = false;
    const auto& [first, second] = view.RubberBand;
    const int tolerance = mdPicking::PickTolerance(clsModel.Viewport().DeviceWidth(), screenWidth());
    const auto across = std::abs(std::int64_t(second.X) - first.X);
    const auto down = std::abs(std::int64_t(second.Y) - first.Y);
    const int mode = pickMode(modifiers);
    if (tolerance > std::max(across, down))
        mdPicking::PickPoint(Model, view, Selection, mode, second, tolerance);
    else
        mdPicking::PickRectangle(Model, view, Selection, mode, view.RubberBand, tolerance);
    picScreen->RefreshLayer();
}

void frmMain::cancelDrag() {
    if (std::exchange(view.Dragging, false))
        picScreen->RefreshLayer();
}

/// Marks and band stand over the picture and never in it: copies, pages and films show the scene alone.
void frmMain::paintLayer(DeviceContext& device) {
    mdPicking::DrawSelection(device, Model, view, Selection,
                             mdPicking::NodeMarkSize(picScreen->PixelSize().Width, screenWidth()));
    if (view.Dragging)
        mdPicking::DrawRubberBand(device, view.RubberBand);
}

void frmMain::showPopup(QPoint globalPosition) {
    bars->ShowPopup(u"pbPopup"_s, globalPosition);
}
