#include "platform/PictureBox.h"

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

/// True when the box took the event.
bool turnWheel(PictureBox& box, int eighthsOfDegree, Qt::KeyboardModifiers modifiers) {
    QWheelEvent event({10, 20}, {10, 20}, {}, {0, eighthsOfDegree}, Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&box, &event);
    return event.isAccepted();
}

TEST(PictureBox, PictureHasTheScreensOwnPixelsAtEveryScale) {
    struct {
        double ratio;
        QSize pixels;
        int dotsPerInch;
    } const cases[] = {{1, {101, 67}, 96}, {1.25, {126, 84}, 120}, {1.5, {152, 101}, 144}, {2, {202, 134}, 192}};
    for (const auto& expected : cases) {
        ScaledBox box(expected.ratio);
        QImage& image = box.ClearedImage();
        EXPECT_EQ(image.size(), expected.pixels);
        EXPECT_EQ(box.DotsPerInch(), expected.dotsPerInch);
        EXPECT_EQ(box.ToPixels({10, 20}), QPointF(10, 20) * expected.ratio);
        for (int y = 0; y < image.height(); ++y)
            for (int x = y % 2; x < image.width(); x += 2)
                image.setPixel(x, y, qRgb(x, y, 0));
        QImage shown(expected.pixels, QImage::Format_RGB32);
        shown.setDevicePixelRatio(expected.ratio);
        box.render(&shown);
        shown.setDevicePixelRatio(1);
        EXPECT_TRUE(shown == image) << expected.ratio;
        EXPECT_EQ(image.devicePixelRatio(), 1);
        EXPECT_EQ(box.ClearedImage().pixel(0, 0), qRgb(255, 255, 255));
    }
}

TEST(PictureBox, CtrlWheelZoomsByWholeStepsAtThePointer) {
    ScaledBox box(1.5);
    std::vector<int> steps;
    QObject::connect(&box, &PictureBox::ZoomWheel, [&steps](QPointF pixel, int count) {
        EXPECT_EQ(pixel, QPointF(15, 30));
        steps.push_back(count);
    });
    EXPECT_FALSE(turnWheel(box, 120, Qt::NoModifier));
    EXPECT_TRUE(turnWheel(box, 240, Qt::ControlModifier));
    EXPECT_TRUE(turnWheel(box, 60, Qt::ControlModifier));
    EXPECT_TRUE(turnWheel(box, 60, Qt::ControlModifier));
    EXPECT_TRUE(turnWheel(box, -130, Qt::ControlModifier));
    EXPECT_EQ(steps, (std::vector{2, 1, -1}));
}

} // namespace
