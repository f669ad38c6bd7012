#include "platform/Dialogs.h"

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QFile>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>
#include <gtest/gtest.h>

namespace {
/// Does `act` to the dialog that the next call shows, once it is up.
template<class Dialog>
void whenShown(const std::function<void(Dialog&)>& act) {
    QTimer::singleShot(0, qApp, [act] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        act(*dialog);
    });
}

void press(QWidget& widget, Qt::Key key) {
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier), up(QEvent::KeyRelease, key, Qt::NoModifier);
    QApplication::sendEvent(&widget, &down);
    QApplication::sendEvent(&widget, &up);
}

int answerTo(int flags, Qt::Key key) {
    whenShown<QMessageBox>([key](QMessageBox& box) { press(box, key); });
    return Dialogs::MessageBox(nullptr, u"text"_qs, u"title"_qs, flags);
}
} // namespace

TEST(Dialogs, EnterTakesTheDefaultAndEscapeTheWayOut) {
    EXPECT_EQ(answerTo(16, Qt::Key_Return), 1);
    EXPECT_EQ(answerTo(64, Qt::Key_Escape), 1);
    EXPECT_EQ(answerTo(36, Qt::Key_Return), 6);
    EXPECT_EQ(answerTo(36, Qt::Key_Escape), 7);
    EXPECT_EQ(answerTo(292, Qt::Key_Return), 7);
    EXPECT_EQ(answerTo(65, Qt::Key_Return), 1);
    EXPECT_EQ(answerTo(65, Qt::Key_Escape), 2);
}

TEST(Dialogs, BoxShowsItsTextsAsTheyStand) {
    whenShown<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.objectName(), u"messageBox"_qs);
        EXPECT_EQ(box.windowTitle(), u"題"_qs);
        EXPECT_EQ(box.text(), u"<b>x</b>"_qs);
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.icon(), QMessageBox::Question);
        QStringList captions;
        for (QAbstractButton* button : box.buttons()) {
            captions += button->text();
            if (button->text() == u"はい(&Y)")
                QTimer::singleShot(0, button, &QAbstractButton::click);
        }
        EXPECT_EQ(captions, (QStringList{u"はい(&Y)"_qs, u"いいえ(&N)"_qs}));
    });
    EXPECT_EQ(Dialogs::MessageBox(nullptr, u"<b>x</b>"_qs, u"題"_qs, 292), 6);
}

TEST(Dialogs, FileDialogsOfferTheFiltersAndGiveThePath) {
    const QTemporaryDir folder;
    const QString existing = folder.filePath(u"結果.vrf"_qs);
    QFile file(existing);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QString filter = u"結果(*.vrf)|*.vrf;*.VRF|すべてのファイル(*.*)|*.*"_qs;
    whenShown<QFileDialog>([](QFileDialog& dialog) {
        EXPECT_EQ(dialog.nameFilters(), (QStringList{u"結果 (*.vrf *.VRF)"_qs, u"すべてのファイル (*)"_qs}));
        EXPECT_EQ(dialog.windowTitle(), u"開く"_qs);
        static_cast<QDialog&>(dialog).accept();
    });
    EXPECT_EQ(Dialogs::OpenFileName(nullptr, u"開く"_qs, existing, filter), existing);
    whenShown<QFileDialog>([](QFileDialog& dialog) { press(dialog, Qt::Key_Escape); });
    EXPECT_EQ(Dialogs::OpenFileName(nullptr, u"開く"_qs, folder.path(), filter), std::nullopt);

    const auto saveAs = [&](const QString& name, qsizetype filterIndex) {
        whenShown<QFileDialog>([=](QFileDialog& dialog) {
            dialog.selectNameFilter(dialog.nameFilters().at(filterIndex));
            emit dialog.filterSelected(dialog.selectedNameFilter());
            dialog.findChild<QLineEdit*>(u"fileNameEdit"_qs)->setText(name);
            static_cast<QDialog&>(dialog).accept();
        });
        return Dialogs::SaveFileName(nullptr, u"保存"_qs, folder.path(), filter);
    };
    EXPECT_EQ(saveAs(u"a"_qs, 0), folder.filePath(u"a.vrf"_qs));
    EXPECT_EQ(saveAs(u"b"_qs, 1), folder.filePath(u"b"_qs));
}

