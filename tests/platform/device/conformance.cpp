// The rules that all devices keep, held against each of them: as pixels where it makes any, as text where it writes, as
// answers everywhere.
#include "Golden.h"
#include "Picture.h"

#include "platform/device/PainterDevice.h"
#include "platform/device/SvgDevice.h"
#include "platform/device/TraceDevice.h"
#include "platform/raster/PreviewDevice.h"

#include <gtest/gtest.h>

namespace {
using Drawing = std::function<void(DeviceContext&)>;

const Pen noPen = stockPen(Stock::NullPen);
const Brush ink = solidBrush(red);

/// What a kind of device makes visible of a drawing: '#' for any colour. Qt's reader of SVG knows no clips.
struct Kind {
    const char* Name;
    bool Clips;
    void (*Draw)(QImage&, const Drawing&);

    Rows Show(int width, int height, const Drawing& draw) const {
        Picture picture(width, height);
        Draw(picture.Image, draw);
        picture.Image = picture.Image.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither)
                            .convertToFormat(QImage::Format_RGB32);
        return picture.Read();
    }
} const kinds[] = {{"raster", true,
                    [](QImage& image, const Drawing& draw) {
                        RasterDevice device(image, 96, 1);
                        draw(device);
                    }},
                   {"painter", true,
                    [](QImage& image, const Drawing& draw) {
                        QPainter painter(&image);
                        PainterDevice device(painter, {image.width(), image.height(), 96, 96});
                        draw(device);
                    }},
                   {"preview", true,
                    [](QImage& image, const Drawing& draw) {
                        PreviewDevice device(image, {image.width(), image.height(), 96, 96});
                        draw(device);
                    }},
                   {"svg", false, [](QImage& image, const Drawing& draw) {
                        SvgDevice device(image.width(), image.height(), 96);
                        draw(device);
                        QPainter(&image).drawImage(0, 0, QImage::fromData(device.TakeDocument(), "svg"));
                    }}};

/// Right and bottom edges are left out, without a pen one unit more; fills know no pen and polygons the alternate rule.
void drawAreas(DeviceContext& device) {
    const DevicePoint points[] = {{17, 0}, {23, 0}, {23, 7}, {17, 7}, {18, 3}, {22, 3}, {22, 6}, {18, 6}, {25, 9}};
    const DevicePoint far[] = {{22, 5}, {30000, 5}, {30000, 8}, {22, 8}};
    const int counts[] = {4, 4, 7};
    QImage marks(2, 1, QImage::Format_RGB32);
    marks.fill(Qt::white);
    marks.setPixel(0, 0, qRgb(0, 0, 0));
    device.SelectBrush(ink);
    device.PolyPolygon(points, counts);
    device.Polygon(far);
    device.Polygon(std::span(points).first(1));
    device.Rectangle({1, 1, 5, 4});
    device.Rectangle({5, 8, 1, 5});
    device.Rectangle({7, 1, 7, 4});
    device.SelectBrush(stockBrush(Stock::NullBrush));
    device.Rectangle({10, 4, 6, 1});
    device.FillRect({36, 4, 32, 1}, ink);
    device.FillRect({31, 1, 31, 8}, ink);
    device.FillRect({26, 1, 30, 3}, stockBrush(Stock::NullBrush));
    device.DrawPicture({29, 1, 25, 4}, marks);
    device.DrawPicture({30, 0, 30, 8}, marks);
    device.DrawPicture({0, 0, 9, 9}, QImage());
    device.SelectPen(noPen);
    device.Rectangle({1, 1, 16, 9});
    device.SelectBrush(ink);
    device.Rectangle({10, 5, 15, 9});
    device.Rectangle({15, 1, 16, 9});
    device.Ellipse({15, 1, 16, 9});
}

