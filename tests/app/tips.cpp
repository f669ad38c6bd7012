#include "app/mdTips.h"
#include "platform/Rounding.h"

#include <QDir>
#include <QTemporaryFile>
#include <gtest/gtest.h>

using namespace mdTips;

namespace {
/// The fields, with "|" between them.
QString fieldsOf(const QString& text, const QString& commentChar = {}) {
    QStringList fields;
    int count = -1;
    SplitFields(text, fields, count, commentChar);
    EXPECT_EQ(count, fields.size() - 1);
    return fields.mid(1).join(u'|');
}
} // namespace

TEST(Tips, Colours) {
    EXPECT_EQ(FormatColor(0xffffff, u"0x"_qs), u"0x00ffffff"_qs);
    const struct {
        const char16_t* Text;
        Colour Expected;
    } cases[] = {{u"0XFF", 255},      {u"0x00808080", 0x808080},
                 {u"&HfF", 255},      {u"-1", 0xffffffff},
                 {u"2.5", 2},         {u"0x", 0},
                 {u"0xgg", 0},        {u"12a", 0},
                 {u"99999999999", 0}, {u"", 0},
                 {u"nan", 0},         {u"0x112233445", 0}};
    for (const auto& c : cases)
        EXPECT_EQ(ParseColor(QString::fromUtf16(c.Text)), c.Expected) << QString::fromUtf16(c.Text).toStdString();
}

TEST(Tips, SplitFieldsAtSeparatorsAndQuotes) {
    EXPECT_EQ(fieldsOf(u"a, b  # c"_qs), u"a|b"_qs);
    EXPECT_EQ(fieldsOf(u"\"a b\",c"_qs), u"a b|c"_qs);
    EXPECT_EQ(fieldsOf(u",, 'x,y'　z\t\"\""_qs), u"x,y|z"_qs);
    EXPECT_EQ(fieldsOf(u"ab'c d\"ef"_qs), u"ab|c def"_qs);
    EXPECT_EQ(fieldsOf(u"a 'b c"_qs), u"a|b c "_qs);
    EXPECT_EQ(fieldsOf(u"a b#c"_qs), u"a"_qs);
    EXPECT_EQ(fieldsOf(u"a#1;b c"_qs, u";"_qs), QString());
    EXPECT_EQ(fieldsOf(u"a#1 ;b c"_qs, u";!"_qs), u"a#1"_qs);
}

TEST(Tips, FontStrings) {
    Colour colour = 5;
    FontObject font = ParseFontString(u"\"ＭＳ Ｐゴシック\",12,b"_qs, colour);
    EXPECT_EQ(font, (FontObject{u"ＭＳ Ｐゴシック"_qs, 12, true, false, false, false}));
    EXPECT_EQ(colour, 5u);
    EXPECT_EQ(ParseFontString({}, colour), (FontObject{u"ＭＳ ゴシック"_qs, 9, false, false, false, false}));

    font = ParseFontString(u"Strike 8 ITALIC 0xFF 10.5 Underline Arial \"Courier New\""_qs, colour);
    EXPECT_EQ(font, (FontObject{u"Courier New"_qs, 10.5, false, true, true, true}));
    EXPECT_EQ(colour, 255u);
    const QString text = MakeFontString(font, colour);
    EXPECT_EQ(text, u"\"Courier New\", 10.5,0x000000ff,I,U,S"_qs);
    Colour colourBack = 0;
    EXPECT_EQ(ParseFontString(text, colourBack), font);
    EXPECT_EQ(colourBack, colour);
}

TEST(Tips, ValReadsTheLongestNumberInFront) {
    const struct {
        const char16_t* Text;
        double Expected;
    } cases[] = {{u"1 2.5e3x", 12500}, {u" -3.5mm", -3.5}, {u"+4", 4}, {u".5", 0.5}, {u"1,5", 1},   {u"2e", 2},
                 {u"abc", 0},          {u"inf", 0},        {u"", 0},   {u"-", 0},    {u"1e999", 0}, {u"１", 0}};
    for (const auto& c : cases)
        EXPECT_EQ(Val(c.Text), c.Expected) << QString::fromUtf16(c.Text).toStdString();
}