TEST(Dialogs, ColourDialogStartsFromTheColourAndGivesTheChosenOne) {
    whenShown<QColorDialog>([](QColorDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"色"_qs);
        EXPECT_EQ(dialog.currentColor(), QColor(0x12, 0x34, 0x56));
        dialog.setCurrentColor(QColor(1, 2, 3));
        static_cast<QDialog&>(dialog).accept();
    });
    EXPECT_EQ(Dialogs::ChooseColour(nullptr, u"色"_qs, 0x563412), 0x030201u);
    whenShown<QColorDialog>([](QColorDialog& dialog) { press(dialog, Qt::Key_Escape); });
    EXPECT_EQ(Dialogs::ChooseColour(nullptr, u"色"_qs, 0x563412), std::nullopt);
}

TEST(Dialogs, ScriptAnswersInOrderAndCountsTheUnexpected) {
    Dialogs::Testing::Start();
    Dialogs::Testing::QueueAnswer(6);
    Dialogs::Testing::QueueFile(u"/tmp/x"_qs);
    Dialogs::Testing::QueueFile(std::nullopt);
    EXPECT_EQ(Dialogs::MessageBox(nullptr, u"a"_qs, u"t"_qs, 292), 6);
    EXPECT_EQ(Dialogs::OpenFileName(nullptr, u"o"_qs, u"/start"_qs, {}), u"/tmp/x"_qs);
    EXPECT_EQ(Dialogs::SaveFileName(nullptr, u"s"_qs, {}, {}), std::nullopt);
    Dialogs::Testing::QueueColour(0xff8000);
    EXPECT_EQ(Dialogs::ChooseColour(nullptr, u"c"_qs, 0x0080ff), 0xff8000u);
    EXPECT_EQ(Dialogs::Testing::UnexpectedCount(), 0);

    EXPECT_EQ(Dialogs::MessageBox(nullptr, u"b"_qs, u"t"_qs, 36), 7);
    EXPECT_EQ(Dialogs::MessageBox(nullptr, u"c"_qs, u"t"_qs, 65), 2);
    EXPECT_EQ(Dialogs::MessageBox(nullptr, u"d"_qs, u"t"_qs, 16), 1);
    Dialogs::Testing::QueueAnswer(1);
    EXPECT_EQ(Dialogs::OpenFileName(nullptr, u"o"_qs, {}, {}), std::nullopt);
    EXPECT_EQ(Dialogs::Testing::UnexpectedCount(), 4);
    EXPECT_EQ(Dialogs::Testing::UnusedCount(), 1);

    const QList<Dialogs::Testing::Question> asked = Dialogs::Testing::Asked();
    ASSERT_EQ(asked.size(), 8);
    EXPECT_EQ(asked[0].Text, u"a"_qs);
    EXPECT_EQ(asked[0].Flags, 292);
    EXPECT_EQ(asked[1].Kind, Dialogs::Testing::Kind::OpenFile);
    EXPECT_EQ(asked[1].Text, u"/start"_qs);
    EXPECT_EQ(asked[1].Title, u"o"_qs);
    EXPECT_EQ(asked[3].Kind, Dialogs::Testing::Kind::Colour);
    EXPECT_EQ(asked[3].Text, u"#ff8000"_qs);
    Dialogs::Testing::Start();
    EXPECT_TRUE(Dialogs::Testing::Asked().isEmpty());
    EXPECT_EQ(Dialogs::Testing::UnexpectedCount() + Dialogs::Testing::UnusedCount(), 0);
    Dialogs::Testing::Stop();
}
