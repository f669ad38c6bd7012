#include "ConfigurationFolder.h"
#include "app/clsRegEdit.h"

#include <gtest/gtest.h>

using namespace Registry;

namespace {
constexpr std::uint32_t root = HKEY_CURRENT_USER;

struct RegEdit : testing::Test {
    const ConfigurationFolder Folder;
    clsRegEdit Edit;
};
} // namespace

TEST_F(RegEdit, ValuesAreConvertedByTheirType) {
    EXPECT_FALSE(Edit.SetRegValue(u"v"_s, REG_DWORD, 1)) << "no key is open";
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
    EXPECT_TRUE(Edit.OpenRegKey(root, u"Key"_s));
    for (const auto& c : cases) {
        EXPECT_TRUE(SetValue(Edit.hCurrentKey(), {u"v"_s, c.Type, c.Data}));
        int type = -1;
        QVariant value = u"left over"_s;
        EXPECT_TRUE(Edit.GetRegValue(u"V"_s, type, value));
        EXPECT_EQ(value, c.Value) << c.Type;
        EXPECT_EQ(type, c.Type == REG_EXPAND_SZ ? REG_SZ : c.Type);
        EXPECT_TRUE(!c.IsWritten || Edit.SetRegValue(u"written"_s, int(c.Type), c.Value));
        EXPECT_TRUE(!c.IsWritten || GetValue(Edit.hCurrentKey(), u"written"_s)->Data == c.Data) << c.Type;
    }
    EXPECT_TRUE(Edit.SetRegValue(u"v"_s, REG_DWORD, 0xfffffffeU));
    for (const auto& [type, value] : {std::pair<int, QVariant>{REG_DWORD, 1LL << 32},
                                      {REG_DWORD, u"one"_s},
                                      {REG_BINARY, u"text"_s},
                                      {REG_SZ, 5},
                                      {11, QByteArray(8, 'x')}})
        EXPECT_FALSE(Edit.SetRegValue(u"v"_s, type, value)) << type;
    EXPECT_EQ(GetValue(Edit.hCurrentKey(), u"v"_s)->Data, "\xfe\xff\xff\xff");
}

TEST_F(RegEdit, OpensClosesAndDeletes) {
    EXPECT_FALSE(Edit.CheckRegKey(root, u"A\\B"_s));
    EXPECT_TRUE(Edit.OpenRegKey(root, u"A\\B"_s));
    EXPECT_FALSE(Edit.DeleteRegKey(root, u"A\\B"_s)) << "a key is open";
    EXPECT_TRUE(Edit.CheckRegKey(root, u"a\\b"_s));
    EXPECT_FALSE(Edit.DeleteRegKey(root, {}));
    EXPECT_TRUE(Edit.DeleteRegKey(root, u"A\\B"_s));
    ASSERT_TRUE(Edit.OpenRegKey(root, u"A"_s) && CloseKey(Edit.hCurrentKey()));
    const RegEditError error = Edit.CloseRegKey();
    EXPECT_EQ(error.Number, 600001);
    EXPECT_EQ(error.Description, u"ﾚｼﾞｽﾄﾘｷｰを閉じられません。"_s);
}

TEST_F(RegEdit, EnumerationHasSmallBuffers) {
    QString name;
    for (const int length : {200, 201})
        Edit.OpenRegKey(root, u"E\\"_s + QString(length, u'n'));
    ASSERT_TRUE(Edit.OpenRegKey(root, u"E"_s));
    EXPECT_TRUE(Edit.EnumRegSubKey(0, name) && name.size() == 200);
    EXPECT_FALSE(Edit.EnumRegSubKey(1, name));

    Edit.SetRegValue(u"fits"_s, REG_BINARY, QByteArray(2000, 'x'));
    Edit.SetRegValue(u"too large"_s, REG_BINARY, QByteArray(2001, 'x'));
    Edit.SetRegValue(u"text"_s, REG_SZ, QString(999, u'日')); // 1998 bytes and the NUL
    Edit.SetRegValue(u"long text"_s, REG_SZ, QString(1000, u'日'));
    Edit.SetRegValue(QString(1999, u'n'), REG_DWORD, 1);
    Edit.SetRegValue(QString(1000, u'日'), REG_DWORD, 1);
    QVariant value;
    int type = 0, size = 0;
    QList<int> sizes;
    for (int i = 0; i < 7; ++i)
        sizes += Edit.EnumRegValue(i, name, type, value, size) ? size : -size;
    EXPECT_EQ(sizes, (QList<int>{2000, 0, 1999, 0, 4, 0, 0}));
    EXPECT_TRUE(Edit.GetRegValue(u"TOO large"_s, type, value)) << "this one asks again for the size it is told";
    EXPECT_EQ(value.toByteArray().size(), 2001);
}
