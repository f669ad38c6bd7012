#include "ModelTest.h"
#include "result/clsLineIndexer.h"

#include <random>

namespace {

/// The neighbour rule as a table of lines in the order in which their edges come, with the line numbered 0 never found.
QList<std::int32_t> neighboursByTable(const MeshData& mesh) {
    QList<std::int32_t> neighbours(mesh.Elements.NodeIndex.size(), -1);
    clsLineIndexer indexer;
    std::vector<std::vector<std::pair<std::int32_t, qsizetype>>> lines; // elements and their edges' places
    for (std::int32_t e = 0; e < mesh.ElementCount; ++e) {
        const ElementRecord element = mesh.Elements[e];
        for (std::int32_t k = 0; k < element.NodeCount && element.ElementType >= 0; ++k) {
            const std::int32_t a = element.NodeIndex[std::size_t(k)];
            const std::int32_t b = element.NodeIndex[std::size_t((k + 1) % element.NodeCount)];
            std::int32_t line = indexer.Index(a, b);
            if (line <= 0) {
                line = std::int32_t(lines.size());
                indexer.Add(a, b, line);
                lines.emplace_back();
            }
            auto& users = lines[std::size_t(line)];
            users.emplace_back(e, mesh.Elements.FirstCorner.at(e) + k);
            neighbours[users.back().second] = users.size() > 1 ? users.front().first : -1;
            neighbours[users.front().second] = users.size() > 1 ? e : -1;
        }
    }
    return neighbours;
}

using ElementNeighbours = ModelTest;

TEST_F(ElementNeighbours, RandomMeshesAsByTheTable) {
    std::mt19937 random(42);
    const auto upTo = [&](int n) { return int(random() % unsigned(n)); };
    for (int round = 0; round < 300; ++round) {
        VrfBuilder file;
        file.items = {{u"v"_s, -1, 0}};
        file.nodes.assign(std::size_t(2 + upTo(12)), {0, 0});
        file.elements.resize(std::size_t(1 + upTo(14)));
        file.steps = {{0, {}, {}, {{}}}};
        for (auto& element : file.elements) {
            // Node 0 is a missing one, numbers past the count are false ones, and corners may repeat.
            for (int k = upTo(6); k > 0; --k)
                element.push_back(upTo(int(file.nodes.size()) + 3));
            file.steps[0].types.push_back(upTo(4) - 1);
        }
        open(file);
        ASSERT_EQ(model.Mesh.Elements.Neighbour, neighboursByTable(model.Mesh)) << round;
    }
}

} // namespace
