#include "../ConfigurationFolder.h"
#include "app/clsLogger.h"
#include "app/clsRegEdit.h"
#include "platform/Dialogs.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

using namespace Registry;

namespace {
constexpr std::uint32_t root = HKEY_CURRENT_USER;

/// What the wrapper makes of raw bytes; the type it reports goes to `type`.
QVariant read(std::uint32_t storedType, const QByteArray& data, int* type = nullptr) {
    clsRegEdit edit;
    EXPECT_TRUE(edit.OpenRegKey(root, u"Read"_qs));
    EXPECT_TRUE(SetValue(edit.hCurrentKey(), {u"v"_qs, storedType, data}));
    int reported = -1;
    QVariant value = u"left over"_qs;
    EXPECT_TRUE(edit.GetRegValue(u"V"_qs, reported, value));
    if (type)
        *type = reported;
    return value;
}
} // namespace

TEST(clsRegEdit, ValuesAreConvertedByTheirType) {
    const ConfigurationFolder folder;
    int type = 0;
    EXPECT_EQ(read(REG_SZ, TextBytes(QString(u"a"_qs + QChar(0) + u"日"_qs))), QVariant(u"a日"_qs));
    EXPECT_EQ(read(REG_SZ, QByteArray("a\0b", 3)), QVariant(u"a"_qs)) << "an odd byte is no character";
    EXPECT_EQ(read(REG_EXPAND_SZ, TextBytes(u"%x%"), &type), QVariant(u"%x%"_qs));
    EXPECT_EQ(type, 1);
    EXPECT_EQ(read(REG_BINARY, "\1\2"), QVariant(QByteArray("\1\2")));
    EXPECT_EQ(read(REG_BINARY, {}, &type), QVariant());
    EXPECT_EQ(type, 3);
    EXPECT_EQ(read(REG_DWORD, "\xfe\xff\xff\xff"), QVariant(-2));
    EXPECT_EQ(read(REG_DWORD, "\1\2\3"), QVariant());
    EXPECT_EQ(read(REG_DWORD_BIG_ENDIAN, "\1\2\3\4"), QVariant(0x02010403));
    EXPECT_EQ(read(REG_MULTI_SZ, TextBytes(QString::fromUtf16(u"a\0\0c\0", 5))),
              QVariant(QStringList({u"a"_qs, {}, u"c"_qs})));
    EXPECT_EQ(read(REG_NONE, "abcd"), QVariant());
    EXPECT_EQ(read(11, "12345678", &type), QVariant());
    EXPECT_EQ(type, 11);
}

TEST(clsRegEdit, WritesWhatFitsTheType) {
    const ConfigurationFolder folder;
    clsRegEdit edit;
    EXPECT_FALSE(edit.SetRegValue(u"v"_qs, REG_DWORD, 1)) << "no key is open";
    ASSERT_TRUE(edit.OpenRegKey(root, u"Write"_qs));
    const auto stored = [&](int type, const QVariant& value) {
        EXPECT_TRUE(edit.SetRegValue(u"v"_qs, type, value));
        return GetValue(edit.hCurrentKey(), u"v"_qs)->Data;
    };
    EXPECT_EQ(stored(REG_SZ, u"日é"_qs), TextBytes(u"日é"));
    EXPECT_EQ(stored(REG_DWORD, -1), "\xff\xff\xff\xff");
    EXPECT_EQ(stored(REG_DWORD, 0xfffffffeU), "\xfe\xff\xff\xff");
    EXPECT_EQ(stored(REG_BINARY, QByteArray("\0\1", 2)), QByteArray("\0\1", 2));
    EXPECT_EQ(stored(REG_NONE, u"anything"_qs), "");
    const std::pair<int, QVariant> refused[] = {{REG_DWORD, 1LL << 32},
                                                {REG_DWORD, u"one"_qs},
                                                {REG_BINARY, u"text"_qs},
                                                {REG_SZ, 5},
                                                {11, QByteArray(8, 'x')}};
    for (const auto& [type, value] : refused)
        EXPECT_FALSE(edit.SetRegValue(u"v"_qs, type, value)) << type;
    EXPECT_EQ(GetValue(edit.hCurrentKey(), u"v"_qs)->Type, REG_NONE);
}

