#include "Golden.h"
#include "platform/device/TraceDevice.h"
#include "platform/raster/RasterDevice.h"
#include "plot/clsPlot.h"

#include <climits>

TEST(PlotSeries, DotsByStyle) {
    TraceDevice device(200, 200);
    clsPlot plot;
    for (int style = -1; style <= 5; ++style)
        plot.SpecialPlot_Dot(device, style, 0xff, 0x80, style == 2 ? -1 : style, 9, 10, 7, style % 2 * 3);
    plot.SpecialPlot_Dot(device, DotStyle::Circle, 0xff, 0x80, 8, 0, INT_MAX, INT_MIN, 5);
    EXPECT_TRUE(Golden().MatchesText(u"traces/plotDots.trace"_s, device.Trace()));
}

TEST(PlotBackground, ByStyle) {
    TraceDevice device(200, 200);
    clsPlot plot;
    plot.SetDrawArea(10, 5, 60, 40);
    for (const QImage& picture : {QImage(), QImage(31, 20, QImage::Format_RGB32)})
        for (plot.BackStyle = 0; plot.BackStyle <= 7; ++plot.BackStyle) {
            plot.Picture = picture;
            plot.Redraw(&device, nullptr);
        }
    EXPECT_TRUE(Golden().MatchesText(u"traces/plotBackgrounds.trace"_s, device.Trace()));
}

TEST(PlotBackground, SmallTilesJoinWithoutASeam) {
    QImage picture(600, 300, QImage::Format_RGB32);
    picture.fill(Qt::red);
    clsPlot plot;
    plot.BackStyle = 3;
    plot.Picture = picture.copy(0, 0, 3, 7);
    plot.Picture.setPixel(2, 6, 0xff123456u);
    plot.SetDrawArea(0, 10, 600, 290);
    RasterDevice device(picture, 96);
    plot.Redraw(&device, nullptr);
    for (int y = 0; y < 300; ++y)
        for (int x = 0; x < 600; ++x)
            ASSERT_EQ(picture.pixel(x, y) == 0xff123456u, y > 10 && x % 3 == 2 && y % 7 == 2) << x << ", " << y;
}

TEST(PlotSeries, PointsThatAreNoNumbersInterruptTheLine) {
    TraceDevice device(200, 200);
    clsPlot plot;
    const float nan = std::numeric_limits<float>::quiet_NaN(), infinity = std::numeric_limits<float>::infinity();
    for (const float value : {nan, 1.0f, 3.0f, infinity, -infinity, 2.0f, nan})
        plot.DataAdd(1, float(plot.DataCount(1)), value);
    plot.SetDataDotStyle(1, DotStyle::Circle);
    plot.SetDrawArea(0, 0, 200, 200);
    plot.Redraw(&device, nullptr);
    for (const auto& [call, count] :
         {std::pair{"\nPolyline 2 ", 1}, {"\nPolyline 1 ", 1}, {"\nPolyline ", 2}, {"\nEllipse ", 3}})
        EXPECT_EQ(device.Trace().count(call), count) << call;
    EXPECT_EQ(plot.ScaleMax(clsPlot::ScalePlot), 3.0f);
}
