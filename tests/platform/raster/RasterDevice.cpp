// Areas, raster modes, clip, state, batches and text of the raster device.
#include "Picture.h"

#include "platform/device/Fonts.h"

#include <gtest/gtest.h>

namespace {
__extension__ using Wide = __int128;

bool isInside(std::span<const DevicePoint> ring, int x, int y) {
    bool inside = false;
    DevicePoint from = ring.back();
    for (const DevicePoint to : ring) {
        const DevicePoint low = from.Y < to.Y ? from : to, high = from.Y < to.Y ? to : from;
        // A side counts for the points on it and right of it.
        if (low.Y <= y && y < high.Y &&
            (Wide(y) - low.Y) * (Wide(high.X) - low.X) <= (Wide(x) - low.X) * (Wide(high.Y) - low.Y))
            inside = !inside;
        from = to;
    }
    return inside;
}

/// Some figure in some pen and brush, from the dice.
void drawAnything(DeviceContext& device, Dice& dice, int reach) {
    Pen pen = solidPen(ColorRef(dice.Between(0, 0xffffff)), dice.Between(0, 3) == 0 ? dice.Between(2, 6) : 1);
    pen.Style = dice.Between(0, 2) == 0 ? dice.Between(0, 5) : 0;
    pen.Geometric = dice.Between(0, 1) == 0;
    Brush brush = solidBrush(ColorRef(dice.Between(0, 0xffffff)));
    brush.Hatch = dice.Between(0, 2) == 0 ? dice.Between(0, 5) : -1;
    brush.Hollow = dice.Between(0, 3) == 0;
    device.SelectPen(pen);
    device.SelectBrush(brush);
    const auto points = dice.Points(dice.Between(2, 14), -reach, 100 + reach);
    const DeviceRect rect{points[0].X, points[0].Y, points[1].X, points[1].Y};
    const int counts[] = {int(points.size()) / 2, int(points.size()) - int(points.size()) / 2};
    switch (dice.Between(0, 5)) {
    case 0:
        device.MoveTo(points[0]);
        device.LineTo(points[1]);
        break;
    case 1:
        device.Polyline(points);
        break;
    case 2:
        device.Polygon(points);
        break;
    case 3:
        device.PolyPolygon(points, counts);
        break;
    case 4:
        device.Rectangle(rect);
        break;
    default:
        device.Ellipse(rect);
    }
}
} // namespace

TEST(RasterDevice, PolygonFollowsTheAlternateRuleAtAnySize) {
    Dice dice(2);
    const int reaches[] = {12, 60, 3000, INT32_MAX};
    for (int i = 0; i < 800; ++i) {
        const int reach = reaches[i % 4];
        const auto points = dice.Points(dice.Between(3, i % 16 == 0 ? 60 : 9), reach > 60 ? -reach : 0, reach);
        Picture filled(40, 40), outlined(40, 40), ring(40, 40);
        filled.With(solidBrush(black)).With(stockPen(Stock::NullPen)).Device.Polygon(points);
        const Rows rows = filled.Read();
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 40; ++x)
                ASSERT_EQ(rows[y][x] == '#', isInside(points, x, y)) << i << ": " << x << ", " << y;
        outlined.With(stockBrush(Stock::NullBrush)).Device.Polygon(points);
        ring.Device.MoveTo(points.back());
        for (const DevicePoint point : points)
            ring.Device.LineTo(point);
        ASSERT_EQ(outlined.Read(), ring.Read()) << i;
    }
}

TEST(RasterDevice, AreasLeaveOutRightAndBottom) {
    const DevicePoint square[] = {{1, 1}, {4, 1}, {4, 3}, {1, 3}}, speck[] = {{5, 4}, {5, 4}, {5, 4}};
    Picture polygons(6, 5);
    polygons.With(solidBrush(black)).With(solidPen(red)).Device.Polygon(square);
    polygons.Device.Polygon(speck);
    EXPECT_EQ(polygons.Read(), (Rows{"......", ".rrrr.", ".r##r.", ".rrrr.", ".....r"}));
    Picture picture(12, 6);
    picture.With(solidPen(black)).With(solidBrush(red));
    picture.Device.Rectangle({4, 4, 1, 1}); // reversed
    picture.Device.FillRect({5, 1, 7, 3}, solidBrush(black));
    picture.Device.Rectangle({8, 1, 9, 4});
    picture.Device.Rectangle({10, 1, 10, 4}); // empty
    picture.With(stockPen(Stock::NullPen)).Device.Rectangle({9, 1, 12, 4});
    EXPECT_EQ(picture.Read(),
              (Rows{"............", ".###.##.#rr.", ".#r#.##.#rr.", ".###....#...", "............", "............"}));
    Picture round(14, 6);
    round.With(solidPen(black)).With(solidBrush(red)).Device.Ellipse({0, 0, 6, 6});
    round.With(stockPen(Stock::NullPen)).Device.Ellipse({7, 0, 14, 6});
    EXPECT_EQ(round.Read(), (Rows{".####...rrrr..", "#rrrr#.rrrrrr.", "#rrrr#.rrrrrr.", "#rrrr#.rrrrrr.",
                                  "#rrrr#..rrrr..", ".####........."}));
}