TEST(clsRegEdit, OpensClosesAndDeletes) {
    const ConfigurationFolder folder;
    clsRegEdit edit;
    EXPECT_FALSE(edit.CheckRegKey(root, u"A\\B"_qs));
    EXPECT_TRUE(edit.OpenRegKey(root, u"A\\B"_qs));
    EXPECT_FALSE(edit.DeleteRegKey(root, u"A\\B"_qs)) << "a key is open";
    EXPECT_TRUE(edit.CheckRegKey(root, u"a\\b"_qs));
    EXPECT_FALSE(edit.DeleteRegKey(root, {}));
    EXPECT_TRUE(edit.DeleteRegKey(root, u"A\\B"_qs));

    ASSERT_TRUE(edit.OpenRegKey(root, u"A"_qs));
    ASSERT_TRUE(CloseKey(edit.hCurrentKey()));
    const RegEditError error = edit.CloseRegKey();
    EXPECT_EQ(error.Number, 600001);
    EXPECT_EQ(error.Description, u"ﾚｼﾞｽﾄﾘｷｰを閉じられません。"_qs);
}

TEST(clsRegEdit, EnumerationHasSmallBuffers) {
    const ConfigurationFolder folder;
    clsRegEdit edit;
    edit.OpenRegKey(root, u"E\\"_qs + QString(200, u'n'));
    edit.OpenRegKey(root, u"E\\"_qs + QString(201, u'n'));
    ASSERT_TRUE(edit.OpenRegKey(root, u"E"_qs));
    QString name;
    EXPECT_TRUE(edit.EnumRegSubKey(0, name));
    EXPECT_EQ(name.size(), 200);
    EXPECT_FALSE(edit.EnumRegSubKey(1, name));

    edit.SetRegValue(u"fits"_qs, REG_BINARY, QByteArray(2000, 'x'));
    edit.SetRegValue(u"too large"_qs, REG_BINARY, QByteArray(2001, 'x'));
    edit.SetRegValue(u"text"_qs, REG_SZ, QString(999, u'日')); // 1998 bytes and the NUL
    edit.SetRegValue(u"long text"_qs, REG_SZ, QString(1000, u'日'));
    edit.SetRegValue(QString(1999, u'n'), REG_DWORD, 1);
    edit.SetRegValue(QString(1000, u'日'), REG_DWORD, 1);
    const int sizes[] = {2000, 0, 1999, 0, 4, 0, 0};
    for (int i = 0; i < 7; ++i) {
        QVariant value = u"left over"_qs;
        int type = 0, size = 0;
        EXPECT_EQ(edit.EnumRegValue(i, name, type, value, size), sizes[i] > 0) << i;
        EXPECT_EQ(size, sizes[i]) << i;
    }
    int type = 0;
    QVariant value;
    EXPECT_TRUE(edit.GetRegValue(u"TOO large"_qs, type, value)) << "this one asks again for the size it is told";
    EXPECT_EQ(value.toByteArray().size(), 2001);
}

TEST(clsLogger, OverwritesTheLogAndSaysWhenThereIsNoFolder) {
    const ConfigurationFolder folder;
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", folder.Path().toUtf8());
    clsLogger().DumpMessage(u"old, and longer than the new one"_qs);
    clsLogger logger;
    logger.DumpMessage(u"一"_qs);
    logger.Finalize();
    logger.DumpMessage(u"two"_qs);
    QFile log(folder.Path() + u'/' + QCoreApplication::applicationName() + u".log"_qs);
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_EQ(log.readAll(), QByteArray("一\ntwo\n"));

    qputenv("TMPDIR", (folder.Path() + u"/none"_qs).toUtf8());
    Dialogs::Testing::Start();
    clsLogger().DumpMessage(u"lost"_qs);
    EXPECT_EQ(Dialogs::Testing::Asked().value(0).Text, u"ログファイルを開くことができません。"_qs);
    Dialogs::Testing::Stop();
    before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);
}
