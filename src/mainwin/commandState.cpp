#include "mainwin/commandState.h"

#include "app/mdTips.h"
#include "mainwin/commandTable.h"

namespace commandState {

namespace {

void enable(CommandBars& bars, std::initializer_list<const char16_t*> names, bool enabled) {
    for (const char16_t* literal : names) {
        const QString name = QString::fromUtf16(literal);
        bars.SetEnabled(name, enabled && commandTable::IsBuilt(name));
    }
}

void fillCombos(CommandBars& bars, const ResultModel& model, const VectorSettings& vector) {
    QStringList steps, sets, items;
    for (std::int32_t i = 0; i < model.StepCount; ++i)
        steps.append(u"ステップ - "_s + QString::number(i + 1));
    for (const VectorItemSet& set : vector.ItemSets)
        sets.append(set.Name);
    for (const ItemInfo& item : model.Items)
        items.append(item.Name);
    bars.SetList(u"miDrawStep"_s, steps);
    bars.SetListIndex(u"miDrawStep"_s, model.CurrentStep);
    bars.SetList(u"miDrawVectorItem"_s, sets);
    bars.SetListIndex(u"miDrawVectorItem"_s, std::min(vector.DefaultItemSet, vector.ItemSetCount - 1));
    bars.SetList(u"miDrawContourItem"_s, items);
    bars.SetListIndex(u"miDrawContourItem"_s, model.CurrentItem);
}

void checkFromSettings(CommandBars& bars, const ApplicationSettings& settings) {
    bars.SetChecked(u"miViewMesh"_s, settings.Window.Mesh);
    bars.SetChecked(u"miViewToolBar"_s, settings.Window.Toolbar);
    bars.SetChecked(u"miViewStatusBar"_s, settings.Window.Statusbar);
    bars.SetChecked(u"miDrawDispLegend"_s, settings.Displacement.Legend);
    bars.SetChecked(u"miDrawOrgMesh"_s, settings.Displacement.Original);
    bars.SetChecked(u"miDrawVectorLegend"_s, settings.Vector.Legend);
    bars.SetChecked(u"miDrawContourLegend"_s, settings.Contour.Legend);
    bars.SetChecked(u"miDrawValue"_s, settings.ValueDisplay);
}

} // namespace

void UpdateCommandState(CommandBars& bars, bool enabled, const ResultModel& model,
                        const ApplicationSettings& settings) {
    enable(bars,
           {u"miFileSaveLayout", u"miFilePreview", u"miFilePrint", u"miFileProperty", u"miViewScale", u"miViewMesh",
            u"miViewZoomIn", u"miViewZoomOut", u"miViewZoomOff", u"miDraw", u"miToolsSlideShow"},
           enabled);
    if (!enabled) {
        // The vector list is left: it says what the settings hold, not what the file does.
        bars.ClearList(u"miDrawStep"_s);
        bars.ClearList(u"miDrawContourItem"_s);
        return;
    }
    fillCombos(bars, model, settings.Vector);
    checkFromSettings(bars, settings);
    enable(bars, {u"miDrawDispScale", u"miDrawDispLegend", u"miDrawOrgMesh"}, !model.NoDisplacement);
    enable(bars, {u"miDrawContourColor", u"miDrawContourLegend", u"miDrawContourValue"}, !model.LineElementsOnly);
    CheckBandChoice(bars, u"pbViewScale"_s, settings.Window.ScaleMode);
    CheckBandChoice(bars, u"pbDrawDispScale"_s, settings.Displacement.Fiducial);
    CheckBandChoice(bars, u"pbDrawVectorScale"_s, settings.Vector.Fiducial);
    CheckBandChoice(bars, u"pdDrawContourColor"_s, settings.Contour.ColorIndex);
}

void CheckBandChoice(CommandBars& bars, const QString& band, int index) {
    const QStringList tools = bars.BandTools(band);
    for (qsizetype i = 0; i < tools.size(); ++i)
        bars.SetChecked(tools.at(i), i == index);
}

void CheckBandChoiceByName(CommandBars& bars, const QString& band, const QString& tool) {
    CheckBandChoice(bars, band, int(bars.BandTools(band).indexOf(tool)));
}

void BuildRecentMenu(CommandBars& bars, const clsStringArray& recentFiles) {
    constexpr int mostEntries = 9;
    constexpr int mostBytes = 50;
    const QString band = u"pbFile"_s;
    const QStringList standing = bars.BandTools(band);
    for (qsizetype i = standing.size() - 1; i >= 0; --i)
        if (standing.at(i).startsWith(u"recent-"))
            bars.RemoveFromBand(band, standing.at(i));
    for (int i = 0; i < std::min(recentFiles.Count(), mostEntries); ++i) {
        // An "&" of the path is not an access key.
        const QString path = mdTips::ShortenPath(recentFiles.Item(i), mostBytes).replace(u'&', u"&&"_s);
        ToolRecord record;
        record.Name = u"recent-"_s + QString::number(i);
        record.ToolID = RecentFileBase + i;
        record.Caption = u'&' + QString::number(i + 1) + u" - "_s + path;
        record.Description = recentFiles.PrivateData(i);
        bars.AddToBand(band, record, i == 0);
    }
    bars.MoveToEnd(band, u"miFileQuit"_s, true);
}

} // namespace commandState
