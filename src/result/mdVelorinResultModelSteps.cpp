// One step from the file into the model, and its current item onto the nodes.
#include "result/ValueBounds.h"
#include "result/elementValues.h"
#include "result/mdVelorinResultModel.h"

#include "platform/base/Lists.h"
#include "platform/base/Parallel.h"

namespace mdVelorinResultModel {

namespace {

/// A stretch of one item's block: read, narrowed and bounded on its own, so that the cores can share a step out.
struct Piece {
    std::int32_t item = 0;
    std::int32_t first = 0;
    std::int32_t count = 0;
    ValueBounds bounds;
};

/// A list of `count` values to write to; keeps its memory from step to step when nobody else holds it.
float* writableValues(QList<float>& values, qsizetype count) {
    if (!values.isDetached() || values.size() != count)
        values = listOf<float>(count);
    return values.data();
}

/// Sizes each item's values and cuts its block into pieces.
std::vector<Piece> layOutItems(std::int32_t step, ResultModel& model) {
    // So many stay in the processor's cache from their reading to their bounds.
    constexpr std::int32_t valuesPerPiece = 32768;
    std::vector<Piece> pieces;
    model.ItemData.resize(model.ItemCount);
    ItemValues* items = ownData(model.ItemData);
    for (std::int32_t i = 0; i < model.ItemCount; ++i) {
        ItemValues& item = items[i];
        item.Count = model.Source->ValueCount(step, i);
        item.MaxValue = item.MinValue = 0;
        if (item.Count < 1) {
            item.Values = {};
            continue;
        }
        writableValues(item.Values, item.Count);
        for (std::int32_t first = 0; first < item.Count;) {
            const std::int32_t count = std::min(valuesPerPiece, item.Count - first);
            pieces.push_back({i, first, count, {}});
            first += count;
        }
    }
    return pieces;
}

/// False when `progress` says no.
bool readItems(std::int32_t step, ResultModel& model, const LoadProgress& progress) {
    std::vector<Piece> pieces = layOutItems(step, model);
    SharedProgress shared(progress, qint64(pieces.size()));
    std::vector<float*> targets;
    for (ItemValues& item : model.ItemData)
        targets.push_back(item.Values.data());
    parallelFor(int(pieces.size()), [&](int i) {
        if (!shared.GoesOn())
            return;
        Piece& piece = pieces[std::size_t(i)];
        const std::span<float> values{targets[std::size_t(piece.item)] + piece.first, std::size_t(piece.count)};
        model.Source->ReadValues(step, piece.item, piece.first, values);
        piece.bounds = ValueBounds::Of(values);
    });
    std::vector<ValueBounds> bounds(targets.size());
    for (const Piece& piece : pieces)
        bounds[std::size_t(piece.item)].Take(piece.bounds);
    for (std::int32_t i = 0; i < model.ItemCount; ++i)
        if (model.ItemData.at(i).Count > 0)
            bounds[std::size_t(i)].StoreIn(model.ItemData[i]);
    return !shared.IsStopped();
}

bool allElementsExist(const MeshData& mesh) {
    // No early end: so the compiler takes several at a time.
    std::int32_t signs = 0;
    for (const std::int32_t type : mesh.Elements.ElementType)
        signs |= type;
    return signs >= 0;
}

void findActiveNodes(MeshData& mesh) {
    const std::int32_t* types = mesh.Elements.ElementType.constData();
    const std::int32_t* firstEntry = mesh.Nodes.FirstEntry.constData();
    const std::int32_t* elements = mesh.Nodes.ElementIndex.constData();
    std::uint8_t* active = ownData(mesh.Nodes.Active);
    const bool allExist = allElementsExist(mesh);
    parallelStretches(mesh.NodeCount, [&](std::int32_t first, std::int32_t last) {
        for (std::int32_t i = first; i < last; ++i)
            active[i] = allExist ? firstEntry[i] < firstEntry[i + 1]
                                 : std::any_of(elements + firstEntry[i], elements + firstEntry[i + 1],
                                               [types](std::int32_t element) { return types[element] >= 0; });
    });
}

} // namespace

bool ReadStepData(std::int32_t step, std::int32_t item, ResultModel& model, const LoadProgress& progress) {
    if (step < 0 || item < 0 || step >= model.StepCount || IsFileClosed(model)) {
        model.CurrentStep = -1;
        return false;
    }
    QList<std::int32_t>& types = model.Mesh.Elements.ElementType;
    model.Source->ReadTypes(step, 0, {ownData(types), std::size_t(types.size())});
    findActiveNodes(model.Mesh);
    const bool whole = readItems(step, model, progress);
    model.CurrentStep = whole ? step : -1;
    return whole;
}

void ApplyItemToNodes(std::int32_t item, ResultModel& model) {
    MeshData& mesh = model.Mesh;
    if (item < 0 || item >= model.ItemCount || item >= model.ItemData.size()) {
        mesh.Nodes.Value = listOf<float>(mesh.NodeCount);
        mesh.MaxValue = mesh.MinValue = 0;
        model.CurrentItem = -1;
        return;
    }
    const ItemValues& values = model.ItemData.at(item);
    if (model.Items.at(item).ElementType < 0) {
        // As many values as nodes is the rule, and then the column is shared. Nodes beyond keep what they had.
        if (values.Values.size() == mesh.NodeCount)
            mesh.Nodes.Value = values.Values;
        else
            std::copy_n(values.Values.constData(), std::min<qsizetype>(values.Values.size(), mesh.NodeCount),
                        ownData(mesh.Nodes.Value));
        mesh.MaxValue = values.MaxValue;
        mesh.MinValue = values.MinValue;
    } else {
        const QList<float> onElements = unpackOntoElements(values, mesh, model.Items.at(item).ElementType);
        const std::int32_t* types = mesh.Elements.ElementType.constData();
        float* target = writableValues(mesh.Nodes.Value, mesh.NodeCount);
        const ValueBounds bounds =
            allElementsExist(mesh)
                ? averageOntoNodes(
                      onElements, mesh, [](std::int32_t) { return true; }, target)
                : averageOntoNodes(
                      onElements, mesh, [types](std::int32_t element) { return types[element] >= 0; }, target);
        mesh.MaxValue = bounds.Max;
        mesh.MinValue = bounds.Min;
    }
    model.CurrentItem = item;
}

void ClearReference(ResultModel& model) {
    // Without a reference only zeros can stand there, and they need not be made again for every step.
    if (model.ReferenceStep < 0 && model.ReferenceItemData.size() == model.ItemCount)
        return;
    model.ReferenceStep = -1;
    ItemValues zeros;
    zeros.Count = model.Mesh.NodeCount;
    zeros.Values = listOf<float>(zeros.Count);
    model.ReferenceItemData = listOf(model.ItemCount, zeros);
}

void KeepReference(ResultModel& model) {
    model.Mesh.Nodes.ReferenceValue = model.Mesh.Nodes.Value;
    model.ReferenceItemData = model.ItemData;
    model.ReferenceStep = model.CurrentStep;
    model.ReferenceItem = model.CurrentItem;
}

namespace {

/// Whether the reference that stands in the model is what reading it again before a step would give.
bool hasReference(std::int32_t step, std::int32_t item, const ResultModel& model) {
    if (step < 0 || step != model.ReferenceStep || item != model.ReferenceItem)
        return false;
    // Of nodes without a value the earlier steps decide.
    return model.Items.at(item).ElementType >= 0 ||
           model.ReferenceItemData.at(item).Values.size() == model.Mesh.NodeCount;
}

/// False when `progress` says no.
bool loadReference(std::int32_t step, std::int32_t item, ResultModel& model, const LoadProgress& progress) {
    if (step < 0 || step >= model.StepCount || item < 0) {
        ClearReference(model);
        return true;
    }
    if (!ReadStepData(step, item, model, progress))
        return false;
    ApplyItemToNodes(item, model);
    KeepReference(model);
    return true;
}

} // namespace

bool LoadStep(std::int32_t step, std::int32_t item, ResultModel& model, bool keepNeighbours, std::int32_t referenceStep,
              const LoadProgress& progress) {
    if (IsFileClosed(model))
        return false;
    // Of the time that a step takes, about.
    constexpr int untilReference = 35, untilStep = 75;
    const bool isThere = step >= 0 && step < model.StepCount;
    if (isThere && hasReference(referenceStep, item, model))
        model.Mesh.Nodes.Value = model.Mesh.Nodes.ReferenceValue;
    else if (!loadReference(referenceStep, item, model, PartOf(progress, 0, untilReference)))
        return false;
    if (!ReadStepData(step, item, model, PartOf(progress, untilReference, untilStep)))
        return false;
    if (!keepNeighbours && !BuildElementNeighbours(model.Mesh, PartOf(progress, untilStep, 100))) {
        model.CurrentStep = -1;
        return false;
    }
    ApplyItemToNodes(item, model);
    return true;
}

} // namespace mdVelorinResultModel
