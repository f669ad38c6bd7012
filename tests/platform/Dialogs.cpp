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
    for (const auto& [flags, enter, escape] : {std::array{64, 1, 1}, {36, 6, 7}, {292, 7, 7}, {65, 1, 2}}) {
        EXPECT_EQ(answerTo(flags, Qt::Key_Return), enter) << flags;
        EXPECT_EQ(answerTo(flags, Qt::Key_Escape), escape) << flags;
    }
}

TEST(Dialogs, BoxShowsItsTextsAsTheyStand) {
    whenShown<QMessageBox>([](QMessageBox& box) {
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
    const auto saveAs = [&](const QString& name, qsizetype filterIndex) {
        whenShown<QFileDialog>([=](QFileDialog& dialog) {
            dialog.selectNameFilter(dialog.nameFilters().at(filterIndex));
            emit dialog.filterSelected(dialog.selectedNameFilter());
            dialog.findChild<QLineEdit*>(u"fileNameEdit"_qs)->setText(name);
            press(dialog, name.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
        });
        return Dialogs::SaveFileName(nullptr, u"保存"_qs, folder.path(), filter);
    };
    EXPECT_EQ(saveAs(u"a"_qs, 0), folder.filePath(u"a.vrf"_qs));
    EXPECT_EQ(saveAs(u"b"_qs, 1), folder.filePath(u"b"_qs));
    EXPECT_EQ(saveAs({}, 0), std::nullopt);
}

TEST(Dialogs, ColourDialogStartsFromTheColourAndGivesTheChosenOne) {
    whenShown<QColorDialog>([](QColorDialog& dialog) {
        EXPECT_EQ(dialog.currentColor(), QColor(0x12, 0x34, 0x56));
        dialog.setCurrentColor(QColor(1, 2, 3));
        static_cast<QDialog&>(dialog).accept();
    });
    EXPECT_EQ(Dialogs::ChooseColour(nullptr, u"色"_qs, 0x563412), 0x030201u);
}
