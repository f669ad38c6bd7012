// What lies under the mouse, told beside it when it has rested over the picture.
#include "mainwin/ctlScene.h"

#include "platform/widgets/PictureBox.h"
#include "view/pickedValues.h"
#include "view/picking.h"

#include <QApplication>
#include <QToolTip>

void ctlScene::connectTip() {
    constexpr int restMs = 300;
    tipWait.setInterval(restMs);
    tipWait.setSingleShot(true);
    connect(&tipWait, &QTimer::timeout, this, &ctlScene::showTip);
    connect(picScreen, &PictureBox::MouseMoved, this, [this](QPoint pixel, Qt::MouseButtons held) {
        HideTip();
        tipAt = pixel;
        if (session.Settings.Window.PointTip && held == Qt::NoButton && !moving->IsDragging())
            tipWait.start();
    });
    connect(picScreen, &PictureBox::MousePressed, this, &ctlScene::HideTip);
    connect(picScreen, &PictureBox::MouseGone, this, &ctlScene::HideTip);
    for (const auto change : {&ctlScene::Painted, &ctlScene::Zoomed})
        connect(this, change, this, &ctlScene::HideTip);
}

void ctlScene::HideTip() {
    tipWait.stop();
    if (std::exchange(tipShown, false))
        QToolTip::hideText();
}

void ctlScene::showTip() {
    // A picture that is shown moved has its objects elsewhere; the exact one comes soon, but not the mouse again.
    if (moving->ShowsMoved()) {
        tipWait.start();
        return;
    }
    if (!takesMouse() || QApplication::activePopupWidget() || QApplication::activeModalWidget())
        return;
    // It may lie a little beside: a node is a point, and nothing is done to it.
    constexpr int timesTolerance = 3;
    const int tolerance = mdPicking::PickTolerance(session.Plotter.Viewport().DeviceWidth(), screenWidth());
    const std::int32_t object = mdPicking::ObjectAt(session.Model, session.View, {tipAt.x(), tipAt.y()},
                                                    std::max(1, tolerance) * timesTolerance);
    if (object < 0)
        return;
    const QString text = mdPicking::ObjectText(session.Model, session.Settings.Difference, object);
    const QPointF place = QPointF(tipAt) / picScreen->devicePixelRatioF();
    // Names out of a file are no markup. It stays as long as the mouse does.
    QToolTip::showText(picScreen->mapToGlobal(place).toPoint(),
                       u"<p style=\"white-space:pre\">"_s + text.toHtmlEscaped() + u"</p>"_s, picScreen, {},
                       std::numeric_limits<int>::max());
    tipShown = true;
}
