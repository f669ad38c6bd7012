#include "platform/PictureBox.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <cmath>

PictureBox::PictureBox(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

DeviceSize PictureBox::PixelSize() const {
    const double ratio = devicePixelRatioF();
    return {int(std::lround(width() * ratio)), int(std::lround(height() * ratio))};
}

int PictureBox::DotsPerInch() const {
    constexpr double dotsPerInchAtFullScale = 96;
    return int(std::lround(dotsPerInchAtFullScale * devicePixelRatioF()));
}

QImage& PictureBox::ClearedImage() {
    const DeviceSize size = PixelSize();
    if (image.width() != size.Width || image.height() != size.Height)
        image = QImage(size.Width, size.Height, QImage::Format_RGB32);
    image.setDevicePixelRatio(1);
    image.fill(qRgb(redOf(BackColour), greenOf(BackColour), blueOf(BackColour)));
    return image;
}

void PictureBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (image.isNull()) {
        painter.fillRect(rect(), QColor(redOf(BackColour), greenOf(BackColour), blueOf(BackColour)));
        return;
    }
    // The ratio is set only while it is shown: whoever draws into the picture counts its pixels.
    image.setDevicePixelRatio(devicePixelRatioF());
    painter.drawImage(QPointF(0, 0), image);
    image.setDevicePixelRatio(1);
}

void PictureBox::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    emit Resized();
}

bool PictureBox::event(QEvent* event) {
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::ScreenChangeInternal)
        emit Resized();
    return handled;
}

void PictureBox::mouseMoveEvent(QMouseEvent* event) {
    emit MouseMoved(ToPixels(event->position()));
}

void PictureBox::wheelEvent(QWheelEvent* event) {
    if (!(event->modifiers() & Qt::ControlModifier)) {
        event->ignore();
        return;
    }
    wheelRest += event->angleDelta().y();
    const int steps = wheelRest / QWheelEvent::DefaultDeltasPerStep;
    wheelRest -= steps * QWheelEvent::DefaultDeltasPerStep;
    if (steps != 0)
        emit ZoomWheel(ToPixels(event->position()), steps);
    event->accept();
}
