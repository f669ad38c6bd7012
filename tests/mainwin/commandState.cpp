#include "mainwin/commandState.h"

#include "mainwin/commandTable.h"

#include <QMainWindow>
#include <gtest/gtest.h>

namespace {

struct CommandStateTest : testing::Test {
    CommandStateTest() {
        commandTable::Build(bars);
        model.StepCount = 3;
        model.CurrentStep = 2;
        model.CurrentItem = 1;
        model.Items = {{u"変位"_s}, {u"応力"_s}};
        settings.Vector.ItemSets = {{u"u"_s}, {u"v"_s}};
        settings.Vector.ItemSetCount = 2;
        settings.Vector.DefaultItemSet = 5;
        settings.Contour.ColorIndex = 1;
        settings.Displacement.Fiducial = 3;
        settings.Window.Mesh = false;
    }
    void update(bool open) { commandState::UpdateCommandState(bars, {.Model = model, .Settings = settings, .FileOpen = open, .Zoom = 1, .PickedCount = 1}); }
    void expectEnabled(const QString& names, bool enabled) {
        for (const QString& name : names.split(u' '))
            EXPECT_EQ(bars.Enabled(name), enabled) << name.toStdString();
    }
    /// The marked tools of a band, by their position.
    QString marks(const QString& band) {
        QString text;
        for (const QString& tool : bars.BandTools(band))
            text += bars.Checked(tool) ? u'x' : u'-';
        return text;
    }
    QString lists() {
        QStringList texts;
        for (const QString& combo : {u"miDrawStep"_s, u"miDrawVectorItem"_s, u"miDrawContourItem"_s})
            texts.append(u"%1/%2"_s.arg(bars.ListIndex(combo)).arg(bars.ListCount(combo)));
        return texts.join(u' ');
    }

    const QString always = u"miFile miFileOpen miFileQuit miViewToolBar miViewStatusBar miViewRefresh miHelp"_s;
    const QString ofFile = u"miFileSaveLayout miFileProperty miViewScale miViewMesh miViewZoomIn miViewZoomOut "
                           u"miViewZoomOff miDraw"_s;
    const QString ofDisplacement = u"miDrawDispScale miDrawDispLegend miDrawOrgMesh"_s;
    const QString ofContour = u"miDrawContourColor miDrawContourLegend miDrawContourValue"_s;
    QMainWindow window;
    CommandBars& bars = *new CommandBars(window);
    ResultModel model;
    ApplicationSettings settings;
};

TEST_F(CommandStateTest, FollowsFileModelAndSettings) {
    update(true);
    QSet<int> ids;
    for (const CommandRow& row : commandTable::Commands()) {
        const QString name = QString::fromUtf16(row.name);
        ids.insert(bars.ToolID(name));
        EXPECT_EQ(bars.Enabled(name), commandTable::IsBuilt(row) && row.needs < Needs::ShowOff) << name.toStdString();
    }
    EXPECT_EQ(ids.size(), qsizetype(commandTable::Commands().size())) << "every command stands once";
    EXPECT_EQ(lists(), u"2/3 1/2 1/2"_s);
    EXPECT_EQ(marks(u"pdDrawContourColor"_s), u"-x----"_s);
    EXPECT_EQ(marks(u"pbDrawDispScale"_s), u"---x"_s);
    EXPECT_FALSE(bars.Checked(u"miViewMesh"_s));
    EXPECT_TRUE(bars.Checked(u"miViewToolBar"_s) && bars.Checked(u"miDrawContourLegend"_s));
    commandState::CheckBandChoiceByName(bars, u"pbViewScale"_s, u"miViewScaleAutomatic"_s);
    EXPECT_EQ(marks(u"pbViewScale"_s), u"-x"_s);
    update(false);
    expectEnabled(ofFile, false);
    expectEnabled(always, true);
    EXPECT_EQ(lists(), u"-1/0 1/2 -1/0"_s) << "the list of vectors stays";
    EXPECT_EQ(marks(u"pdDrawContourColor"_s), u"-x----"_s);
}

TEST_F(CommandStateTest, WhatTheModelLacksCannotBeSet) {
    for (const bool noDisplacement : {true, false}) {
        model.NoDisplacement = noDisplacement;
        model.LineElementsOnly = !noDisplacement;
        update(true);
        expectEnabled(ofDisplacement, !noDisplacement);
        expectEnabled(ofContour, noDisplacement);
        expectEnabled(ofFile + u' ' + always + u" miDrawContourItem"_s, true);
    }
}

TEST_F(CommandStateTest, RecentFilesStandBeforeQuit) {
    std::vector<FamilyEntry> files(9);
    files[2].Caption = u"&3 - /solid/R&&D/2.vrf"_s;
    commandFamilies::Set(bars, u"recent-"_s, files);
    commandFamilies::Set(bars, u"recent-"_s, files);
    const QStringList tools = bars.BandTools(u"pbFile"_s);
    EXPECT_EQ(tools.last(), u"miFileQuit"_s);
    EXPECT_EQ(tools.filter(u"recent-"_s).size(), 9);
    EXPECT_EQ(bars.ToolID(u"recent-8"_s), 100008);
    EXPECT_EQ(bars.Caption(u"recent-2"_s), u"&3 - /solid/R&&D/2.vrf"_s);
    commandFamilies::Set(bars, u"recent-"_s, {});
    EXPECT_FALSE(bars.HasTool(u"recent-1"_s));
}

} // namespace
