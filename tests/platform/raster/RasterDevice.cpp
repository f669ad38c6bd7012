// Areas, raster modes, clip, state, batches and text of the raster device.
#include "Picture.h"

#include "platform/base/Parallel.h"
#include "platform/device/Fonts.h"
#include "platform/raster/PngFile.h"

#include <gtest/gtest.h>
#include <map>

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
    const int width = dice.Between(0, 3) == 0 ? dice.Between(2, 6) : 1,
              style = dice.Between(0, 2) ? 0 : dice.Between(0, 5);
    device.SelectPen({style, width, ColorRef(dice.Between(0, 0xffffff)), dice.Between(0, 1) == 0});
    const int hatch = dice.Between(0, 2) == 0 ? dice.Between(0, 5) : -1;
    device.SelectBrush({ColorRef(dice.Between(0, 0xffffff)), hatch, dice.Between(0, 3) == 0});
    const auto points = dice.Points(dice.Between(2, 14), -reach, 100 + reach);
    const DeviceRect rect{points[0].X, points[0].Y, points[1].X, points[1].Y};
    const int half = int(points.size()) / 2, counts[] = {half, int(points.size()) - half};
    const std::function<void()> figures[] = {[&] { device.Polyline(points); },
                                             [&] { device.Polygon(points); },
                                             [&] { device.PolyPolygon(points, counts); },
                                             [&] { device.Rectangle(rect); },
                                             [&] { device.Ellipse(rect); },
                                             [&] {
                                                 device.MoveTo(points[0]);
                                                 device.LineTo(points[1]);
                                             }};
    figures[dice.Between(0, 5)]();
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

