#include "platform/CommandBars.h"

#include <QApplication>
#include <QComboBox>
#include <QMainWindow>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QToolBar>
#include <gtest/gtest.h>

namespace {

using BandKind = CommandBars::BandKind;
using Kind = ToolRecord::Kind;

class CommandBarsTest : public testing::Test {
protected:
    CommandBarsTest() {
        add(u"file"_qs, u"ファイル(&F)"_qs, Kind::Popup, {}, u"pbFile"_qs);
        add(u"open"_qs, u"開く(&O)..."_qs, Kind::Button, u"Ctrl+O"_qs);
        add(u"mesh"_qs, u"メッシュ(&H)"_qs, Kind::Button);
        add(u"quit"_qs, u"終了(&X)"_qs, Kind::Button);
        add(u"step"_qs, u"ステップ(&S)"_qs, Kind::Combo);
        bars.AddBand(u"pbFile"_qs, BandKind::Popup, {}, {{u"open"_qs}, {u"step"_qs, true}, {u"quit"_qs, true}});
        bars.AddBand(u"pbPopup"_qs, BandKind::Popup, {}, {{u"open"_qs, false, u"他を開く(&P)"_qs}, {u"mesh"_qs}});
        bars.AddBand(u"menu"_qs, BandKind::MenuBar, {}, {{u"file"_qs}, {u"nothing"_qs}});
        bars.AddBand(u"tbA"_qs, BandKind::ToolBar, {}, {{u"open"_qs}, {u"mesh"_qs}, {u"step"_qs, true}});
        bars.AddBand(u"tbB"_qs, BandKind::ToolBar, {}, {{u"step"_qs}});
        window.resize(800, 200);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    void add(const QString& name, const QString& caption, Kind kind, const QString& key = {},
             const QString& popup = {}) {
        bars.AddTool({name, 0, caption, {}, {}, QKeySequence(key), kind, popup});
    }
    QMenu& menu(const QString& name) { return *window.findChild<QMenu*>(name); }
    QToolBar& toolBar(const QString& name) { return *window.findChild<QToolBar*>(name); }
    QComboBox& combo(const QString& band) { return *window.findChild<QComboBox*>(u"step@"_qs + band); }
    /// What a band shows, separators as "|".
    static QString shown(const QWidget& widget) {
        QStringList texts;
        for (const QAction* action : widget.actions())
            texts.append(action->isSeparator() ? u"|"_qs : action->text());
        return texts.join(u' ');
    }

    QMainWindow window;
    CommandBars& bars = *new CommandBars(window);
};

TEST_F(CommandBarsTest, OneToolOnSeveralBarsIsOneCommand) {
    QSignalSpy clicks(&bars, &CommandBars::Clicked);
    QAction* onMenu = menu(u"pbFile"_qs).actions().at(0);
    QAction* onPopup = menu(u"pbPopup"_qs).actions().at(0);
    EXPECT_EQ(toolBar(u"tbA"_qs).actions().at(0), onMenu);
    EXPECT_EQ(onMenu->toolTip(), u"開く (Ctrl+O)"_qs);
    onMenu->trigger();
    onPopup->trigger();
    QTest::keyClick(&window, Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(clicks.size(), 3) << "the key once, though the tool stands on three bands";
    bars.SetCaption(u"open"_qs, u"読む(&R)"_qs);
    bars.SetDescription(u"open"_qs, u"読みます。"_qs);
    EXPECT_EQ(onMenu->text() + onPopup->text(), u"読む(&R)他を開く(&P)"_qs);
    EXPECT_EQ(onMenu->statusTip() + onPopup->statusTip(), u"読みます。読みます。"_qs);
    bars.SetEnabled(u"open"_qs, false);
    EXPECT_FALSE(onMenu->isEnabled() || onPopup->isEnabled() || bars.Enabled(u"open"_qs));
}

TEST_F(CommandBarsTest, CheckMarksFollowTheStateNotTheClick) {
    QAction* onBar = toolBar(u"tbA"_qs).actions().at(1);
    bars.SetChecked(u"mesh"_qs, true);
    onBar->trigger();
    EXPECT_TRUE(onBar->isChecked() && bars.Checked(u"mesh"_qs)) << "nobody reacted";
    QObject::connect(&bars, &CommandBars::Clicked, &bars,
                     [this] { bars.SetChecked(u"mesh"_qs, !bars.Checked(u"mesh"_qs)); });
    onBar->trigger();
    EXPECT_FALSE(onBar->isChecked() || bars.Checked(u"mesh"_qs));
}

TEST_F(CommandBarsTest, CombosOfTwoBarsAndTheMenuAreOneList) {
    QSignalSpy chosen(&bars, &CommandBars::ComboSelected);
    bars.AddLine(u"step"_qs, u"一"_qs);
    EXPECT_EQ(combo(u"tbA"_qs).currentIndex(), -1) << "the first line doesn't choose itself";
    bars.SetList(u"step"_qs, {u"一"_qs, u"二 & 三"_qs, u"四"_qs});
    EXPECT_EQ(chosen.size(), 0) << "filling tells nothing";
    QTest::keyClick(&combo(u"tbB"_qs), Qt::Key_Down);
    EXPECT_EQ(combo(u"tbA"_qs).currentText(), u"一"_qs);
    bars.SetListIndex(u"step"_qs, 2);
    for (const int refused : {2, 3, -2})
        bars.SetListIndex(u"step"_qs, refused);
    EXPECT_EQ(chosen.size(), 2) << "a change is told once";
    EXPECT_EQ(combo(u"tbA"_qs).currentIndex() + combo(u"tbB"_qs).currentIndex(), 4);
    QMenu& lines = *menu(u"pbFile"_qs).actions().at(2)->menu();
    emit lines.aboutToShow();
    EXPECT_EQ(shown(lines), u"一 二 && 三 四"_qs);
    EXPECT_TRUE(lines.actions().at(2)->isChecked());
    lines.actions().at(1)->trigger();
    EXPECT_EQ(bars.ListIndex(u"step"_qs), 1);
    bars.SetEnabled(u"step"_qs, false);
    bars.SetVisible(u"step"_qs, false);
    QApplication::processEvents();
    EXPECT_FALSE(combo(u"tbA"_qs).isEnabled() || combo(u"tbB"_qs).isVisible());
}

TEST_F(CommandBarsTest, ToolsComeMoveAndGo) {
    bars.AddToBand(u"pbFile"_qs, {u"recent-0"_qs, 9, u"&1"_qs, {}, {}, {}, Kind::Button, {}}, true);
    bars.MoveToEnd(u"pbFile"_qs, u"quit"_qs, true);
    EXPECT_EQ(shown(menu(u"pbFile"_qs)), u"開く(&O)... | ステップ(&S) | &1 | 終了(&X)"_qs);
    EXPECT_EQ(window.findChildren<QAction*>(u"quit"_qs).size(), 1);
    bars.MoveToEnd(u"tbA"_qs, u"step"_qs, false);
    bars.MoveToEnd(u"tbA"_qs, u"open"_qs, true);
    EXPECT_EQ(bars.BandTools(u"tbA"_qs).join(u' '), u"mesh step open"_qs);
    QApplication::processEvents();
    EXPECT_TRUE(combo(u"tbA"_qs).isVisible());
    bars.RemoveFromBand(u"tbA"_qs, u"open"_qs);
    EXPECT_TRUE(bars.HasTool(u"open"_qs)) << "it stands elsewhere";
    // The list is made anew by the click on one of its own entries.
    QObject::connect(&bars, &CommandBars::Clicked, &bars, [this](const QString& tool) {
        bars.RemoveFromBand(u"pbFile"_qs, u"recent-0"_qs);
        EXPECT_EQ(tool, u"recent-0"_qs);
    });
    menu(u"pbFile"_qs).actions().at(4)->trigger();
    EXPECT_FALSE(bars.HasTool(u"recent-0"_qs));
    EXPECT_EQ(shown(menu(u"pbFile"_qs)), u"開く(&O)... | ステップ(&S) | 終了(&X)"_qs);
}

} // namespace
