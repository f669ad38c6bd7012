// The rules that all devices keep, held against each of them: as pixels where it makes any, as answers everywhere.
#include "Picture.h"

#include "platform/device/PainterDevice.h"
#include "platform/device/SvgDevice.h"
#include "platform/device/TraceDevice.h"

#include <gtest/gtest.h>

namespace {
using Drawing = std::function<void(DeviceContext&)>;

constexpr int width = 16, height = 9;
const Pen noPen = stockPen(Stock::NullPen);
const Brush ink = solidBrush(red);

void onRaster(QImage& image, const Drawing& draw) {
    RasterDevice device(image, 96, 1);
    draw(device);
}
void onPainter(QImage& image, const Drawing& draw) {
    QPainter painter(&image);
    PainterDevice device(painter, image.width(), image.height(), 96, 96);
    draw(device);
}
void onSvg(QImage& image, const Drawing& draw) {
    SvgDevice device(image.width(), image.height(), 96);
    draw(device);
    QPainter(&image).drawImage(0, 0, QImage::fromData(device.TakeDocument(), "svg"));
}

struct Kind {
    const char* Name;
    void (*Draw)(QImage&, const Drawing&);
    bool Clips; ///< what shows the picture knows clips; Qt's reader of SVG does not
} const kinds[] = {{"raster", onRaster, true}, {"painter", onPainter, true}, {"svg", onSvg, false}};

/// '#' for what is drawn, in any colour.
Rows shown(const Kind& kind, const Drawing& draw) {
    Picture picture(width, height);
    kind.Draw(picture.Image, draw);
    picture.Image =
        picture.Image.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither).convertToFormat(QImage::Format_RGB32);
    return picture.Read();
}

void forEachDevice(int dotsPerInch, const std::function<void(const char*, DeviceContext&)>& visit) {
    QImage image(205, 104, QImage::Format_RGB32);
    QPainter painter(&image);
    TraceDevice trace(205, 104, dotsPerInch);
    RasterDevice raster(image, dotsPerInch);
    PainterDevice vector(painter, 205, 104, dotsPerInch, dotsPerInch);
    SvgDevice svg(205, 104, dotsPerInch);
    visit("trace", trace);
    visit("raster", raster);
    visit("painter", vector);
    visit("svg", svg);
}

struct Case {
    const char* Name;
    Drawing Draw;
    Rows Expected;
    bool Clips = false;
};

const DevicePoint rings[] = {{1, 0}, {7, 0}, {7, 7}, {1, 7}, {2, 3}, {6, 3}, {6, 6}, {2, 6}, {9, 9}};
const int ringCounts[] = {4, 4, 7};
const DevicePoint far[] = {{6, 5}, {30000, 5}, {30000, 8}, {6, 8}}, loop[] = {{9, 7}, {9, 2}, {14, 2}, {14, 7}, {9, 7}};

const Case cases[] = {
    {"rectangles leave out right and bottom, without a pen one more",
     [](DeviceContext& device) {
         device.SelectBrush(ink);
         device.Rectangle({1, 1, 5, 4});
         device.Rectangle({5, 8, 1, 5});
         device.Rectangle({7, 1, 7, 4});
         device.SelectBrush(stockBrush(Stock::NullBrush));
         device.Rectangle({14, 4, 10, 1});
         device.SelectPen(noPen);
         device.Rectangle({1, 1, 16, 9});
         device.SelectBrush(ink);
         device.Rectangle({10, 5, 15, 9});
         device.Rectangle({15, 1, 16, 9});
         device.Ellipse({15, 1, 16, 9});
     },
     {"................", ".####.....####..", ".####.....#..#..", ".####.....####..", "................",
      ".####.....####..", ".####.....####..", ".####.....####..", "................"}},
    {"filled rectangles and pictures know neither pen nor brush",
     [](DeviceContext& device) {
         QImage marks(2, 1, QImage::Format_RGB32);
         marks.fill(Qt::white);
         marks.setPixel(0, 0, qRgb(0, 0, 0));
         device.SelectBrush(stockBrush(Stock::NullBrush));
         device.FillRect({5, 4, 1, 1}, ink);
         device.FillRect({6, 1, 6, 8}, ink);
         device.FillRect({6, 1, 15, 3}, stockBrush(Stock::NullBrush));
         device.DrawPicture({10, 8, 2, 5}, marks);
         device.DrawPicture({12, 0, 12, 8}, marks);
         device.DrawPicture({0, 0, 9, 9}, QImage());
     },
     {"................", ".####...........", ".####...........", ".####...........", "................",
      "..####..........", "..####..........", "..####..........", "................"}},
    {"polygons are filled by the alternate rule, at any size, as far as they are complete",
     [](DeviceContext& device) {
         device.SelectBrush(ink);
         device.PolyPolygon(rings, ringCounts);
         device.Polygon(far);
         device.Polygon(std::span(rings).first(1));
     },
     {".#######........", ".#######........", ".#######........", ".#######........", ".##...##........",
      ".##...##########", ".###############", ".###############", "......##########"}},
    {"lines go on from where the last one ended",
     [](DeviceContext& device) {
         device.MoveTo({1, 1});
         for (const DevicePoint point : {DevicePoint{6, 1}, {6, 6}, {1, 6}, {1, 6}, {1, 1}})
             device.LineTo(point);
         device.Polyline(loop);
         device.SelectPen(noPen);
         device.LineTo({3, 1});
         device.SelectPen(solidPen(red));
         device.LineTo({3, 6});
     },
     {"................", ".######.........", ".#.#..#..######.", ".#.#..#..#....#.", ".#.#..#..#....#.",
      ".#.#..#..#....#.", ".######..#....#.", ".........######.", "................"}},
    {"restoring brings everything back",
     [](DeviceContext& device) {
         device.RestoreDC();
         device.SelectPen(noPen);
         device.SelectBrush(ink);
         device.MoveTo({1, 7});
         device.SaveDC();
         device.SelectPen(stockPen(Stock::BlackPen));
         device.SelectBrush(stockBrush(Stock::NullBrush));
         device.SetRop2(RasterMode::Not);
         device.ClipRect({0, 0, 1, 1});
         device.MoveTo({9, 3});
         device.RestoreDC();
         device.Rectangle({1, 1, 6, 5});
         device.SelectPen(solidPen(red));
         device.LineTo({8, 7});
         device.Rectangle({8, 6, 12, 8});
     },
     {"................", ".####...........", ".####...........", ".####...........", "................",
      "................", "........####....", ".###########....", "................"}},
    {"a clip leaves out right and bottom and may be given from any corner",
     [](DeviceContext& device) {
         device.SelectBrush(ink);
         device.ClipRect({5, 1, 1, 4});
         device.Rectangle({0, 0, 16, 9});
         device.ClipRect({7, 1, 9, 8});
         device.MoveTo({0, 7});
         device.LineTo({16, 7});
         device.ClipNone();
         device.Rectangle({12, 1, 15, 8});
     },
     {"................", ".####.......###.", ".####.......###.", ".####.......###.", "............###.",
      "............###.", "............###.", ".......##...###.", "................"},
     true},
};
} // namespace

