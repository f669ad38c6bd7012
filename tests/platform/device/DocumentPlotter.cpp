#include "platform/device/DocumentPlotter.h"

#include "platform/device/TraceDevice.h"

#include <array>
#include <gtest/gtest.h>

namespace {

PlotRect rectOf(float left, float top, float right, float bottom) {
    PlotRect rect;
    rect.SetRect(left, top, right, bottom);
    return rect;
}

/// A plotter with its window; keeps what the latest paint was given.
class DocumentPlotterTest : public testing::Test {
protected:
    DocumentPlotterTest() {
        plotter.SetEventSink({[this] { return bounds; }, [this](PlotCanvas& canvas) { converter = canvas.Converter(); },
                              [this] { return std::exchange(refit, false); }});
    }

    void draw(int width, int height) {
        plotter.Viewport().SetWindow({width, height});
        TraceDevice device(width, height);
        plotter.Draw(device);
    }
    DevicePoint at(float x, float y) const { return converter->WorldToDevice(x, y); }
    double scale() const {
        double across = 0, down = 0;
        converter->WorldLengthToDevice(1, 1, across, down);
        EXPECT_EQ(across, down);
        return across;
    }

    DocumentPlotter plotter;
    PlotRect bounds = rectOf(0, 10, 20, 0);
    bool refit = false;
    std::optional<PlotConverter> converter;
};

TEST_F(DocumentPlotterTest, FixedKeepsTheScaleUntilTheViewOrTheFileChanges) {
    draw(400, 400);
    EXPECT_EQ(scale(), 20);
    bounds.OffsetBy(3, -1);
    draw(200, 600);
    EXPECT_EQ(scale(), 20);
    EXPECT_EQ(at(13, 4), (DevicePoint{100, 300}));
    bounds = rectOf(0, 5, 10, 0);
    draw(300, 600);
    EXPECT_EQ(scale(), 30);
    refit = true;
    draw(0, 600);
    draw(400, 0);
    EXPECT_TRUE(refit) << "without area nothing is painted and the new file is not used up";
    draw(400, 600);
    EXPECT_EQ(scale(), 40);
}

TEST_F(DocumentPlotterTest, WorldsWithoutExtentAreFittedByTheOtherDirectionWithYUp) {
    plotter.SetScaleMode(PlotScaleMode::Automatic);
    const std::tuple<PlotRect, float, float, DevicePoint> cases[] = {{rectOf(5, 4, 5, 0), 6, 0, {250, 400}},
                                                                     {rectOf(5, 4, 5, 0), 5, 4, {150, 0}},
                                                                     {rectOf(0, 7, 3, 7), 3, 8, {300, 100}},
                                                                     {rectOf(2, 2, 2, 2), 3, 3, {151, 199}}};
    for (const auto& [world, x, y, expected] : cases) {
        bounds = world;
        draw(300, 400);
        EXPECT_EQ(at(x, y), expected) << x << ' ' << y;
    }
}

TEST_F(DocumentPlotterTest, DevicePointsReadBackToTheWorld) {
    bounds = rectOf(-1.5f, 2.25f, 1.5f, -0.75f);
    draw(640, 480);
    for (const DevicePoint point : {DevicePoint{0, 0}, {1, 479}, {320, 240}, {-50, 1000}}) {
        float x = 0, y = 0;
        converter->DeviceToWorld(point.X, point.Y, x, y);
        EXPECT_EQ(at(x, y), point);
    }
    const float xs[] = {-1.5f, 1e30f}, ys[] = {2.25f, 1e30f};
    std::array<int, 2> outX, outY;
    converter->WorldArrayToDevice(2, xs, ys, outX.data(), outY.data());
    EXPECT_EQ(outX, (std::array{80, std::numeric_limits<int>::max()}));
    EXPECT_EQ(outY, (std::array{0, std::numeric_limits<int>::min()}));
}

} // namespace
