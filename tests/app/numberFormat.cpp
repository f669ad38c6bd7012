#include "app/NumberFormat.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using NumberFormat::Format;

namespace {
struct Case {
    double Value;
    const char16_t* Mask;
    const char16_t* Expected;
};

void check(std::initializer_list<Case> cases) {
    for (const Case& c : cases)
        EXPECT_EQ(Format(c.Value, c.Mask).toStdString(), QString::fromUtf16(c.Expected).toStdString())
            << c.Value << " by " << QString::fromUtf16(c.Mask).toStdString();
}
} // namespace

TEST(NumberFormat, FixedMasks) {
    check({{0, u"0.000", u"0.000"},
           {1.25, u"0.000", u"1.250"},
           {-12345.678, u"0.0", u"-12345.7"},
           {0.05, u"0.0##", u"0.05"},
           {2, u"0.0##", u"2.0"},
           {1.2345, u"0.000##", u"1.2345"},
           {3.7, u"0.", u"4."},
           {0, u"0.", u"0."},
           {0.5, u"#.##", u".5"},
           {0, u"#.##", u"."},
           {7, u"000.0", u"007.0"},
           {1234, u"#0.0", u"1234.0"},
           {1000.5, u".00", u"1000.50"},
           {1234567.8, u"#,##0.0", u"1,234,567.8"},
           {12, u"#,##0", u"12"},
           {1e300, u"0", (u"1" + std::u16string(300, u'0')).c_str()}});
}

TEST(NumberFormat, HalvesGoAwayFromZeroAtFifteenDigits) {
    check({{0.5, u"0", u"1"},
           {2.5, u"0", u"3"},
           {-2.5, u"0", u"-3"},
           {1.005, u"0.00", u"1.01"},
           {0.285, u"0.00", u"0.29"},
           {0.1 + 0.2, u"0.0################", u"0.3"},
           {99.95, u"0.0", u"100.0"},
           {0.049, u"0.0", u"0.0"},
           {0.0049, u"0.0", u"0.0"},
           {0.96, u"0", u"1"}});
}

TEST(NumberFormat, NoMinusBeforeZeros) {
    check({{-0.04, u"0.0", u"0.0"}, {-0.0, u"0.0", u"0.0"}, {-0.05, u"0.0", u"-0.1"}, {-0.0, u"", u"0"}});
}

TEST(NumberFormat, ScientificMasks) {
    check({{12345.678, u"0.000E-0", u"1.235E4"},
           {0.00012345, u"0.000E-0", u"1.235E-4"},
           {9.9996, u"0.000E-0", u"1.000E1"},
           {0.99996, u"0.000E-0", u"1.000E0"},
           {0, u"0.000E-0", u"0.000E0"},
           {0, u"0.000E+00", u"0.000E+00"},
           {125, u"0.00000e-0", u"1.25000e2"},
           {0.1, u"0.00000e-0", u"1.00000e-1"},
           {-1234, u"0.0##E-0", u"-1.234E3"},
           {1500, u"0.0##E-0", u"1.5E3"},
           {12345, u"00.0E+000", u"12.3E+003"},
           {99960, u"00.0E+0", u"10.0E+4"},
           {1234, u".000E-0", u".123E4"},
           {5e-324, u"0.0E-0", u"4.9E-324"},
           {1.7976931348623157e308, u"0.00e+0", u"1.80e+308"}});
}

TEST(NumberFormat, OtherTextOfAMaskStands) {
    check({{2.5, u"約 0.0 m", u"約 2.5 m"},
           {-2.5, u"(0.0)", u"-(2.5)"},
           {1234, u"0-00", u"12-34"},
           {3, u"E-0", u"E-3"},
           {3, u"0.0E-", u"3.0E-"},
           {3, u"0.0.0", u"3.0.0"},
           {3, u"0E-0E-0", u"3E0E-0"},
           {5, u"abc", u"abc"}});
}

TEST(NumberFormat, EmptyMaskIsTheGeneralForm) {
    check({{0.1 + 0.2, u"", u"0.3"}, {-1500, u"", u"-1500"}, {1e20, u"", u"1e20"}});
}

TEST(NumberFormat, SinglesAreTakenAtTheirShortestForm) {
    EXPECT_EQ(Format(0.1f, u"0.0########"), u"0.1"_qs);
    EXPECT_EQ(Format(0.15f, u"0.0"), u"0.2"_qs);
    EXPECT_EQ(Format(1.005f, u"0.00"), u"1.01"_qs);
    EXPECT_EQ(Format(3.4e38f, u"0.0E-0"), u"3.4E38"_qs);
    EXPECT_EQ(Format(0.1f, u""), u"0.1"_qs);
}

TEST(NumberFormat, NotFinite) {
    const double infinity = std::numeric_limits<double>::infinity();
    for (const char16_t* mask : {u"", u"0.0", u"0.0E-0"}) {
        EXPECT_EQ(Format(std::nan(""), mask), u"NaN"_qs);
        EXPECT_EQ(Format(infinity, mask), u"Infinity"_qs);
        EXPECT_EQ(Format(-std::numeric_limits<float>::infinity(), mask), u"-Infinity"_qs);
    }
}

TEST(NumberFormat, ShortestReadsBack) {
    EXPECT_EQ(NumberFormat::Shortest(100000.0f), u"100000"_qs);
    EXPECT_EQ(NumberFormat::Shortest(0.1f), u"0.1"_qs);
    EXPECT_EQ(NumberFormat::Shortest(-0.00001), u"-0.00001"_qs);
    EXPECT_EQ(NumberFormat::Shortest(1e-6), u"1e-6"_qs);
    EXPECT_EQ(NumberFormat::Shortest(-1.0e20f), u"-1e20"_qs);
    EXPECT_EQ(NumberFormat::Shortest(1.25e-7), u"1.25e-7"_qs);
    for (float value = 1.1e-38f; value < 1e38f; value *= 7.3f)
        EXPECT_EQ(NumberFormat::Shortest(value).toFloat(), value);
    for (double value = 1.1e-300; value < 1e300; value *= 997.3)
        EXPECT_EQ(NumberFormat::Shortest(-value).toDouble(), -value);
}

TEST(NumberFormat, TextMasksAlignRight) {
    using NumberFormat::FormatText;
    EXPECT_EQ(FormatText(u"12"_qs, u"@@@@@"), u"   12"_qs);
    EXPECT_EQ(FormatText(u"1234567"_qs, u"@@@@@"), u"1234567"_qs);
    EXPECT_EQ(FormatText(u"123"_qs, u"[@@-@@]"), u"[ 1-23]"_qs);
    EXPECT_EQ(FormatText({}, u"@@"), u"  "_qs);
    EXPECT_EQ(FormatText(u"abc"_qs, {}), u"abc"_qs);
}
