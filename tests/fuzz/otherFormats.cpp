// Fuzz target: any bytes as a file of another solver, each of its steps loaded, written as a file of our own and read
// again: the same.
#include "Fuzz.h"
#include "result/VrfWriter.h"
#include "result/mdVelorinResultModel.h"

using namespace mdVelorinResultModel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString path = inputFile(data, size);
    ResultModel given, converted;
    if (!LoadResultFile(path, given, {}, {true, true})) {
        require(IsFileClosed(given), "what is refused is closed");
        return 0;
    }
    for (const std::int32_t node : given.Mesh.Elements.NodeIndex)
        require(given.Magic == u"VRF10" || std::uint32_t(node) < std::uint32_t(given.Mesh.NodeCount),
                "nodes are there");
    const QString copy = path + u".vrf"_s;
    require(!VrfWriter::Write(given, copy) && LoadResultFile(copy, converted), "what can be read can be written");
    for (std::int32_t step = 0; step < std::min(given.StepCount, 4); ++step) {
        require(LoadStep(step, 0, given, true, -1) && LoadStep(step, 0, converted, true, -1), "every step loads");
        for (std::int32_t item = 0; item < given.ItemCount; ++item) {
            const QList<float>&a = given.ItemData.at(item).Values, &b = converted.ItemData.at(item).Values;
            const auto same = [](float x, float y) { return x == y || (std::isnan(x) && std::isnan(y)); };
            require(std::ranges::equal(a, b, same), "values stay the same");
        }
    }
    return 0;
}
