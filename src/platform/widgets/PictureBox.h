// A control that shows a picture kept in device pixels, so that showing it again costs a copy and it is sharp at every
// scale of the desktop, and over it a layer that is never part of the picture. What they show is their owner's
// business.
#pragma once

#include "platform/base/Geometry.h"

#include <QImage>
#include <QWidget>
#include <functional>

class DeviceContext;
class QNativeGestureEvent;

class PictureBox : public QWidget {
    Q_OBJECT

public:
    explicit PictureBox(QWidget* parent = nullptr);

    /// A sheet of `PixelSize`, cleared to the background, on which the next picture is drawn; `ShowSheet` puts it in
    /// the place of the picture.
    QImage& BlankSheet();
    void ShowSheet();
    const QImage& Image() const { return image; }
    /// Shows the picture and its layer moved and scaled until the next sheet is shown.
    void ShowMoved(const PictureShift& shift);
    /// Whether the wheel zooms also without Ctrl. Otherwise it is left to what the box stands on.
    void SetTakesWheel(bool value) { takesWheel = value; }

    /// Draws on a copy of the picture, which is shown in its place; not called while there is no picture. When it draws
    /// nothing, nothing is copied.
    std::function<void(DeviceContext&)> Layer;
    /// Has the layer drawn anew the next time that the box is shown.
    void RefreshLayer();
    /// Draws on what is shown as it stands. `changed` is in pixels of the picture, and `draw` must keep to it. Nothing
    /// when the layer is to be drawn anew anyhow.
    void DrawOnLayer(const QRegion& changed, const std::function<void(DeviceContext&)>& draw);
    /// The picture with its layer.
    const QImage& ShownImage();

    DeviceSize PixelSize() const;
    /// Dots per inch of the picture: 96 at a desktop scale of 100 %.
    int DotsPerInch() const;
    /// A position of a mouse event in pixels of the picture.
    QPointF ToPixels(QPointF position) const { return position * devicePixelRatioF(); }
    /// Likewise, as the pixel there.
    QPoint PixelAt(QPointF position) const;

    static constexpr ColorRef BackColor = makeColor(255, 255, 255);

signals:
    void Resized();
    /// While a button is held the mouse belongs to the box: `pixel` may then lie outside the picture.
    void MousePressed(QPoint pixel, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
    void MouseMoved(QPoint pixel, Qt::MouseButtons held = Qt::NoButton);
    void MouseReleased(QPoint pixel, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
    /// The release of the left button will not come, or is not to count: the mouse or the keyboard has gone to someone
    /// else, or Esc has been pressed.
    void MouseLost();
    /// It has left the box.
    void MouseGone();
    /// The wheel, or two fingers that part, at `pixel`: `steps` above 0 away from the user.
    void ZoomWheel(QPointF pixel, int steps);
    /// Two fingers on a touchpad go this way, in pixels; only where the wheel is taken.
    void Panned(QPointF way);
    /// Local files have been dropped, at least one.
    void FilesDropped(QStringList paths);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool event(QEvent* event) override;

private:
    void drawLayer(const std::function<void(DeviceContext&)>& draw);
    void giveUpLeftButton();
    void takeGesture(const QNativeGestureEvent& gesture);
    void turn(QPointF position, int& rest, int by, int perStep);

    QImage image;
    QImage sheet;            ///< of the next picture
    QImage layered;          ///< the picture with its layer; null while the layer has drawn nothing
    bool layerStale = false; ///< the layer is to be drawn anew before it is shown
    bool leftHeld = false;
    bool takesWheel = false;
    PictureShift shift;
    int wheelRest = 0; ///< eighths of a degree not yet made into a step
    int pinchRest = 0; ///< likewise in thousandths of the size
};

/// A box of some lines of text in height that only shows something.
PictureBox* SampleBox(const QString& name, const QString& accessibleName, int lines);
