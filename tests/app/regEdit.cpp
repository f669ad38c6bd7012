#include "ConfigurationFolder.h"
#include "TestFolder.h"
#include "app/clsRegEdit.h"

#include <gtest/gtest.h>

using namespace Registry;

namespace {
constexpr std::uint32_t root = HKEY_CURRENT_USER;
} // namespace

TEST(clsRegEdit, ValuesAreConvertedByTheirType) {
    const ConfigurationFolder folder;
    const struct {
        std::uint32_t type;
        QByteArray data;
        QVariant value;
    } cases[] = {{REG_SZ, TextBytes(QString(u"a"_s + QChar(0) + u"日"_s)), u"a日"_s},
                 {REG_SZ, QByteArray("a\0b", 3), u"a"_s}, // an odd byte is no character
                 {REG_EXPAND_SZ, TextBytes(u"%x%"), u"%x%"_s},
                 {REG_BINARY, "\1\2", QByteArray("\1\2")},
                 {REG_BINARY, {}, {}},
                 {REG_DWORD, "\xfe\xff\xff\xff", -2},
                 {REG_DWORD, "\1\2\3", {}},
                 {REG_DWORD_BIG_ENDIAN, "\1\2\3\4", 0x02010403},
                 {REG_MULTI_SZ, TextBytes(QString::fromUtf16(u"a\0\0c\0", 5)), QStringList({u"a"_s, {}, u"c"_s})},
                 {REG_NONE, "abcd", {}},
                 {11, "12345678", {}}};
    clsRegEdit edit;
    EXPECT_TRUE(edit.OpenRegKey(root, u"Read"_s));
    for (const auto& c : cases) {
        EXPECT_TRUE(SetValue(edit.hCurrentKey(), {u"v"_s, c.type, c.data}));
        int type = -1;
        QVariant value = u"left over"_s;
        EXPECT_TRUE(edit.GetRegValue(u"V"_s, type, value));
        EXPECT_EQ(value, c.value) << c.type;
        EXPECT_EQ(type, c.type == REG_EXPAND_SZ ? REG_SZ : c.type);
    }
}

TEST(clsRegEdit, WritesWhatFitsTheType) {
    const ConfigurationFolder folder;
    clsRegEdit edit;
    EXPECT_FALSE(edit.SetRegValue(u"v"_s, REG_DWORD, 1)) << "no key is open";
    ASSERT_TRUE(edit.OpenRegKey(root, u"Write"_s));
    const struct {
        int type;
        QVariant value;
        std::optional<QByteArray> stored = {}; ///< nothing is refused
    } cases[] = {{REG_SZ, u"日é"_s, TextBytes(u"日é")},
                 {REG_DWORD, -1, "\xff\xff\xff\xff"},
                 {REG_DWORD, 0xfffffffeU, "\xfe\xff\xff\xff"},
                 {REG_BINARY, QByteArray("\0\1", 2), QByteArray("\0\1", 2)},
                 {REG_NONE, u"anything"_s, ""},
                 {REG_DWORD, 1LL << 32},
                 {REG_DWORD, u"one"_s},
                 {REG_BINARY, u"text"_s},
                 {REG_SZ, 5},
                 {11, QByteArray(8, 'x')}};
    for (const auto& c : cases) {
        EXPECT_EQ(edit.SetRegValue(u"v"_s, c.type, c.value), c.stored.has_value()) << c.type;
        EXPECT_EQ(GetValue(edit.hCurrentKey(), u"v"_s)->Data, c.stored.value_or(QByteArray("")));
    }
}

TEST(clsRegEdit, OpensClosesAndDeletes) {
    const ConfigurationFolder folder;
    clsRegEdit edit;
    EXPECT_FALSE(edit.CheckRegKey(root, u"A\\B"_s));
    EXPECT_TRUE(edit.OpenRegKey(root, u"A\\B"_s));
    EXPECT_FALSE(edit.DeleteRegKey(root, u"A\\B"_s)) << "a key is open";
    EXPECT_TRUE(edit.CheckRegKey(root, u"a\\b"_s));
    EXPECT_FALSE(edit.DeleteRegKey(root, {}));
    EXPECT_TRUE(edit.DeleteRegKey(root, u"A\\B"_s));

    ASSERT_TRUE(edit.OpenRegKey(root, u"A"_s));
    ASSERT_TRUE(CloseKey(edit.hCurrentKey()));
    const RegEditError error = edit.CloseRegKey();
    EXPECT_EQ(error.Number, 600001);
    EXPECT_EQ(error.Description, u"ﾚｼﾞｽﾄﾘｷｰを閉じられません。"_s);
}

TEST(clsRegEdit, EnumerationHasSmallBuffers) {
    const ConfigurationFolder folder;
    clsRegEdit edit;
    edit.OpenRegKey(root, u"E\\"_s + QString(200, u'n'));
    edit.OpenRegKey(root, u"E\\"_s + QString(201, u'n'));
    ASSERT_TRUE(edit.OpenRegKey(root, u"E"_s));
    QString name;
    EXPECT_TRUE(edit.EnumRegSubKey(0, name));
    EXPECT_EQ(name.size(), 200);
    EXPECT_FALSE(edit.EnumRegSubKey(1, name));

    edit.SetRegValue(u"fits"_s, REG_BINARY, QByteArray(2000, 'x'));
    edit.SetRegValue(u"too large"_s, REG_BINARY, QByteArray(2001, 'x'));
    edit.SetRegValue(u"text"_s, REG_SZ, QString(999, u'日')); // 1998 bytes and the NUL
    edit.SetRegValue(u"long text"_s, REG_SZ, QString(1000, u'日'));
    edit.SetRegValue(QString(1999, u'n'), REG_DWORD, 1);
    edit.SetRegValue(QString(1000, u'日'), REG_DWORD, 1);
    const int sizes[] = {2000, 0, 1999, 0, 4, 0, 0};
    for (int i = 0; i < 7; ++i) {
        QVariant value = u"left over"_s;
        int type = 0, size = 0;
        EXPECT_EQ(edit.EnumRegValue(i, name, type, value, size), sizes[i] > 0) << i;
        EXPECT_EQ(size, sizes[i]) << i;
    }
    int type = 0;
    QVariant value;
    EXPECT_TRUE(edit.GetRegValue(u"TOO large"_s, type, value)) << "this one asks again for the size it is told";
    EXPECT_EQ(value.toByteArray().size(), 2001);
}
