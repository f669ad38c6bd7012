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
    struct {
        double ratio;
        QSize pixels;
        int dotsPerInch;
    } const cases[] = {{1, {101, 67}, 96}, {1.25, {126, 84}, 120}, {1.5, {152, 101}, 144}, {2, {202, 134}, 192}};
    for (const auto& expected : cases) {
        ScaledBox box(expected.ratio);
        QImage& image = box.BlankSheet();
        EXPECT_EQ(image.size(), expected.pixels);
        EXPECT_EQ(box.DotsPerInch(), expected.dotsPerInch);
        EXPECT_EQ(box.ToPixels({10, 20}), QPointF(10, 20) * expected.ratio);
        for (int y = 0; y < image.height(); ++y)
            for (int x = y % 2; x < image.width(); x += 2)
                image.setPixel(x, y, qRgb(x, y, 0));
        box.ShowSheet();
        QImage shown(expected.pixels, QImage::Format_RGB32);
        shown.setDevicePixelRatio(expected.ratio);
        box.render(&shown);
        shown.setDevicePixelRatio(1);
        EXPECT_TRUE(shown == box.Image()) << expected.ratio;
    }
}

void drawBlock(DeviceContext& device, const QRect& block) {
    device.SetRop2(RasterMode::XorPen);
    device.SelectPen(stockPen(Stock::NullPen));
    device.SelectBrush({.Color = 0xff});
    device.Rectangle({block.left(), block.top(), block.right() + 2, block.bottom() + 2});
    device.SetRop2(RasterMode::CopyPen);
}

TEST(PictureBox, LayerStandsOverThePictureAndNeverInIt) {
    ScaledBox box(1.5);
    const QRect block(3, 4, 5, 6), other(20, 20, 4, 4);
    bool drawing = false;
    int calls = 0;
    box.Layer = [&](DeviceContext& device) {
        ++calls;
        if (drawing)
            drawBlock(device, block);
    };
    box.BlankSheet();
    box.ShowSheet();
    const QImage& picture = box.Image();
    const QImage plain = picture.copy();
    EXPECT_EQ(box.ShownImage().constBits(), picture.constBits()) << "nothing drawn, nothing copied";
    drawing = true;
    EXPECT_TRUE(box.ShownImage() == plain);
    EXPECT_EQ(calls, 1) << "drawn anew only when asked to";
    box.RefreshLayer();
    const QImage withBlock = box.ShownImage().copy();
    EXPECT_EQ(withBlock.pixel(3, 4), qRgb(0, 255, 255));
    box.DrawOnLayer(block | other, [&](DeviceContext& device) {
        drawBlock(device, block);
        drawBlock(device, other);
    });
    EXPECT_EQ(box.ShownImage().pixel(3, 4), qRgb(255, 255, 255));
    EXPECT_EQ(box.ShownImage().pixel(21, 21), qRgb(0, 255, 255));
    EXPECT_TRUE(picture == plain);
    box.RefreshLayer();
    box.DrawOnLayer(other, [&](DeviceContext& device) { drawBlock(device, other); });
    EXPECT_TRUE(box.ShownImage() == withBlock) << "the layer drawn anew holds it already";
    box.BlankSheet().fill(Qt::black);
    box.ShowSheet();
    EXPECT_EQ(box.ShownImage().pixel(3, 4), qRgb(255, 0, 0)) << "over the new picture";
}

TEST(PictureBox, MouseEventsComeInPixelsAndALostReleaseIsTold) {
    ScaledBox box(1.5);
    QStringList events;
    const auto note = [&events](const QString& name, QPointF pixel, int number, int modifiers) {
        events.append(u"%1 %2,%3 %4 %5"_s.arg(name).arg(pixel.x()).arg(pixel.y()).arg(number).arg(modifiers >> 25));
    };
    const auto expect = [&events](const QStringList& expected) {
        EXPECT_EQ(events, expected) << events.join(u" | "_s).toStdString();
        events.clear();
    };
    QObject::connect(&box, &PictureBox::MousePressed,
                     [&](QPoint pixel, int button, int modifiers) { note(u"press"_s, pixel, button, modifiers); });
    QObject::connect(&box, &PictureBox::MouseMoved, [&](QPoint pixel, int held) { note(u"move"_s, pixel, held, 0); });
    QObject::connect(&box, &PictureBox::MouseReleased,
                     [&](QPoint pixel, int button, int modifiers) { note(u"release"_s, pixel, button, modifiers); });
    QObject::connect(&box, &PictureBox::MouseLost, [&] { events.append(u"lost"_s); });
    QObject::connect(&box, &PictureBox::ZoomWheel, [&](QPointF pixel, int steps) { note(u"zoom"_s, pixel, steps, 0); });
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
    for (const auto& [eighths, keys] : {std::pair(120, Qt::NoModifier),
                                        {240, Qt::ControlModifier},
                                        {60, Qt::ControlModifier},
                                        {60, Qt::ControlModifier},
                                        {-130, Qt::ControlModifier}}) {
        QWheelEvent event({10, 20}, {10, 20}, {}, {0, eighths}, Qt::NoButton, keys, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&box, &event);
        EXPECT_EQ(event.isAccepted(), keys != Qt::NoModifier);
    }
    expect({u"zoom 15,30 2 0"_s, u"zoom 15,30 1 0"_s, u"zoom 15,30 -1 0"_s});
}

} // namespace
