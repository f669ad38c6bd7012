#include "ConfigurationFolder.h"
#include "app/clsRegEdit.h"

#include <gtest/gtest.h>

using namespace Registry;

TEST(RegEdit, ValuesAreConvertedByTheirType) {
    const ConfigurationFolder folder;
    clsRegEdit edit;
    EXPECT_FALSE(edit.SetRegValue(u"v"_s, REG_DWORD, 1)) << "no key is open";
    const struct {
        std::uint32_t Type;
        QByteArray Data;
        QVariant Value;
        bool IsWritten = false; ///< writing the value gives the data
    } cases[] = {{REG_SZ, TextBytes(u"日é"), u"日é"_s, true},
                 {REG_SZ, TextBytes(QString(u"a"_s + QChar(0) + u"日"_s)), u"a日"_s},
                 {REG_SZ, QByteArray("a\0b", 3), u"a"_s}, // an odd byte is no character
                 {REG_EXPAND_SZ, TextBytes(u"%x%"), u"%x%"_s, true},
                 {REG_BINARY, "\1\2", QByteArray("\1\2"), true},
                 {REG_BINARY, {}, {}},
                 {REG_DWORD, "\xfe\xff\xff\xff", -2, true},
                 {REG_DWORD, "\1\2\3", {}},
                 {REG_DWORD_BIG_ENDIAN, "\1\2\3\4", 0x02010403},
                 {REG_MULTI_SZ, TextBytes(QString::fromUtf16(u"a\0\0c\0", 5)), QStringList({u"a"_s, {}, u"c"_s})},
                 {REG_NONE, "abcd", {}},
                 {REG_NONE, {}, {}, true},
                 {11, "12345678", {}}};
    EXPECT_TRUE(edit.OpenRegKey(HKEY_CURRENT_USER, u"Key"_s));
    for (const auto& c : cases) {
        EXPECT_TRUE(SetValue(edit.hCurrentKey(), {u"v"_s, c.Type, c.Data}));
        int type = -1;
        QVariant value = u"left over"_s;
        EXPECT_TRUE(edit.GetRegValue(u"V"_s, type, value));
        EXPECT_EQ(value, c.Value) << c.Type;
        EXPECT_EQ(type, c.Type == REG_EXPAND_SZ ? REG_SZ : c.Type);
        EXPECT_TRUE(!c.IsWritten || edit.SetRegValue(u"written"_s, int(c.Type), c.Value));
        EXPECT_TRUE(!c.IsWritten || GetValue(edit.hCurrentKey(), u"written"_s)->Data == c.Data) << c.Type;
    }
    EXPECT_TRUE(edit.SetRegValue(u"v"_s, REG_DWORD, 0xfffffffeU));
    for (const auto& [type, value] : {std::pair<int, QVariant>{REG_DWORD, 1LL << 32},
                                      {REG_DWORD, u"one"_s},
                                      {REG_BINARY, u"text"_s},
                                      {REG_SZ, 5},
                                      {11, QByteArray(8, 'x')}})
        EXPECT_FALSE(edit.SetRegValue(u"v"_s, type, value)) << type;
    EXPECT_EQ(GetValue(edit.hCurrentKey(), u"v"_s)->Data, "\xfe\xff\xff\xff");
}

TEST(RegEdit, OpensClosesAndDeletes) {
    const ConfigurationFolder folder;
    clsRegEdit edit;
    EXPECT_FALSE(edit.CheckRegKey(HKEY_CURRENT_USER, u"A\\B"_s));
    EXPECT_TRUE(edit.OpenRegKey(HKEY_CURRENT_USER, u"A\\B"_s));
    EXPECT_FALSE(edit.DeleteRegKey(HKEY_CURRENT_USER, u"A\\B"_s)) << "a key is open";
    EXPECT_TRUE(edit.CheckRegKey(HKEY_CURRENT_USER, u"a\\b"_s));
    EXPECT_FALSE(edit.DeleteRegKey(HKEY_CURRENT_USER, {}));
    EXPECT_TRUE(edit.DeleteRegKey(HKEY_CURRENT_USER, u"A\\B"_s));
    ASSERT_TRUE(edit.OpenRegKey(HKEY_CURRENT_USER, u"A"_s) && CloseKey(edit.hCurrentKey()));
    const RegEditError error = edit.CloseRegKey();
    EXPECT_EQ(error.Number, 600001);
    EXPECT_EQ(error.Description, u"ﾚｼﾞｽﾄﾘｷｰを閉じられません。"_s);
}

TEST(RegEdit, EnumerationHasSmallBuffers) {
    const ConfigurationFolder folder;
    clsRegEdit edit;
    QString name;
    for (const int length : {200, 201})
        edit.OpenRegKey(HKEY_CURRENT_USER, u"E\\"_s + QString(length, u'n'));
    ASSERT_TRUE(edit.OpenRegKey(HKEY_CURRENT_USER, u"E"_s));
    EXPECT_TRUE(edit.EnumRegSubKey(0, name) && name.size() == 200);
    EXPECT_FALSE(edit.EnumRegSubKey(1, name));

    edit.SetRegValue(u"fits"_s, REG_BINARY, QByteArray(2000, 'x'));
    edit.SetRegValue(u"too large"_s, REG_BINARY, QByteArray(2001, 'x'));
    edit.SetRegValue(u"text"_s, REG_SZ, QString(999, u'日')); // 1998 bytes and the NUL
    edit.SetRegValue(u"long text"_s, REG_SZ, QString(1000, u'日'));
    edit.SetRegValue(QString(1999, u'n'), REG_DWORD, 1);
    edit.SetRegValue(QString(1000, u'日'), REG_DWORD, 1);
    QVariant value;
    int type = 0, size = 0;
    QList<int> sizes;
    for (int i = 0; i < 7; ++i)
        sizes += edit.EnumRegValue(i, name, type, value, size) ? size : -size;
    EXPECT_EQ(sizes, (QList<int>{2000, 0, 1999, 0, 4, 0, 0}));
    EXPECT_TRUE(edit.GetRegValue(u"TOO large"_s, type, value)) << "this one asks again for the size it is told";
    EXPECT_EQ(value.toByteArray().size(), 2001);
}