TEST(Tips, KeysAndValuesLineByLine) {
    EXPECT_EQ(StripComment(u"\t\ta \"b;\" ;c"_qs, u';'), u"a \"b;\" "_qs);
    const QString text = u" A b = \"c#=\" # d\r\n#\n\n{ x=\\\n  \n{1\\\r\n }\nlast = \\"_qs;
    QStringView rest = text;
    KeyValue record;
    QString read;
    while (ReadKeyValueLine(rest, record))
        read += record.Key + u'|' + record.Value + (record.IsBlock ? u"|block\n" : u"\n");
    EXPECT_EQ(read, u"A b|c#=\n{ x|{1}|block\nlast|\n"_qs);
    rest = u"\\\nk\"=v";
    ASSERT_TRUE(ReadKeyValueLine(rest, record, u"v;"_qs));
    EXPECT_EQ(record.Key + u'|' + record.Value, u"k\"|v"_qs);
}

TEST(Tips, TextsOfOtherPrograms) {
    EXPECT_EQ(AnsiLength(u"aｱ漢"), 4);
    EXPECT_EQ(CutAtNull(QByteArrayView("\x8a\xbf\0x", 4)), u"漢"_qs);
    EXPECT_EQ(CutAtNull(QStringView(u"ab\0c", 4)), u"ab"_qs);
    EXPECT_EQ(CutAtNull(u"ab"), QString());

    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write("\x8a\xbf"
               "abc");
    file.close();
    EXPECT_EQ(ReadTextFile(file.fileName(), 3), u"漢a"_qs);
    EXPECT_EQ(ReadTextFile(u"/no/such/file"_qs), QString());
}

TEST(Tips, RelativePaths) {
    EXPECT_EQ(ResolveRelativePath(u"../c/./d"_qs, u"/a/b"_qs), u"/a/c/d"_qs);
    EXPECT_EQ(ResolveRelativePath(u"../../../x"_qs, u"/a"_qs), u"/x"_qs);
    EXPECT_EQ(ResolveRelativePath(u"..\\..\\x"_qs, u"C:\\a\\"_qs, u'\\'), u"C:\\x"_qs);
    EXPECT_EQ(ResolveRelativePath(u"/x/../y"_qs, u"/a"_qs), u"/y"_qs);
    EXPECT_EQ(AddTrailingChar({}) + AddTrailingChar(u"C:\\a\\"_qs) + AddTrailingChar(u"a"_qs), u"/C:\\a\\a/"_qs);
    EXPECT_EQ(RemoveTrailingChar(u"/a//"_qs) + RemoveTrailingChar(u"C:\\"_qs), u"/a/C:"_qs);
    EXPECT_EQ(ResolveRelativePath(u"x"_qs, {}), QDir::currentPath() + u"/x"_qs);
}

TEST(Tips, PathsForDisplay) {
    EXPECT_EQ(ShortenPath(u"C:\\folder\\sub\\name.vrf"_qs, 18), u"C:\\...\\sub\\name.vrf"_qs);
    EXPECT_EQ(ShortenPath(u"/home/user/name.vrf"_qs, 12), u"/ho.../name.vrf"_qs);
    EXPECT_EQ(ShortenPath(u"/a/b"_qs, 4), u"/a/b"_qs);
    EXPECT_EQ(ShortenPath(u"/漢字/漢字.vrf"_qs, 14), u"/漢字.../漢字.vrf"_qs);
    EXPECT_EQ(ShortenPath(u"/a/averylongname.vrf"_qs, 8), u"/a/averylongname.vrf"_qs);
    EXPECT_EQ(NormalizePathCase(u"c:\\MY DATA\\pLATE.VRF"_qs), u"C:\\My data\\Plate.vrf"_qs);
}

TEST(Tips, MacrosOfALabel) {
    const QString many = u"%b%"_qs.repeated(1000);
    EXPECT_EQ(mdTips::ExpandLabelMacros(u"%a%-%c%-%a%"_qs, {{u"%a%"_qs, u"1%b%"_qs}, {u"%b%"_qs, u"2%a%"_qs}}),
              u"12%a%-%c%-12%a%"_qs);
    // The second would make a million characters of it.
    EXPECT_EQ(mdTips::ExpandLabelMacros(u"%a%"_qs, {{u"%a%"_qs, many}, {u"%b%"_qs, many}, {u"b%"_qs, QString()}}),
              u"%"_qs.repeated(1000));
}
