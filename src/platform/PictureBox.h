// A control that shows a picture kept in device pixels, so that showing it again costs a copy and it is sharp at every
// scale of the desktop. What the picture shows is its owner's business.
#pragma once

#include "platform/Geometry.h"

#include <QImage>
#include <QWidget>

class PictureBox : public QWidget {
    Q_OBJECT

public:
    explicit PictureBox(QWidget* parent = nullptr);

    /// The picture, `PixelSize` large and cleared to the background; draw into it, then call `Refresh`.
    QImage& ClearedImage();
    const QImage& Image() const { return image; }
    /// Shows the picture as it stands.
    void Refresh() { update(); }

    DeviceSize PixelSize() const;
    /// Dots per inch of the picture: 96 at a desktop scale of 100 %.
    int DotsPerInch() const;
    /// A position of a mouse event in pixels of the picture.
    QPointF ToPixels(QPointF position) const { return position * devicePixelRatioF(); }

    static constexpr Colour BackColour = makeColour(255, 255, 255);

signals:
    void Resized();
    void MouseMoved(QPointF pixel);
    /// Ctrl and wheel at `pixel`: `steps` above 0 away from the user.
    void ZoomWheel(QPointF pixel, int steps);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool event(QEvent* event) override;

private:
    QImage image;
    int wheelRest = 0; ///< eighths of a degree not yet made into a step
};
