#include "../TestFolder.h"
#include "app/mdTips.h"
#include "platform/Rounding.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace mdTips;

TEST(Tips, Colours) {
    EXPECT_EQ(FormatColor(0xffffff, u"0x"_qs), u"0x00ffffff"_qs);
    const std::pair<QString, Colour> cases[] = {{u"0XFF"_qs, 255}, {u"0x00808080"_qs, 0x808080},
                                                {u"&HfF"_qs, 255}, {u"-1"_qs, 0xffffffff},
                                                {u"2.5"_qs, 2},    {u"0x"_qs, 0},
                                                {u"0xgg"_qs, 0},   {u"12a"_qs, 0},
                                                {u""_qs, 0},       {u"99999999999"_qs, 0},
                                                {u"nan"_qs, 0},    {u"0x112233445"_qs, 0}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(ParseColor(text), expected) << text.toStdString();
}

TEST(Tips, SplitFieldsAtSeparatorsAndQuotes) {
    const struct {
        QString text, fields; ///< fields with "|" between them
        QString commentChar = {};
    } cases[] = {{u"a, b  # c"_qs, u"a|b"_qs},           {u"\"a b\",c"_qs, u"a b|c"_qs},
                 {u",, 'x,y'　z\t\"\""_qs, u"x,y|z"_qs}, {u"ab'c d\"ef"_qs, u"ab|c def"_qs},
                 {u"a 'b c"_qs, u"a|b c "_qs},           {u"a b#c"_qs, u"a"_qs},
                 {u"a#1;b c"_qs, {}, u";"_qs},           {u"a#1 ;b c"_qs, u"a#1"_qs, u";!"_qs}};
    for (const auto& c : cases) {
        QStringList fields;
        int count = -1;
        SplitFields(c.text, fields, count, c.commentChar);
        EXPECT_EQ(count, fields.size() - 1);
        EXPECT_EQ(fields.mid(1).join(u'|'), c.fields);
    }
}

TEST(Tips, FontStrings) {
    Colour colour = 5;
    EXPECT_EQ(ParseFontString(u"\"ＭＳ Ｐゴシック\",12,b"_qs, colour), (FontObject{u"ＭＳ Ｐゴシック"_qs, 12, true}));
    EXPECT_EQ(colour, 5u);
    EXPECT_EQ(ParseFontString({}, colour), (FontObject{u"ＭＳ ゴシック"_qs, 9}));
    const FontObject font{u"Courier New"_qs, 10.5, false, true, true, true};
    EXPECT_EQ(ParseFontString(u"Strike 8 ITALIC 0xFF 10.5 Underline Arial \"Courier New\""_qs, colour), font);
    const QString text = MakeFontString(font, colour);
    EXPECT_EQ(text, u"\"Courier New\", 10.5,0x000000ff,I,U,S"_qs);
    EXPECT_EQ(ParseFontString(text, colour = 0), font);
    EXPECT_EQ(colour, 255u);
}

TEST(Tips, ValReadsTheLongestNumberInFront) {
    const std::pair<QString, double> cases[] = {
        {u"1 2.5e3x"_qs, 12500}, {u" -3.5mm"_qs, -3.5}, {u"+4"_qs, 4},  {u".5"_qs, 0.5}, {u"1,5"_qs, 1},
        {u"2e"_qs, 2},           {u"abc"_qs, 0},        {u"inf"_qs, 0}, {u""_qs, 0},     {u"-"_qs, 0},
        {u"1e999"_qs, 0},        {u"１"_qs, 0}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(Val(text), expected) << text.toStdString();
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
    const TestFolder folder;
    EXPECT_EQ(ReadTextFile(folder.Write(QByteArray::fromHex("8abf616263")), 3), u"漢a"_qs);
    EXPECT_EQ(ReadTextFile(u"/no/such/file"_qs), QString());
}

TEST(Tips, Paths) {
    EXPECT_EQ(ResolveRelativePath(u"../c/./d"_qs, u"/a/b"_qs), u"/a/c/d"_qs);
    EXPECT_EQ(ResolveRelativePath(u"../../../x"_qs, u"/a"_qs), u"/x"_qs);
    EXPECT_EQ(ResolveRelativePath(u"..\\..\\x"_qs, u"C:\\a\\"_qs, u'\\'), u"C:\\x"_qs);
    EXPECT_EQ(ResolveRelativePath(u"/x/../y"_qs, u"/a"_qs), u"/y"_qs);
    EXPECT_EQ(ResolveRelativePath(u"x"_qs, {}), QDir::currentPath() + u"/x"_qs);
    EXPECT_EQ(AddTrailingChar({}) + AddTrailingChar(u"C:\\a\\"_qs) + AddTrailingChar(u"a"_qs), u"/C:\\a\\a/"_qs);
    EXPECT_EQ(RemoveTrailingChar(u"/a//"_qs) + RemoveTrailingChar(u"C:\\"_qs), u"/a/C:"_qs);
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
