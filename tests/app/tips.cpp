#include "TestFolder.h"
#include "app/mdTips.h"
#include "platform/base/Rounding.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace mdTips;

TEST(Tips, Colors) {
    EXPECT_EQ(FormatColor(0xffffff, u"0x"_s), u"0x00ffffff"_s);
    const std::pair<QString, ColorRef> cases[] = {
        {u"0XFF"_s, 255}, {u"0x00808080"_s, 0x808080}, {u"&HfF"_s, 255}, {u"-1"_s, 0xffffffff}, {u"2.5"_s, 2}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(ParseColor(text), expected) << text.toStdString();
    for (const QString& text : {u"0x"_s, u"0xgg"_s, u"12a"_s, u""_s, u"99999999999"_s, u"nan"_s, u"0x112233445"_s})
        EXPECT_EQ(ParseColor(text), 0u) << text.toStdString();
}

TEST(Tips, SplitFieldsAtSeparatorsAndQuotes) {
    const struct {
        QString text, fields; ///< fields with "|" between them
        QString commentChar = {};
    } cases[] = {{u"a, b  # c"_s, u"a|b"_s},           {u"\"a b\",c"_s, u"a b|c"_s},
                 {u",, 'x,y'　z\t\"\""_s, u"x,y|z"_s}, {u"ab'c d\"ef"_s, u"ab|c def"_s},
                 {u"a 'b c"_s, u"a|b c "_s},           {u"a b#c"_s, u"a"_s},
                 {u"a#1;b c"_s, {}, u";"_s},           {u"a#1 ;b c"_s, u"a#1"_s, u";!"_s}};
    for (const auto& c : cases) {
        QStringList fields;
        int count = -1;
        SplitFields(c.text, fields, count, c.commentChar);
        EXPECT_EQ(count, fields.size() - 1);
        EXPECT_EQ(fields.mid(1).join(u'|'), c.fields);
    }
}

TEST(Tips, FontStrings) {
    ColorRef color = 5;
    EXPECT_EQ(ParseFontString(u"\"ＭＳ Ｐゴシック\",12,b"_s, color), (FontObject{u"ＭＳ Ｐゴシック"_s, 12, true}));
    EXPECT_EQ(color, 5u);
    EXPECT_EQ(ParseFontString({}, color), (FontObject{u"ＭＳ ゴシック"_s, 9}));
    const FontObject font{u"Courier New"_s, 10.5, false, true, true, true};
    EXPECT_EQ(ParseFontString(u"Strike 8 ITALIC 0xFF 10.5 Underline Arial \"Courier New\""_s, color), font);
    const QString text = MakeFontString(font, color);
    EXPECT_EQ(text, u"\"Courier New\", 10.5,0x000000ff,I,U,S"_s);
    EXPECT_EQ(ParseFontString(text, color = 0), font);
    EXPECT_EQ(color, 255u);
}

TEST(Tips, ValReadsTheLongestNumberInFront) {
    const QString texts[] = {u"1 2.5e3x"_s, u" -3.5mm"_s, u"+4"_s, u".5"_s, u"1,5"_s, u"2e"_s};
    const double numbers[] = {12500, -3.5, 4, 0.5, 1, 2};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(Val(texts[i]), numbers[i]) << i;
    for (const QString& text : {u"abc"_s, u"inf"_s, u""_s, u"-"_s, u"1e999"_s, u"１"_s})
        EXPECT_EQ(Val(text), 0) << text.toStdString();
}

TEST(Tips, KeysAndValuesLineByLine) {
    EXPECT_EQ(StripComment(u"\t\ta \"b;\" ;c"_s, u';'), u"a \"b;\" "_s);
    const QString text = u" A b = \"c#=\" # d\r\n#\n\n{ x=\\\n  \n{1\\\r\n }\nlast = \\"_s;
    QStringView rest = text;
    KeyValue record;
    QString read;
    while (ReadKeyValueLine(rest, record))
        read += record.Key + u'|' + record.Value + (record.IsBlock ? u"|block\n" : u"\n");
    EXPECT_EQ(read, u"A b|c#=\n{ x|{1}|block\nlast|\n"_s);
    rest = u"\\\nk\"=v";
    ASSERT_TRUE(ReadKeyValueLine(rest, record, u"v;"_s));
    EXPECT_EQ(record.Key + u'|' + record.Value, u"k\"|v"_s);
}

TEST(Tips, TextsOfOtherProgramsAndMacros) {
    EXPECT_EQ(AnsiLength(u"aｱ漢"), 4);
    EXPECT_EQ(CutAtNull(QByteArrayView("\x8a\xbf\0x", 4)), u"漢"_s);
    EXPECT_EQ(CutAtNull(QStringView(u"ab\0c", 4)), u"ab"_s);
    EXPECT_EQ(CutAtNull(u"ab"), QString());
    const TestFolder folder;
    EXPECT_EQ(ReadTextFile(folder.Write(QByteArray::fromHex("8abf616263")), 3), u"漢a"_s);
    EXPECT_EQ(ReadTextFile(u"/no/such/file"_s), QString());
    const QString many = u"%b%"_s.repeated(1000);
    EXPECT_EQ(ExpandLabelMacros(u"%a%-%c%-%a%"_s, {{u"%a%"_s, u"1%b%"_s}, {u"%b%"_s, u"2%a%"_s}}),
              u"12%a%-%c%-12%a%"_s);
    // The second would make a million characters of it.
    EXPECT_EQ(ExpandLabelMacros(u"%a%"_s, {{u"%a%"_s, many}, {u"%b%"_s, many}, {u"b%"_s, {}}}), u"%"_s.repeated(1000));
}

TEST(Tips, Paths) {
    EXPECT_EQ(ResolveRelativePath(u"../c/./d"_s, u"/a/b"_s), u"/a/c/d"_s);
    EXPECT_EQ(ResolveRelativePath(u"../../../x"_s, u"/a"_s), u"/x"_s);
    EXPECT_EQ(ResolveRelativePath(u"..\\..\\x"_s, u"C:\\a\\"_s, u'\\'), u"C:\\x"_s);
    EXPECT_EQ(ResolveRelativePath(u"/x/../y"_s, u"/a"_s), u"/y"_s);
    EXPECT_EQ(ResolveRelativePath(u"x"_s, {}), QDir::currentPath() + u"/x"_s);
    EXPECT_EQ(AddTrailingChar({}) + AddTrailingChar(u"C:\\a\\"_s) + AddTrailingChar(u"a"_s), u"/C:\\a\\a/"_s);
    EXPECT_EQ(RemoveTrailingChar(u"/a//"_s) + RemoveTrailingChar(u"C:\\"_s), u"/a/C:"_s);
    EXPECT_EQ(ShortenPath(u"C:\\folder\\sub\\name.vrf"_s, 18), u"C:\\...\\sub\\name.vrf"_s);
    EXPECT_EQ(ShortenPath(u"/home/user/name.vrf"_s, 12), u"/ho.../name.vrf"_s);
    EXPECT_EQ(ShortenPath(u"/a/b"_s, 4), u"/a/b"_s);
    EXPECT_EQ(ShortenPath(u"/漢字/漢字.vrf"_s, 14), u"/漢字.../漢字.vrf"_s);
    EXPECT_EQ(ShortenPath(u"/a/averylongname.vrf"_s, 8), u"/a/averylongname.vrf"_s);
    EXPECT_EQ(NormalizePathCase(u"c:\\MY DATA\\pLATE.VRF"_s), u"C:\\My data\\Plate.vrf"_s);
}
