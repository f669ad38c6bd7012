// What the raster device says about where a figure can be seen.
#include "Picture.h"

#include <gtest/gtest.h>

TEST(VisibleArea, FiguresBeyondOneSideLeaveNoMark) {
    Dice dice(11);
    for (int i = 0; i < 400; ++i) {
        Picture picture(40, 30);
        Pen pen = solidPen(red, dice.Between(0, 30));
        pen.Geometric = i % 2 == 0;
        pen.Style = dice.Between(0, 4);
        picture.With(pen).With(solidBrush(black));
        if (i % 3 == 0)
            picture.Device.ClipRect({5, 6, 21, 17});
        const DeviceRect area = picture.Device.VisibleArea().value();
        auto points = dice.Points(5, -100, 100);
        for (DevicePoint& point : points) {
            const DevicePoint sides[] = {
                {area.Left - 1, point.Y}, {area.Right, point.Y}, {point.X, area.Top - 1}, {point.X, area.Bottom}};
            point = sides[i % 4];
        }
        picture.Device.Polygon(points);
        picture.Line(points[0], points[1]);
        EXPECT_FALSE(picture.Shows('r') || picture.Shows('#')) << i;
    }
}
