#include "ShownDialog.h"
#include "TestFolder.h"

#include "app/mdApplication.h"
#include "extensions/windows/frmKeyword.h"
#include "platform/base/NativePath.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/ListPanel.h"

#include <QDesktopServices>
#include <QPushButton>
#include <QUrl>

/// The desktop, which opens what it is given.
class Desktop : public QObject {
    Q_OBJECT

public:
    Desktop() { QDesktopServices::setUrlHandler(u"file"_s, this, "open"); }
    ~Desktop() override { QDesktopServices::unsetUrlHandler(u"file"_s); }

    QString Opened;

public slots:
    void open(const QUrl& url) { Opened = mdApplication::PathPart(NativePath::OfUrl(url), mdApplication::FileName); }
};

class KeywordTest : public testing::Test {
protected:
    KeywordTest() {
        Dialogs::Testing::Start();
        folder.Write("<title>Beta</title>net", u"b.html"_s);
        folder.Write("<title>alpha</title>a net", u"a.html"_s);
        folder.Write("<title>Gamma</title>", u"c.html"_s);
    }
    ~KeywordTest() override {
        EXPECT_EQ(Dialogs::Testing::UnexpectedCount() + Dialogs::Testing::UnusedCount(), 0);
        Dialogs::Testing::Stop();
    }
    /// What is said when Command1 is pressed; it opens no page then.
    QString said(const Shown<frmKeyword>& form) {
        desktop.Opened.clear();
        Dialogs::Testing::QueueAnswer(MessageAnswer::Ok);
        form.Click(u"Command1_0"_s);
        EXPECT_EQ(desktop.Opened, QString());
        return Dialogs::Testing::Asked().constLast().Text;
    }

    const TestFolder folder;
    const QString help = folder.Path({}) + u'/';
    const int keywords = frmKeyword::Keywords, search = frmKeyword::Search;
    Desktop desktop;
};

TEST_F(KeywordTest, TypingNarrowsTheTitlesAndMovingTypes) {
    Shown<frmKeyword> form(help, keywords);
    auto& list = form.Find<ListPanel>(u"lpList"_s);
    auto& word = form.Find<QLineEdit>(u"txtWord"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return list.ListCount() == 3; }));
    EXPECT_EQ(list.ListText(0) + list.ListText(2), u"alphaGamma"_s);
    EXPECT_EQ(said(form), u"ヘルプドキュメントが参照できません。"_s);
    QTest::keyClicks(&word, u"B"_s);
    EXPECT_EQ(list.ListIndex(), 1);
    EXPECT_EQ(word.text(), u"B"_s);
    QTest::keyClick(&word, Qt::Key_Down);
    EXPECT_EQ(word.text(), u"Gamma"_s);
    QTest::keyClick(&word, Qt::Key_Return);
    EXPECT_EQ(desktop.Opened, u"c.html"_s);
    EXPECT_TRUE(form.isVisible());
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, {5, 5});
    EXPECT_EQ(word.text(), u"alpha"_s);
    QFile::remove(folder.Path(u"a.html"_s));
    EXPECT_EQ(said(form), u"ヘルプドキュメントが参照できません。"_s);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, {5, list.RowHeight() + 5});
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, {5, list.RowHeight() + 5});
    EXPECT_EQ(desktop.Opened, u"b.html"_s);
    EXPECT_TRUE(form.isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !form.isVisible(); }));
}

TEST_F(KeywordTest, SearchFindsPagesByAWordInThem) {
    Shown<frmKeyword> form(help, search);
    auto& list = form.Find<ListPanel>(u"lpList"_s);
    auto& word = form.Find<QLineEdit>(u"txtWord"_s);
    auto& command = form.Find<QPushButton>(u"Command1_0"_s);
    EXPECT_EQ(said(form), u"検索する語句を入力してください。"_s);
    QTest::keyClicks(&word, u"nothing"_s);
    EXPECT_EQ(said(form), u"指定された語句を含むドキュメントは見つかりませんでした。"_s);
    EXPECT_EQ(word.selectedText(), u"nothing"_s);
    QTest::keyClick(&word, Qt::Key_Delete);
    EXPECT_FALSE(command.isEnabled());
    QTest::keyClicks(&word, u"NET"_s);
    QTest::keyClick(&word, Qt::Key_Return);
    EXPECT_EQ(list.ListCount(), 2);
    EXPECT_EQ(command.text(), u"検索"_s);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, {5, 5});
    EXPECT_EQ(command.text() + word.text(), u"表示NET"_s);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, {5, 5});
    EXPECT_EQ(desktop.Opened, u"a.html"_s);
    EXPECT_FALSE(QTest::qWaitFor([&] { return !form.isVisible(); }, 50));
    QTest::keyClicks(&word, u"x"_s);
    form.HelpDir += u"gone/"_s;
    EXPECT_EQ(said(form), u"ヘルプドキュメントが参照できません。"_s);

    Dialogs::Testing::QueueAnswer(MessageAnswer::Ok);
    const Shown<frmKeyword> empty(form.HelpDir, keywords);
    QCoreApplication::processEvents();
    EXPECT_EQ(Dialogs::Testing::Asked().constLast().Text, u"ヘルプドキュメントが参照できません。"_s);
    EXPECT_FALSE(empty.Find<QPushButton>(u"Command1_0"_s).isEnabled());
}

#include "keyword.moc"
