#include "app/NumberFormat.h"

#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>

using NumberFormat::Format;

TEST(NumberFormat, Masks) {
    // Each is a number, a mask and the text expected.
    const QString cases =
        u"0 0.000 0.000; 1.25 0.000 1.250; -12345.678 0.0 -12345.7; 2 0.0## 2.0; 0.5 #.## .5; 1.2345 0.000## 1.2345;"
        "3.7 0. 4.; 0 #.## .; 7 000.0 007.0; 1234 #0.0 1234.0; 1000.5 .00 1000.50; 12 #,##0 12;"
        "1234567.8 #,##0.0 1,234,567.8; 0.5 0 1; 2.5 0 3; -2.5 0 -3; 1.005 0.00 1.01; 0.285 0.00 0.29; 99.95 0.0 100.0;"
        "0.0049 0.0 0.0; 0.96 0 1; 0.30000000000000004 0.0################ 0.3; -0.04 0.0 0.0; -0.05 0.0 -0.1;"
        "12345.678 0.000E-0 1.235E4; 0.00012345 0.000E-0 1.235E-4; 9.9996 0.000E-0 1.000E1; 0.99996 0.000E-0 1.000E0;"
        "0 0.000E-0 0.000E0; 0 0.000E+00 0.000E+00; 125 0.00000e-0 1.25000e2; 0.1 0.00000e-0 1.00000e-1;"
        "-1234 0.0##E-0 -1.234E3; 1500 0.0##E-0 1.5E3; 12345 00.0E+000 12.3E+003; 99960 00.0E+0 10.0E+4;"
        "1234 .000E-0 .123E4; 5e-324 0.0E-0 4.9E-324; 1.7976931348623157e308 0.00e+0 1.80e+308;"
        "2.5 約0.0m 約2.5m; -2.5 (0.0) -(2.5); 1234 0-00 12-34; 3 E-0 E-3; 3 0.0E- 3.0E-; 3 0.0.0 3.0.0;"
        "3 0E-0E-0 3E0E-0; 5 abc abc"_s;
    for (const QString& line : cases.split(u';')) {
        const QStringList words = line.split(u' ', Qt::SkipEmptyParts);
        EXPECT_EQ(Format(words[0].toDouble(), words[1]), words.value(2)) << line.toStdString();
    }
    EXPECT_EQ(Format(1e300, u"0"), u'1' + QString(300, u'0'));
    EXPECT_EQ(Format(-0.0, u"") + u' ' + Format(0.1 + 0.2, u""), u"0 0.3"_s);
}

TEST(NumberFormat, SinglesAreTakenAtTheirShortestForm) {
    EXPECT_EQ(Format(0.15f, u"0.0") + u' ' + Format(1.005f, u"0.00"), u"0.2 1.01"_s);
    EXPECT_EQ(Format(3.4e38f, u"0.0E-0") + u' ' + Format(0.1f, u""), u"3.4E38 0.1"_s);
    for (const char16_t* mask : {u"", u"0.0", u"0.0E-0"})
        EXPECT_EQ(Format(std::nan(""), mask) + Format(-HUGE_VAL, mask), u"NaN-Infinity"_s);
}

TEST(NumberFormat, ShortestReadsBack) {
    for (const char* number : {"100000", "-0.00001", "1e-6", "1.25e-7"})
        EXPECT_EQ(NumberFormat::Shortest(std::atof(number)).toStdString(), number);
    for (float value = 1.1e-38f; value < 1e38f; value *= 7.3f)
        EXPECT_EQ(NumberFormat::Shortest(value).toFloat(), value);
    for (double value = 1.1e-300; value < 1e300; value *= 997.3)
        EXPECT_EQ(NumberFormat::Shortest(-value).toDouble(), -value);
}

TEST(NumberFormat, TextMasksAlignRight) {
    using NumberFormat::FormatText;
    EXPECT_EQ(FormatText(u"12"_s, u"@@@@@"), u"   12"_s);
    EXPECT_EQ(FormatText(u"1234567"_s, u"@@@@@"), u"1234567"_s);
    EXPECT_EQ(FormatText(u"123"_s, u"[@@-@@]"), u"[ 1-23]"_s);
    EXPECT_EQ(FormatText(u"abc"_s, {}), u"abc"_s);
}