/// Lines go on from where the last one ended, and restoring brings everything back.
void drawLines(DeviceContext& device) {
    const DevicePoint loop[] = {{9, 7}, {9, 2}, {14, 2}, {14, 7}, {9, 7}};
    device.RestoreDC();
    device.MoveTo({1, 1});
    for (const DevicePoint point : {DevicePoint{6, 1}, {6, 6}, {1, 6}, {1, 6}, {1, 1}})
        device.LineTo(point);
    device.Polyline(loop);
    device.SelectPen(noPen);
    device.SelectBrush(ink);
    device.LineTo({3, 1});
    device.SaveDC();
    device.SelectPen(stockPen(Stock::BlackPen));
    device.SelectBrush(stockBrush(Stock::NullBrush));
    device.SetRop2(RasterMode::Not);
    device.ClipRect({0, 0, 1, 1});
    device.MoveTo({9, 3});
    device.RestoreDC();
    device.Rectangle({16, 1, 21, 5});
    device.SelectPen(solidPen(red));
    device.LineTo({3, 6});
}

/// A clip leaves out right and bottom and may be given from any corner.
void drawClipped(DeviceContext& device) {
    device.SelectBrush(ink);
    device.ClipRect({5, 1, 1, 4});
    device.Rectangle({0, 0, 16, 9});
    device.ClipRect({7, 1, 9, 8});
    device.MoveTo({0, 7});
    device.LineTo({16, 7});
    device.ClipNone();
    device.Rectangle({12, 1, 15, 8});
}

/// What pixels of a few lines can't show: looks, hatches, figures without extent, and numbers of any size.
void drawLooks(DeviceContext& device) {
    const DevicePoint square[] = {{10, 10}, {20, 10}, {20, 20}, {10, 20}};
    const std::int32_t steps[] = {~0, 1, 2, 99, ~3, 3, 0, INT32_MIN};
    const DeviceRect rects[] = {{5, 4, 6, 5}, {5, 4, 6, 9}, {1, 1, 6, 5}};
    const DeviceRect rounds[] = {{0, 0, 11, 11}, {0, 0, 11, 6}, {3, 3, 4, 7}, {3, 3, 3, 7}};
    const int counts[] = {3, 1, 7};
    device.SelectPen({PenStyle::Solid, 0, makeColor(0, 0, 255)});
    device.Lines(square, steps);
    device.SetRop2(RasterMode::XorPen);
    device.SelectPen({PenStyle::Dash, 4, 0x123456, true, true});
    device.Polyline(square);
    device.SelectPen({PenStyle::Dot, 1, 0});
    for (const DevicePoint point : {DevicePoint{-1, INT32_MAX}, {INT32_MIN, 4}, {7, 4}, {8, 4}})
        device.LineTo(point);
    device.SelectPen(stockPen(Stock::BlackPen));
    device.SelectBrush({0x030201, 3});
    device.Rectangles(rects);
    device.Ellipses(rounds);
    device.Polygons(square, counts);
    device.PolyPolygon(square, counts);
    device.ClipRect({30, 40, 10, 20});
    device.FillRect(rects[0], {0, 8});
    device.SaveDC();
    device.ClipNone();
    device.RestoreDC();
    device.FillRect(rects[0], {0x030201, 3});
}
} // namespace

TEST(Devices, DrawTheSamePixels) {
    for (const Kind& kind : kinds) {
        EXPECT_EQ(kind.Show(37, 9, drawAreas),
                  (Rows{".................#######.............", ".####.####.......#######.##.....####.",
                        ".####.#..#.......#######.##.....####.", ".####.####.......#######.##.....####.",
                        ".................##...##.............", ".####.....####...##...###############",
                        ".####.....####...####################", ".####.....####...####################",
                        "......................###############"}))
            << kind.Name;
        EXPECT_EQ(kind.Show(22, 8, drawLines),
                  (Rows{"......................", ".######.........####..", ".#.#..#..######.####..",
                        ".#.#..#..#....#.####..", ".#.#..#..#....#.......", ".#.#..#..#....#.......",
                        ".######..#....#.......", ".........######......."}))
            << kind.Name;
        if (!kind.Clips)
            continue;
        EXPECT_EQ(kind.Show(16, 9, drawClipped), (Rows{"................", ".####.......###.", ".####.......###.",
                                                       ".####.......###.", "............###.", "............###.",
                                                       "............###.", ".......##...###.", "................"}))
            << kind.Name;
    }
}

