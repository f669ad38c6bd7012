#include "ConfigurationFolder.h"
#include "TestFolder.h"

#include "extensions/windows/ctlToolTable.h"
#include "extensions/windows/frmAddinManager.h"
#include "extensions/windows/frmOptionSetting.h"
#include "extensions/windows/toolPictures.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/frmSelDir.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>
#include <gtest/gtest.h>

namespace {

struct Answers {
    Answers() { Dialogs::Testing::Start(); }
    ~Answers() {
        EXPECT_EQ(Dialogs::Testing::UnexpectedCount(), 0);
        EXPECT_EQ(Dialogs::Testing::UnusedCount(), 0);
        Dialogs::Testing::Stop();
    }
};

template<class Control>
Control& find(const QWidget& form, const QString& name) {
    return *form.findChild<Control*>(name);
}

void click(const QWidget& form, const QString& name) {
    QTest::mouseClick(&find<QPushButton>(form, name), Qt::LeftButton);
}

} // namespace

TEST(AddinManager, InstallsAndRemovesWhatIsSelected) {
    const ConfigurationFolder configuration;
    const TestFolder folder;
    const Answers answers;
    QFile::copy(QStringLiteral(VELORIN_BINARY_DIR "/bin/wild.so"), folder.Path(u"a.so"_s));
    folder.Write(
        R"({"interface": 1, "name": "甲", "vendor": "V", "version": "2", "description": "d", "library": "a.so"})",
        u"a.addin.json"_s);
    folder.Write("{}", u"b.addin.json"_s);
    AddinHost host;
    frmAddinManager manager(nullptr, host, {folder.Path(u"."_s)});
    manager.show();
    auto& list = find<QTreeWidget>(manager, u"lvModule"_s);
    const auto row = [&](int index) {
        const QTreeWidgetItem* item = list.topLevelItem(index);
        return item ? item->text(0) + u'|' + item->text(1) : QString();
    };
    const auto select = [&](int index) {
        list.setCurrentItem(list.topLevelItem(index));
        return std::pair(find<QPushButton>(manager, u"cmdModule_0"_s).isEnabled(),
                         find<QPushButton>(manager, u"cmdModule_2"_s).isEnabled());
    };
    EXPECT_EQ(row(0), u"甲|未インストール"_s);
    EXPECT_EQ(row(1), u"b|インストール不可"_s);
    EXPECT_EQ(select(1), std::pair(false, false));
    EXPECT_EQ(select(0), std::pair(true, false));
    EXPECT_EQ(find<QLabel>(manager, u"lblInfo_0"_s).text() + find<QLabel>(manager, u"lblInfo_1"_s).text() +
                  find<QLabel>(manager, u"lblInfo_2"_s).text(),
              u"V2d"_s);
    for (const int answer : {MessageAnswer::No, MessageAnswer::Yes, MessageAnswer::Ok})
        Dialogs::Testing::QueueAnswer(answer);
    click(manager, u"cmdModule_0"_s);
    EXPECT_TRUE(host.ModuleList().empty());
    click(manager, u"cmdModule_0"_s);
    EXPECT_EQ(row(0), u"甲|インストール済み"_s);
    EXPECT_EQ(Dialogs::Testing::Asked().constLast().Text, u"正常にインストールされました。"_s);

    QFile library(folder.Path(u"a.so"_s));
    ASSERT_TRUE(library.open(QIODevice::Append) && library.write("x") == 1);
    library.close();
    click(manager, u"cmdModule_1"_s);
    EXPECT_EQ(row(0), u"甲|変更されています"_s);
    Dialogs::Testing::QueueAnswer(MessageAnswer::Yes);
    Dialogs::Testing::QueueAnswer(MessageAnswer::Ok);
    select(0);
    click(manager, u"cmdModule_0"_s);
    EXPECT_EQ(select(0), std::pair(false, true));
    Dialogs::Testing::QueueAnswer(MessageAnswer::Yes);
    Dialogs::Testing::QueueAnswer(MessageAnswer::Ok);
    click(manager, u"cmdModule_2"_s);
    EXPECT_EQ(Dialogs::Testing::Asked().constLast().Text, u"甲 は削除されました。"_s);
    EXPECT_EQ(row(0), u"甲|未インストール"_s);
}

TEST(ToolTable, IsEditedAsItsUserSeesIt) {
    const TestFolder folder;
    const QString program = folder.Write("", u"a b"_s);
    const Answers answers;
    ctlToolTable page;
    page.show();
    EXPECT_FALSE(find<QLineEdit>(page, u"txtTool_0"_s).isEnabled());
    click(page, u"cmdTool_0"_s);
    const auto type = [&](int field, const QString& text) {
        auto& box = find<QLineEdit>(page, u"txtTool_%1"_s.arg(field));
        box.selectAll();
        QTest::keyClicks(&box, text);
    };
    type(0, u"&one"_s);
    type(1, u"about"_s);
    Dialogs::Testing::QueueFile(program);
    click(page, u"cmdProgram"_s);
    type(3, u"-x %f"_s);
    type(4, u"3"_s);
    click(page, u"cmdTool_0"_s);
    auto& list = find<QListWidget>(page, u"lstTool"_s);
    EXPECT_EQ(list.item(0)->text() + u'/' + list.item(1)->text(), u"one/新しいツール (見つかりません)"_s);
    click(page, u"cmdTool_2"_s);
    ASSERT_EQ(page.Tools().size(), 2u);
    EXPECT_EQ(page.Tools()[1], (ToolEntry{u"&one"_s, u"about"_s, program, 3, u"-x %f"_s, false, false}));
    EXPECT_EQ(list.currentRow(), 0);
    EXPECT_FALSE(find<QPushButton>(page, u"cmdTool_2"_s).isEnabled());
    click(page, u"cmdTool_1"_s);
    EXPECT_EQ(page.Tools().size(), 1u);
    EXPECT_EQ(find<QLineEdit>(page, u"txtTool_0"_s).text(), u"&one"_s);
    click(page, u"cmdTool_1"_s);
    EXPECT_TRUE(page.Tools().empty());
    EXPECT_FALSE(find<QPushButton>(page, u"cmdTool_1"_s).isEnabled());
}

