#include "platform/device/TraceDevice.h"
#include "plot/clsPlot.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace {

/// Series of whole numbers with a hole in each, the third one hidden and the fourth without lines.
clsPlot plotOf(std::mt19937& random, int orientation) {
    clsPlot plot;
    plot.Orientation = orientation;
    for (int series = 1; series <= 5; ++series)
        for (int point = 0; point < 6; ++point)
            plot.DataAdd(series, float(point), point == series ? NAN : float(random() % 50));
    plot.SetDataLegendHidden(3, true);
    plot.SetDataLineStyle(4, PenStyle::Null);
    plot.SetDrawArea(0, 0, 300, 200);
    TraceDevice device(300, 200);
    plot.Redraw(&device, nullptr);
    return plot;
}

double distance(DevicePoint a, DevicePoint b) {
    return std::hypot(a.X - b.X, a.Y - b.Y);
}

} // namespace

TEST(NearestPoint, IsThatOfASearchThroughAllPoints) {
    std::mt19937 random(3);
    int byPoint = 0, byLine = 0;
    for (int round = 0; round < 3000; ++round) {
        const clsPlot plot = plotOf(random, round % 2);
        const DevicePoint place{int(random() % 300), int(random() % 200)};
        const int reach = 9;
        const auto found = plot.NearestPoint(place, reach);
        double nearest = 1e9, nearestLine = 1e9;
        for (int series : {1, 2, 4, 5})
            for (int point = 1; point <= 6; ++point) {
                const auto at = plot.PointAt(series, point), next = plot.PointAt(series, point + 1);
                ASSERT_EQ(at.has_value(), point != series + 1);
                nearest = std::min(nearest, at ? distance(at->Place, place) : 1e9);
                for (int part = 0; at && next && series != 4 && part <= 2000; ++part) {
                    const double x = std::lerp(at->Place.X, next->Place.X, part / 2000.0) - place.X;
                    const double y = std::lerp(at->Place.Y, next->Place.Y, part / 2000.0) - place.Y;
                    nearestLine = std::min(nearestLine, std::hypot(x, y));
                }
            }
        if (nearest <= reach) {
            ++byPoint;
            ASSERT_TRUE(found);
            EXPECT_EQ(distance(found->Place, place), nearest);
        } else if (std::abs(nearestLine - reach) > 0.1) {
            byLine += found.has_value();
            EXPECT_EQ(found.has_value(), nearestLine < reach) << nearestLine;
        }
    }
    EXPECT_TRUE(byPoint > 100 && byLine > 100);
}

TEST(PointBeside, GoesAlongWhatShows) {
    std::mt19937 random(3);
    const clsPlot plot = plotOf(random, 0);
    std::optional<PlotPoint> at;
    QString way;
    constexpr int far = 1 << 30;
    for (const auto& [series, points] :
         {std::pair(0, 1), {0, 1}, {1, 0}, {1, 0}, {0, 1}, {0, far}, {far, 0}, {-1, -1}}) {
        at = plot.PointBeside(at, series, points);
        way += u" %1/%2"_s.arg(at->Series).arg(at->Point);
    }
    EXPECT_EQ(way, u" 1/1 1/3 4/3 5/3 5/4 5/5 5/5 2/4"_s) << "2/3 and 4/5 are no numbers";
    EXPECT_FALSE(clsPlot().PointBeside({}, 0, 1));
}
