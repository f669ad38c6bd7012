#include "platform/widgets/CommandBars.h"

#include <QApplication>
#include <QComboBox>
#include <QMainWindow>
#include <QMenu>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTest>
#include <QToolBar>
#include <QWheelEvent>
#include <gtest/gtest.h>

namespace {

using BandKind = CommandBars::BandKind;
using Kind = ToolRecord::Kind;

struct CommandBarsTest : testing::Test {
    CommandBarsTest() {
        bars.AddTool({u"file"_s, 0, u"ファイル(&F)"_s, {}, {}, {}, Kind::Popup, u"pbFile"_s});
        bars.AddTool({u"open"_s, 0, u"開く(&O)..."_s, {}, {}, Qt::CTRL | Qt::Key_O, Kind::Button, {}});
        bars.AddTool({u"mesh"_s, 0, u"メッシュ(&H)"_s, {}, {}, {}, Kind::Button, {}});
        bars.AddTool({u"quit"_s, 0, u"終了(&X)"_s, {}, {}, {}, Kind::Button, {}});
        bars.AddTool({u"step"_s, 0, u"ステップ(&S)"_s, {}, {}, {}, Kind::Combo, {}});
        bars.AddBand(u"pbFile"_s, BandKind::Popup, {}, {{u"open"_s}, {u"step"_s, true}, {u"quit"_s, true}});
        bars.AddBand(u"pbPopup"_s, BandKind::Popup, {}, {{u"open"_s, false, u"他を開く(&P)"_s}, {u"mesh"_s}});
        bars.AddBand(u"menu"_s, BandKind::MenuBar, {}, {{u"file"_s}, {u"nothing"_s}});
        bars.AddBand(u"tbA"_s, BandKind::ToolBar, {}, {{u"open"_s}, {u"mesh"_s}, {u"step"_s, true}});
        bars.AddBand(u"tbB"_s, BandKind::ToolBar, {}, {{u"step"_s}});
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    QMenu& menu(const QString& name) { return *window.findChild<QMenu*>(name); }
    QComboBox& combo(const QString& band) { return *window.findChild<QComboBox*>(u"step@"_s + band); }
    /// With separators as "|".
    static QString shown(const QWidget& widget) {
        QStringList texts;
        for (const QAction* action : widget.actions())
            texts.append(action->isSeparator() ? u"|"_s : action->text());
        return texts.join(u' ');
    }

    QMainWindow window;
    CommandBars& bars = *new CommandBars(window);
};

TEST_F(CommandBarsTest, OneToolOnSeveralBarsIsOneCommand) {
    QSignalSpy clicks(&bars, &CommandBars::Clicked);
    QAction* onMenu = menu(u"pbFile"_s).actions().at(0);
    QAction* onPopup = menu(u"pbPopup"_s).actions().at(0);
    EXPECT_EQ(window.findChild<QToolBar*>(u"tbA"_s)->actions().at(0), onMenu);
    EXPECT_EQ(onMenu->toolTip(), u"開く (Ctrl+O)"_s);
    onMenu->trigger();
    onPopup->trigger();
    QTest::keyClick(&window, Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(clicks.size(), 3) << "the key once, though the tool stands on three bands";
    bars.SetCaption(u"open"_s, u"読む(&R)"_s);
    bars.SetDescription(u"open"_s, u"読みます。"_s);
    EXPECT_EQ(onMenu->text() + onPopup->text(), u"読む(&R)他を開く(&P)"_s);
    EXPECT_EQ(onMenu->statusTip() + onPopup->statusTip(), u"読みます。読みます。"_s);
    bars.SetEnabled(u"open"_s, false);
    EXPECT_FALSE(onMenu->isEnabled() || onPopup->isEnabled() || bars.Enabled(u"open"_s));

    QAction* mesh = menu(u"pbPopup"_s).actions().at(1);
    bars.SetChecked(u"mesh"_s, true);
    mesh->trigger();
    EXPECT_TRUE(mesh->isChecked() && bars.Checked(u"mesh"_s)) << "a mark follows the state, not the click";
}

TEST_F(CommandBarsTest, CombosOfTwoBarsAndTheMenuAreOneList) {
    QSignalSpy chosen(&bars, &CommandBars::ComboSelected);
    bars.AddLine(u"step"_s, u"一"_s);
    EXPECT_EQ(combo(u"tbA"_s).currentIndex(), -1) << "the first line doesn't choose itself";
    bars.SetList(u"step"_s, {u"一"_s, u"二 & 三"_s, u"四"_s});
    EXPECT_EQ(chosen.size(), 0) << "filling tells nothing";
    QTest::keyClick(&combo(u"tbB"_s), Qt::Key_Down);
    EXPECT_EQ(combo(u"tbA"_s).currentText(), u"一"_s);
    bars.SetListIndex(u"step"_s, 2);
    for (const int refused : {2, 3, -2})
        bars.SetListIndex(u"step"_s, refused);
    EXPECT_EQ(chosen.size(), 2) << "a change is told once";
    EXPECT_EQ(combo(u"tbA"_s).currentIndex() + combo(u"tbB"_s).currentIndex(), 4);
    QMenu& lines = *menu(u"pbFile"_s).actions().at(2)->menu();
    emit lines.aboutToShow();
    EXPECT_EQ(shown(lines), u"一 二 && 三 四"_s);
    EXPECT_TRUE(lines.actions().at(2)->isChecked());
    lines.actions().at(1)->trigger();
    EXPECT_EQ(bars.ListIndex(u"step"_s), 1);
    bars.SetEnabled(u"step"_s, false);
    bars.SetVisible(u"step"_s, false);
    QApplication::processEvents();
    EXPECT_FALSE(combo(u"tbA"_s).isEnabled() || combo(u"tbB"_s).isVisible());
}

TEST_F(CommandBarsTest, ToolsComeMoveAndGo) {
    bars.AddToBand(u"pbFile"_s, {u"recent-0"_s, 9, u"&1"_s, {}, {}, {}, Kind::Button, {}}, true);
    bars.MoveToEnd(u"pbFile"_s, u"quit"_s, true);
    EXPECT_EQ(shown(menu(u"pbFile"_s)), u"開く(&O)... | ステップ(&S) | &1 | 終了(&X)"_s);
    bars.MoveToEnd(u"tbA"_s, u"step"_s, false);
    QApplication::processEvents();
    EXPECT_TRUE(combo(u"tbA"_s).isVisible());
    bars.RemoveFromBand(u"tbA"_s, u"open"_s);
    EXPECT_TRUE(bars.HasTool(u"open"_s)) << "it stands elsewhere";
    // The list is made anew by the click on one of its own entries.
    QObject::connect(&bars, &CommandBars::Clicked, &bars, [this](const QString& tool) {
        bars.RemoveFromBand(u"pbFile"_s, u"recent-0"_s);
        EXPECT_EQ(tool, u"recent-0"_s);
    });
    menu(u"pbFile"_s).actions().at(4)->trigger();
    EXPECT_FALSE(bars.HasTool(u"recent-0"_s));
    EXPECT_EQ(shown(menu(u"pbFile"_s)), u"開く(&O)... | ステップ(&S) | 終了(&X)"_s);
}

TEST_F(CommandBarsTest, MenusShowDisabledHintsAndListsRefuseTheWheel) {
    QMenu& file = menu(u"pbFile"_s);
    const QStatusBar& told = *window.statusBar();
    bars.SetDescription(u"open"_s, u"開きます。"_s);
    bars.SetEnabled(u"open"_s, false);
    file.popup({});
    QTest::mouseMove(&file, file.actionGeometry(file.actions().at(0)).center());
    QApplication::processEvents();
    EXPECT_EQ(told.currentMessage(), u"開きます。"_s);
    file.hide();
    QApplication::processEvents();
    EXPECT_EQ(told.currentMessage(), QString());

    bars.SetList(u"step"_s, {u"一"_s, u"二"_s});
    QWheelEvent wheel({5, 5}, {5, 5}, {}, {0, -120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&combo(u"tbA"_s), &wheel);
    EXPECT_EQ(bars.ListIndex(u"step"_s), -1);
}

} // namespace
