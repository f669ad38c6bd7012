#include "app/mdTipsDrawing.h"
#include "platform/device/TraceDevice.h"
#include "platform/raster/RasterDevice.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace mdTips;

TEST(TipsDrawing, RoundsHalvesToEvenAndSaturates) {
    const double infinity = std::numeric_limits<double>::infinity(), nan = std::nan("");
    // clang-format off
    const std::pair<double, double> cases[] = {
        {0.5, 0}, {1.5, 2}, {2.5, 2}, {-0.5, 0}, {-1.5, -2}, {0.49999999999999994, 0}, {-7.51, -8}, {1e-300, 0},
        {2147483646.5, 2147483646}, {2147483647.5, INT_MAX}, {infinity, INT_MAX},
        {-2147483648.5, INT_MIN}, {-1e20, INT_MIN}, {nan, 0}, {-nan, 0}};
    // clang-format on
    for (const auto& [value, expected] : cases)
        EXPECT_EQ(Round(value), expected) << value;
    for (double value = -3e9; value < 3e9; value += 12345.37)
        EXPECT_EQ(Round(value), std::clamp(std::nearbyint(value), -2147483648.0, 2147483647.0));
}

TEST(TipsDrawing, MulDivRoundsAwayFromZero) {
    const std::array<int, 4> cases[] = {{11, 96, 72, 15},
                                        {-3, 1, 2, -2},
                                        {3, 1, -2, -2},
                                        {5, 5, 0, -1},
                                        {INT_MIN, INT_MIN, 1, -1},
                                        {INT_MAX, INT_MAX, INT_MAX, INT_MAX}};
    for (const auto& [number, numerator, denominator, expected] : cases)
        EXPECT_EQ(MulDiv(number, numerator, denominator), expected) << number;
}

TEST(TipsDrawing, HatchesBeyondTheKnownOnesAreSolid) {
    TraceDevice device(100, 100);
    SelectBrush(device, 1, 8);
    EXPECT_EQ(SelectBrush(device, 2, -3), (Brush{1, -1, false, -1}));
    EXPECT_EQ(SelectBrush(device, 3, 5), (Brush{2, -1, false, -1}));
}

TEST(TipsDrawing, FontsTakeTheirSizeFromTheReferenceDevice) {
    TraceDevice device(100, 100);
    const TraceDevice page(100, 100, 600);
    EXPECT_EQ(PointsToDevice(page, 10.5), 83);
    const Font old = SelectFontFor(device, page, {u"Arial"_s, 11, true, false, true, false}, 900);
    const Font bold = SelectFontFor(device, device, {QString(20, u'漢'), 9}, 0);
    EXPECT_EQ(bold, (Font{92, 700, false, true, false, 900, u"Arial"_s}));
    EXPECT_EQ(device.SelectFont(old).Face, QString(16, u'漢'));
    SelectFontFor(device, device, {u"x"_s + QString(20, u'漢'), 9}, 0);
    EXPECT_EQ(device.SelectFont(old).Face, u"x"_s + QString(15, u'漢'));
}

TEST(TipsDrawing, AnchorsHoldTheirPointOfTheText) {
    TraceDevice device(100, 100);
    device.SelectFont({.Height = 15, .Face = u"Arial"_s});
    ASSERT_EQ(MeasureText(device, u"abcde"_s), (DeviceSize{35, 15}));
    QByteArray expected = device.Trace();
    int anchor = 1;
    for (const char* at :
         {"100 50", "83 50", "65 50", "100 43", "83 43", "65 43", "100 35", "83 35", "65 35", "100 50", "100 50"}) {
        DrawAnchoredText(device, 100, 50, u"abcde"_s, anchor);
        expected += QByteArray("Text ") + at + " \"abcde\"\n";
        anchor = anchor == 10 ? -1 : anchor + 1;
    }
    EXPECT_EQ(device.Trace(), expected);
}

TEST(TipsDrawing, EdgesAreLitFromTheLeftTop) {
    for (const bool raised : {true, false}) {
        QImage picture(7, 6, QImage::Format_RGB32);
        picture.fill(Qt::red);
        RasterDevice device(picture, 96);
        DrawEdge(device, {1, 1, 6, 6}, raised);
        QList<int> tones; // down the diagonal, then to the right and the bottom of the middle
        for (const QPoint at : {QPoint(0, 0), {1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {5, 1}, {1, 5}, {4, 3}, {3, 1}})
            tones += qBlue(picture.pixel(at));
        EXPECT_EQ(tones, raised ? (QList<int>{0, 0xe3, 0xff, 0, 0xa0, 0x69, 0x69, 0x69, 0xa0, 0xe3})
                                : (QList<int>{0, 0xa0, 0x69, 0, 0xe3, 0xff, 0xff, 0xff, 0xe3, 0xa0}));
    }
}
