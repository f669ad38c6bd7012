#include "DrawnScene.h"

#include "platform/raster/RasterDevice.h"

using namespace mdScene;

namespace {

struct Legends : DrawnScene {
    LegendRect rect;

    std::string scaleLegend(double scale, bool isVector) {
        return traceOf([&](DeviceContext& device) {
            DrawScaleLegend(device, device, scale, rect = {0, 0, 1000, 800}, converter(), scene(), context, isVector);
        });
    }
    std::string contourLegend() {
        return traceOf([&](DeviceContext& device) {
            DrawContourLegend(device, device, context, rect = {0, 0, 1000, 800}, converter(), scene());
        });
    }
};

TEST_F(Legends, VectorArrowKeepsItsHeadInTheBox) {
    settings.Style.LineStyles[2].Width = 4;
    EXPECT_EQ(scaleLegend(7, true), "Rectangle 910 24 736 72\nMoveTo 830 48\nLineTo 900 48\n"
                                    "MoveTo 884 42\nLineTo 900 48\nLineTo 884 54\nMoveTo 865 40\nLineTo 865 56\n"
                                    "Text 762 32 \"10.0\"\n");
    EXPECT_EQ(rect.Top, 32);
    EXPECT_NE(scaleLegend(2.4, true).find("MoveTo 857 32\nLineTo 900 48\nLineTo 857 64\n"), std::string::npos);
    EXPECT_EQ(scaleLegend(0, true), "");
    EXPECT_EQ(rect.Top, 0);
}

TEST_F(Legends, CaptionIsThePowerOfTenThatFitsAQuarter) {
    const std::pair<double, const char*> captions[] = {
        {250, "\"1.0\"\n"},    {250.1, "\"0.1\"\n"},  {20000, "\"0.01\"\n"}, {2e5, "\"0.001\"\n"},
        {2e6, "\"1.0e-4\"\n"}, {0.2, "\"1000.0\"\n"}, {0.02, "\"1.0e4\"\n"}, {HUGE_VAL, "\"1.0\"\n"}};
    for (const auto& [scale, caption] : captions)
        EXPECT_TRUE(scaleLegend(scale, false).ends_with(caption)) << scale;
}

TEST_F(Legends, ContourBarIsAsWideAsItsNumbers) {
    context.ContourMax = 1;
    context.ContourDivide = 2;
    EXPECT_TRUE(contourLegend().starts_with("Rectangle 774 64 920 192\n"));
    EXPECT_EQ(rect.Top, 192);
    settings.Style.RealFormat.clear();
    context.ContourMin = -10;
    EXPECT_NE(contourLegend().find("\"-4.500\""), std::string::npos);
    EXPECT_TRUE(contourLegend().starts_with("Rectangle 646 64 ")) << "as wide as \"-10.000\"";
}

TEST_F(Legends, StandBelowEachOtherAsFarAsSwitchedOn) {
    context.DisplacementScale = context.VectorScale = 7;
    context.ContourMax = 1;
    context.ContourDivide = 2;
    const auto shows = [&](const std::string& what) {
        const std::string places = traceOf([&](DeviceContext& device) {
            DrawLegends(device, device, converter(), {0, 0, 1000, 800}, scene(), context);
        });
        return places.find("Rectangle " + what) != std::string::npos;
    };
    EXPECT_TRUE(shows("910 24 ") && shows("910 88 ") && shows("774 160 "));
    settings.Vector.Legend = false;
    EXPECT_TRUE(shows("774 128 ") && shows("910 24 "));
    for (const auto& [fiducial, none] : {std::pair{3, false}, {2, true}}) {
        settings.Displacement.Fiducial = fiducial;
        model.NoDisplacement = none;
        EXPECT_TRUE(shows("774 64 ") && !shows("910 24 ")) << fiducial;
    }
    for (const auto& [divide, top, lineElements] : {std::tuple{1, 1, false}, {2, 0, false}, {2, 1, true}}) {
        context.ContourDivide = divide;
        context.ContourMax = float(top);
        model.LineElementsOnly = lineElements;
        EXPECT_FALSE(shows("774 ")) << divide << top << lineElements;
    }
}

TEST_F(Legends, HeaderHasThePartsThatAreOn) {
    model.Steps = {{}, {u"two"_s, 0.1f, 0}};
    model.CurrentStep = 1;
    addItem(-1, {1});
    model.CurrentItem = 0;
    useItems(0, 0);
    const auto expectHeader = [this](const std::string& text, int width) {
        const auto header = traceOf([&](DeviceContext& device) { DrawHeader(device, scene()); }, true);
        EXPECT_EQ(header, "Font 32 400 0 0 0 0 \"MS UI Gothic\"\nFillRect 0 0 " + std::to_string(width) +
                              " 33\nText 0 0 \"" + text + "\"\nFont 32 400 0 0 0 0 \"Arial\"\n");
    };
    expectHeader("   STEP : 2   CONTOUR : 応力", 449);
    settings.SlideShow = {.HeaderStep = false, .HeaderTime = true, .HeaderContour = false, .HeaderVector = true};
    expectHeader("   TIME : 0.1   VECTOR : 流れ", 465);
    settings.Vector.DefaultItemSet = 1;
    model.CurrentStep = -1;
    expectHeader("", 1);
}

/// A picture that counts its texts and steps, and that may keep to itself what can be seen of it.
struct CountingPicture : RasterDevice {
    CountingPicture(QImage& target, bool isOpen) : RasterDevice(target, 254), open(isOpen) {}
    std::optional<DeviceRect> VisibleArea() const override { return open ? RasterDevice::VisibleArea() : std::nullopt; }
    void Text(DevicePoint leftTop, const QString& text) override {
        ++calls;
        RasterDevice::Text(leftTop, text);
    }
    void Lines(std::span<const DevicePoint> points, std::span<const std::int32_t> steps) override {
        calls += int(steps.size() / 5);
        RasterDevice::Lines(points, steps);
    }

    bool open;
    int calls = 0;
};

TEST_F(Legends, WhatCannotBeSeenIsLeftOutAndTheRestStaysToThePixel) {
    QList<float> numbers;
    for (int x = -2000; x < 3000; x += 97)
        for (int y = -2000; y < 3000; y += 89) {
            addNode({x, y});
            numbers.append(float(x * y) / 1e5f);
        }
    addItem(-1, numbers);
    model.CurrentItem = 0;
    useItems(0, 0);
    context.ContourMax = 1;
    context.ContourDivide = 5000;
    const auto paint = [&](QImage& image, bool open) {
        image.fill(Qt::white);
        CountingPicture device(image, open);
        device.ClipRect({50, 100, 450, 250});
        DrawVectors(device, converter(), window, scene(), context);
        DrawValues(device, device, scene());
        DrawContourLegend(device, device, context, rect = {0, 0, 500, 300}, converter(), scene());
        return device.calls;
    };
    QImage kept(500, 300, QImage::Format_RGB32), all(500, 300, QImage::Format_RGB32);
    EXPECT_LT(paint(kept, true), 600);
    EXPECT_EQ(paint(all, false), 2 * int(numbers.size()) + 5001);
    EXPECT_EQ(kept, all);
}

} // namespace
