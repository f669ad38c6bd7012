#include "result/clsLineIndexer.h"
#include "result/mdVelorinResultModel.h"

#include "VrfBuilder.h"

#include <gtest/gtest.h>
#include <random>

using namespace mdVelorinResultModel;

namespace {

/// The neighbour rule as a table of lines in the order in which their edges come, with the line numbered 0 never found.
QList<std::int32_t> neighboursByTable(const MeshData& mesh) {
    QList<std::int32_t> neighbours(mesh.Elements.NodeIndex.size(), -1);
    clsLineIndexer indexer;
    std::vector<std::vector<std::pair<std::int32_t, std::int32_t>>> lines;
    for (std::int32_t e = 0; e < mesh.ElementCount; ++e) {
        const ElementRecord element = mesh.Elements[e];
        if (element.ElementType < 0)
            continue;
        for (std::int32_t k = 0; k < element.NodeCount; ++k) {
            const std::int32_t a = element.NodeIndex[std::size_t(k)];
            const std::int32_t b = element.NodeIndex[std::size_t((k + 1) % element.NodeCount)];
            const std::int32_t line = indexer.Index(a, b);
            if (line > 0) {
                lines[std::size_t(line)].push_back({e, k});
            } else {
                indexer.Add(a, b, std::int32_t(lines.size()));
                lines.push_back({{e, k}});
            }
        }
    }
    const auto slot = [&](const auto& user) { return mesh.Elements.FirstCorner.at(user.first) + user.second; };
    for (const auto& users : lines)
        for (std::size_t j = 1; j < users.size(); ++j) {
            neighbours[slot(users[0])] = users[j].first;
            neighbours[slot(users[j])] = users[0].first;
        }
    return neighbours;
}

ResultModel loaded(const VrfBuilder& file, std::int32_t step = 0) {
    TestFolder folder;
    ResultModel model;
    EXPECT_TRUE(LoadResultFile(folder.Write(file.Bytes()), model));
    EXPECT_TRUE(LoadStep(step, 0, model, false, -1));
    return model;
}

VrfBuilder meshOf(const std::vector<std::vector<qint32>>& elements, std::size_t nodeCount) {
    VrfBuilder file;
    file.items = {{QStringLiteral("v"), -1, 0}};
    file.nodes.assign(nodeCount, {0, 0});
    file.elements = elements;
    file.steps = {{0, {}, std::vector<qint32>(elements.size(), 0), {{}}}};
    return file;
}

TEST(ElementNeighbours, SharedEdgesAndTheirOddities) {
    const VrfBuilder first = meshOf({{2, 5, 4, 1}, {2, 3, 6, 5}}, 6);
    EXPECT_EQ(loaded(first).Mesh.Elements.Neighbour, QList<std::int32_t>(8, -1)) << "the first edge of a file";
    const ResultModel model = loaded(meshOf({{1, 2, 3}, {3, 2, 4}, {2, 3, 5}, {4, 5}}, 5));
    EXPECT_EQ(model.Mesh.Elements[0].Neighbour[1], 2) << "the first points at the last";
    EXPECT_EQ(model.Mesh.Elements[1].Neighbour[0], 0);
    EXPECT_EQ(model.Mesh.Elements[2].Neighbour[0], 0);
    EXPECT_EQ(model.Mesh.Elements[3].Neighbour[0], 3) << "a line element is its own neighbour";
}

TEST(ElementNeighbours, RandomMeshesAsByTheTable) {
    std::mt19937 random(42);
    const auto upTo = [&](int n) { return int(random() % unsigned(n)); };
    for (int round = 0; round < 300; ++round) {
        const int nodeCount = 2 + upTo(12);
        std::vector<std::vector<qint32>> elements(std::size_t(1 + upTo(14)));
        for (auto& element : elements)
            // Node 0 is a missing one, numbers past the count are false ones, and corners may repeat.
            for (int k = upTo(6); k > 0; --k)
                element.push_back(upTo(nodeCount + 3));
        VrfBuilder file = meshOf(elements, std::size_t(nodeCount));
        for (qint32& type : file.steps[0].types)
            type = upTo(4) - 1;
        const ResultModel model = loaded(file);
        ASSERT_EQ(model.Mesh.Elements.Neighbour, neighboursByTable(model.Mesh)) << round;
    }
}

TEST(ElementNeighbours, RealMeshAsByTheTableInEveryStep) {
    ResultModel model;
    ASSERT_TRUE(LoadResultFile(QStringLiteral(VELORIN_SOURCE_DIR "/demo/tunnel.vrf"), model));
    for (std::int32_t step = 0; step < model.StepCount; ++step) {
        ASSERT_TRUE(LoadStep(step, 0, model, false, 0));
        ASSERT_EQ(model.Mesh.Elements.Neighbour, neighboursByTable(model.Mesh)) << step;
    }
}

} // namespace
