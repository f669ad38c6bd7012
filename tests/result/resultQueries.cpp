#include "ModelTest.h"

using namespace mdVelorinResultModel;

namespace {

ItemValues valuesOf(const QList<float>& list) {
    return {std::int32_t(list.size()), list, 0, 0};
}

void expectValues(const ItemValues& values, const QList<float>& list, float highest, float lowest) {
    EXPECT_EQ(values.Values, list);
    EXPECT_EQ(values.Count, list.size());
    EXPECT_EQ(values.MaxValue, highest);
    EXPECT_EQ(values.MinValue, lowest);
}

using ResultQueriesTest = ModelTest;

TEST_F(ResultQueriesTest, ItemAndNodeValuesWithDifference) {
    open(twoSquares(), 1, 0, 0);
    expectValues(GetItemValues(0, model, true), {1, 2, 3, 4, 5, 6}, 6, 1);
    expectValues(GetItemValues(1, model, true), {}, 0, 0);
    for (const std::int32_t item : {-1, 99})
        expectValues(GetItemValues(item, model, true), {}, 0, 0);
    expectValues(GetDisplacementY(model, true), {1, 2, 3, 4, 5, 6}, 6, 1);
    expectValues(GetNodeValues(true, model.Mesh), {1, 2, 0, 4, 5, 0}, 5, 1); // inactive nodes are left out
    model.Mesh.Nodes.Active.fill(0);
    expectValues(GetNodeValues(true, model.Mesh), QList<float>(6), -1.0E+20f, 1.0E+20f);

    VrfBuilder file = twoSquares();
    file.steps[0].values[0] = {1, 1};
    open(file, 1, 0, 0);
    EXPECT_EQ(GetItemValues(0, model, true).Values, (QList<float>{1, 3, 3, 3, 3, 3})) << "a shorter reference";
}

TEST_F(ResultQueriesTest, DisplacementPerElement) {
    VrfBuilder file = twoSquares();
    file.items[0].flags = 0;
    file.items[1] = {u"x"_s, 1, 1};
    file.steps[0].values[1] = {8};
    file.steps[1].values[1] = {20};
    open(file, 1, 0, 0);
    // All elements of a node count here, the vanished one too.
    expectValues(GetDisplacementX(model, false), {20, 10, 0, 20, 10, 0}, 20, 0);
    expectValues(GetDisplacementX(model, true), {12, 6, 0, 12, 6, 0}, 12, 0);
    expectValues(GetDisplacementY(model, true), QList<float>(6), 0, 0);
}

TEST_F(ResultQueriesTest, ExpandAndSubtract) {
    open(twoSquares());
    const ItemValues packed{1, {10}, 10, -3};
    expectValues(ExpandItemValues(2, model.Mesh, packed), {0, 10}, 10, -3);
    expectValues(ExpandItemValues(-1, model.Mesh, packed), {10}, 10, -3);
    expectValues(AverageToNodes(valuesOf({}), model.Mesh, 2), QList<float>(6), 0, 0);
    expectValues(SubtractValues(valuesOf({5, 4, 3, 2, 1}), valuesOf({1, 1, 4})), {4, 3, -1}, 4, -1);
}

} // namespace
