#include "plot/clsPlot.h"
#include "plot/scaleNumbers.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

using Limits = std::array<float, 4>; // max, min, major, minor

Limits scaleOf(clsPlot& plot, int scale = clsPlot::ScalePlot) {
    plot.FindScales();
    return {plot.ScaleMax(scale), plot.ScaleMin(scale), plot.ScaleMScale(scale), plot.ScaleHScale(scale)};
}

TEST(PlotScales, LimitsAreRoundedToSteps) {
    // Limits in, limits and steps out, -7 where a step stays; among them limits beyond a multiple by less than 1e-6,
    // and by more.
    const QString rows = u"7.3 0 8 0 2 0.4; 1.2 0 1.5 0 0.5 0.1; 1234 1000 1250 1000 50 10; 100 0 100 0 20 4;"
                         "15 0 15 0 5 1; 1 0 1 0 0.2 0.04; 0 -7.3 0 -8 2 0.4; 2 1 2 0.8 0.2 0.04; 3 3 3 2.95 0.05 0.01;"
                         "5.0000005 0 5 0 1 0.2; 5.00002 0 6 0 1 0.2; 0 -5.0000005 0 -5 1 0.2; 0 -5.00002 0 -6 1 0.2;"
                         "0 10 0 10 1 -7; 3.4028234e38 0 3.4028234e38 0 1e38 2e37; inf 0 inf 0 -7 -7;"
                         "3.4028234e38 -3.4028234e38 3.4028234e38 -3.4028234e38 -7 -7; 1e-45 0 1e-45 0 0 0"_s;
    for (const QString& row : rows.split(u';')) {
        std::vector<float> numbers;
        for (const QString& number : row.split(u' ', Qt::SkipEmptyParts))
            numbers.push_back(number.toFloat());
        Limits out{numbers[0], numbers[1], -7, -7};
        clsPlot::GetMemoriScale(out[0], out[1], out[2], out[3]);
        EXPECT_EQ(out, (Limits{numbers[2], numbers[3], numbers[4], numbers[5]})) << row.toStdString();
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
        EXPECT_EQ(FormatScaleValue(value, -100, {}), QString::fromLatin1(text));
    EXPECT_EQ(FormatScaleValue(1e-9f, 0.001f, {}), u"1.0E-9"_s);
    EXPECT_EQ(FormatScaleValue(980, 100, u"0.0#"_s) + FormatScaleValue(1e-6f, 100, u"0.0E+0"_s), u"980.00.0E+0"_s);
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
