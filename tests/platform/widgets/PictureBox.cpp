#include "platform/widgets/PictureBox.h"

#include "platform/device/DeviceContext.h"

#include <QApplication>
#include <QWheelEvent>
#include <gtest/gtest.h>

namespace {

/// As on a desktop of the given scale.
class ScaledBox : public PictureBox {
public:
    explicit ScaledBox(double scale) : ratio(scale) { resize(101, 67); }

protected:
    int metric(PaintDeviceMetric kind) const override {
        return kind == PdmDevicePixelRatioScaled ? int(ratio * devicePixelRatioFScale()) : PictureBox::metric(kind);
    }

private:
    double ratio;
};

TEST(PictureBox, PictureHasTheScreensOwnPixelsAtEveryScale) {
    for (const auto& [ratio, pixels] :
         {std::pair(1.0, QSize(101, 67)), {1.25, {126, 84}}, {1.5, {152, 101}}, {2, {202, 134}}}) {
        ScaledBox box(ratio);
        QImage& image = box.BlankSheet();
        EXPECT_EQ(image.size(), pixels);
        EXPECT_EQ(box.DotsPerInch(), 96 * ratio);
        for (int y = 0; y < image.height(); ++y)
            for (int x = y % 2; x < image.width(); x += 2)
                image.setPixel(x, y, qRgb(x, y, 0));
        box.ShowSheet();
        QImage shown(pixels, QImage::Format_RGB32);
        shown.setDevicePixelRatio(ratio);
        box.render(&shown);
        shown.setDevicePixelRatio(1);
        EXPECT_TRUE(shown == box.Image()) << ratio;
    }
}

void drawBlock(DeviceContext& device, const QRect& block) {
    device.SetRop2(RasterMode::XorPen);
    device.SelectPen(stockPen(Stock::NullPen));
    device.SelectBrush({.Color = 0xff});
    device.Rectangle({block.left(), block.top(), block.right() + 2, block.bottom() + 2});
}

TEST(PictureBox, LayerStandsOverThePictureAndNeverInIt) {
    ScaledBox box(1.5);
    const QRect block(3, 4, 5, 6), other(20, 20, 4, 4);
    bool drawing = false;
    box.Layer = [&](DeviceContext& device) {
        if (drawing)
            drawBlock(device, block);
    };
    const auto drawOther = [&](DeviceContext& device) { drawBlock(device, other); };
    box.BlankSheet();
    box.ShowSheet();
    const QImage& picture = box.Image();
    const QImage plain = picture.copy();
    EXPECT_EQ(box.ShownImage().constBits(), picture.constBits()) << "nothing drawn, nothing copied";
    drawing = true;
    EXPECT_TRUE(box.ShownImage() == plain) << "drawn anew only when asked to";
    box.RefreshLayer();
    const QImage withBlock = box.ShownImage().copy();
    EXPECT_EQ(withBlock.pixel(3, 4), qRgb(0, 255, 255));
    box.DrawOnLayer(other, drawOther);
    EXPECT_EQ(box.ShownImage().pixel(21, 21), qRgb(0, 255, 255));
    EXPECT_TRUE(picture == plain);
    box.DrawOnLayer(other, drawOther);
    EXPECT_TRUE(box.ShownImage() == withBlock);
    box.RefreshLayer();
    box.DrawOnLayer(other, drawOther);
    EXPECT_TRUE(box.ShownImage() == withBlock) << "the layer drawn anew holds it already";
    box.BlankSheet().fill(Qt::black);
    box.ShowSheet();
    EXPECT_EQ(box.ShownImage().pixel(3, 4), qRgb(255, 0, 0)) << "over the new picture";
}

TEST(PictureBox, MouseEventsComeInPixelsAndALostReleaseIsTold) {
    ScaledBox box(1.5);
    QStringList events;
    const auto note = [&events](const QString& name) {
        return [&events, name](QPointF pixel, int number, int modifiers = 0) {
            events.append(u"%1 %2,%3 %4 %5"_s.arg(name).arg(pixel.x()).arg(pixel.y()).arg(number).arg(modifiers >> 25));
        };
    };
    const auto expect = [&events](const QStringList& expected) {
        EXPECT_EQ(std::exchange(events, {}).join(u'|'), expected.join(u'|'));
    };
    QObject::connect(&box, &PictureBox::MousePressed, note(u"press"_s));
    QObject::connect(&box, &PictureBox::MouseMoved, note(u"move"_s));
    QObject::connect(&box, &PictureBox::MouseReleased, note(u"release"_s));
    QObject::connect(&box, &PictureBox::ZoomWheel, note(u"zoom"_s));
    QObject::connect(&box, &PictureBox::MouseLost, [&] { events.append(u"lost"_s); });
    const auto send = [&box](QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, at, at, button, held, Qt::ShiftModifier);
        QApplication::sendEvent(&box, &event);
    };
    send(QEvent::MouseButtonPress, {10, 21}, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseMove, {-2, 300}, Qt::NoButton, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, {-2, 300}, Qt::LeftButton, Qt::NoButton);
    expect({u"press 15,32 1 1"_s, u"move -3,450 1 0"_s, u"release -3,450 1 1"_s});
    send(QEvent::MouseButtonPress, {2, 2}, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseMove, {2, 2}, Qt::NoButton, Qt::RightButton);
    expect({u"press 3,3 1 1"_s, u"lost"_s, u"move 3,3 2 0"_s});
    for (const QEvent::Type type : {QEvent::WindowDeactivate, QEvent::WindowBlocked, QEvent::Hide}) {
        send(QEvent::MouseButtonPress, {2, 2}, Qt::LeftButton, Qt::LeftButton);
        for (int i = 0; i < 2; ++i) {
            QEvent event(type);
            QApplication::sendEvent(&box, &event);
        }
        expect({u"press 3,3 1 1"_s, u"lost"_s});
    }
    for (const int eighths : {120, 240, 60, 60, -130}) {
        const auto keys = eighths == 120 ? Qt::NoModifier : Qt::ControlModifier;
        QWheelEvent event({10, 20}, {10, 20}, {}, {0, eighths}, Qt::NoButton, keys, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&box, &event);
        EXPECT_EQ(event.isAccepted(), keys != Qt::NoModifier);
    }
    expect({u"zoom 15,30 2 0"_s, u"zoom 15,30 1 0"_s, u"zoom 15,30 -1 0"_s});
    box.SetTakesWheel(true);
    QObject::connect(&box, &PictureBox::Panned, [&](QPointF way) { note(u"pan"_s)(way, 0); });
    // A wheel, and fingers on a touchpad.
    for (const auto& [phase, keys] : {std::pair(Qt::NoScrollPhase, Qt::NoModifier),
                                      {Qt::ScrollUpdate, Qt::NoModifier},
                                      {Qt::ScrollUpdate, Qt::ControlModifier}}) {
        QWheelEvent event({10, 20}, {10, 20}, {4, -6}, {0, 130}, Qt::NoButton, keys, phase, false);
        QApplication::sendEvent(&box, &event);
    }
    for (const double part : {0.2, 0.1, -0.3, -0.25}) {
        QNativeGestureEvent event(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, {10, 20},
                                  {10, 20}, {10, 20}, part, {});
        QApplication::sendEvent(&box, &event);
    }
    expect({u"zoom 15,30 1 0"_s, u"pan 6,-9 0 0"_s, u"zoom 15,30 1 0"_s, u"zoom 15,30 1 0"_s, u"zoom 15,30 -1 0"_s,
            u"zoom 15,30 -1 0"_s});
}

} // namespace
