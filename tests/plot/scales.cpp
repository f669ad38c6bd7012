#include "plot/clsPlot.h"
#include "plot/scaleNumbers.h"

#include <cfloat>
#include <cmath>
#include <gtest/gtest.h>

namespace {

using Limits = std::array<float, 4>; // max, min, major, minor

Limits scaleOf(clsPlot& plot, int scale = clsPlot::ScalePlot) {
    plot.FindScales();
    return {plot.ScaleMax(scale), plot.ScaleMin(scale), plot.ScaleMScale(scale), plot.ScaleHScale(scale)};
}

TEST(PlotScales, LimitsAreRoundedToSteps) {
    constexpr float max = FLT_MAX, tiny = FLT_TRUE_MIN, inf = INFINITY, kept = -7;
    // Limits in, limits and steps out; among them limits beyond a multiple by less than 1e-6, and by more.
    const float rows[][6] = {{7.3f, 0, 8, 0, 2, 0.4f},
                             {1.2f, 0, 1.5f, 0, 0.5f, 0.1f},
                             {1234, 1000, 1250, 1000, 50, 10},
                             {100, 0, 100, 0, 20, 4},
                             {15, 0, 15, 0, 5, 1},
                             {1, 0, 1, 0, 0.2f, 0.04f},
                             {0, -7.3f, 0, -8, 2, 0.4f},
                             {2, 1, 2, 0.8f, 0.2f, 0.04f},
                             {3, 3, 3, 2.95f, 0.05f, 0.01f},
                             {5.0000005f, 0, 5, 0, 1, 0.2f},
                             {5.00002f, 0, 6, 0, 1, 0.2f},
                             {0, -5.0000005f, 0, -5, 1, 0.2f},
                             {0, -5.00002f, 0, -6, 1, 0.2f},
                             {0, 10, 0, 10, 1, kept},
                             {max, 0, max, 0, 1e38f, 2e37f},
                             {max, -max, max, -max, kept, kept},
                             {inf, 0, inf, 0, kept, kept},
                             {tiny, 0, tiny, 0, 0, 0}};
    for (const auto& row : rows) {
        Limits out{row[0], row[1], kept, kept};
        clsPlot::GetMemoriScale(out[0], out[1], out[2], out[3]);
        EXPECT_EQ(out, (Limits{row[2], row[3], row[4], row[5]}));
    }
}

TEST(PlotScales, AutomaticScalesHoldTheFiniteDataOfAllSeries) {
    clsPlot plot;
    EXPECT_EQ(scaleOf(plot), (Limits{1, 0, 0.2f, 0.04f}));
    plot.DataAdd(2, 1, 5);
    plot.DataAdd(2, 3, 5);
    EXPECT_EQ(scaleOf(plot), (Limits{6, 4.8f, 0.2f, 0.04f}));
    plot.DataAdd(1, NAN, 7.3f);
    plot.DataAdd(1, NAN, INFINITY);
    plot.DataAdd(3, INFINITY, -INFINITY);
    plot.DataAdd(4, 3, 0);
    plot.SetDataLegendHidden(4, true);
    EXPECT_EQ(scaleOf(plot), (Limits{8, 0, 2, 0.4f}));
    EXPECT_EQ(scaleOf(plot, clsPlot::ScaleBase), (Limits{3, 1, 0.5f, 0.1f}));
    plot.SetScaleAutomatic(clsPlot::ScalePlot, false);
    plot.SetScaleMax(clsPlot::ScalePlot, 7);
    EXPECT_EQ(scaleOf(plot), (Limits{7, 0, 2, 0.4f}));
}

TEST(PlotScales, AConstantOfAnySizeHasDistinctTicks) {
    for (const float constant : {16777216.0f, 3e7f, -3.5e7f, -1e9f, 1.5e20f, -3.4e38f}) {
        clsPlot plot;
        plot.DataAdd(1, 0, constant);
        const auto [max, min, major, minor] = scaleOf(plot);
        EXPECT_TRUE(min <= constant && constant <= max) << constant;
        EXPECT_TRUE(min + major > min && max - major < max && max - min <= 40 * major) << constant << ' ' << major;
    }
}

TEST(PlotScales, NumbersSuitTheirSizeAndTheAxis) {
    const std::pair<float, const char*> texts[] = {
        {1000, "1000.0"},    {1000.1f, "1.0E3"}, {0.01f, "0.01"},  {0.0099f, "9.9E-3"}, {0.0012345f, "1.235E-3"},
        {-0.125f, "-0.125"}, {-2e7f, "-2.0E7"},  {2.0004f, "2.0"}, {1e-9f, "0.0"},      {NAN, "0.0"}};
    for (const auto& [value, text] : texts)
        EXPECT_EQ(FormatScaleValue(value, -100), QString::fromLatin1(text));
    EXPECT_EQ(FormatScaleValue(1e-9f, 0.001f), u"1.0E-9"_s);
}

TEST(PlotScales, TicksGoTowardsTheEndWhateverTheSignOfTheStep) {
    PlotScale scale;
    scale.WorkMin = 1;
    EXPECT_EQ(TickValues(scale, -0.5f), (std::vector<float>{1, 0.5f, 0}));
    EXPECT_EQ(TickValues(scale, 0.75f), (std::vector<float>{1, 0.25f}));
    EXPECT_EQ(TickValues(scale, 1.0f / 32767).size(), 32768u);
    for (const float step : {0.0f, 2.0f, 1.0f / 32768, 1e-30f, NAN, INFINITY})
        EXPECT_TRUE(TickValues(scale, step).empty()) << step;
}

} // namespace
