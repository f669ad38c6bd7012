#include "DrawnScene.h"
#include "Picture.h"

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

TEST_F(Legends, CaptionIsThePowerOfTenThatFitsAQuarter) {
    const std::pair<double, const char*> captions[] = {
        {250, "\"1.0\"\n"},    {250.1, "\"0.1\"\n"},  {20000, "\"0.01\"\n"}, {2e5, "\"0.001\"\n"},
        {2e6, "\"1.0e-4\"\n"}, {0.2, "\"1000.0\"\n"}, {0.02, "\"1.0e4\"\n"}, {HUGE_VAL, "\"1.0\"\n"}};
    for (const auto& [scale, caption] : captions)
        EXPECT_TRUE(scaleLegend(scale, false).ends_with(caption)) << scale;
    EXPECT_NE(scaleLegend(2.4, true).find("MoveTo 857 32\nLineTo 900 48\nLineTo 857 64\n"), std::string::npos)
        << "a large arrow keeps its head in the box";
    EXPECT_EQ(rect.Top, 32);
    EXPECT_EQ(scaleLegend(0, true), "");
    EXPECT_EQ(rect.Top, 0);
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
    settings.Displacement.Fiducial = 3;
    EXPECT_TRUE(shows("774 64 ") && !shows("910 24 "));
    settings.Displacement.Fiducial = 2;
    model.NoDisplacement = true;
    EXPECT_TRUE(shows("774 64 ") && !shows("910 24 "));
    for (const auto& [divide, top, lineElements] : {std::tuple{1, 1.f, false}, {2, 0.f, false}, {2, 1.f, true}}) {
        context.ContourDivide = divide;
        context.ContourMax = top;
        model.LineElementsOnly = lineElements;
        EXPECT_FALSE(shows("774 ")) << divide << top;
    }
    settings.Style.RealFormat.clear();
    context.ContourMin = -10;
    EXPECT_NE(contourLegend().find("\"-4.500\""), std::string::npos);
    EXPECT_TRUE(contourLegend().starts_with("Rectangle 646 64 ")) << "as wide as \"-10.000\"";
    EXPECT_EQ(rect.Top, 192);
}

TEST_F(Legends, TellsBandsThatTheFormatWritesAlike) {
    model.Mesh.MinValue = 0;
    for (const auto& [top, alike] : {std::pair{0.8f, true}, {4.f, false}, {0.f, false}}) {
        model.Mesh.MaxValue = top;
        EXPECT_EQ(AreBandsWrittenAlike(scene()), alike) << top;
    }
}

TEST_F(Legends, TheContourTellsItsItemAndWhoseRangeItHas) {
    context.ContourMax = 1;
    context.ContourDivide = 2;
    addItem(-1, {1});
    model.CurrentItem = 0;
    const std::string plain = contourLegend();
    ContourSettings& contour = settings.Contour;
    contour.LegendName = contour.LegendRange = true;
    for (const auto& [range, text] : {std::pair{ContourRange::AsStands, "このステップ"},
                                      {ContourRange::AllSteps, "全ステップ"},
                                      {ContourRange::Visible, "表示部分"}}) {
        contour.Range = range;
        const std::string legend = contourLegend();
        EXPECT_NE(legend.find("\"応力\"\nText "), std::string::npos) << legend;
        EXPECT_TRUE(legend.ends_with(std::string(" \"範囲: ") + text + "\"\n"));
        EXPECT_EQ(rect.Top, 192 + 64) << "two lines lower";
    }
    contour.Range = ContourRange::AsStands;
    slideShow.RangeOfAllSteps = true;
    EXPECT_NE(contourLegend().find("全ステップ"), std::string::npos) << "as a show holds it";
    contour.LegendName = contour.LegendRange = false;
    EXPECT_EQ(contourLegend(), plain);
    EXPECT_EQ(rect.Top, 192);
}

TEST_F(Legends, HeaderHasThePartsThatAreOn) {
    model.Steps = {{}, {u"two"_s, 0.1f, 0}};
    model.CurrentStep = 1;
    addItem(-1, {1});
    model.CurrentItem = 0;
    useItems(0, 0);
    const auto header = [this] { return traceOf([this](DeviceContext& device) { DrawHeader(device, scene(), {}); }); };
    EXPECT_EQ(header(), "FillRect 0 0 449 33\nText 0 0 \"   STEP : 2   CONTOUR : 応力\"\n");
    settings.SlideShow = {.HeaderStep = false, .HeaderTime = true, .HeaderContour = false, .HeaderVector = true};
    EXPECT_EQ(header(), "FillRect 0 0 465 33\nText 0 0 \"   TIME : 0.1   VECTOR : 流れ\"\n");
    settings.Vector.DefaultItemSet = 1;
    model.CurrentStep = -1;
    EXPECT_EQ(header(), "FillRect 0 0 1 33\nText 0 0 \"\"\n");
}

TEST_F(Legends, WhatCannotBeSeenIsLeftOutAndTheRestStaysToThePixel) {
    QList<float> numbers;
    for (int x = -200; x < 700; x += 13)
        for (int y = -200; y < 500; y += 29) {
            addNode({x, y});
            numbers.append(float(x * y) / 1e4f);
        }
    addItem(-1, numbers);
    model.CurrentItem = 0;
    useItems(0, 0);
    context.ContourMax = 1;
    context.ContourDivide = 5000;
    const auto paint = [&](DeviceContext& device) {
        device.ClipRect({50, 100, 450, 250});
        DrawVectors(device, converter(), window, scene(), context);
        DrawValues(device, device, scene());
        DrawContourLegend(device, device, context, rect = {0, 0, 500, 300}, converter(), scene());
    };
    Picture kept(500, 300), all(500, 300);
    EveryCall every(all.Image);
    paint(kept.Device);
    paint(every);
    EXPECT_EQ(kept.Image, all.Image);
}

} // namespace
