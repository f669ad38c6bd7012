#include "ModelTest.h"
#include "result/clsLineIndexer.h"

#include <random>

namespace {

/// The neighbour rule as a table of lines in the order in which their edges come, with the line numbered 0 never found.
QList<std::int32_t> neighboursByTable(const MeshData& mesh) {
    QList<std::int32_t> neighbours(mesh.Elements.NodeIndex.size(), -1);
    clsLineIndexer indexer;
    struct User {
        std::int32_t element;
        qsizetype slot;
    };
    std::vector<std::vector<User>> lines;
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
            lines[std::size_t(line)].push_back({e, mesh.Elements.FirstCorner.at(e) + k});
        }
    }
    for (const auto& users : lines)
        for (std::size_t j = 1; j < users.size(); ++j) {
            neighbours[users[0].slot] = users[j].element;
            neighbours[users[j].slot] = users[0].element;
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
    // The first edge of a file is never shared, an edge's first element points at its last, and a line element is its
    // own neighbour.
    VrfBuilder file = twoSquares();
    file.elements = {{1, 2, 3}, {3, 2, 4}, {2, 3, 5}, {4, 5}};
    file.steps = {{0, {}, {0, 0, 0, 0}, {{}, {}}}};
    open(file);
    EXPECT_EQ(model.Mesh.Elements.Neighbour, (QList<std::int32_t>{-1, 2, -1, 0, -1, -1, 0, -1, -1, 3, 3}));
}

} // namespace
