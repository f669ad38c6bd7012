#include "platform/device/DocumentPlotter.h"

#include "platform/device/TraceDevice.h"

#include <gtest/gtest.h>

namespace {

PlotRect rectOf(float left, float top, float right, float bottom) {
    PlotRect rect;
    rect.SetRect(left, top, right, bottom);
    return rect;
}

/// A plotter with its window; keeps what the latest paint was given.
struct DocumentPlotterTest : testing::Test {
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
    int scale() const { return at(1, 0).X - at(0, 0).X; }

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

TEST_F(DocumentPlotterTest, PointsGoThereAndBackWithYUpAlsoInWorldsWithoutExtent) {
    plotter.SetScaleMode(PlotScaleMode::Automatic);
    constexpr int least = std::numeric_limits<int>::min(), most = std::numeric_limits<int>::max();
    const std::tuple<PlotRect, float, float, DevicePoint> cases[] = {
        {rectOf(5, 4, 5, 0), 6, 0, {250, 400}}, {rectOf(5, 4, 5, 0), 5, 4, {150, 0}},
        {rectOf(0, 7, 3, 7), 3, 8, {300, 100}}, {rectOf(2, 2, 2, 2), 3, 3, {151, 199}},
        {rectOf(-1, 2, 2, -1), -1, 2, {0, 50}}, {rectOf(-1, 2, 2, -1), 1e30f, 1e30f, {most, least}}};
    for (const auto& [world, x, y, expected] : cases) {
        bounds = world;
        draw(300, 400);
        DevicePoint point;
        converter->WorldArrayToDevice(1, &x, &y, &point.X, &point.Y);
        EXPECT_EQ(point, expected) << x << ' ' << y;
        float worldX = 0, worldY = 0;
        converter->DeviceToWorld(-50, 1000, worldX, worldY);
        EXPECT_EQ(at(worldX, worldY), (DevicePoint{-50, 1000}));
    }
}

} // namespace
