#include "mainwin/commandState.h"

#include "mainwin/commandTable.h"
#include "view/ViewState.h"

namespace commandState {

namespace {

QString text(const char16_t* literal) {
    return QString::fromUtf16(literal);
}

bool waitsForOpening(Needs needs) {
    return needs == Needs::Picked || needs == Needs::Picture;
}

bool isMet(Needs needs, const CommandFacts& facts) {
    switch (needs) {
    case Needs::Nothing:
        return true;
    case Needs::File:
    case Needs::Picture:
        return facts.FileOpen;
    case Needs::Displacement:
        return facts.FileOpen && !facts.Model.NoDisplacement;
    case Needs::Areas:
        return facts.FileOpen && !facts.Model.LineElementsOnly;
    case Needs::LargerZoom:
        return facts.FileOpen && facts.Zoom < ZoomMax;
    case Needs::SmallerZoom:
        return facts.FileOpen && facts.Zoom > ZoomMin;
    case Needs::OtherZoom:
        return facts.FileOpen && facts.Zoom != 0;
    case Needs::ViewBefore:
        return facts.FileOpen && facts.HasViewBefore;
    case Needs::ViewAfter:
        return facts.FileOpen && facts.HasViewAfter;
    case Needs::Picked:
        return facts.PickedCount > 0;
    case Needs::ShowOff:
        return facts.FileOpen && !facts.ShowOn;
    case Needs::ShowOn:
        return facts.ShowOn;
    case Needs::ShowRunning:
        return facts.ShowMoves;
    case Needs::ShowHalted:
        return !facts.ShowMoves;
    }
    return false;
}

void enable(CommandBars& bars, const CommandRow& row, const CommandFacts& facts) {
    bars.SetEnabled(text(row.name), commandTable::IsBuilt(row) && isMet(row.needs, facts));
}

void fillLists(CommandBars& bars, const ResultModel& model, const VectorSettings& vector) {
    QStringList steps, sets, items;
    for (std::int32_t i = 0; i < model.StepCount; ++i)
        steps.append(u"ステップ - "_s + QString::number(i + 1));
    for (const VectorItemSet& set : vector.ItemSets)
        sets.append(set.Name);
    for (const ItemInfo& item : model.Items)
        items.append(item.Name);
    bars.SetList(u"miDrawStep"_s, steps);
    bars.SetList(u"miDrawVectorItem"_s, sets);
    bars.SetList(u"miDrawContourItem"_s, items);
}

/// The settings are read only: the table's accessors serve writing as well.
void mark(CommandBars& bars, ApplicationSettings settings) {
    for (const CommandRow& row : commandTable::Commands())
        if (row.flag)
            bars.SetChecked(text(row.name), row.flag(settings));
    for (const BandRow& band : commandTable::Bands())
        if (band.choice)
            CheckBandChoice(bars, text(band.name), band.choice(settings));
}

} // namespace

void UpdateCommandState(CommandBars& bars, const CommandFacts& facts) {
    EnableCommands(bars, facts);
    if (facts.FileOpen) {
        fillLists(bars, facts.Model, facts.Settings.Vector);
        ShowChosen(bars, facts);
        mark(bars, facts.Settings);
    } else {
        bars.ClearList(u"miDrawStep"_s);
        bars.ClearList(u"miDrawContourItem"_s);
    }
}

void ShowChosen(CommandBars& bars, const CommandFacts& facts) {
    const VectorSettings& vector = facts.Settings.Vector;
    bars.SetListIndex(u"miDrawStep"_s, facts.Model.CurrentStep);
    bars.SetListIndex(u"miDrawVectorItem"_s, std::min(vector.DefaultItemSet, vector.ItemSetCount - 1));
    bars.SetListIndex(u"miDrawContourItem"_s, facts.Model.CurrentItem);
}

void EnableCommands(CommandBars& bars, const CommandFacts& facts) {
    for (const CommandRow& row : commandTable::Commands())
        if (!waitsForOpening(row.needs))
            enable(bars, row, facts);
}

void EnableOnOpening(CommandBars& bars, const QString& band, const CommandFacts& facts) {
    for (const QString& tool : bars.BandTools(band))
        if (const CommandRow* row = commandTable::Find(tool); row && waitsForOpening(row->needs))
            enable(bars, *row, facts);
}

void CheckBandChoice(CommandBars& bars, const QString& band, int index) {
    const QStringList tools = bars.BandTools(band);
    for (qsizetype i = 0; i < tools.size(); ++i)
        bars.SetChecked(tools.at(i), i == index);
}

void CheckBandChoiceByName(CommandBars& bars, const QString& band, const QString& tool) {
    CheckBandChoice(bars, band, int(bars.BandTools(band).indexOf(tool)));
}

} // namespace commandState
