#include "ConfigurationFolder.h"
#include "TestFolder.h"

#include "extensions/toolTable.h"
#include "platform/base/Literals.h"
#include "platform/registry/Registry.h"

#include <QElapsedTimer>
#include <QFile>
#include <QThread>
#include <gtest/gtest.h>

TEST(Tools, ArgumentsAreSplitAsAShellSplitsQuotes) {
    const std::pair<QString, QStringList> lines[] = {
        {u""_s, {}},
        {u"  a  b\tc "_s, {u"a"_s, u"b"_s, u"c"_s}},
        {u"-o \"a b\" 'c \"d' \"\" ''"_s, {u"-o"_s, u"a b"_s, u"c \"d"_s, QString(), QString()}},
        {u"a\"b c\"d'e f'"_s, {u"ab cde f"_s}},
        {u"a\\ b \\\" \"x\\\"y\" \"x\\y\\\\\" 'x\\'"_s, {u"a b"_s, u"\""_s, u"x\"y"_s, u"x\\y\\"_s, u"x\\"_s}},
        {u"\"open end"_s, {u"open end"_s}},
        {u"back\\"_s, {u"back\\"_s}},
    };
    for (const auto& [text, arguments] : lines)
        EXPECT_EQ(toolTable::SplitArguments(text), arguments) << text.toStdString();
}

TEST(Tools, TableComesBackInItsOrderAndBadEntriesDoNoHarm) {
    const ConfigurationFolder configuration;
    EXPECT_TRUE(toolTable::LoadTools().empty());
    const std::vector<ToolEntry> tools{{u"三"_s, u"説明"_s, u"/bin/true"_s, 2, u"%f \"a b\""_s, true, false},
                                       {u"quoted"_s, {}, u"\"/bin/true\""_s, 0, {}, false, false},
                                       {u"gone"_s, {}, u"/none"_s, -1, {}, false, true},
                                       {u"folder"_s, {}, u"/tmp"_s, 0, {}, false, true}};
    ASSERT_TRUE(toolTable::SaveTools(tools));
    EXPECT_EQ(toolTable::LoadTools(), tools);
    ASSERT_TRUE(toolTable::SaveTools({tools[1]}));
    const auto key = Registry::CreateKey(Registry::HKEY_CURRENT_USER, u"Software\\Ordvane\\Velorin\\1.0\\Tools\\x"_s);
    Registry::SetValue(key, {u"NAME"_s, Registry::REG_SZ, Registry::TextBytes(u"x")});
    Registry::SetValue(key, {u"icon"_s, Registry::REG_BINARY, "abc"});
    Registry::CloseKey(key);
    EXPECT_EQ(toolTable::LoadTools(), (std::vector<ToolEntry>{tools[1], {u"x"_s, {}, {}, 0, {}, false, true}}));
}

TEST(Tools, StartWithEachMacroWithinItsOwnArgument) {
    const TestFolder folder;
    const QString program = folder.Write("#!/bin/sh\nfor a in \"$@\"; do printf '<%s>' \"$a\"; done > \"$0.part\"\n"
                                         "mv \"$0.part\" \"$0.seen\"\n",
                                         u"a tool.sh"_s);
    QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const LabelMacros macros = toolTable::BuildToolMacros(u"/d/e f/a'\"$(x) %a.vrf"_s, u"/opt/v"_s);
    ToolEntry tool;
    tool.Module = u'"' + program + u'"';
    tool.Args = u"--in=%f %p '%r' %t \"\" %x"_s;
    ASSERT_EQ(toolTable::RunTool(tool, macros), std::nullopt);
    QFile seen(program + u".seen"_s);
    QElapsedTimer patience;
    for (patience.start(); !seen.exists() && patience.elapsed() < 20000;)
        QThread::msleep(10);
    ASSERT_TRUE(seen.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(seen.readAll()),
              u"<--in=/d/e f/a'\"$(x) /opt/v/.vrf></d/e f/><Software\\Ordvane\\Velorin\\1.0>"
              u"<Software\\Ordvane\\Velorin\\1.0\\Tools><><%x>"_s);
    EXPECT_EQ(toolTable::BuildToolMacros(QString(), u"/a"_s)[1].second, QString());

    const QString refusal = u"このモジュールを実行することはできません。"_s;
    QFile::setPermissions(program, QFile::ReadOwner);
    EXPECT_TRUE(toolTable::RunTool(tool, macros).value_or(QString()).startsWith(refusal + u"\r\n"_s));
    tool.Missing = true;
    EXPECT_EQ(toolTable::RunTool(tool, macros), refusal);
}
