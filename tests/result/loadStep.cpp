#include "ModelTest.h"

using namespace mdVelorinResultModel;

namespace {

struct LoadStepTest : ModelTest {
    bool step(std::int32_t number, std::int32_t item, std::int32_t reference = -1) {
        return LoadStep(number, item, model, false, reference);
    }
    void expectBounds(float highest, float lowest) const {
        EXPECT_EQ(model.Mesh.MaxValue, highest);
        EXPECT_EQ(model.Mesh.MinValue, lowest);
    }
};

TEST_F(LoadStepTest, NodeItemsAreTakenAndElementItemsAveragedWithTheZerosOfOtherTypes) {
    open(twoSquares());
    EXPECT_EQ(model.Mesh.Nodes.Value, (QList<float>{1, 2, 3, 4, 5, 6}));
    expectBounds(6, 1);
    EXPECT_EQ(model.ReferenceItemData.at(1).Values, QList<float>(6)) << "zeros of node length for every item";
    ASSERT_TRUE(step(0, 1));
    EXPECT_EQ(model.Mesh.Nodes.Value, (QList<float>{0, 5, 10, 0, 5, 10}));
    ASSERT_TRUE(step(1, 1));
    EXPECT_EQ(model.Mesh.Nodes.Value, QList<float>(6));
    expectBounds(0, 0); // the one element that exists brings in its 0
    EXPECT_TRUE(model.Mesh.Nodes[1].Active && !model.Mesh.Nodes[2].Active);

    VrfBuilder file = twoSquares();
    file.steps[1].types = {-1, -2};
    open(file, 1, 1);
    expectBounds(-1.0E+20f, 1.0E+20f); // no element is left
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
    EXPECT_FALSE(step(-1, 0));
    EXPECT_FALSE(step(0, -1));
    ASSERT_TRUE(step(0, 5));
    EXPECT_EQ(model.CurrentItem, -1);
    EXPECT_EQ(model.Mesh.Nodes.Value, QList<float>(6));
    ResultModel copy = model;
    ASSERT_TRUE(LoadStep(0, 0, copy, true, -1));
    EXPECT_EQ(model.Mesh.Nodes.Value, QList<float>(6)) << "copies are independent";
    CloseResultFile(model);
    EXPECT_FALSE(step(0, 0));
    EXPECT_TRUE(LoadStep(1, 1, copy, true, -1)) << "the copy has its own share of the file";
}

TEST_F(LoadStepTest, FewerValuesThanNodesOrElements) {
    VrfBuilder file = twoSquares();
    file.items[1].elementType = 1;
    file.steps[0].types = {1, 1};
    file.steps[0].values = {{7, 7, 7}, {4}};
    open(file, 1);
    ASSERT_TRUE(step(0, 0));
    EXPECT_EQ(model.Mesh.Nodes.Value, (QList<float>{7, 7, 7, 8, 10, 12})) << "the rest keeps what it had";
    ASSERT_TRUE(step(0, 1));
    EXPECT_EQ(model.Mesh.Nodes.Value, (QList<float>{4, 2, 0, 4, 2, 0}));
}

} // namespace
