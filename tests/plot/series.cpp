#include "platform/RasterDevice.h"
#include "platform/TraceDevice.h"
#include "plot/clsPlot.h"

#include <climits>
#include <gtest/gtest.h>

namespace {
/// The calls with "; " behind each, from the first one of that name on.
std::string callsFrom(const char* first, const TraceDevice& device) {
    return device.Trace().mid(device.Trace().indexOf(first)).replace('\n', "; ").toStdString();
}

std::string redrawFrom(const char* first, clsPlot& plot) {
    TraceDevice device(200, 200);
    plot.Redraw(&device, nullptr);
    return callsFrom(first, device);
}
} // namespace

TEST(PlotSeries, DotsByStyle) {
    clsPlot plot;
    plot.DotSize = 3;
    const auto expectDot = [&](int style, int fill, DevicePoint at, int radius, const std::string& calls) {
        TraceDevice device(200, 200);
        plot.SpecialPlot_Dot(device, style, 0xff, 0x80, fill, 9, at.X, at.Y, radius);
        EXPECT_EQ(callsFrom("", device), "Pen 0 1 0x000000ff; " + calls + "StockPen 7; ");
    };
    expectDot(1, 8, {10, 7}, 0, "Brush 0x00000080 -1; Ellipse 7 4 13 10; StockBrush 0; ");
    expectDot(2, 1, {10, 7}, 4, "Brush 0x00000080 1; Rectangle 6 3 14 11; StockBrush 0; ");
    expectDot(3, -1, {10, 7}, -5, "Polygon 3 10 4 7 8 13 8; ");
    expectDot(4, -1, {10, 7}, 3, "MoveTo 10 4; LineTo 10 10; MoveTo 7 7; LineTo 13 7; ");
    expectDot(5, -1, {10, 7}, 3, "");
    expectDot(1, -1, {INT_MAX, INT_MIN}, 5, "Ellipse 2147483642 -2147483648 2147483647 -2147483643; ");
}

TEST(PlotSeries, LinesDotsAndReferenceLinesInOrder) {
    clsPlot plot; // its rectangle is (6, 6) to (106, 106), 10 units per value
    plot.Outline = false;
    plot.SetScaleDraw(clsPlot::ScaleBoth, false);
    plot.SetScaleAutomatic(clsPlot::ScaleBoth, false);
    plot.SetScaleMax(clsPlot::ScaleBoth, 10);
    plot.SetDrawArea(0, 0, 112, 112);
    for (const auto& [base, value] : {std::pair(0.0f, 0.0f), {10.0f, 10.04f}, {5.0f, 20.0f}})
        plot.DataAdd(1, base, value);
    plot.DataAdd(2, 1, 1);
    plot.SetDataLegendHidden(2, true);
    plot.DataAdd(3, 2, std::numeric_limits<float>::infinity());
    plot.DataAdd(3, 3, 4);
    plot.SetDataLineStyle(3, PenStyle::Null);
    plot.SetDataDotStyle(3, DotStyle::Square);
    plot.SetDataDotFillStyle(3, 8);
    plot.DataLegendAdd();
    plot.PickupLineAdd(2, 0, 0xff, 1, 2);
    plot.PickupLineAdd(3, 2, 0xff, 3, 0);
    plot.PickupLineAdd(4, 1, 0xff, 1, 2);
    const std::string thin = "Pen 2 1 0x000000ff; ", wide = "Pen 0 3 0x000000ff; ", back = "StockPen 7; ";
    EXPECT_EQ(redrawFrom("GeometricPen", plot),
              "GeometricPen 0 1 0x00000000; Polyline 3 6 106 106 6 56 -94; " + back +
                  "GeometricPen 5 1 0x00000000; Polyline 2 26 -2147483648 36 66; " + back +
                  "Pen 0 1 0x00000000; Brush 0x00000000 -1; Rectangle 24 -2147483648 28 -2147483646; "
                  "Rectangle 34 64 38 68; StockBrush 0; " +
                  back + thin + "MoveTo 26 106; LineTo 26 6; " + back + wide +
                  "MoveTo 36 106; LineTo 36 6; MoveTo 6 76; LineTo 106 76; " + back + thin +
                  "MoveTo 6 66; LineTo 106 66; " + back + "RestoreDC; ");
    plot.DataLegendRemove(3);
    plot.Orientation = 1;
    EXPECT_EQ(redrawFrom("GeometricPen", plot), "GeometricPen 0 1 0x00000000; Polyline 3 6 106 106 6 206 56; " + back +
                                                    thin + "MoveTo 6 86; LineTo 106 86; " + back + wide +
                                                    "MoveTo 6 76; LineTo 106 76; MoveTo 36 106; LineTo 36 6; " + back +
                                                    thin + "MoveTo 46 106; LineTo 46 6; " + back + "RestoreDC; ");
}

TEST(PlotBackground, ByStyle) {
    clsPlot plot;
    plot.SetDrawArea(10, 5, 60, 40);
    plot.Picture = QImage(31, 20, QImage::Format_RGB32);
    const std::string filled = "StockPen 8; Brush 0x00ffffff -1; Rectangle 10 5 71 46; ";
    const std::pair<int, std::string> cases[] = {
        {0, "RestoreDC; "},
        {1, filled + "RestoreDC; "},
        {2, "Picture 14 10 45 30 31 20; RestoreDC; "}, // 14.5 to the even neighbour
        {3, "Picture 10 5 41 25 31 20; Picture 41 5 72 25 31 20; Picture 10 25 41 45 31 20; "
            "Picture 41 25 72 45 31 20; Picture 10 45 41 65 31 20; Picture 41 45 72 65 31 20; RestoreDC; "},
        {4, "Picture 10 5 70 45 31 20; RestoreDC; "},
        {6, filled + "FillRect 10 5 11 45; FillRect 10 5 70 6; FillRect 69 5 70 45; FillRect 10 44 70 45; "
                     "FillRect 11 6 12 44; FillRect 11 6 69 7; "}};
    for (const auto& [style, calls] : cases) {
        plot.BackStyle = style;
        EXPECT_EQ(redrawFrom("ClipRect", plot).substr(21, calls.size()), calls) << style;
    }
}

TEST(PlotBackground, SmallTilesJoinWithoutASeam) {
    QImage tile(3, 7, QImage::Format_RGB32), picture(600, 300, QImage::Format_RGB32);
    for (int i = 0; i < 21; ++i)
        tile.setPixel(i % 3, i / 3, 0xff000000u + 1000u * unsigned(i));
    clsPlot plot;
    plot.BackStyle = 3;
    plot.Picture = tile;
    plot.SetDrawArea(0, 10, 600, 290);
    picture.fill(Qt::white);
    RasterDevice device(picture, 96);
    plot.Redraw(&device, nullptr);
    int wrong = 0;
    for (int i = 0; i < 600 * 300; ++i)
        wrong += picture.pixel(i % 600, i / 600) !=
                 (i / 600 < 10 ? 0xffffffffu : tile.pixel(i % 600 % 3, (i / 600 - 10) % 7));
    EXPECT_EQ(wrong, 0);
}
