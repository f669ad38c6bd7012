#include "app/mdTipsDrawing.h"
#include "platform/device/TraceDevice.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace mdTips;

TEST(TipsDrawing, RoundsHalvesToEvenAndSaturates) {
    const double infinity = std::numeric_limits<double>::infinity(), nan = std::nan("");
    const std::pair<double, double> cases[] = {{0.49999999999999994, 0}, {1e-300, 0}, {infinity, INT_MAX},
                                               {-1e20, INT_MIN},         {nan, 0},    {-nan, 0}};
    for (const auto& [value, expected] : cases)
        EXPECT_EQ(Round(value), expected) << value;
    for (double value = -3e9; value < 3e9; value += 12345.5)
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
