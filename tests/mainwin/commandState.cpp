#include "mainwin/commandState.h"

#include "TestFolder.h"
#include "mainwin/commandTable.h"
#include "view/ViewState.h"

#include <QDirIterator>
#include <QMainWindow>
#include <QRegularExpression>
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
    /// What is built and disabled on some bands.
    QString disabled(const QString& names) {
        commandState::UpdateCommandState(bars, facts);
        QStringList found;
        for (const QString& band : names.split(u' ')) {
            commandState::EnableOnOpening(bars, band, facts);
            for (const QString& tool : bars.BandTools(band))
                if (!bars.Enabled(tool) && commandTable::IsBuilt(*commandTable::Find(tool)))
                    found.append(tool);
        }
        return found.join(u' ');
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

    QMainWindow window;
    CommandBars& bars = *new CommandBars(window);
    ResultModel model;
    ApplicationSettings settings;
    CommandFacts facts{.Model = model,
                       .Settings = settings,
                       .FileOpen = true,
                       .Zoom = 1,
                       .HasViewBefore = true,
                       .HasViewAfter = true,
                       .PickedCount = 1};
};

TEST_F(CommandStateTest, WhatIsEnabledFollowsTheFacts) {
    const QString all = u"mbGeneral pbFile pbView pbViewScale pbDraw pbTools pbHelp tbGeneral pbPopup"_s;
    EXPECT_EQ(disabled(all), QString());
    for (const auto& [zoom, refused] :
         {std::pair(ZoomMax, u"miViewZoomIn"_s), {ZoomMin, u"miViewZoomOut"_s}, {0, u"miViewZoomOff"_s}}) {
        facts.Zoom = zoom;
        EXPECT_EQ(disabled(all), QStringList({refused, refused, refused}).join(u' '));
    }
    facts.Zoom = 1;
    facts.ShowMoves = model.NoDisplacement = true;
    EXPECT_EQ(disabled(all),
              u"miViewFitDisplaced miDrawStep miDrawDispScale miDrawDispLegend miDrawOrgMesh miDrawStep"_s);
    facts.ShowMoves = model.NoDisplacement = false;
    model.LineElementsOnly = true;
    EXPECT_EQ(disabled(all), u"miDrawContourColor miDrawContourLegend miDrawContourValue miDrawContourValue"_s);
    facts.FileOpen = false;
    facts.PickedCount = 0;
    const QString zooms = u"miViewZoomIn miViewZoomOut miViewZoomOff"_s;
    EXPECT_EQ(disabled(u"mbGeneral pbFile pbView pbTools tbGeneral"_s),
              u"miDraw miFileSaveLayout miFilePreview miFilePrint miFilePicture miFilePictureCommand miFileProperty "
              u"miViewScale miViewMesh " +
                  zooms +
                  u" miViewReload miViewFit miViewFitDisplaced miViewBack miViewForward miViewFadeMesh "
                  u"miToolsDistribution miToolsHistory "
                  u"miToolsImageCopy miToolsSlideShow "
                  u"miFilePrint miFilePreview " +
                  zooms + u" miDrawContourValue miViewFit");
}

TEST_F(CommandStateTest, ListsAndMarksFollowModelAndSettings) {
    commandState::UpdateCommandState(bars, facts);
    EXPECT_EQ(lists(), u"2/3 1/2 1/2"_s);
    EXPECT_EQ(marks(u"pdDrawContourColor"_s) + marks(u"pbDrawDispScale"_s), u"-x-------x"_s);
    EXPECT_EQ(marks(u"pbView"_s), u"-----xx--------x-"_s);
    commandState::CheckBandChoiceByName(bars, u"pbViewScale"_s, u"miViewScaleAutomatic"_s);
    EXPECT_EQ(marks(u"pbViewScale"_s), u"-x"_s);
    facts.FileOpen = false;
    commandState::UpdateCommandState(bars, facts);
    EXPECT_EQ(lists(), u"-1/0 1/2 -1/0"_s) << "the list of vectors stays";
    EXPECT_EQ(marks(u"pdDrawContourColor"_s), u"-x----"_s);
}

TEST_F(CommandStateTest, FamiliesStandBehindTheCommandsOfTheirBand) {
    for (const FamilyRow& family : commandTable::Families()) {
        const QString prefix = QString::fromUtf16(family.prefix), band = QString::fromUtf16(family.band);
        const QStringList before = bars.BandTools(band);
        for (const int count : {3, 2}) {
            commandFamilies::Set(bars, prefix, std::vector<FamilyEntry>(std::size_t(count), {u"&1"_s, u"a"_s}));
            EXPECT_EQ(bars.BandTools(band).filter(prefix).size(), count);
        }
        const QString first = prefix + QString::number(family.firstNumber);
        EXPECT_EQ(bars.ToolID(first), family.firstId + family.firstNumber);
        EXPECT_EQ(bars.Enabled(first), family.act != nullptr) << "a family to come";
        EXPECT_EQ(bars.BandTools(band).last() == before.last(), family.last[0] != 0);
        commandFamilies::Set(bars, prefix, {});
        EXPECT_EQ(bars.BandTools(band), before);
        EXPECT_FALSE(bars.HasTool(first));
    }
}

TEST_F(CommandStateTest, EveryNameIsOneOfTheTable) {
    QSet<QString> known;
    QSet<int> ids;
    for (const CommandRow& row : commandTable::Commands()) {
        known.insert(QString::fromUtf16(row.name));
        ids.insert(row.id);
    }
    EXPECT_EQ(std::size_t(ids.size()), commandTable::Commands().size());
    EXPECT_EQ(known.size(), ids.size());
    for (const BandRow& band : commandTable::Bands())
        known.insert(QString::fromUtf16(band.name));
    // Wherever a text looks like the name of a command or a band.
    static const QRegularExpression pattern(u"u\"((?:mi|pb|pd|mb|tb)[A-Z]\\w*)\""_s);
    QSet<QString> found;
    for (QDirIterator files(QStringLiteral(VELORIN_SOURCE_DIR "/src/mainwin"), {u"*.cpp"_s}); files.hasNext();)
        for (const auto& match : pattern.globalMatch(QString::fromUtf8(TestFolder::Read(files.next()))))
            found.insert(match.captured(1));
    EXPECT_EQ(found, known);
}

} // namespace
