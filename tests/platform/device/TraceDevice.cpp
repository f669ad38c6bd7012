#include "platform/device/TraceDevice.h"

#include <QImage>
#include <gtest/gtest.h>

TEST(TraceDevice, WritesEachCallAsALine) {
    TraceDevice device(640, 480);
    const DevicePoint points[] = {{1, 2}, {-3, 4}, {5, -2147483647 - 1}, {7, 8}};
    const int counts[] = {3, 1};
    device.SaveDC();
    const Pen oldPen = device.SelectPen({PenStyle::Dash, 0, makeColor(0, 128, 0)});
    device.SelectPen({PenStyle::Solid, 3, makeColor(255, 128, 128), true});
    device.SelectPen(oldPen);
    const Brush oldBrush = device.SelectBrush({makeColor(1, 2, 3), 4});
    device.SelectBrush({.Hollow = true, .Stock = -1});
    device.SelectBrush(oldBrush);
    device.SelectFont({12, 700, true, false, true, 900, u"ＭＳ \"明朝\""_s});
    device.SetTextColor(0x00ff00ab);
    device.SetRop2(RasterMode::XorPen);
    device.ClipRect({1, 2, 3, 4});
    device.ClipNone();
    device.Polyline({points, 2});
    device.Polygon(points);
    device.PolyPolygon(points, counts);
    device.Rectangle({0, 1, 2, 3});
    device.Ellipse({4, 5, 6, 7});
    device.FillRect({-1, -2, 8, 9}, stockBrush(Stock::GreyBrush));
    device.DrawPicture({9, 8, 7, -6}, QImage(3, 2, QImage::Format_Mono));
    device.Text({10, -20}, u"a\"b\\c/\n\u0001変\u007f"_s);
    device.RestoreDC();
    EXPECT_EQ(device.Trace().toStdString(), R"(SaveDC
Pen 1 0 0x00008000
GeometricPen 0 3 0x008080ff
StockPen 7
Brush 0x00030201 4
StockBrush 5
StockBrush 0
Font 12 700 1 0 1 900 "ＭＳ \"明朝\""
TextColor 0x00ff00ab
Rop2 7
ClipRect 1 2 3 4
ClipNone
Polyline 2 1 2 -3 4
Polygon 4 1 2 -3 4 5 -2147483648 7 8
PolyPolygon 2 3 1 1 2 -3 4 5 -2147483648 7 8
Rectangle 0 1 2 3
Ellipse 4 5 6 7
FillRect -1 -2 8 9
Picture 9 8 7 -6 3 2
Text 10 -20 "a\"b\\c/\n\u0001変)"
                                            "\x7f\"\nRestoreDC\n");
}

TEST(TraceDevice, BatchesAreTheirSingleCalls) {
    TraceDevice device(10, 10);
    const DevicePoint points[] = {{0, 1}, {2, 3}, {4, 5}};
    const std::int32_t steps[] = {~0, 1, 99, ~2, 0, -2147483647 - 1};
    const int counts[] = {2, 1, 1};
    device.Lines(points, steps);
    device.Polygons(points, counts);
    EXPECT_EQ(device.Trace().toStdString(), "MoveTo 0 1\nLineTo 2 3\nMoveTo 4 5\nLineTo 0 1\n"
                                            "Polygon 2 0 1 2 3\nPolygon 1 4 5\n");
    device.SelectFont({.Height = 15, .Face = {}});
    EXPECT_EQ(device.MeasureText(u"aｱ変位😀"_s), (DeviceSize{7 + 7 + 15 + 15 + 7, 15}));
    device.SelectFont({.Height = 2000000000, .Face = {}});
    EXPECT_EQ(device.MeasureText(u"変位"_s).Width, 2147483647);
}