TEST(ToolPictures, ComeFromTheDesktopAndFromBesideTheProgram) {
    const TestFolder folder;
    const QByteArray before = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", folder.Path(u"data"_s).toUtf8());
    QDir().mkpath(folder.Path(u"data/applications"_s));
    QImage square(16, 16, QImage::Format_RGB32);
    ToolEntry tool;
    tool.Module = folder.Write("", u"tool"_s);
    const auto count = [&] {
        for (tool.Icon = 0; !toolPictures::PictureOf(tool).isNull(); ++tool.Icon) {
        }
        return tool.Icon;
    };
    EXPECT_EQ(count(), 0);
    square.save(folder.Path(u"tool.png"_s));
    EXPECT_EQ(count(), 1);
    const QByteArray entry = "[Other]\nIcon=/none\n[Desktop Entry]\nExec=\"" + tool.Module.toUtf8() +
                             "\" %F\nIcon=" + folder.Path(u"tool.png"_s).toUtf8() + "\n";
    folder.Write(entry, u"data/applications/my.tool.desktop"_s);
    EXPECT_EQ(count(), 2);
    tool.Icon = -1;
    EXPECT_TRUE(toolPictures::PictureOf(tool).isNull());
    tool.Icon = 0;
    tool.Missing = true;
    EXPECT_TRUE(toolPictures::PictureOf(tool).isNull());
    qputenv("XDG_DATA_HOME", before);
}

TEST(Options, ChangeNothingBeforeOk) {
    const Answers answers;
    ApplicationSettings settings;
    settings.Window.Help = u"/help/"_s;
    const TestFolder help;
    help.Write("", u"index.html"_s);
    std::vector<ToolEntry> tools{{u"a"_s, {}, u"/bin/true"_s, 0, {}, false, false}};
    const ApplicationSettings before = settings;
    const auto work = [&](const QString& end) {
        frmOptionSetting form(nullptr, settings, tools);
        form.show();
        EXPECT_EQ(find<QLineEdit>(form, u"txtHelpDir"_s).text(), u"/help"_s);
        EXPECT_EQ(find<QComboBox>(form, u"cmbRealFormat"_s).currentText(), u"0.000"_s);
        EXPECT_EQ(find<QComboBox>(form, u"cmbRealFormat"_s).lineEdit()->accessibleName(), u"実数フォーマット"_s);
        find<QCheckBox>(form, u"Check1_2"_s).toggle();
        QTimer::singleShot(0, [&] {
            auto& chooser = *qobject_cast<frmSelDir*>(QApplication::activeModalWidget());
            EXPECT_EQ(chooser.Path(), QString());
            chooser.SetPath(help.Path(u"."_s));
            click(chooser, u"Command1_0"_s);
        });
        click(form, u"cmdHelpDir"_s);
        find<QComboBox>(form, u"cmbRealFormat"_s).setEditText(u"0.0x"_s);
        find<QComboBox>(form, u"cmbLine"_s).setCurrentIndex(3);
        EXPECT_EQ(find<QLineEdit>(form, u"txtLineSize"_s).text(), u"0.5"_s);
        find<QComboBox>(form, u"cmbLineType"_s).setCurrentIndex(2);
        find<QLineEdit>(form, u"txtLineSize"_s).setText(u"1.26"_s);
        Dialogs::Testing::QueueColor(0x123456);
        click(form, u"cmdLineColor"_s);
        find<QComboBox>(form, u"cmbLine"_s).setCurrentIndex(0);
        find<QLineEdit>(form, u"txtLineSize"_s).setText(u"abc"_s);
        find<QComboBox>(form, u"cmbFont"_s).setCurrentIndex(1);
        find<QComboBox>(form, u"cmbFontFace"_s).setEditText(u"Nowhere"_s);
        QTest::keyClick(&find<QComboBox>(form, u"cmbFontFace"_s), Qt::Key_Return);
        EXPECT_TRUE(form.isVisible());
        find<QComboBox>(form, u"cmbFontSize"_s).setEditText(u"10.5"_s);
        find<QCheckBox>(form, u"chkFont_1"_s).toggle();
        click(form, u"cmdTool_1"_s);
        click(form, end);
        return form.Result;
    };
    EXPECT_FALSE(work(u"Command1_1"_s));
    EXPECT_TRUE(settings == before && tools.size() == 1);
    EXPECT_TRUE(work(u"Command1_0"_s));
    EXPECT_TRUE(tools.empty());
    ApplicationSettings expected = before;
    expected.Window.AutoInstall = !before.Window.AutoInstall;
    expected.Window.Help = help.Path(u"."_s).chopped(1);
    expected.Style.RealFormat = u"0.0x"_s;
    expected.Style.LineStyles[3] = {13, 2, 0x123456};
    expected.Style.LineStyles[0].Width = 1;
    expected.Style.FontStrings[1] = settings.Style.FontStrings[1];
    EXPECT_TRUE(settings == expected);
    ColorRef unused = 0;
    EXPECT_EQ(mdTips::ParseFontString(settings.Style.FontStrings[1], unused),
              (FontObject{u"Nowhere"_s, 10.5, false, true, false, false}));
}
