#include "output/pageLabels.h"

#include "app/NumberFormat.h"
#include "app/mdApplication.h"
#include "app/mdTipsDrawing.h"
#include "platform/base/NativePath.h"

namespace pageLabels {

namespace {

enum class Across { Edge, Middle, Far, Left, Right };
enum class Down { Edge, Far, Top, Bottom };

/// The anchor is the point of the text that stands there.
struct Place {
    const char16_t* name;
    Across x;
    Down y;
    int anchor;
};

// The middle is always that of the sheet, whatever the margins are.
constexpr Place places[] = {
    {u"左上", Across::Edge, Down::Edge, 1},         {u"中央上", Across::Middle, Down::Edge, 2},
    {u"右上", Across::Far, Down::Edge, 3},          {u"左下", Across::Edge, Down::Far, 7},
    {u"中央下", Across::Middle, Down::Far, 8},      {u"右下", Across::Far, Down::Far, 9},
    {u"左上外", Across::Left, Down::Top, 7},        {u"中央上外", Across::Middle, Down::Top, 8},
    {u"右上外", Across::Right, Down::Top, 9},       {u"左下外", Across::Left, Down::Bottom, 1},
    {u"中央下外", Across::Middle, Down::Bottom, 2}, {u"右下外", Across::Right, Down::Bottom, 3},
    {u"左上内", Across::Left, Down::Top, 1},        {u"中央上内", Across::Middle, Down::Top, 2},
    {u"右上内", Across::Right, Down::Top, 3},       {u"左下内", Across::Left, Down::Bottom, 7},
    {u"中央下内", Across::Middle, Down::Bottom, 8}, {u"右下内", Across::Right, Down::Bottom, 9},
};
static_assert(std::size(places) == PositionCount);

const Place& placeOf(int index) {
    return places[index >= 0 && index < PositionCount ? index : 0];
}

DevicePoint pointOf(const Place& place, DeviceSize sheet, const DeviceRect& document) {
    const int across[] = {0, Round(sheet.Width / 2.0), sheet.Width, document.Left, document.Right};
    const int down[] = {0, sheet.Height, document.Top, document.Bottom};
    return {across[int(place.x)], down[int(place.y)]};
}

/// A macro as the list of all of them shows it.
struct Description {
    const char16_t* key;
    const char16_t* meaning;
};

constexpr Description descriptions[] = {
    {u"%path%", u"パスを含む完全なファイル名"},
    {u"%file%", u"計算結果ファイル名"},
    {u"%title%", u"解析タイトル"},
    {u"%step%", u"表示ステップ番号"},
    {u"%time%", u"表示ステップ経過時間"},
    {u"%desc%", u"表示ステップ名称"},
    {u"%item%", u"コンタアイテム"},
    {u"%dispx%", u"変位Ｘ成分アイテム"},
    {u"%dispy%", u"変位Ｙ成分アイテム"},
    {u"%vector%", u"ベクトルアイテムセット"},
    {u"%vectx%", u"ベクトルＸ成分アイテム"},
    {u"%vecty%", u"ベクトルＹ成分アイテム"},
    {u"%coord%", u"節点総数"},
    {u"%elem%", u"要素総数"},
    {u"%proc%", u"ステップ総数"},
    {u"%date%", u"本日の日付(%1)"},
};

QString longDate(QDate date) {
    return u"%1年%2月%3日"_s.arg(date.year()).arg(date.month()).arg(date.day());
}

} // namespace

QString PositionName(int index) {
    return QString::fromUtf16(placeOf(index).name);
}

LabelMacros BuildLabelMacros(const ResultModel& model, const VectorSettings& vector, QDate today) {
    const auto itemName = [&](std::int32_t item) {
        return item >= 0 && item < model.Items.size() ? model.Items.at(item).Name : QString();
    };
    const bool onStep = model.CurrentStep >= 0 && model.CurrentStep < model.Steps.size();
    const StepInfo step = onStep ? model.Steps.at(model.CurrentStep) : StepInfo();
    LabelMacros macros{
        {u"%path%"_s, NativePath::Shown(model.FileName)},
        {u"%file%"_s, NativePath::Shown(mdApplication::PathPart(model.FileName, mdApplication::FileName))},
        {u"%title%"_s, model.Title},
        {u"%step%"_s, QString::number(std::int64_t(model.CurrentStep) + 1)},
        {u"%time%"_s, onStep ? NumberFormat::Shortest(step.Time) : QString()},
        {u"%desc%"_s, step.Name},
        {u"%item%"_s, itemName(model.CurrentItem)},
        {u"%dispx%"_s, itemName(model.DisplacementItemX)},
        {u"%dispy%"_s, itemName(model.DisplacementItemY)}};
    const int chosen = vector.DefaultItemSet;
    if (chosen >= 0 && chosen < std::min<qsizetype>(vector.ItemSetCount, vector.ItemSets.size())) {
        const VectorItemSet& set = vector.ItemSets.at(chosen);
        macros += {{u"%vector%"_s, set.Name}, {u"%vectx%"_s, itemName(set.Horz)}, {u"%vecty%"_s, itemName(set.Vert)}};
    }
    macros += {{u"%coord%"_s, QString::number(model.Mesh.NodeCount)},
               {u"%elem%"_s, QString::number(model.Mesh.ElementCount)},
               {u"%proc%"_s, QString::number(model.StepCount)},
               {u"%date%"_s, longDate(today)}};
    return macros;
}

QStringList MacroDescriptions(QDate today) {
    QStringList lines;
    for (const auto& [key, meaning] : descriptions) {
        const QString text = QString::fromUtf16(meaning);
        lines += u' ' + QStringView(key) + u"   " + (text.contains(u"%1") ? text.arg(longDate(today)) : text);
    }
    return lines;
}

void PrintPageLabels(DeviceContext& device, const DeviceContext& printer, const DeviceRect& document,
                     const QList<PageLabel>& labels, const LabelMacros& macros) {
    const DeviceSize sheet{printer.GetDeviceCaps(DeviceCaps::HorzRes), printer.GetDeviceCaps(DeviceCaps::VertRes)};
    device.SaveDC();
    for (const PageLabel& label : labels) {
        if (!label.Print)
            continue;
        ColorRef color = 0;
        const FontObject font = mdTips::ParseFontString(label.Font, color);
        const Font old = mdTips::SelectFontFor(device, printer, font, 0);
        device.SetTextColor(color);
        const Place& place = placeOf(label.Position);
        const auto [x, y] = pointOf(place, sheet, document);
        mdTips::DrawAnchoredText(device, x, y, mdTips::ExpandLabelMacros(label.Text, macros), place.anchor);
        mdTips::RestoreObject(device, old);
    }
    device.RestoreDC();
}

} // namespace pageLabels
