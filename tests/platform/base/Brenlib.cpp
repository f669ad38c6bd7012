#include "platform/base/brenlib.h"

#include <gtest/gtest.h>
#include <limits>
#include <utility>
#include <vector>

namespace {
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
} // namespace

TEST(Brenlib, NodeOnLineMeasuresToTheSegment) {
    const double x[] = {10, 50}, y[] = {20, 50}, point[] = {10, 10}, bad[] = {notANumber, 1};
    // Each is 5 away: at right angles to the middle of the 3-4-5 segment, and beyond either end along the line.
    for (const auto& [px, py] : {std::pair(27, 39), {33, 31}, {6, 17}, {54, 53}}) {
        EXPECT_TRUE(brenlib::NodeOnLine(x, y, px, py, 5));
        EXPECT_FALSE(brenlib::NodeOnLine(x, y, px, py, 4.999));
    }
    EXPECT_TRUE(brenlib::NodeOnLine(x, y, 30, 35, 0) && brenlib::NodeOnLine(x, y, 10, 20, 0));
    EXPECT_FALSE(brenlib::NodeOnLine(x, y, 30, 35, -1) || brenlib::NodeOnLine(x, y, notANumber, 35, 5));
    EXPECT_TRUE(brenlib::NodeOnLine(point, point, 7, 6, 5));
    EXPECT_FALSE(brenlib::NodeOnLine(point, point, 7, 6, 4.99) || brenlib::NodeOnLine(bad, y, 3, 4, 50));
}

TEST(Brenlib, MaxMinCountFromOneAndTakeTheFirst) {
    const std::pair<std::vector<double>, std::pair<int, int>> cases[] = {{{}, {0, 0}},
                                                                         {{7}, {1, 1}},
                                                                         {{2, 5, 1, 5, 1}, {2, 3}},
                                                                         {{notANumber, -3, notANumber, -4}, {2, 4}},
                                                                         {{1, infinity, -infinity}, {2, 3}}};
    for (const auto& [values, expected] : cases) {
        std::pair found(-1, -1);
        brenlib::GetMaxMin(int(values.size()), values.data(), found.first, found.second);
        EXPECT_EQ(found, expected);
    }
}