TEST(Devices, WriteTheSameCalls) {
    const auto drawAll = [](DeviceContext& device) {
        for (const auto draw : {drawLooks, drawLines, drawClipped}) {
            device.SaveDC();
            draw(device);
            device.RestoreDC();
        }
    };
    TraceDevice trace(200, 100);
    drawAll(trace);
    EXPECT_TRUE(Golden().MatchesText(u"devices/calls.trace"_s, trace.Trace()));
    SvgDevice svg(200, 100, 144, u"a<b\n"_s);
    drawAll(svg);
    EXPECT_TRUE(Golden().MatchesText(u"devices/calls.svg"_s, svg.TakeDocument()));
}

TEST(Devices, FiguresBeyondTheVisibleAreaLeaveNoMark) {
    unsigned seed = 0;
    bool clips = false;
    const auto draw = [&](DeviceContext& device) {
        Dice dice(seed);
        device.SelectPen({dice.Between(0, 4), dice.Between(0, 30), red, seed % 2 == 0});
        device.SelectBrush(ink);
        if (clips && seed % 3 == 0)
            device.ClipRect({3, 2, 12, 7});
        const DeviceRect area = device.VisibleArea().value();
        const int beyond[] = {area.Left - 1, area.Right, area.Top - 1, area.Bottom};
        auto points = dice.Points(5, -100, 100);
        for (DevicePoint& point : points)
            (seed % 4 < 2 ? point.X : point.Y) = beyond[seed % 4];
        device.Polygon(points);
        device.Polyline(points);
    };
    for (const Kind& kind : kinds)
        for (clips = kind.Clips, seed = 0; seed < 200; ++seed)
            EXPECT_EQ(kind.Show(16, 9, draw), Rows(9, std::string(16, '.'))) << kind.Name << seed;
}

TEST(Devices, AnswerAlike) {
    QImage image(205, 104, QImage::Format_RGB32);
    QPainter painter(&image);
    TraceDevice trace(205, 104, 254);
    RasterDevice raster(image, 254);
    PainterDevice vector(painter, {205, 104, 254, 254});
    SvgDevice svg(205, 104, 254);
    const std::pair<const char*, DeviceContext*> devices[] = {
        {"trace", &trace}, {"raster", &raster}, {"painter", &vector}, {"svg", &svg}};
    for (const auto& [name, device] : devices) {
        for (const auto& [measure, expected] : {std::pair(4, 21), {6, 10}, {8, 205}, {10, 104}, {88, 254}, {90, 254}})
            EXPECT_EQ(device->GetDeviceCaps(DeviceCaps(measure)), expected) << name << measure;
        // What is selected from the start, and then what was.
        const Font large{.Height = 40, .Face = u"Arial"_s};
        EXPECT_TRUE(device->SelectPen(noPen) == stockPen(Stock::BlackPen) &&
                    device->SelectBrush(ink) == stockBrush(Stock::WhiteBrush) &&
                    device->SelectFont(large) == stockFont(Stock::SystemFont, 254))
            << name;
        const DeviceSize two = device->MeasureText(u"MM"_s);
        EXPECT_EQ(device->MeasureText(QString()).Width, 0) << name;
        EXPECT_NEAR(two.Height, 40, 1) << name;
        EXPECT_NEAR(two.Width, 2 * device->MeasureText(u"M"_s).Width, 1) << name;
        device->SaveDC();
        EXPECT_EQ(device->SelectFont({}), large) << name;
        EXPECT_LT(device->MeasureText(u"MM"_s).Width, two.Width) << name;
        device->SelectPen(solidPen(red, 7));
        device->ClipRect({300, 90, 190, -5});
        const std::optional<DeviceRect> area = device->VisibleArea();
        EXPECT_EQ(area, device->ShowsEveryCall() ? std::nullopt : std::optional(DeviceRect{183, -7, 212, 97})) << name;
        device->RestoreDC();
        EXPECT_EQ(device->MeasureText(u"MM"_s), two) << name;
        EXPECT_TRUE(device->SelectPen({}) == noPen && device->SelectBrush({}) == ink) << name;
    }
    EXPECT_GT(TraceDevice(9, 9, 0).GetDeviceCaps(DeviceCaps::LogPixelsY), 0);
}
