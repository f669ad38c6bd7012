#include "platform/widgets/Dialogs.h"

#include "TestFolder.h"
#include "platform/base/NativePath.h"
#include "platform/base/WholeFile.h"

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QTest>
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
} // namespace

TEST(Dialogs, BoxShowsItsTextsAsTheyStandAndAnswersToKeys) {
    for (const auto& [flags, enter, escape] : {std::array{64, 1, 1}, {36, 6, 7}, {292, 7, 7}, {65, 1, 2}})
        for (const auto& [key, answer] : {std::pair(Qt::Key_Return, enter), {Qt::Key_Escape, escape}}) {
            whenShown<QMessageBox>([&, key = key](QMessageBox& box) {
                EXPECT_EQ(box.textFormat(), Qt::PlainText);
                EXPECT_EQ(box.icon(), flags & 32 ? QMessageBox::Question : QMessageBox::Information);
                EXPECT_EQ(box.buttons()[0]->text(), flags & 4 ? u"はい(&Y)"_s : u"OK"_s);
                QTest::keyClick(&box, key);
            });
            EXPECT_EQ(Dialogs::MessageBox(nullptr, u"<b>x</b>"_s, u"題"_s, flags), answer) << flags;
        }
}

TEST(Dialogs, FileDialogsOfferTheFiltersAndGiveThePath) {
    const TestFolder folder;
    const QString existing = folder.Write({}, u"結果.vrf"_s);
    const QString filter = u"結果(*.vrf)|*.vrf;*.VRF|すべてのファイル(*.*)|*.*"_s;
    whenShown<QFileDialog>([](QFileDialog& dialog) {
        EXPECT_EQ(dialog.nameFilters(), (QStringList{u"結果 (*.vrf *.VRF)"_s, u"すべてのファイル (*)"_s}));
        EXPECT_EQ(dialog.windowTitle(), u"開く"_s);
        QTest::keyClick(dialog.findChild<QWidget*>(u"fileSwitch"_s), Qt::Key_Space);
        static_cast<QDialog&>(dialog).accept();
    });
    Dialogs::FileSwitch choice{u"選択"_s, false};
    EXPECT_EQ(Dialogs::OpenFileName(nullptr, u"開く"_s, existing, filter, &choice), existing);
    EXPECT_TRUE(choice.On);
    const QString other = folder.Path({}) + NativePath::Text("/\xe9\n.vrf");
    ASSERT_FALSE(WholeFile::Write(other, {}));
    whenShown<QFileDialog>([](QFileDialog& dialog) {
        EXPECT_EQ(dialog.selectedNameFilter(), dialog.nameFilters().at(1));
        auto* list = dialog.findChild<QListWidget*>(u"otherNames"_s);
        ASSERT_TRUE(list && list->count() == 1 && list->isVisible());
        list->setCurrentRow(0);
        QTest::keyClick(list, Qt::Key_Return);
    });
    EXPECT_EQ(Dialogs::OpenFileName(nullptr, u"開く"_s, folder.Write({}, u"値.csv"_s), filter), other);
    const auto saveAs = [&](const QString& name, qsizetype filterIndex) {
        whenShown<QFileDialog>([=](QFileDialog& dialog) {
            dialog.selectNameFilter(dialog.nameFilters().at(filterIndex));
            emit dialog.filterSelected(dialog.selectedNameFilter());
            dialog.findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(name);
            QTest::keyClick(&dialog, name.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
        });
        return Dialogs::SaveFileName(nullptr, u"保存"_s, folder.Path({}), filter);
    };
    EXPECT_EQ(saveAs(u"a"_s, 0), folder.Path(u"a.vrf"_s));
    EXPECT_EQ(saveAs(u"b"_s, 1), folder.Path(u"b"_s));
    EXPECT_EQ(saveAs({}, 0), std::nullopt);
}

TEST(Dialogs, AFontKeepsWhatIsNotChosenAnew) {
    const Dialogs::FontChoice missing{u"ＭＳ Ｐ明朝"_s, 10.5, true, false, true, false, 0xff00};
    Dialogs::FontChoice expected = missing;
    for (const bool change : {false, true}) {
        whenShown<QDialog>([change](QDialog& dialog) {
            if (change) {
                dialog.findChild<QComboBox*>(u"cmbFamily"_s)->setCurrentText(u"Liberation Sans"_s);
                dialog.findChild<QComboBox*>(u"cmbSize"_s)->setEditText(u"x"_s);
                QTest::mouseClick(dialog.findChild<QWidget*>(u"chkEffect_0"_s), Qt::LeftButton, {}, {8, 8});
            }
            EXPECT_EQ(dialog.findChild<QWidget*>(u"lblSample"_s)->font().bold(), !change);
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
        if (change) {
            expected.Family = u"Liberation Sans"_s;
            expected.Bold = false;
        }
        EXPECT_EQ(Dialogs::ChooseFont(nullptr, u"題"_s, missing), expected);
    }
}

TEST(Dialogs, ColorDialogStartsFromTheColorAndGivesTheChosenOne) {
    whenShown<QColorDialog>([](QColorDialog& dialog) {
        EXPECT_EQ(dialog.currentColor(), QColor(0x12, 0x34, 0x56));
        dialog.setCurrentColor(QColor(1, 2, 3));
        static_cast<QDialog&>(dialog).accept();
    });
    EXPECT_EQ(Dialogs::ChooseColor(nullptr, u"色"_s, 0x563412), 0x030201u);
}