TEST(RasterDevice, PicturesAreStretchedByWholePixels) {
    QImage flag(2, 2, QImage::Format_Indexed8), glass(1, 1, QImage::Format_ARGB32);
    flag.setColorTable({0xff000000, 0xffff0000, 0});
    glass.fill(QColor(0, 0, 0, 51));
    for (int i = 0; i < 4; ++i)
        flag.setPixel(i % 2, i / 2, unsigned(i) % 3);
    Picture picture(10, 5);
    picture.Device.SetRop2(RasterMode::Not);
    picture.Device.DrawPicture({0, 0, 5, 4}, flag); // black, red; none, black
    picture.Device.DrawPicture({8, 4, 5, 1}, flag);
    picture.Device.DrawPicture({9, 0, 9, 5}, flag);
    picture.Device.DrawPicture({0, 0, 9, 5}, QImage());
    picture.Device.DrawPicture({9, 4, 2000000000, 5}, glass);
    EXPECT_EQ(picture.Read(), (Rows{"##rrr.....", "##rrr#rr..", "..###.##..", "..###.##..", ".........?"}));
    EXPECT_EQ(picture.Image.pixel(9, 4), 0xffccccccu);
}

TEST(RasterDevice, HatchesLieOnTheDevicesGrid) {
    Brush brush = solidBrush(black);
    Picture picture(24, 24);
    for (const int hatch : {0, 1, 2, 3}) {
        brush.Hatch = hatch;
        picture.Device.FillRect({8, 10 + 2 * hatch, 16, 12 + 2 * hatch}, brush);
    }
    const Rows rows = picture.Read();
    const char* const expected[] = {"........", "########", "...#....", "...#....",
                                    "......#.", ".......#", ".......#", "......#."};
    for (std::size_t y = 0; y < 8; ++y)
        EXPECT_EQ(rows[10 + y].substr(8, 8), expected[y]) << y;
}

TEST(RasterDevice, RasterModesTouchEachPixelOfAFigureOnce) {
    constexpr QRgb untouched = 0x00abcdef; // an alpha that no drawn pixel has
    for (unsigned seed = 0; seed < 600; ++seed) {
        Picture plain(100, 100), mixed(100, 100);
        std::fill_n(reinterpret_cast<QRgb*>(plain.Image.bits()), 10000, untouched);
        Dice noise(seed);
        for (int i = 0; i < 10000; ++i)
            mixed.Image.setPixel(i % 100, i / 100, 0xff000000u | unsigned(noise.Between(0, 0xffffff)));
        const QImage before = mixed.Image.copy();
        const int modes[] = {RasterMode::Not, RasterMode::XorPen, RasterMode::MergePenNot};
        const int mode = modes[seed % 3];
        mixed.Device.SetRop2(mode);
        Dice one(seed), other(seed);
        drawAnything(plain.Device, one, 20);
        drawAnything(mixed.Device, other, 20);
        for (int i = 0; i < 10000; ++i) {
            const QRgb drawn = reinterpret_cast<const QRgb*>(plain.Image.constScanLine(i / 100))[i % 100];
            const QRgb was = before.pixel(i % 100, i / 100);
            const QRgb expected = drawn == untouched           ? was
                                  : mode == RasterMode::Not    ? ~was
                                  : mode == RasterMode::XorPen ? drawn ^ was
                                                               : drawn | ~was;
            ASSERT_EQ(mixed.Image.pixel(i % 100, i / 100), expected | 0xff000000u) << mode << ' ' << seed;
        }
    }
}

