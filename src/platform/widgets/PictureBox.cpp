#include "platform/widgets/PictureBox.h"

#include "platform/base/NativePath.h"
#include "platform/base/Rounding.h"
#include "platform/raster/RasterDevice.h"

#include <QApplication>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <cmath>

namespace {
QStringList localFiles(const QDropEvent& event) {
    QStringList paths;
    for (const QUrl& url : event.mimeData()->urls())
        if (url.isLocalFile())
            paths.append(NativePath::OfUrl(url));
    return paths;
}
} // namespace

PictureBox::PictureBox(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAcceptDrops(true);
}

DeviceSize PictureBox::PixelSize() const {
    const double ratio = devicePixelRatioF();
    return {int(std::lround(width() * ratio)), int(std::lround(height() * ratio))};
}

int PictureBox::DotsPerInch() const {
    constexpr double dotsPerInchAtFullScale = 96;
    return int(std::lround(dotsPerInchAtFullScale * devicePixelRatioF()));
}

QPoint PictureBox::PixelAt(QPointF position) const {
    const QPointF pixel = ToPixels(position);
    return {Round(pixel.x()), Round(pixel.y())};
}

QImage& PictureBox::BlankSheet() {
    const DeviceSize size = PixelSize();
    // One that someone has a copy of would be copied by the fill.
    if (sheet.width() != size.Width || sheet.height() != size.Height || !sheet.isDetached())
        sheet = QImage(size.Width, size.Height, QImage::Format_RGB32);
    sheet.fill(qRgb(redOf(BackColor), greenOf(BackColor), blueOf(BackColor)));
    return sheet;
}

void PictureBox::ShowMoved(const PictureShift& newShift) {
    shift = newShift;
    update();
}

void PictureBox::ShowSheet() {
    shift = {};
    layered = QImage();
    std::swap(image, sheet);
    RefreshLayer();
}

void PictureBox::RefreshLayer() {
    layerStale = true;
    update();
}

/// The copy is made by the first pixel drawn: until then both images share the picture's.
void PictureBox::drawLayer(const std::function<void(DeviceContext&)>& draw) {
    if (image.isNull() || !draw)
        return;
    if (layered.isNull())
        layered = image;
    {
        RasterDevice device(layered, DotsPerInch());
        draw(device);
    }
    if (layered.constBits() == image.constBits())
        layered = QImage();
}

const QImage& PictureBox::ShownImage() {
    if (std::exchange(layerStale, false)) {
        layered = QImage();
        drawLayer(Layer);
    }
    return layered.isNull() ? image : layered;
}

void PictureBox::DrawOnLayer(const QRegion& changed, const std::function<void(DeviceContext&)>& draw) {
    if (layerStale)
        return;
    drawLayer(draw);
    const double ratio = devicePixelRatioF();
    for (const QRect& part : changed) {
        const QRectF exact(part.x() / ratio, part.y() / ratio, part.width() / ratio, part.height() / ratio);
        update(exact.toAlignedRect());
    }
}

void PictureBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    ShownImage();
    QImage& shown = layered.isNull() ? image : layered;
    const DeviceSize size = PixelSize();
    if (shown.width() < size.Width || shown.height() < size.Height || shift != PictureShift())
        painter.fillRect(rect(), QColor(redOf(BackColor), greenOf(BackColor), blueOf(BackColor)));
    if (shown.isNull())
        return;
    painter.translate(QPointF(shift.OffsetX, shift.OffsetY) / devicePixelRatioF());
    painter.scale(shift.Scale, shift.Scale);
    // The ratio is set only while it is shown: whoever draws into the picture counts its pixels.
    shown.setDevicePixelRatio(devicePixelRatioF());
    painter.drawImage(QPointF(0, 0), shown);
    shown.setDevicePixelRatio(1);
}

void PictureBox::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    emit Resized();
}

bool PictureBox::event(QEvent* event) {
    const bool handled = QWidget::event(event);
    switch (event->type()) {
    case QEvent::ScreenChangeInternal:
        emit Resized();
        break;
    case QEvent::Leave:
        emit MouseGone();
        break;
    case QEvent::NativeGesture:
        takeGesture(static_cast<QNativeGestureEvent&>(*event));
        break;
    case QEvent::FocusOut:
    case QEvent::WindowDeactivate:
    case QEvent::WindowBlocked:
    case QEvent::Hide:
        giveUpLeftButton();
        break;
    default:
        break;
    }
    return handled;
}

void PictureBox::giveUpLeftButton() {
    if (std::exchange(leftHeld, false))
        emit MouseLost();
}

void PictureBox::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        giveUpLeftButton();
        leftHeld = true;
    }
    emit MousePressed(PixelAt(event->position()), event->button(), event->modifiers());
}

void PictureBox::mouseMoveEvent(QMouseEvent* event) {
    if (!(event->buttons() & Qt::LeftButton))
        giveUpLeftButton();
    emit MouseMoved(PixelAt(event->position()), event->buttons());
}

void PictureBox::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        leftHeld = false;
    emit MouseReleased(PixelAt(event->position()), event->button(), event->modifiers());
}

void PictureBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && leftHeld)
        giveUpLeftButton();
    else
        QWidget::keyPressEvent(event);
}

void PictureBox::dragEnterEvent(QDragEnterEvent* event) {
    if (QApplication::activeModalWidget() || localFiles(*event).isEmpty()) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void PictureBox::dropEvent(QDropEvent* event) {
    const QStringList paths = localFiles(*event);
    if (QApplication::activeModalWidget() || paths.isEmpty()) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    emit FilesDropped(paths);
}

void PictureBox::wheelEvent(QWheelEvent* event) {
    const bool zooms = event->modifiers() & Qt::ControlModifier;
    if (!zooms && !takesWheel) {
        event->ignore();
        return;
    }
    event->accept();
    // Only fingers come in phases: they move the picture, as they move a page. Where they come without, they turn it.
    if (!zooms && event->phase() != Qt::NoScrollPhase && !event->pixelDelta().isNull())
        emit Panned(ToPixels(event->pixelDelta()));
    else
        turn(event->position(), wheelRest, event->angleDelta().y(), QWheelEvent::DefaultDeltasPerStep);
}

void PictureBox::takeGesture(const QNativeGestureEvent& gesture) {
    constexpr int thousandthsPerStep = 250;
    if (gesture.gestureType() == Qt::ZoomNativeGesture)
        turn(gesture.position(), pinchRest, Round(gesture.value() * 1000), thousandthsPerStep);
    else if (gesture.gestureType() == Qt::PanNativeGesture && takesWheel)
        emit Panned(ToPixels(gesture.delta()));
}

void PictureBox::turn(QPointF position, int& rest, int by, int perStep) {
    rest += by;
    const int steps = rest / perStep;
    rest -= steps * perStep;
    if (steps != 0)
        emit ZoomWheel(ToPixels(position), steps);
}

PictureBox* SampleBox(const QString& name, const QString& accessibleName, int lines) {
    auto* box = new PictureBox;
    box->setObjectName(name);
    box->setAccessibleName(accessibleName);
    box->setFocusPolicy(Qt::NoFocus);
    box->setMinimumHeight(box->fontMetrics().height() * lines);
    return box;
}
