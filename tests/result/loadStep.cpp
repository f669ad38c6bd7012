#include "ModelTest.h"

#include <random>

using namespace mdVelorinResultModel;

namespace {

void expectValues(const ItemValues& values, const QList<float>& list, float highest, float lowest) {
    EXPECT_EQ(values.Values, list);
    EXPECT_EQ(values.Count, list.size());
    EXPECT_EQ(values.MaxValue, highest);
    EXPECT_EQ(values.MinValue, lowest);
}

struct LoadStepTest : ModelTest {
    bool step(std::int32_t number, std::int32_t item, std::int32_t reference = -1) {
        return LoadStep(number, item, model, false, reference);
    }
    void expectNodes(const QList<float>& list, float highest, float lowest) const {
        expectValues(GetNodeValues(false, model.Mesh), list, highest, lowest);
    }
    const QList<float> zeros = QList<float>(6);
};

TEST_F(LoadStepTest, NodeItemsAreTakenAndElementItemsAveragedWithTheZerosOfOtherTypes) {
    VrfBuilder file = twoSquares();
    open(file);
    expectNodes({1, 2, 3, 4, 5, 6}, 6, 1);
    EXPECT_EQ(model.ReferenceItemData.at(1).Values, zeros) << "of node length for every item";
    ASSERT_TRUE(step(0, 1));
    expectNodes({0, 5, 10, 0, 5, 10}, 10, 0);
    ASSERT_TRUE(step(1, 1));
    expectNodes(zeros, 0, 0); // the one element that exists brings in its 0
    EXPECT_TRUE(model.Mesh.Nodes[1].Active && !model.Mesh.Nodes[2].Active);
    file.steps[1].types = {-1, -2};
    open(file, 1, 1);
    expectNodes(zeros, -1.0E+20f, 1.0E+20f); // no element is left

    file.items[1].elementType = 1;
    file.steps[0].types = {1, 1};
    file.steps[0].values = {{7, 7, 7}, {4}};
    open(file, 1);
    ASSERT_TRUE(step(0, 0));
    EXPECT_EQ(model.Mesh.Nodes.Value, (QList<float>{7, 7, 7, 8, 10, 12})) << "the rest keeps what it had";
    ASSERT_TRUE(step(0, 1));
    EXPECT_EQ(model.Mesh.Nodes.Value, (QList<float>{4, 2, 0, 4, 2, 0}));
}

TEST_F(LoadStepTest, AKeptReferenceIsWhatReadingItAgainGives) {
    VrfBuilder file = twoSquares();
    file.steps.push_back({2, {}, {-1, 2}, {{9, 8, 7}, {5}}});
    file.steps.push_back({3, {}, {2, 2}, {{1, 0, 1, 0, 1, 0, 1}, {6, 7}}});
    open(file);
    ResultModel plain = model;
    std::minstd_rand random(1);
    for (int i = 0; i < 300; ++i) {
        const auto upTo = [&random](unsigned most) { return std::int32_t(random() % (most + 1)); };
        const std::int32_t number = upTo(4), item = upTo(1),
                           reference = upTo(8) > 0 ? model.ReferenceStep : upTo(5) - 1;
        plain.ReferenceItem = -1;
        ASSERT_EQ(step(number, item, reference), LoadStep(number, item, plain, false, reference));
        for (const auto column : {&NodeTable::Value, &NodeTable::ReferenceValue})
            ASSERT_EQ(model.Mesh.Nodes.*column, plain.Mesh.Nodes.*column) << i;
        ASSERT_EQ(model.Mesh.MaxValue, plain.Mesh.MaxValue);
        for (const bool difference : {false, true})
            ASSERT_EQ(GetItemValues(item, model, difference).Values, GetItemValues(item, plain, difference).Values);
    }
}

TEST_F(LoadStepTest, ReferenceIsReadFirstAndTheStepAfterIt) {
    open(twoSquares(), 1, 0, 0);
    EXPECT_EQ(model.ReferenceStep, 0);
    EXPECT_EQ(model.Mesh.Nodes.ReferenceValue.at(5), 6);
    EXPECT_EQ(model.Mesh.Elements.ElementType.at(1), -1);
    EXPECT_FALSE(step(2, 0, 0));
    EXPECT_EQ(model.CurrentStep, -1);
    EXPECT_EQ(model.ReferenceStep, 0) << "a reference read before the failure stays";
    ASSERT_TRUE(step(1, 0, 9));
    EXPECT_EQ(model.ReferenceStep, -1);
    EXPECT_EQ(model.Mesh.Nodes.ReferenceValue.at(5), 6) << "node values of the old reference are left";
}

TEST_F(LoadStepTest, BadStepsAndItems) {
    open(twoSquares());
    EXPECT_FALSE(step(-1, 0) || step(0, -1));
    ASSERT_TRUE(step(0, 5));
    EXPECT_EQ(model.CurrentItem, -1);
    ResultModel copy = model;
    ASSERT_TRUE(LoadStep(0, 0, copy, true, -1));
    expectNodes(zeros, 0, 0); // copies are independent
    CloseResultFile(model);
    EXPECT_FALSE(step(0, 0));
    EXPECT_TRUE(LoadStep(1, 1, copy, true, -1)) << "the copy has its own share of the file";
}

TEST_F(LoadStepTest, QueriesWithDifference) {
    VrfBuilder file = twoSquares();
    open(file, 1, 0, 0);
    expectValues(GetItemValues(0, model, true), {1, 2, 3, 4, 5, 6}, 6, 1);
    for (const std::int32_t item : {-1, 1, 99})
        expectValues(GetItemValues(item, model, true), {}, 0, 0);
    expectValues(GetDisplacementY(model, true), {1, 2, 3, 4, 5, 6}, 6, 1);
    expectValues(GetNodeValues(true, model.Mesh), {1, 2, 0, 4, 5, 0}, 5, 1); // inactive nodes are left out
    model.Mesh.Nodes.Active.fill(0);
    expectValues(GetNodeValues(true, model.Mesh), zeros, -1.0E+20f, 1.0E+20f);
    expectValues(AverageToNodes({}, model.Mesh, 2), zeros, 0, 0);
    expectValues(ExpandItemValues(1, model.Mesh, {1, {10}, 10, -3}), {10, 0}, 10, -3);
    expectValues(SubtractValues({3, {5, 4, 3}, 0, 0}, {2, {1, 5}, 0, 0}), {4, -1}, 4, -1);

    file.items[0].flags = 0;
    file.items[1] = {u"x"_s, 1, 1};
    file.steps[0].values = {{1, 1}, {8}};
    file.steps[1].values[1] = {20};
    open(file, 1, 0, 0);
    EXPECT_EQ(GetItemValues(0, model, true).Values, (QList<float>{1, 3, 3, 3, 3, 3})) << "a shorter reference";
    // All elements of a node count here, the vanished one too.
    expectValues(GetDisplacementX(model, false), {20, 10, 0, 20, 10, 0}, 20, 0);
    expectValues(GetDisplacementX(model, true), {12, 6, 0, 12, 6, 0}, 12, 0);
    expectValues(GetDisplacementY(model, true), zeros, 0, 0);
}

} // namespace