TEST(RasterDevice, AClipTakesAwayAndChangesNothing) {
    QImage speckled(7, 5, QImage::Format_ARGB32);
    for (int i = 0; i < 35; ++i)
        speckled.setPixel(i % 7, i / 7, 0x07654321u * unsigned(i));
    for (unsigned seed = 0; seed < 1500; ++seed) {
        const int reaches[] = {10, 1000, 1000000, INT32_MAX - 100};
        Picture whole(100, 100), clipped(100, 100);
        clipped.Device.ClipRect({70, 20, 31, 85}); // reversed
        Dice one(seed), other(seed);
        drawAnything(whole.Device, one, reaches[seed % 4]);
        drawAnything(clipped.Device, other, reaches[seed % 4]);
        const DevicePoint corner = one.Point(-reaches[seed % 4], 100), opposite = one.Point(0, reaches[seed % 4]);
        for (DeviceContext* device : {&whole.Device, &clipped.Device})
            device->DrawPicture({corner.X, corner.Y, opposite.X, opposite.Y}, speckled);
        QImage expected(100, 100, QImage::Format_RGB32);
        expected.fill(toPixel(white));
        for (int y = 20; y < 85; ++y)
            for (int x = 31; x < 70; ++x)
                expected.setPixel(x, y, whole.Image.pixel(x, y));
        ASSERT_EQ(clipped.Image, expected) << seed;
    }
}

TEST(RasterDevice, BatchesDrawWhatSingleCallsDraw) {
    for (unsigned seed = 0; seed < 24; ++seed) {
        Dice dice(seed);
        auto points = dice.Points(3000, -30, 130);
        std::copy_n(points.begin(), 4, points.begin() + 4); // a figure that comes twice
        std::vector<std::int32_t> steps;
        for (int i = 0; i < 6000; ++i) {
            const int index = dice.Between(0, i % 100 ? 2999 : 4000);
            steps.push_back(dice.Between(0, 2) ? index : ~index);
        }
        std::vector<int> counts{4, 4};
        for (int left = 2792; left > 0; left -= counts.back())
            counts.push_back(std::min(left, dice.Between(0, 6)));
        Pen pen = solidPen(red, seed % 3 == 2 ? 3 : 1);
        pen.Style = seed % 2 ? int(seed % 5) : 0;
        pen.Geometric = true;
        std::vector<QImage> images;
        for (const int threads : {0, 1, 4}) { // 0: one by one
            Picture picture(100, 100, threads);
            picture.With(pen)
                .With(solidBrush(makeColor(10, 200, 30)))
                .Device.SetRop2(seed < 12 ? RasterMode::CopyPen : RasterMode::XorPen);
            picture.Device.MoveTo({50, 50});
            if (threads == 0) {
                picture.Device.DeviceContext::Polygons(points, counts);
                picture.Device.DeviceContext::Lines(points, steps);
            } else {
                picture.Device.Polygons(points, counts);
                picture.Device.Lines(points, steps);
            }
            picture.Device.LineTo({3, 7}); // from where the batch ended
            images.push_back(picture.Image);
        }
        EXPECT_EQ(images[0], images[1]) << seed;
        EXPECT_EQ(images[0], images[2]) << seed;
    }
}

TEST(RasterDevice, CurvesAndDotsDrawWhatSingleCallsDraw) {
    for (unsigned seed = 0; seed < 96; ++seed) {
        Dice dice(seed);
        // Steps of a smooth curve, of a wild one across and up the page, and of any; some far beyond the picture.
        const DevicePoint reaches[] = {{2, 2}, {1, 150}, {150, 1}, {9, 90}};
        const DevicePoint reach = reaches[seed % 4];
        std::vector<DevicePoint> points{{75, 75}};
        std::vector<DeviceRect> dots;
        for (int i = 0; i < 4500; ++i) {
            DevicePoint next{points.back().X + dice.Between(-reach.X, reach.X),
                             points.back().Y + dice.Between(-reach.Y, reach.Y)};
            if (std::abs(next.X - 75) > 150 || std::abs(next.Y - 75) > 150)
                next = i % 64 == 0 ? dice.Point(-100000, 100000) : dice.Point(0, 150);
            points.push_back(next);
            const int size = i % 50 == 0 ? dice.Between(-70, 90) : 8;
            dots.push_back({next.X, next.Y, next.X + size, next.Y + size - int(seed % 2)});
        }
        const int widths[] = {1, 2, 5, 40};
        Pen pen = solidPen(red, widths[seed / 4 % 4]);
        pen.Geometric = true;
        pen.Style = seed % 3 == 0 ? int(seed / 3 % 6) : 0;
        Brush brush = solidBrush(seed % 5 ? red : black);
        brush.Hatch = seed % 7 ? -1 : 3;
        const int mode = seed % 6 == 5 ? RasterMode::XorPen : RasterMode::CopyPen;
        std::vector<QImage> images;
        for (const int threads : {0, 1, 4}) { // 0: one by one
            Picture picture(151, 150, threads);
            RasterDevice& device = picture.With(pen).With(brush).Device;
            if (seed % 2)
                device.ClipRect({3, 40, 120, 141});
            device.MoveTo(points[0]);
            const auto curve = std::span(points).first(seed / 2 % 2 ? points.size() : 50);
            for (const DevicePoint point : curve.subspan(threads ? curve.size() : 1))
                device.LineTo(point);
            if (threads)
                device.Polyline(curve);
            images.push_back(picture.Image.copy());
            device.SetRop2(mode);
            const std::span<const DeviceRect> all(dots);
            threads ? device.Ellipses(all.first(4400)) : device.DeviceContext::Ellipses(all.first(4400));
            threads ? device.Rectangles(all.subspan(200)) : device.DeviceContext::Rectangles(all.subspan(200));
            images.push_back(picture.Image);
        }
        for (std::size_t i = 2; i < images.size(); ++i)
            ASSERT_EQ(images[i], images[i % 2]) << seed << ' ' << i;
    }
}

