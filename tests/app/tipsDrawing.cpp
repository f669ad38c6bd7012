#include "app/mdTipsDrawing.h"
#include "platform/device/TraceDevice.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <gtest/gtest.h>

using namespace mdTips;

TEST(TipsDrawing, RoundsHalvesToEvenAndSaturates) {
    for (const double value : {0.49999999999999994, 1e-300, std::nan("")})
        EXPECT_EQ(Round(value), 0) << value;
    EXPECT_TRUE(Round(HUGE_VAL) == INT_MAX && Round(-1e20) == INT_MIN);
    for (double value = -3e9; value < 3e9; value += 12345.5)
        EXPECT_EQ(Round(value), std::clamp(std::nearbyint(value), -2147483648.0, 2147483647.0));
}

TEST(TipsDrawing, MulDivRoundsAwayFromZero) {
    EXPECT_TRUE(MulDiv(11, 96, 72) == 15 && MulDiv(-3, 1, 2) == -2 && MulDiv(3, 1, -2) == -2);
    EXPECT_TRUE(MulDiv(5, 5, 0) == -1 && MulDiv(INT_MIN, INT_MIN, 1) == -1);
    EXPECT_EQ(MulDiv(INT_MAX, INT_MAX, INT_MAX), INT_MAX);
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
    for (int anchor = -1; anchor <= 10; ++anchor) {
        const int place = anchor < 1 || anchor > 9 ? 0 : anchor - 1;
        const int x[] = {100, 83, 65}, y[] = {50, 43, 35};
        DrawAnchoredText(device, 100, 50, u"abcde"_s, anchor);
        expected += QStringLiteral("Text %1 %2 \"abcde\"\n").arg(x[place % 3]).arg(y[place / 3]).toUtf8();
    }
    EXPECT_EQ(device.Trace(), expected);
}
