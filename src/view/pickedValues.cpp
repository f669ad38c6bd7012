#include "view/pickedValues.h"

#include "app/NumberFormat.h"
#include "result/mdVelorinResultModel.h"

#include <QStringList>
#include <cmath>

namespace mdPicking {

namespace {

std::int32_t typeOf(const ResultModel& model) {
    const bool known = model.CurrentItem >= 0 && model.CurrentItem < model.Items.size();
    return known ? model.Items.at(model.CurrentItem).ElementType : -1;
}

QString placeText(const MeshData& mesh, bool isNode, std::int32_t object) {
    const float x = isNode ? mesh.Nodes.X.at(object) : mesh.Elements.CentreX.at(object);
    const float y = isNode ? mesh.Nodes.Y.at(object) : mesh.Elements.CentreY.at(object);
    const QString at = u"X %1, Y %2"_s.arg(NumberFormat::Shortest(x), NumberFormat::Shortest(y));
    return isNode ? at : u"中心 "_s + at;
}

QString valueText(const std::optional<float>& value) {
    return value ? NumberFormat::Shortest(*value) : u"値なし"_s;
}

} // namespace

ObjectValues::ObjectValues(const ResultModel& model, bool difference) : mesh(model.Mesh), elementType(typeOf(model)) {
    const ItemValues own = mdVelorinResultModel::GetItemValues(model.CurrentItem, model, difference);
    values = mdVelorinResultModel::ExpandItemValues(elementType, mesh, own).Values;
}

std::optional<float> ObjectValues::Of(std::int32_t object) const {
    const bool isNode = elementType < 0;
    if (object < 0 || object >= values.size() || object >= (isNode ? mesh.NodeCount : mesh.ElementCount))
        return {};
    const bool stands =
        isNode ? mesh.Nodes.Active.at(object) != 0 : mesh.Elements.ElementType.at(object) == elementType;
    const float value = values.at(object);
    return stands && !std::isnan(value) ? std::optional(value) : std::nullopt;
}

ValueSummary SummaryOf(const ObjectValues& values, const clsMouse& selection) {
    ValueSummary summary;
    double sum = 0;
    for (std::int32_t i = 0; i < selection.Count(); ++i) {
        const std::optional<float> value = values.Of(selection.Item(i));
        if (!value)
            continue;
        const bool isFirst = summary.Counted++ == 0;
        summary.Least = isFirst ? *value : std::min(summary.Least, *value);
        summary.Largest = isFirst ? *value : std::max(summary.Largest, *value);
        sum += double(*value);
    }
    summary.Mean = summary.Counted > 0 ? sum / summary.Counted : 0;
    return summary;
}

QString SummaryText(const ResultModel& model, const DifferenceSettings& difference, const clsMouse& selection) {
    if (selection.Count() == 0)
        return {};
    const bool isNode = selection.ObjectType() == PickedKind::Nodes;
    QString text = u"%1 %2 個"_s.arg(isNode ? u"節点"_s : u"要素"_s).arg(selection.Count());
    // Picked for an item on other objects, as far as that can be: their numbers mean nothing for this one.
    if (isNode != (typeOf(model) < 0))
        return text;
    const bool differs = difference.StandardStep >= 0 && (difference.ApplyContour || difference.ApplyValue);
    const ValueSummary summary = SummaryOf(ObjectValues(model, differs), selection);
    if (differs)
        text += u"（差分）"_s;
    if (summary.Counted > 0)
        text += u": 最小 %1, 最大 %2, 平均 %3"_s.arg(NumberFormat::Shortest(summary.Least),
                                                     NumberFormat::Shortest(summary.Largest),
                                                     NumberFormat::Shortest(float(summary.Mean)));
    if (const std::int32_t without = selection.Count() - summary.Counted)
        text += u"（値なし %1）"_s.arg(without);
    return text;
}

QString ObjectText(const ResultModel& model, const DifferenceSettings& difference, std::int32_t object) {
    const bool isNode = typeOf(model) < 0;
    QStringList lines{u"%1 %2"_s.arg(isNode ? u"節点"_s : u"要素"_s).arg(std::int64_t(object) + 1),
                      placeText(model.Mesh, isNode, object)};
    if (model.CurrentItem >= 0 && model.CurrentItem < model.Items.size())
        lines.append(model.Items.at(model.CurrentItem).Name + u": "_s +
                     valueText(ObjectValues(model, false).Of(object)));
    if (difference.StandardStep >= 0)
        lines.append(u"ステップ %1 との差: %2"_s.arg(qint64(difference.StandardStep) + 1)
                         .arg(valueText(ObjectValues(model, true).Of(object))));
    return lines.join(u'\n');
}

} // namespace mdPicking
