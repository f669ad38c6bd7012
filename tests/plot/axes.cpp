#include "Golden.h"
#include "platform/device/TraceDevice.h"
#include "platform/raster/RasterDevice.h"
#include "plot/clsPlot.h"

#include <cfloat>
#include <climits>

namespace {

/// A plot of 200 x 150 units at 96 dpi with a hidden series and no background: numbers are 9 units high, a character of
/// them 4 wide, the margin is 6. Base values from 0 to 2, plot values from 0 to 1, a tick at every whole one.
struct PlotAxes : testing::Test {
    PlotAxes() {
        plot.BackStyle = 0;
        plot.SetDrawArea(0, 0, 200, 150);
        plot.DataAdd(1, 0, 0);
        plot.SetDataLegendHidden(1, true);
        plot.SetScaleAutomatic(clsPlot::ScaleBoth, false);
        plot.SetScaleMScale(clsPlot::ScaleBoth, 1);
        plot.SetScaleHScale(clsPlot::ScaleBoth, 0.5f);
        plot.SetScaleMax(clsPlot::ScaleBase, 2);
        plot.SetScaleMax(clsPlot::ScalePlot, 1);
    }
    QByteArray trace() {
        TraceDevice device(200, 150);
        plot.Redraw(&device, nullptr);
        return device.Trace();
    }

    clsPlot plot;
};

TEST_F(PlotAxes, StandWhereTitleCaptionsAndNumbersLeaveRoom) {
    EXPECT_TRUE(Golden().MatchesText(u"traces/plotAxes.trace"_s, trace()));
    EXPECT_EQ(plot.DataPlotArea(), (PlotArea{31, 13, 151, 113}));
    int x = 0, y = 0;
    plot.ConvertPoint(-1, 3, x, y);
    EXPECT_EQ(std::pair(x, y), std::pair(-44, -213));
    plot.GraphTitle = u"図 1"_s;
    plot.SetScaleLabel(clsPlot::ScaleBase, u"base"_s);
    plot.SetScaleLabel(clsPlot::ScalePlot, u"plot"_s);
    plot.SetScaleLabelColor(clsPlot::ScalePlot, 0x111111);
    plot.SetScaleFontColor(clsPlot::ScalePlot, 0x222222);
    plot.SetScaleLineColor(clsPlot::ScalePlot, 0x333333);
    plot.SetGridStyle(clsPlot::ScalePlot, PenStyle::Dot);
    plot.Orientation = 1;
    plot.GraphTitlePos = 0;
    plot.SetScaleReverse(clsPlot::ScaleBoth, true);
    plot.SetScaleValueDraw(clsPlot::ScaleBase, 1);
    plot.SetScaleType(clsPlot::ScalePlot, 1);
    EXPECT_TRUE(Golden().MatchesText(u"traces/plotAxesTurned.trace"_s, trace()));
    plot.Orientation = 0;
    plot.GraphTitlePos = 2;
    plot.Outline = false;
    plot.SetGridDraw(clsPlot::ScaleBoth, false);
    EXPECT_TRUE(Golden().MatchesText(u"traces/plotAxesPlain.trace"_s, trace()));
}

TEST_F(PlotAxes, ReferenceLinesLieBeneathTheSeries) {
    for (int type = 0; type < 4; ++type)
        plot.PickupLineAdd(1, type, 0xff, 1, 0);
    const QByteArray start = "Pen 0 1 0x000000ff\n", end = "StockPen 7\n", across = "MoveTo 31 70\nLineTo 182 70\n",
                     up = "MoveTo 182 126\nLineTo 182 13\n";
    const auto lines = [&](const QByteArray& ofBase, const QByteArray& ofPlot) {
        return QByteArray(start + ofBase + end + start + ofPlot + end + start + up + across + end + start + ofPlot +
                          end);
    };
    plot.Orientation = 1;
    EXPECT_FALSE(trace().contains(lines(across, up)));
    plot.PickupLineDraw = true;
    EXPECT_TRUE(trace().contains(lines(across, up)));
    plot.Orientation = 2;
    EXPECT_TRUE(trace().contains(lines({}, {})));
    plot.Orientation = 0;
    EXPECT_TRUE(trace().contains(QByteArray(start + "MoveTo 106 126\nLineTo 106 13\n" + end + start)));
}

TEST_F(PlotAxes, BadLimitsDrawNoTicksAndKeepTheUnits) {
    trace();
    const std::pair<float, float> limits[] = {{FLT_MAX, -FLT_MAX}, {NAN, 0}, {0, INFINITY}, {3, 3}};
    for (const auto& [max, min] : limits) {
        plot.SetScaleMax(clsPlot::ScaleBoth, max);
        plot.SetScaleMin(clsPlot::ScaleBoth, min);
        EXPECT_FALSE(trace().contains("Text ")) << max << " " << min;
    }
    int x = 0, y = 0;
    plot.ConvertPoint(4, 2, x, y);
    EXPECT_EQ(std::pair(x, y), std::pair(106, 126));
}

TEST_F(PlotAxes, NoSizeIsTooMuch) {
    QImage picture(100, 100, QImage::Format_RGB32);
    RasterDevice raster(picture, 96);
    plot.GraphTitle = plot.GraphTitle.fill(u'W', 100);
    plot.SetScaleType(clsPlot::ScaleBase, 1);
    plot.SetScaleFont(clsPlot::ScaleBoth, plot.GraphTitleFont);
    for (const int size : {INT_MIN, -1, 0, INT_MAX})
        for (const double points : {-9.0, 1e9, double(NAN)}) {
            plot.SetDrawArea(size, size, size, size);
            plot.GraphTitleFont->Size = points;
            plot.Redraw(&raster, nullptr);
            EXPECT_LT(trace().size(), 4000);
        }
    plot.SetScaleFont(clsPlot::ScaleBoth, nullptr);
    plot.SetDrawArea(0, 0, 200, 150);
    EXPECT_TRUE(trace().contains("Text ")); // in the font that the device has
}

} // namespace
