#include "platform/registry/RegistryText.h"

#include "ConfigurationFolder.h"
#include "FullDisk.h"
#include "OtherProgram.h"
#include "platform/base/Codepage.h"
#include "platform/registry/Registry.h"

#include <QBuffer>
#include <gtest/gtest.h>

using namespace Registry;

namespace {
QByteArray exported(qsizetype leftOut = 0) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    const auto result = RegistryText::Export(buffer);
    return result.Done && result.LeftOut == leftOut ? buffer.data() : QByteArray();
}

QByteArray utf16(const QString& text) {
    return TextBytes(QString(QChar(0xfeff) + text)).chopped(2);
}

const QString version = u"Windows Registry Editor Version 5.00\r\n"_s;
const QString keyLine = u"[HKEY_CURRENT_USER\\Software\\Ordvane]\r\n"_s;

Value valueOf(const QString& path, const QString& name) {
    return GetValue(OpenKey(HKEY_CURRENT_USER, path), name).value_or(Value{u"(none)"_s, 0, {}});
}

void expectImport(const QByteArray& file) {
    const auto result = RegistryText::Import(file);
    EXPECT_TRUE(result.Done) << result.Line << ' ' << result.Problem.toStdString();
}

const QString everyForm =
    version +
    u"\r\n[HKEY_CURRENT_USER]\r\n\r\n[HKEY_CURRENT_USER\\Soft]ware]\r\n"
    u"\"Naïve \\\\ \\\"q\\\"\"=\"C:\\\\日本語 \\\"x\\\"\"\r\n@=\"\"\r\n\"n\"=dword:0000002a\r\n"
    u"\"long name of a value\"=hex:00,01,02,03,04,05,06,07,08,09,0a,0b,0c,0d,0e,0f,\\\r\n"
    u"  10,11,12,13,14,15,16,17,18,19,1a,1b,1c,1d,1e,1f,20,21,22,23,24,25,26,27,28,\\\r\n  29,2a,2b\r\n"
    u"\"none\"=hex(0):\r\n\"expand\"=hex(2):25,00,78,00,25,00,00,00\r\n\"big\"=hex(5):00,00,00,01\r\n"
    u"\"multi\"=hex(7):61,00,00,00,62,00,00,00,00,00\r\n\"two lines\"=hex(1):61,00,0d,00,0a,00,62,00,00,00\r\n"
    u"\"no end\"=hex(1):61,00\r\n\"short\"=hex(4):01,00\r\n\"other\"=hex(abcdef01):ff\r\n"
    u"\r\n[HKEY_CURRENT_USER\\Soft]ware\\Inner]\r\n"_s;
} // namespace

TEST(RegistryText, WhatIsImportedIsExportedToTheByte) {
    const ConfigurationFolder folder;
    EXPECT_EQ(exported(), QByteArray()) << "nothing to export yet";
    expectImport(utf16(everyForm));
    EXPECT_EQ(BytesText(exported()).toStdString(), QString(QChar(0xfeff) + everyForm).toStdString());
    EXPECT_EQ(valueOf(u"soft]ware"_s, u"naïve \\ \"Q\""_s).Data, TextBytes(u"C:\\日本語 \"x\""));
    EXPECT_EQ(valueOf(u"soft]ware"_s, u"N"_s), (Value{u"n"_s, REG_DWORD, QByteArray("\x2a\0\0\0", 4)}));
}