TEST(RasterDevice, SmallFigures) {
    const DevicePoint square[] = {{1, 1}, {4, 1}, {4, 3}, {1, 3}}, speck[] = {{5, 4}, {5, 4}, {5, 4}};
    Picture picture(21, 6);
    picture.With(solidPen(black)).With(solidBrush(red)).Device.Polygon(square);
    picture.Device.Polygon(speck);
    picture.Device.Ellipse({7, 0, 13, 6});
    picture.With(stockPen(Stock::NullPen)).Device.Ellipse({14, 0, 21, 6});
    EXPECT_EQ(picture.Read(), (Rows{"........####...rrrr..", ".####..#rrrr#.rrrrrr.", ".#rr#..#rrrr#.rrrrrr.",
                                    ".####..#rrrr#.rrrrrr.", ".....#.#rrrr#..rrrr..", "........####........."}));
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

TEST(RasterDevice, ModesAndClipsOnlyChangeWhatAFigureCovers) {
    constexpr QRgb untouched = 0x00abcdef; // an alpha that no drawn pixel has
    const int modes[] = {RasterMode::CopyPen, RasterMode::Not, RasterMode::XorPen, RasterMode::MergePenNot};
    const int reaches[] = {10, 1000, 1000000, INT32_MAX - 100};
    for (unsigned seed = 0; seed < 1600; ++seed) {
        Picture plain(100, 100), drawn(100, 100);
        std::fill_n(reinterpret_cast<QRgb*>(plain.Image.bits()), 10000, untouched);
        Dice noise(seed), one(seed), other(seed);
        for (int i = 0; i < 10000; ++i)
            drawn.Image.setPixel(i % 100, i / 100, 0xff000000u | unsigned(noise.Between(0, 0xffffff)));
        const QImage before = drawn.Image.copy();
        const int mode = modes[seed % 4], reach = reaches[seed / 4 % 4];
        drawn.Device.SetRop2(mode);
        if (seed % 3 != 0)
            drawn.Device.ClipRect({70, 20, 31, 85});
        drawAnything(plain.Device, one, reach);
        drawAnything(drawn.Device, other, reach);
        for (int y = 0; y < 100; ++y)
            for (int x = 0; x < 100; ++x) {
                const bool clipped = seed % 3 != 0 && (x < 31 || x >= 70 || y < 20 || y >= 85);
                const QRgb ink = reinterpret_cast<const QRgb*>(plain.Image.constScanLine(y))[x];
                const QRgb was = before.pixel(x, y);
                const QRgb mixed = mode == RasterMode::Not       ? ~was
                                   : mode == RasterMode::XorPen  ? ink ^ was
                                   : mode == RasterMode::CopyPen ? ink
                                                                 : ink | ~was;
                ASSERT_EQ(drawn.Image.pixel(x, y), (clipped || ink == untouched ? was : mixed) | 0xff000000u) << seed;
            }
    }
}

TEST(RasterDevice, BatchesDrawWhatSingleCallsDraw) {
    for (unsigned seed = 0; seed < 96; ++seed) {
        Dice dice(seed);
        // Steps of a smooth curve, of a wild one across and up the page, and of any; some far beyond the picture.
        const DevicePoint reaches[] = {{2, 2}, {1, 150}, {150, 1}, {9, 90}};
        const DevicePoint reach = reaches[seed % 4];
        std::vector<DevicePoint> points{{75, 75}};
        std::vector<DeviceRect> dots;
        std::vector<std::int32_t> steps;
        std::vector<int> counts;
        for (int i = 0; i < 4500; ++i) {
            DevicePoint next{points.back().X + dice.Between(-reach.X, reach.X),
                             points.back().Y + dice.Between(-reach.Y, reach.Y)};
            if (std::abs(next.X - 75) > 150 || std::abs(next.Y - 75) > 150)
                next = i % 64 == 0 ? dice.Point(-100000, 100000) : dice.Point(0, 150);
            points.push_back(next);
            const int size = i % 50 == 0 ? dice.Between(-70, 90) : 8;
            dots.push_back({next.X, next.Y, next.X + size, next.Y + size - int(seed % 2)});
            const int index = dice.Between(0, i % 100 ? 4500 : 6000);
            steps.push_back(dice.Between(0, 2) ? index : ~index);
        }
        std::copy_n(points.begin(), 4, points.begin() + 4);
        counts = {4, 4}; // a figure that comes twice
        for (int left = 4392; left > 0; left -= counts.back())
            counts.push_back(std::min(left, dice.Between(0, 6)));
        const int widths[] = {1, 2, 5, 40};
        Pen pen = solidPen(red, widths[seed / 4 % 4]);
        pen.Geometric = true;
        pen.Style = seed % 3 == 0 ? int(seed / 3 % 6) : 0;
        Brush brush = solidBrush(seed % 5 ? red : black);
        brush.Hatch = seed % 7 ? -1 : 3;
        const auto draw = [&](DeviceContext& device) {
            device.SelectPen(pen);
            device.SelectBrush(brush);
            if (seed % 2)
                device.ClipRect({3, 40, 120, 141});
            device.SetRop2(seed % 6 == 5 ? RasterMode::XorPen : RasterMode::CopyPen);
            device.MoveTo({50, 50});
            seed % 4 < 2 ? device.Polygons(points, counts) : device.Ellipses(dots);
            device.Lines(points, std::span(steps).first(seed % 5 ? steps.size() : 20));
            device.LinePieces(points, 3, [&](int piece, std::vector<std::int32_t>& some) {
                some.push_back(~piece);
                some.insert(some.end(), steps.begin() + 1500 * piece, steps.begin() + 1500 * piece + 20 * (2 - piece));
            });
            device.LineTo({3, 7}); // from where the batch ended
            device.SetRop2(RasterMode::CopyPen);
            device.Polyline(std::span(points).first(seed / 2 % 2 ? points.size() : 50));
            if (seed % 4 == 3)
                device.Rectangles(dots);
        };
        Picture single(151, 150), one(151, 150, 1), several(151, 150, 4);
        EveryCall device(single.Image);
        draw(device);
        draw(one.Device);
        draw(several.Device);
        ASSERT_TRUE(single.Image == one.Image && one.Image == several.Image) << seed;
    }
}

TEST(RasterDevice, LayersOfOneInkAreDrawnWhereTheyCanBeSeen) {
    for (unsigned seed = 0; seed < 24; ++seed) {
        Dice dice(seed);
        std::vector<DevicePoint> points;
        std::vector<int> counts;
        for (int i = 0; i < 250; ++i) {
            const DevicePoint corner = dice.Point(-60, 150);
            counts.push_back(dice.Between(3, i % 3 ? 7 : 60));
            for (const DevicePoint point : dice.Points(counts.back(), 0, dice.Between(33, 90)))
                points.push_back({corner.X + point.X, corner.Y + point.Y});
        }
        Picture single(151, 150), several(151, 150, int(seed % 3) + 1);
        EveryCall device(single.Image);
        for (DeviceContext* each :
             {static_cast<DeviceContext*>(&device), static_cast<DeviceContext*>(&several.Device)}) {
            each->SelectPen(seed % 2 ? solidPen(red, 1) : stockPen(Stock::NullPen));
            each->SelectBrush(solidBrush(red));
            each->Polygons(points, counts);
        }
        ASSERT_TRUE(single.Image == several.Image) << seed;
    }
}

TEST(RasterDevice, RankedPolygonsHideEachOtherByRank) {
    for (unsigned seed = 0; seed < 24; ++seed) {
        Dice dice(seed);
        const int ranks = seed % 3 ? 5 : RankedLayer::MostRanks, largest = 1 << seed % 5;
        std::vector<DevicePoint> points;
        std::vector<RankedLayer::Polygon> polygons;
        std::vector<ColorRef> inks;
        for (int rank = 0; rank < ranks; ++rank)
            inks.push_back(ColorRef(dice.Between(0, 0xffffff)));
        Picture single(61, 60), ranked(61, 60, 4);
        for (Picture* picture : {&single, &ranked})
            picture->Device.ClipRect({5, 3, 70, 50});
        std::multimap<int, std::vector<DevicePoint>> byRank;
        for (int i = 0; i < 700; ++i) {
            const DevicePoint corner = dice.Point(-20, 70);
            std::vector<DevicePoint> polygon = dice.Points(dice.Between(2, 6), 0, largest - 1);
            for (DevicePoint& point : polygon)
                point = {corner.X + point.X, corner.Y + point.Y};
            const int rank = dice.Between(1, ranks);
            points.insert(points.end(), polygon.begin(), polygon.end());
            polygons.push_back({{corner.X, corner.Y, corner.X + largest, corner.Y + largest},
                                std::int32_t(polygon.size()),
                                RankedLayer::Rank(rank)});
            byRank.emplace(rank, std::move(polygon));
        }
        for (const auto& [rank, polygon] : byRank)
            single.With(solidPen(inks[std::size_t(rank - 1)]))
                .With(solidBrush(inks[std::size_t(rank - 1)]))
                .Device.PolyPolygon(polygon, std::array{int(polygon.size())});
        const auto layer = ranked.Device.Ranked();
        parallelFor(7, [&](int piece) {
            const std::size_t first = std::size_t(piece) * 100;
            std::size_t corners = 0;
            for (std::size_t i = 0; i < first; ++i)
                corners += std::size_t(polygons[i].Corners);
            layer->Add(std::span(points).subspan(corners), std::span(polygons).subspan(first, 100));
        });
        layer->Put(1, std::span(inks).first(3));
        layer->Put(4, std::span(inks).subspan(3));
        ASSERT_TRUE(single.Image == ranked.Image) << seed;
    }
}

TEST(PngFile, AnyReaderSeesThePicture) {
    for (unsigned seed = 0; seed < 8; ++seed) {
        Dice dice(seed);
        Picture picture(dice.Between(1, 300), dice.Between(1, 200));
        for (int i = 0; i < 20; ++i)
            drawAnything(picture.Device, dice, 100);
        picture.Image.setDotsPerMeterX(3780);
        picture.Image.setDotsPerMeterY(11811);
        const PictureContent content = PngContent(picture.Image);
        const QImage read = QImage::fromData(content.Bytes, "PNG");
        EXPECT_EQ(read.convertToFormat(QImage::Format_RGB32), picture.Image) << seed;
        EXPECT_TRUE(!content.Problem && read.dotsPerMeterX() == 3780 && read.dotsPerMeterY() == 11811) << seed;
    }
    EXPECT_TRUE(PngContent(QImage(2, 2, QImage::Format_Mono)).Problem && PngContent({}).Problem);
}

TEST(RasterDevice, TextFillsItsMeasuredBoxWithinTheClip) {
    Fonts::InstallSubstitutions();
    const QString text = u"Hijg 25"_s;
    for (const int escapement : {0, 900}) {
        Picture picture(200, 200);
        RasterDevice& device = picture.Device;
        const auto inked = [&picture] {
            QRect rect;
            for (int y = 0; y < 200; ++y)
                for (int x = 0; x < 200; ++x)
                    if (picture.Image.pixel(x, y) != toPixel(white))
                        rect |= QRect(x, y, 1, 1);
            return rect;
        };
        device.SelectFont({.Height = 20, .Escapement = escapement, .Face = u"Arial"_s});
        const DeviceSize size = device.MeasureText(text);
        device.Text({100, 100}, text);
        device.Text({INT32_MIN, INT32_MAX}, u"away"_s);
        // Up the picture, the top of the letters on the left, when turned by a quarter.
        const QRect box = escapement ? QRect(100, 100 - size.Width, size.Height, size.Width)
                                     : QRect(100, 100, size.Width, size.Height);
        EXPECT_TRUE(box.adjusted(-1, -1, 1, 1).contains(inked())) << escapement;
        EXPECT_GT(inked().width() * inked().height(), size.Width * size.Height / 2);
        device.SetRop2(RasterMode::Not);
        device.FillRect({0, 0, 200, 200}, solidBrush(white));
        EXPECT_TRUE(inked().isEmpty()) << "what comes later covers";
        for (const DeviceRect& clip : {DeviceRect{0, 0, 1, 1}, {100, 90, 110, 110}}) {
            device.ClipRect(clip);
            device.Text({100, 100}, text);
        }
        EXPECT_TRUE(!inked().isEmpty() && QRect(100, 90, 10, 20).contains(inked())) << escapement;
        const QImage snapshot = picture.Image, kept = snapshot.copy();
        device.FillRect({0, 0, 200, 200}, solidBrush(red));
        EXPECT_EQ(snapshot, kept) << "drawing reached a copy of the picture";
    }
}
