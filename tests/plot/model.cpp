// The plot's data: series, points, scales and reference lines, and what each makes of a bad index.
#include "platform/device/TraceDevice.h"
#include "plot/clsPlot.h"

#include <gtest/gtest.h>

namespace {

TEST(PlotModel, PointsMakeTheSeriesThatTheyNeed) {
    clsPlot plot;
    EXPECT_TRUE(plot.DataAdd(3, 1.5f, 2.5f) == 1 && plot.DataAdd(3, 3.5f, 4.5f) == 2);
    EXPECT_TRUE(plot.DataAdd(0, 1, 1) == -1 && plot.DataAdd(2'000'000'000, 1, 1) == -1);
    EXPECT_EQ(plot.DataLegendCount(), 3);
    EXPECT_TRUE(plot.DataCount(1) == 0 && plot.DataCount(0) == -1 && plot.DataCount(4) == -1);
    EXPECT_TRUE(plot.DataBase(3, 2) == 3.5f && plot.DataPlot(3, 1) == 2.5f);
    EXPECT_THROW(plot.DataPlot(3, 3), SubscriptError);
    EXPECT_THROW(plot.DataBase(3, 0), SubscriptError);

    plot.DataRemove(3, 3);
    plot.DataRemove(3, 2);
    EXPECT_TRUE(plot.DataCount(3) == 1 && plot.DataBase(3, 1) == 1.5f && plot.DataPlot(3, 1) == 2.5f);
    plot.SetDataLabel(3, u"後"_s);
    plot.DataLegendRemove(4);
    plot.DataLegendRemove(1);
    EXPECT_EQ(plot.DataLabel(2) + plot.DataLabel(3), u"後"_s);
    plot.DataClear(2);
    EXPECT_TRUE(plot.DataLabel(2).isEmpty() && plot.DataLegendCount() == 2);
    EXPECT_EQ(plot.DataCount(2) + plot.DataLineWidth(2) + plot.DataDotFillStyle(2), 0);
    EXPECT_THROW(plot.SetDataLineColor(3, 0), SubscriptError);
}

TEST(PlotModel, ReferenceLineZeroIsTheLastAndReadsTakeOneScale) {
    clsPlot plot;
    plot.PickupLineRemove(0);
    for (const float value : {1.0f, 2.0f, 3.0f})
        plot.PickupLineAdd(value, 1, 0xff, 2, PenStyle::Dot);
    for (const int line : {4, 0, 1})
        plot.PickupLineRemove(line);
    EXPECT_TRUE(plot.PickupLineCount() == 1 && plot.PickupLineValue(1) == 2.0f);
    EXPECT_THROW(plot.PickupLineColor(2), SubscriptError);
    plot.SetScaleDraw(clsPlot::ScaleBoth, false);
    EXPECT_FALSE(plot.ScaleDraw(clsPlot::ScaleBase) || plot.ScaleDraw(clsPlot::ScalePlot));
    EXPECT_THROW(plot.ScaleDraw(clsPlot::ScaleBoth), SubscriptError);
    EXPECT_THROW(plot.SetGridWidth(3, 1), SubscriptError);
    EXPECT_THROW(plot.SetScaleLabelColor(-1, 1), SubscriptError);
    EXPECT_TRUE(clsPlot::SupportedDotStyle(-3) == 3 && clsPlot::SupportedDotStyle(7) == 0);
    EXPECT_TRUE(clsPlot::SupportedLineStyle(5) == 4 && clsPlot::SupprotedDotFillStyle(0) == -1);
    EXPECT_EQ(clsPlot::SupportedLineStyleDescription(3) + clsPlot::SupprotedDotFillStyleDescription(-1), u"点線"_s);
}

TEST(PlotModel, EventsComeFirstAndLastOnTheDeviceInUse) {
    clsPlot plot;
    TraceDevice given(100, 100), own(100, 100);
    plot.hDrawDC = &own;
    plot.BeginPaint = [](DeviceContext& device) { device.MoveTo({1, 1}); };
    plot.EndPaint = [](DeviceContext& device) { device.MoveTo({2, 2}); };
    plot.SetDrawArea(0, 0, 100, 100);
    plot.Redraw(&given, nullptr);
    EXPECT_TRUE(own.Trace().isEmpty());
    EXPECT_TRUE(given.Trace().startsWith("SaveDC\nMoveTo 1 1\n") && given.Trace().endsWith("MoveTo 2 2\nRestoreDC\n"));
    plot.Redraw(nullptr, nullptr);
    EXPECT_EQ(own.Trace(), given.Trace());
    plot.hDrawDC = nullptr;
    plot.Redraw(nullptr, nullptr);

    plot.EndPaint = [](DeviceContext&) { throw SubscriptError(); };
    EXPECT_THROW(plot.Redraw(&given, nullptr), SubscriptError);
    EXPECT_EQ(given.Trace().count("SaveDC\n"), given.Trace().count("RestoreDC\n"));
}

} // namespace