TEST(RegistryText, EncodingsAndFreerForms) {
    const QString body = keyLine + u"\"ﾃ\"=\"ｱ日\"\r\n"_s;
    QByteArray bigEndian = utf16(version + body);
    for (qsizetype i = 0; i < bigEndian.size(); i += 2)
        std::swap(bigEndian[i], bigEndian[i + 1]);
    for (const QByteArray& file :
         {utf16(version + body), bigEndian, (version + body).toUtf8(),
          (QString(QChar(0xfeff)) + version + body).toUtf8(), Codepage::Encode(QString(u"REGEDIT4\r\n"_s + body))}) {
        const ConfigurationFolder folder;
        expectImport(file);
        EXPECT_EQ(valueOf(u"Software\\Ordvane"_s, u"ﾃ"_s).Data, TextBytes(u"ｱ日"));
    }
    const ConfigurationFolder folder;
    expectImport("REGEDIT4\n; remark\n\n  [hkey_current_user\\a\\\\b] ; remark\n \"x\" = DWORD: ff;r\n"
                 "@=hex(2):93,\\\n  fa , \\\n\t25,0\n\"y\"=\"two\nlines\"");
    EXPECT_EQ(valueOf(u"A\\B"_s, u"x"_s).Data, QByteArray("\xff\0\0\0", 4));
    EXPECT_EQ(valueOf(u"a\\b"_s, {}), (Value{{}, REG_EXPAND_SZ, TextBytes(u"日%")}));
    EXPECT_EQ(valueOf(u"a\\b"_s, u"y"_s).Data, TextBytes(u"two\nlines"));
}

TEST(RegistryText, TakesKeysAndValuesAwayAndLeavesOutBentNames) {
    const ConfigurationFolder folder;
    const QString start = version + u"\r\n[HKEY_CURRENT_USER]\r\n\r\n[HKEY_CURRENT_USER\\Software]\r\n\r\n"_s + keyLine;
    expectImport((version + keyLine +
                  u"\"a\"=\"1\"\n\"b\"=\"2\"\n\"c\"=\"3\"\n[HKEY_CURRENT_USER\\Gone\\Deep]\n@=\"3\"\n" + keyLine +
                  u"\"A\"=-\n\"none\"=-\n[-HKEY_CURRENT_USER\\Gone]\n[-HKEY_CURRENT_USER\\Never]")
                     .toUtf8());
    EXPECT_EQ(exported(), utf16(start + u"\"b\"=\"2\"\r\n\"c\"=\"3\"\r\n"_s));
    expectImport((version + u"[HKEY_CURRENT_USER\\bent\\in]"_s).toUtf8());
    ASSERT_TRUE(OtherProgram().Does("UPDATE vals SET name = 'b' || char(10) WHERE name = 'b';"
                                    "UPDATE keys SET name = 'Software\\Ordvane' WHERE name = 'bent'"));
    EXPECT_EQ(exported(2), utf16(start + u"\"c\"=\"3\"\r\n"_s));
}

TEST(RegistryText, BadTextTellsItsLineAndChangesNothing) {
    const ConfigurationFolder folder;
    expectImport(utf16(everyForm));
    const QByteArray before = exported();
    const auto expectProblem = [&](const QByteArray& file, int line) {
        const auto result = RegistryText::Import(file);
        EXPECT_TRUE(!result.Done && result.Line == line && !result.Problem.isEmpty())
            << result.Line << ' ' << file.toStdString();
        EXPECT_EQ(exported(), before) << file.toStdString();
    };
    const QByteArray start = (version + keyLine + u"\"new\"=\"x\"\n").toUtf8();
    for (const char* line : {"\"a\"", "\"a\"=dword:", "\"a\"=hex:100", "\"a\"=hex:1,\\ 2", "\"a\"=hex(123456789):1",
                             "\"a\"=\"C:\\temp\"", "\"a\"=\"1\n2\n3", "\"a\"=\"\\", "a=\"x\"", "[HKEY_CURRENT_USER\\x",
                             "[HKEY_CURRENT_USERS]", "[-HKEY_CURRENT_USER]", "[HKEY_CURRENT_USER\\\x01]"})
        expectProblem(start + line, 4);
    expectProblem(start + "\n\"a\"=dword:123456789", 5);
    expectProblem(start + "[-HKEY_CURRENT_USER\\Soft]ware]\n@=\"no key\"", 5);
    expectProblem(start + "\"a\"=hex:1,\\\n2,\\\ng", 6);
    expectProblem((version + u"\"a\"=\"no key\"").toUtf8(), 2);
    for (const QByteArray& file : {QByteArray(), QByteArray("REGEDIT5\n"), QByteArray("\xff\xfe"), QByteArray(64, 0)})
        expectProblem(file, 1);
    const FullDisk full(qsizetype(1) << 16); // which is not the text's fault
    expectProblem((version + keyLine + u"\"a\"=\"" + QString(1 << 20, u'x') + u"\"").toUtf8(), 0);
}