TEST(Devices, DrawTheSamePixels) {
    for (const Case& c : cases)
        for (const Kind& kind : kinds) {
            if (c.Clips && !kind.Clips)
                continue;
            EXPECT_EQ(shown(kind, c.Draw), c.Expected) << kind.Name << ": " << c.Name;
        }
}

TEST(Devices, FiguresBeyondTheVisibleAreaLeaveNoMark) {
    for (const Kind& kind : kinds)
        for (unsigned seed = 0; seed < 200; ++seed) {
            const Rows rows = shown(kind, [&](DeviceContext& device) {
                Dice dice(seed);
                Pen pen = solidPen(red, dice.Between(0, 30));
                pen.Geometric = seed % 2 == 0;
                pen.Style = dice.Between(0, 4);
                device.SelectPen(pen);
                device.SelectBrush(ink);
                if (kind.Clips && seed % 3 == 0)
                    device.ClipRect({3, 2, 12, 7});
                const DeviceRect area = device.VisibleArea().value();
                auto points = dice.Points(5, -100, 100);
                for (DevicePoint& point : points) {
                    const DevicePoint sides[] = {{area.Left - 1, point.Y},
                                                 {area.Right, point.Y},
                                                 {point.X, area.Top - 1},
                                                 {point.X, area.Bottom}};
                    point = sides[seed % 4];
                }
                device.Polygon(points);
                device.Polyline(points);
            });
            EXPECT_EQ(rows, Rows(height, std::string(width, '.'))) << kind.Name << seed;
        }
}

TEST(Devices, AnswerAlike) {
    forEachDevice(254, [](const char* name, DeviceContext& device) {
        const std::pair<DeviceCaps, int> measures[] = {{DeviceCaps::HorzSize, 21},    {DeviceCaps::VertSize, 10},
                                                       {DeviceCaps::HorzRes, 205},    {DeviceCaps::VertRes, 104},
                                                       {DeviceCaps::LogPixelsX, 254}, {DeviceCaps::LogPixelsY, 254}};
        for (const auto& [measure, expected] : measures)
            EXPECT_EQ(device.GetDeviceCaps(measure), expected) << name << int(measure);
        // What is selected from the start, and then what was.
        const Font large{.Height = 40, .Face = u"Arial"_s};
        EXPECT_EQ(device.SelectPen(noPen), stockPen(Stock::BlackPen)) << name;
        EXPECT_EQ(device.SelectBrush(ink), stockBrush(Stock::WhiteBrush)) << name;
        EXPECT_EQ(device.SelectFont(large), stockFont(Stock::SystemFont, 254)) << name;
        device.SaveDC();
        const DeviceSize two = device.MeasureText(u"MM"_s);
        EXPECT_EQ(device.MeasureText(QString()).Width, 0) << name;
        EXPECT_NEAR(two.Height, 40, 1) << name;
        EXPECT_NEAR(two.Width, 2 * device.MeasureText(u"M"_s).Width, 1) << name;
        EXPECT_EQ(device.SelectFont({}), large) << name;
        EXPECT_LT(device.MeasureText(u"MM"_s).Width, two.Width) << name;
        device.SelectPen(solidPen(red, 7));
        device.ClipRect({300, 90, 190, -5});
        const std::optional<DeviceRect> area = device.VisibleArea();
        EXPECT_EQ(area.has_value(), !device.ShowsEveryCall()) << name;
        EXPECT_EQ(area.value_or(DeviceRect{183, -7, 212, 97}), (DeviceRect{183, -7, 212, 97})) << name;
        device.RestoreDC();
        EXPECT_EQ(device.SelectPen({}), noPen) << name;
        EXPECT_EQ(device.SelectBrush({}), ink) << name;
        EXPECT_EQ(device.MeasureText(u"MM"_s), two) << name;
    });
    forEachDevice(0, [](const char* name, DeviceContext& device) {
        EXPECT_GT(device.GetDeviceCaps(DeviceCaps::LogPixelsY), 0) << name;
    });
}
