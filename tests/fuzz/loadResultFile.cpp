// Fuzz target: any bytes as a result file, opened, its first and last step loaded, drawn, and every query asked.
#include "Fuzz.h"
#include "platform/device/TraceDevice.h"
#include "view/scene/Session.h"

using namespace mdVelorinResultModel;

namespace {

/// Follows all that the records of a loaded step point at.
void requireSound(const MeshData& mesh) {
    for (std::int32_t i = 0; i < mesh.NodeCount; ++i) {
        const NodeRecord node = mesh.Nodes[i];
        for (std::size_t k = 0; k < std::size_t(node.ElementCount); ++k)
            require(mesh.Elements[node.ElementIndex[k]].NodeIndex[std::size_t(node.CornerIndex[k])] == i,
                    "the way back");
    }
    for (const std::int32_t neighbour : mesh.Elements.Neighbour)
        require(neighbour >= -1 && neighbour < mesh.ElementCount, "neighbours are elements");
}

void askAll(const ResultModel& model) {
    const auto look = [](const ItemValues& values) {
        require(values.Values.size() == std::max(values.Count, 0), "as many values as the count says");
    };
    for (std::int32_t item = 0; item < model.ItemCount; ++item) {
        look(GetItemValues(item, model, true));
        look(ExpandItemValues(model.Items.at(item).ElementType, model.Mesh,
                              SubtractValues(model.ItemData.at(item), model.ReferenceItemData.at(item))));
    }
    for (const bool difference : {false, true})
        for (const auto displacement : {GetDisplacementX, GetDisplacementY})
            look(displacement(model, difference));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ResultModel loaded;
    if (!LoadResultFile(inputFile(data, size), loaded))
        return 0;
    Session session;
    session.TakeUp(loaded, false);
    session.Settings.ValueDisplay = session.Settings.Difference.ApplyContour = true;
    const std::int32_t last = loaded.StepCount - 1;
    for (const std::int32_t step : {0, last}) {
        session.Settings.Difference.StandardStep = last - step;
        require(session.LoadStep(step, step == last ? loaded.ItemCount - 1 : 0) == (last >= 0), "every step loads");
        requireSound(session.Model.Mesh);
        TraceDevice device(320, 240);
        session.Draw(device);
        if (last >= 0)
            askAll(session.Model);
    }
    return 0;
}
