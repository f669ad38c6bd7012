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

TEST(RasterLines, DashesRunOnAroundCornersUntilMoveTo) {
    Pen dots = solidPen(black);
    dots.Style = PenStyle::Dot;
    Picture picture(8, 8);
    picture.With(dots);
    picture.Line({0, 0}, {4, 0});
    picture.Device.LineTo({4, 7});
    picture.Line({0, 7}, {5, 7});
    EXPECT_EQ(picture.Read(),
              (Rows{"###.....", "........", "....#...", "....#...", "....#...", "........", "........", "###....."}));

    const std::pair<int, std::string> patterns[] = {{PenStyle::Dash, "##################......##"},
                                                    {PenStyle::DashDot, "#########......###......##"},
                                                    {PenStyle::DashDotDot, "#########...###...###...##"}};
    for (const auto& [style, pattern] : patterns) {
        dots.Style = style;
        // From far left, a whole number of patterns away.
        for (const int start : {0, -24, -24 * 80000000}) {
            Picture row(26, 1);
            row.With(dots).Line({start, 0}, {2000, 0});
            EXPECT_EQ(row.Read(), Rows{pattern}) << style << ' ' << start;
        }
    }
}

TEST(RasterLines, WidePensAreRoundAndCentred) {
    Picture picture(10, 7);
    picture.With(solidPen(black, 3)).Line({2, 2}, {6, 2});
    picture.With(solidPen(red, 2)).Line({1, 6}, {8, 6});
    EXPECT_EQ(picture.Read(),
              (Rows{"..........", ".#######..", ".#######..", ".#######..", "..........", "rrrrrrrrr.", "rrrrrrrrr."}));
    Picture disc(7, 7);
    disc.With(solidPen(black, 7)).Line({3, 3}, {3, 3});
    EXPECT_EQ(disc.Read(), (Rows{"..###..", ".#####.", "#######", "#######", "#######", ".#####.", "..###.."}));
}

TEST(RasterLines, OnlyGeometricWidePensKeepTheirDashes) {
    Pen pen = solidPen(black, 3);
    pen.Style = PenStyle::Dash;
    Picture solid(30, 5);
    solid.With(pen).Line({0, 2}, {29, 2});
    EXPECT_EQ(solid.Read()[2], std::string(30, '#'));

    pen.Geometric = true;
    Picture dashed(30, 5);
    dashed.With(pen).Line({-12 * 100000000, 2}, {2000, 2});
    EXPECT_EQ(dashed.Read()[2], "#########...#########...######");
}
