// What drawing and graphs ask of a loaded step.
#include "result/elementValues.h"
#include "result/mdVelorinResultModel.h"

#include "platform/base/Lists.h"

namespace mdVelorinResultModel {

namespace {

ItemValues itemAt(const QList<ItemValues>& items, std::int32_t item) {
    return item >= 0 && item < items.size() ? items.at(item) : ItemValues{};
}

ItemValues valuesOfLength(std::int32_t count) {
    ItemValues values;
    values.Count = count;
    values.Values = listOf<float>(std::max(count, 0));
    return values;
}

ItemValues displacement(const ResultModel& model, std::int32_t item, bool difference) {
    if (item < 0 || item >= model.ItemCount)
        return valuesOfLength(model.Mesh.NodeCount);
    ItemValues current = itemAt(model.ItemData, item);
    ItemValues reference = itemAt(model.ReferenceItemData, item);
    const std::int32_t type = model.Items.at(item).ElementType;
    if (type >= 0) {
        current = AverageToNodes(current, model.Mesh, type);
        reference = AverageToNodes(reference, model.Mesh, type);
    }
    if (!difference)
        return current;
    ValueBounds bounds;
    const qsizetype count = std::min(current.Values.size(), reference.Values.size());
    float* result = ownData(current.Values);
    for (qsizetype i = 0; i < count; ++i) {
        result[i] -= reference.Values.at(i);
        bounds.Take(result[i]);
    }
    bounds.StoreIn(current);
    return current;
}

} // namespace

QList<float> unpackOntoElements(const ItemValues& values, const MeshData& mesh, std::int32_t elementType) {
    const std::int32_t* types = mesh.Elements.ElementType.constData();
    if (values.Values.size() == mesh.ElementCount) {
        // The common case of one type; without an early end, so that the compiler takes several at a time.
        std::int32_t differences = 0;
        for (std::int32_t e = 0; e < mesh.ElementCount; ++e)
            differences |= types[e] ^ elementType;
        if (differences == 0)
            return values.Values;
    }
    QList<float> onElements = listOf<float>(mesh.ElementCount);
    float* target = onElements.data();
    qsizetype next = 0;
    for (std::int32_t e = 0; e < mesh.ElementCount && next < values.Values.size(); ++e)
        if (types[e] == elementType)
            target[e] = values.Values.at(next++);
    return onElements;
}

ItemValues GetItemValues(std::int32_t item, const ResultModel& model, bool difference) {
    ItemValues result = itemAt(model.ItemData, item);
    if (!difference)
        return result;
    const QList<float> reference = itemAt(model.ReferenceItemData, item).Values;
    float* values = ownData(result.Values);
    ValueBounds bounds;
    float latest = 0;
    for (qsizetype i = 0; i < result.Values.size(); ++i) {
        // Where the reference has no such value the latest difference stands in for it.
        if (i < reference.size())
            latest = values[i] - reference.at(i);
        values[i] = latest;
        bounds.Take(latest);
    }
    bounds.StoreCorrectedIn(result);
    return result;
}

ItemValues GetNodeValues(bool difference, const MeshData& mesh) {
    const NodeTable& nodes = mesh.Nodes;
    ItemValues result;
    result.Count = mesh.NodeCount;
    if (!difference) {
        result.Values = nodes.Value;
        result.MaxValue = mesh.MaxValue;
        result.MinValue = mesh.MinValue;
        return result;
    }
    result = valuesOfLength(mesh.NodeCount);
    ValueBounds bounds;
    for (std::int32_t i = 0; i < mesh.NodeCount; ++i) {
        if (!nodes.Active.at(i))
            continue;
        result.Values[i] = nodes.Value.at(i) - nodes.ReferenceValue.at(i);
        bounds.Take(result.Values.at(i));
    }
    bounds.StoreIn(result);
    return result;
}

ItemValues GetDisplacementX(const ResultModel& model, bool difference) {
    return displacement(model, model.DisplacementItemX, difference);
}

ItemValues GetDisplacementY(const ResultModel& model, bool difference) {
    return displacement(model, model.DisplacementItemY, difference);
}

ItemValues ExpandItemValues(std::int32_t elementType, const MeshData& mesh, const ItemValues& values) {
    if (elementType < 0)
        return values;
    ItemValues result = values;
    result.Count = mesh.ElementCount;
    result.Values = unpackOntoElements(values, mesh, elementType);
    return result;
}

ItemValues SubtractValues(const ItemValues& a, const ItemValues& b) {
    ItemValues result = valuesOfLength(std::int32_t(std::min(a.Values.size(), b.Values.size())));
    ValueBounds bounds;
    for (qsizetype i = 0; i < result.Values.size(); ++i) {
        result.Values[i] = a.Values.at(i) - b.Values.at(i);
        bounds.Take(result.Values.at(i));
    }
    bounds.StoreIn(result);
    return result;
}

ItemValues AverageToNodes(const ItemValues& values, const MeshData& mesh, std::int32_t elementType) {
    ItemValues result = valuesOfLength(mesh.NodeCount);
    const QList<float> onElements = unpackOntoElements(values, mesh, elementType);
    averageOntoNodes(
        onElements, mesh, [](std::int32_t) { return true; }, result.Values.data())
        .StoreCorrectedIn(result);
    return result;
}

} // namespace mdVelorinResultModel
