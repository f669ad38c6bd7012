// Lines of the raster device, pixel by pixel: direction, clip, huge coordinates, dashes, wide pens.
#include "Picture.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace {
__extension__ using Wide = __int128;

/// The rule itself, asked of one pixel: nearest to the true line along its longer direction, the smaller coordinate of
/// two.
bool lineHas(DevicePoint from, DevicePoint to, int x, int y) {
    std::int64_t along = std::int64_t(to.X) - from.X, across = std::int64_t(to.Y) - from.Y;
    std::int64_t step = std::int64_t(x) - from.X, aside = std::int64_t(y) - from.Y;
    if (std::abs(along) < std::abs(across)) {
        std::swap(along, across);
        std::swap(step, aside);
    }
    if (along < 0) {
        along = -along;
        step = -step;
    }
    const Wide offset = 2 * (Wide(step) * across - Wide(aside) * along);
    return step >= 0 && step < along && offset > -along && offset <= along;
}

} // namespace

TEST(RasterLines, FollowTheRuleAtAnyDistance) {
    Dice dice(1);
    constexpr int size = 24;
    const int reaches[] = {size, 100, 5000, 2000000, INT32_MAX};
    int seen = 0;
    for (int i = 0; i < 4000; ++i) {
        const int reach = reaches[i % 5];
        DevicePoint from = dice.Point(-reach, reach);
        DevicePoint to = dice.Point(-reach, reach);
        if (i % 2 == 0) { // through the picture
            const DevicePoint middle = dice.Point(0, size - 1);
            from = {middle.X / 2 - to.X / 2, middle.Y / 2 - to.Y / 2};
            to = {middle.X / 2 + to.X / 2, middle.Y / 2 + to.Y / 2};
        }
        Picture picture(size, size);
        picture.Line(from, to);
        const Rows rows = picture.Read();
        for (int y = 0; y < size; ++y)
            for (int x = 0; x < size; ++x)
                ASSERT_EQ(rows[y][x] == '#', lineHas(from, to, x, y)) << i << ": " << x << ", " << y;
        seen += picture.Shows('#') ? 1 : 0;
    }
    EXPECT_GT(seen, 1500);
}

TEST(RasterLines, DashesAndWidePens) {
    const Pen dots{PenStyle::Dot}, thinDash{PenStyle::Dash}, wideDash{PenStyle::Dash, 3}, wide = solidPen(black, 3);
    Picture corners(8, 8);
    corners.With(dots).Line({0, 0}, {4, 0});
    corners.Device.LineTo({4, 7});
    corners.Line({0, 7}, {5, 7});
    EXPECT_EQ(corners.Read(),
              (Rows{"###.....", "........", "....#...", "....#...", "....#...", "........", "........", "###....."}));
    Picture round(18, 7);
    round.With(wide).Line({2, 2}, {6, 2});
    round.With(solidPen(red, 2)).Line({1, 6}, {8, 6});
    round.With(solidPen(black, 7)).Line({14, 3}, {14, 3});
    EXPECT_EQ(round.Read(),
              (Rows{".............###..", ".#######....#####.", ".#######...#######", ".#######...#######",
                    "...........#######", "rrrrrrrrr...#####.", "rrrrrrrrr....###.."}));

    // Each from far left as well, a whole number of patterns away. Only a geometric wide pen keeps its dashes.
    const std::tuple<Pen, int, std::string> patterns[] = {
        {thinDash, 24, "##################......##"},
        {{PenStyle::DashDot}, 24, "#########......###......##"},
        {{PenStyle::DashDotDot}, 24, "#########...###...###...##"},
        {wideDash, 12, std::string(26, '#')},
        {{PenStyle::Dash, 3, black, true}, 12, "#########...#########...##"}};
    for (const auto& [pen, period, pattern] : patterns)
        for (const int periods : {0, 1, 80000000}) {
            Picture row(26, 1);
            row.With(pen).Line({-period * periods, 0}, {2000, 0});
            EXPECT_EQ(row.Read(), Rows{pattern}) << pen.Style << ' ' << periods;
        }
}