TEST(RasterDevice, SaveAndRestoreBringBackEverything) {
    Picture picture(12, 4);
    RasterDevice& device = picture.Device;
    device.RestoreDC();
    picture.With(solidPen(red)).With(solidBrush(red));
    device.MoveTo({0, 0});
    device.SaveDC();
    picture.With(solidPen(black)).With(stockBrush(Stock::NullBrush));
    const Font stock = device.SelectFont({.Height = 40, .Face = {}});
    device.SetRop2(RasterMode::Not);
    device.ClipRect({0, 0, 1, 1});
    device.MoveTo({9, 3});
    device.RestoreDC();
    device.LineTo({12, 0});
    device.Rectangle({2, 2, 5, 4});
    EXPECT_EQ(picture.Read(), (Rows{"rrrrrrrrrrrr", "............", "..rrr.......", "..rrr......."}));
    EXPECT_EQ(device.SelectFont({}), stock);
}

TEST(RasterDevice, TextKeepsItsOrderAndClip) {
    Picture picture(60, 20);
    RasterDevice& device = picture.Device;
    device.Text({0, 0}, u"MMMMMMMM"_s);
    device.FillRect({0, 0, 60, 20}, solidBrush(white));
    EXPECT_FALSE(picture.Shows('#') || picture.Shows('?'));
    device.ClipRect({0, 0, 10, 20});
    device.Text({0, 0}, u"MMMMMMMM"_s);
    const QImage snapshot = picture.Image, kept = snapshot.copy();
    EXPECT_EQ(snapshot.copy(10, 0, 50, 20), Picture(50, 20).Image);
    EXPECT_NE(snapshot.copy(0, 0, 10, 20), Picture(10, 20).Image);
    device.FillRect({0, 0, 60, 20}, solidBrush(red));
    EXPECT_EQ(snapshot, kept) << "drawing reached a copy of the picture";
}

TEST(RasterDevice, TextFillsItsMeasuredBoxFromTheLeftTop) {
    Fonts::InstallSubstitutions();
    for (const int escapement : {0, 900}) {
        Picture picture(200, 200);
        Font font;
        font.Face = u"Arial"_s;
        font.Height = 20;
        font.Escapement = escapement;
        picture.Device.SelectFont(font);
        const DeviceSize size = picture.Device.MeasureText(u"Hijg 25"_s);
        EXPECT_NEAR(size.Height, 20, 1);
        EXPECT_GT(size.Width, 40);
        picture.Device.Text({100, 100}, u"Hijg 25"_s);
        picture.Device.Text({INT32_MIN, INT32_MAX}, u"away"_s);
        // Up the picture, the top of the letters on the left, when turned by a quarter.
        const QRect box = escapement ? QRect(100, 100 - size.Width, size.Height, size.Width)
                                     : QRect(100, 100, size.Width, size.Height);
        QRect inked;
        for (int y = 0; y < 200; ++y)
            for (int x = 0; x < 200; ++x)
                if (picture.Image.pixel(x, y) != toPixel(white))
                    inked |= QRect(x, y, 1, 1);
        EXPECT_TRUE(box.adjusted(-1, -1, 1, 1).contains(inked)) << escapement;
        EXPECT_GT(inked.width() * inked.height(), size.Width * size.Height / 2);
    }
}
