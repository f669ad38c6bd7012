#include "VrfBuilder.h"

#include "result/mdVelorinResultModel.h"

#include <gtest/gtest.h>

using namespace mdVelorinResultModel;

namespace {

ItemValues valuesOf(QList<float> list) {
    ItemValues values;
    values.Count = std::int32_t(list.size());
    values.Values = list;
    return values;
}

class ResultQueriesTest : public testing::Test {
protected:
    void load(const VrfBuilder& file, std::int32_t step, std::int32_t item, std::int32_t reference) {
        ASSERT_TRUE(LoadResultFile(folder.Write(file.Bytes()), model));
        ASSERT_TRUE(LoadStep(step, item, model, false, reference));
    }
    static void expectBounds(const ItemValues& values, float highest, float lowest) {
        EXPECT_EQ(values.MaxValue, highest);
        EXPECT_EQ(values.MinValue, lowest);
    }

    TestFolder folder;
    ResultModel model;
};

TEST_F(ResultQueriesTest, ItemValuesWithAndWithoutDifference) {
    load(twoSquares(), 1, 0, 0);
    EXPECT_EQ(GetItemValues(0, model, false).Values, (QList<float>{2, 4, 6, 8, 10, 12}));
    const ItemValues difference = GetItemValues(0, model, true);
    EXPECT_EQ(difference.Values, (QList<float>{1, 2, 3, 4, 5, 6}));
    expectBounds(difference, 6, 1);
    const ItemValues none = GetItemValues(1, model, true);
    EXPECT_EQ(none.Count, 0);
    expectBounds(none, 0, 0);
    EXPECT_EQ(GetItemValues(-1, model, true).Count, 0);
    EXPECT_EQ(GetItemValues(99, model, false).Count, 0);

    VrfBuilder file = twoSquares();
    file.steps[0].values[0] = {1, 1};
    load(file, 1, 0, 0);
    EXPECT_EQ(GetItemValues(0, model, true).Values, (QList<float>{1, 3, 3, 3, 3, 3})) << "a shorter reference";
}

TEST_F(ResultQueriesTest, NodeValuesLeaveInactiveNodesOut) {
    load(twoSquares(), 1, 0, 0);
    const ItemValues difference = GetNodeValues(true, model.Mesh);
    EXPECT_EQ(difference.Values, (QList<float>{1, 2, 0, 4, 5, 0}));
    expectBounds(difference, 5, 1);
    model.Mesh.Nodes.Active.fill(0);
    expectBounds(GetNodeValues(true, model.Mesh), -1.0E+20f, 1.0E+20f);
}

TEST_F(ResultQueriesTest, DisplacementPerNodeAndPerElement) {
    load(twoSquares(), 1, 0, 0);
    expectBounds(GetDisplacementY(model, true), 6, 1);
    VrfBuilder file = twoSquares();
    file.items[0].flags = 0;
    file.items[1] = {QStringLiteral("x"), 1, 1};
    file.steps[0].values[1] = {8};
    file.steps[1].values[1] = {20};
    load(file, 1, 0, 0);
    // All elements of a node count here, the vanished one too.
    EXPECT_EQ(GetDisplacementX(model, false).Values, (QList<float>{20, 10, 0, 20, 10, 0}));
    EXPECT_EQ(GetDisplacementX(model, true).Values, (QList<float>{12, 6, 0, 12, 6, 0}));
    const ItemValues none = GetDisplacementY(model, true);
    EXPECT_EQ(none.Values, QList<float>(6));
}

TEST_F(ResultQueriesTest, ExpandAndSubtract) {
    load(twoSquares(), 0, 0, -1);
    ItemValues packed = valuesOf({10});
    packed.MaxValue = 10;
    packed.MinValue = -3;
    const ItemValues expanded = ExpandItemValues(2, model.Mesh, packed);
    EXPECT_EQ(expanded.Values, (QList<float>{0, 10}));
    expectBounds(expanded, 10, -3);
    expectBounds(AverageToNodes(valuesOf({}), model.Mesh, 2), 0, 0);
    EXPECT_EQ(ExpandItemValues(-1, model.Mesh, packed).Values, packed.Values);
    const ItemValues difference = SubtractValues(valuesOf({5, 4, 3, 2, 1}), valuesOf({1, 1, 4}));
    EXPECT_EQ(difference.Values, (QList<float>{4, 3, -1}));
    expectBounds(difference, 4, -1);
}

} // namespace
