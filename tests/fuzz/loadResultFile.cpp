// Fuzz target: any bytes as a result file, opened, two steps of it loaded and every query asked.
#include "Fuzz.h"
#include "result/mdVelorinResultModel.h"

using namespace mdVelorinResultModel;

namespace {

float sumOf(const ItemValues& values) {
    require(values.Values.size() == std::max(values.Count, 0), "as many values as the count says");
    float sum = values.MaxValue - values.MinValue;
    for (const float value : values.Values)
        sum += value;
    return sum;
}

/// Touches all that the records of a loaded step point at.
std::int64_t walkMesh(const MeshData& mesh) {
    std::int64_t sum = 0;
    for (std::int32_t i = 0; i < mesh.NodeCount; ++i) {
        const NodeRecord node = mesh.Nodes[i];
        for (std::int32_t k = 0; k < node.ElementCount; ++k) {
            const ElementRecord element = mesh.Elements[node.ElementIndex[std::size_t(k)]];
            require(element.NodeIndex[std::size_t(node.CornerIndex[std::size_t(k)])] == i, "the way back from a node");
            sum += element.ElementType;
        }
    }
    for (std::int32_t e = 0; e < mesh.ElementCount; ++e)
        for (const std::int32_t neighbour : mesh.Elements[e].Neighbour)
            require(neighbour >= -1 && neighbour < mesh.ElementCount, "neighbours are elements");
    return sum;
}

void askAll(const ResultModel& model) {
    for (const bool difference : {false, true}) {
        for (std::int32_t item = -1; item <= model.ItemCount; ++item)
            sumOf(GetItemValues(item, model, difference));
        sumOf(GetNodeValues(difference, model.Mesh));
        sumOf(GetDisplacementX(model, difference));
        sumOf(GetDisplacementY(model, difference));
    }
    for (std::int32_t item = 0; item < model.ItemCount; ++item) {
        const std::int32_t type = model.Items.at(item).ElementType;
        sumOf(ExpandItemValues(type, model.Mesh, model.ItemData.at(item)));
        sumOf(SubtractValues(model.ItemData.at(item), model.ReferenceItemData.at(item)));
        sumOf(AverageToNodes(model.ItemData.at(item), model.Mesh, type));
    }
}

void loadAndAsk(const QString& path) {
    ResultModel model;
    if (!LoadResultFile(path, model))
        return;
    walkMesh(model.Mesh);
    const std::int32_t last = model.StepCount - 1;
    const std::int32_t lastItem = model.ItemCount - 1;
    for (const auto& [step, reference, item] :
         {std::array{0, -1, 0}, std::array{0, last, 0}, std::array{last, 0, lastItem}}) {
        const bool hasStep = LoadStep(step, item, model, false, reference);
        require(hasStep == (step >= 0 && step <= last), "every step of the directory loads");
        if (!hasStep)
            continue;
        walkMesh(model.Mesh);
        for (std::int32_t k = 0; k < model.ItemCount; ++k)
            ApplyItemToNodes(k, model);
        askAll(model);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const MemoryFile file;
    file.Write(data, size);
    loadAndAsk(file.Path());
    return 0;
}
