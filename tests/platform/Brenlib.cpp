#include "platform/brenlib.h"

#include <gtest/gtest.h>
#include <limits>
#include <utility>
#include <vector>

namespace {
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

bool onLine(double px, double py, double tolerance) {
    const double x[] = {10, 50}, y[] = {20, 50};
    return brenlib::NodeOnLine(x, y, px, py, tolerance);
}

std::pair<int, int> maxMin(const std::vector<double>& values) {
    int maxIndex = -1, minIndex = -1;
    brenlib::GetMaxMin(int(values.size()), values.data(), maxIndex, minIndex);
    return {maxIndex, minIndex};
}
} // namespace

TEST(Brenlib, NodeOnLineMeasuresToTheSegment) {
    EXPECT_TRUE(onLine(30, 35, 0));
    // (27, 39) and (33, 31) are 5 away from the middle at right angles to the 3-4-5 segment.
    for (const auto& [px, py] : {std::pair(27, 39), std::pair(33, 31)}) {
        EXPECT_TRUE(onLine(px, py, 5));
        EXPECT_FALSE(onLine(px, py, 4.999));
    }
    // 5 beyond either end along the line, and at an end itself.
    for (const auto& [px, py] : {std::pair(6, 17), std::pair(54, 53)}) {
        EXPECT_TRUE(onLine(px, py, 5));
        EXPECT_FALSE(onLine(px, py, 4.999));
    }
    EXPECT_TRUE(onLine(10, 20, 0));
    EXPECT_FALSE(onLine(30, 35, -1));
    EXPECT_FALSE(onLine(notANumber, 35, 5));
}

TEST(Brenlib, SegmentWithoutLengthIsAPoint) {
    const double x[] = {3, 3}, y[] = {4, 4}, bad[] = {notANumber, 1};
    EXPECT_TRUE(brenlib::NodeOnLine(x, y, 0, 0, 5));
    EXPECT_FALSE(brenlib::NodeOnLine(x, y, 0, 0, 4.99));
    EXPECT_FALSE(brenlib::NodeOnLine(bad, y, 3, 4, 5));
}

TEST(Brenlib, MaxMinCountFromOneAndTakeTheFirst) {
    EXPECT_EQ(maxMin({}), std::pair(0, 0));
    EXPECT_EQ(maxMin({7}), std::pair(1, 1));
    EXPECT_EQ(maxMin({2, 5, 1, 5, 1}), std::pair(2, 3));
    EXPECT_EQ(maxMin({notANumber, -3, notANumber, -4}), std::pair(2, 4));
    EXPECT_EQ(maxMin({notANumber, notANumber}), std::pair(0, 0));
    EXPECT_EQ(maxMin({1, infinity, -infinity}), std::pair(2, 3));
}
