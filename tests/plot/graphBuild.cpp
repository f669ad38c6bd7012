#include "platform/base/MessageStyle.h"
#include "plot/mdGraph.h"
#include "result/VrfBuilder.h"
#include "view/clsMouse.h"

#include <gtest/gtest.h>
#include <numeric>
#include <random>

using namespace mdGraph;

namespace {

/// Each series' label and its points.
QStringList allSeries(const clsPlot& plot) {
    QStringList texts;
    for (int series = 1; series <= plot.DataLegendCount(); ++series) {
        texts += plot.DataLabel(series);
        for (int point = 1; point <= plot.DataCount(series); ++point)
            texts.back() += u" %1,%2"_s.arg(plot.DataBase(series, point)).arg(plot.DataPlot(series, point));
    }
    return texts;
}

class GraphBuildTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(mdVelorinResultModel::LoadResultFile(folder.Write(twoSquares().Bytes()), model));
        model.CurrentItem = 0;
        graph.Plot.GraphTitle = QStringLiteral("kept");
        graph.Plot.DataAdd(3, 0, 0);
    }

    TestFolder folder;
    ResultModel model;
    Graph graph;
    const DifferenceSettings plain{.StandardStep = 0}, toFirst{.StandardStep = 0, .ApplyContour = true};
};

TEST_F(GraphBuildTest, HistoryHasASeriesAnObjectInTheOrderOfPicking) {
    const SelectionSnapshot picked{PickedKind::Nodes, {5, 0, 9}};
    ASSERT_TRUE(BuildHistory(model, plain, picked, graph));
    EXPECT_EQ(allSeries(graph.Plot),
              QStringList({u"節点 : 6 0,6 1.25,12"_s, u"節点 : 1 0,1 1.25,2"_s, u"節点 : 10"_s}));
    EXPECT_EQ(graph.Caption + u'|' + graph.ItemName + u'|' + graph.Plot.GraphTitle, u"変位 時系列図|変位|kept");
    EXPECT_EQ(graph.Plot.Orientation, 0);
    EXPECT_EQ(graph.Selection.Index, picked.Index);
    EXPECT_EQ(model.CurrentStep, -1) << "the model stays as it is";
    model.CurrentItem = 2;
    ASSERT_TRUE(BuildHistory(model, toFirst, {PickedKind::Elements, {1}}, graph));
    EXPECT_EQ(allSeries(graph.Plot) + QStringList{graph.Caption}, QStringList({u"要素 : 2"_s, u" 時系列図"_s}))
        << "there is no such item";

    // A step without some of the values, and one without any.
    VrfBuilder file = twoSquares();
    file.steps[0].values[0].resize(1);
    file.steps.push_back(file.steps[1]);
    file.steps[2].values[0].clear();
    file.steps.push_back(file.steps[0]);
    ASSERT_TRUE(mdVelorinResultModel::LoadResultFile(folder.Write(file.Bytes()), model));
    model.CurrentItem = 0;
    ASSERT_TRUE(BuildHistory(model, plain, {PickedKind::Nodes, {2, 0, 9}}, graph));
    EXPECT_TRUE(GraphText(graph, u',')
                    .endsWith(u"\r\n0.00000E0,,1.00000E0,\r\n1.25000E0,6.00000E0,2.00000E0,\r\n0.00000E0,,1.00000E0,"));
}

TEST_F(GraphBuildTest, DistributionHasASeriesAStepAlongTheAxis) {
    ASSERT_TRUE(BuildDistribution(model, plain, {PickedKind::Nodes, {2, 0, 1}}, graph));
    EXPECT_EQ(allSeries(graph.Plot), QStringList({u"ステップ : 1 0,1 1,2 2,3"_s, u"ステップ : 2 0,2 1,4 2,6"_s}));
    EXPECT_EQ(graph.Caption, u"変位 分布図");
    EXPECT_EQ(graph.Plot.Orientation, 0);
    EXPECT_EQ(graph.RunAxis, 1);
    EXPECT_EQ(graph.Selection.Index, (std::vector<std::int32_t>{0, 1, 2}));

    ASSERT_TRUE(BuildDistribution(model, toFirst, {PickedKind::Nodes, {1, 4, -7}}, graph));
    EXPECT_EQ(allSeries(graph.Plot), QStringList({u"ステップ : 1 1,0 0,0"_s, u"ステップ : 2 1,5 0,2"_s}));
    EXPECT_EQ(graph.Plot.Orientation, 1) << "the extents are equal";
    EXPECT_EQ(graph.RunAxis, 2);
    ASSERT_TRUE(
        BuildDistribution(model, {.StandardStep = -1, .ApplyContour = true}, {PickedKind::Elements, {1, 0}}, graph));
    EXPECT_EQ(allSeries(graph.Plot), QStringList({u"ステップ : 1 0.5,1 1.5,2"_s, u"ステップ : 2 0.5,2 1.5,4"_s}));
}

TEST_F(GraphBuildTest, NothingPickedAndNoForAnAnswer) {
    qint64 asked = 0;
    const auto no = [&](qint64 done, qint64 total) {
        asked += total * 10 + done;
        return false;
    };
    EXPECT_FALSE(BuildHistory(model, plain, {PickedKind::Nodes, {0}}, graph, no));
    EXPECT_FALSE(BuildDistribution(model, plain, {PickedKind::Nodes, {0}}, graph, no));
    EXPECT_EQ(asked, 2 * 20);
    EXPECT_EQ(graph.Plot.DataCount(3), 1) << "as it was";
    EXPECT_EQ(graph.Caption, u"グラフウィンドウ");
    EXPECT_TRUE(BuildDistribution(model, plain, {}, graph));
    EXPECT_TRUE(graph.Invalid);
    EXPECT_EQ(graph.Plot.DataLegendCount(), 0);
}

TEST_F(GraphBuildTest, PointsLeadBackToStepAndObject) {
    VrfBuilder file = twoSquares();
    file.steps.resize(6, file.steps[0]);
    for (int step = 0; step < 6; ++step)
        for (int node = 0; node < 6; ++node)
            file.steps[step].values[0][node] = float(10 * step + node);
    file.steps[1].values[0].resize(3);
    file.steps[2].values[0].clear();
    file.steps[4].values[0].resize(5);
    ASSERT_TRUE(mdVelorinResultModel::LoadResultFile(folder.Write(file.Bytes()), model));
    model.CurrentItem = 0;
    for (const auto builder : {BuildHistory, BuildDistribution}) {
        ASSERT_TRUE(builder(model, plain, {PickedKind::Nodes, {4, 0, 5, 2}}, graph, {}));
        int points = 0;
        for (int series = 1; series <= graph.Plot.DataLegendCount(); ++series)
            for (int point = 1; point <= graph.Plot.DataCount(series); ++point, ++points) {
                const auto origin = OriginOf(graph, series, point).value();
                EXPECT_EQ(float(10 * origin.Step + origin.Object), graph.Plot.DataPlot(series, point));
            }
        EXPECT_EQ(points, 4 + 2 + 0 + 4 + 3 + 4);
        EXPECT_FALSE(OriginOf(graph, 1, 0) || OriginOf(graph, 1, 6) || OriginOf(graph, 9, 1));
    }
}

TEST(OrderAlongAxis, IsThatOfAPlainSelectionSortAlsoWithEqualCoordinates) {
    std::mt19937 random(5);
    const auto number = [&](int most) { return std::uniform_int_distribution(0, most)(random); };
    for (int round = 0; round < 2000; ++round) {
        MeshData mesh;
        SelectionSnapshot selection{PickedKind::Elements, {}};
        const bool across = round % 2;
        const int differing = number(20), count = number(40);
        for (std::int32_t i = 0; i < count; ++i) {
            const bool isNaN = round % 5 == 0 && number(5) == 0;
            const float far = isNaN ? NAN : float(number(differing)) - 10, near = 0.001f * float(number(3));
            mesh.Elements.CentreX.append(across ? far : near);
            mesh.Elements.CentreY.append(across ? near : far);
            selection.Index.push_back(i);
        }
        const AxisOrder order = OrderAlongAxis(mesh, selection);
        QList<float> keys = order.RunAxis == 1 ? mesh.Elements.CentreX : mesh.Elements.CentreY;
        QList<std::int32_t> objects(count);
        std::iota(objects.begin(), objects.end(), 0);
        for (qsizetype i = 0; i < keys.size(); ++i) {
            const auto before = [&](float a, float b) { return order.RunAxis == 1 ? a > b : a < b; };
            const auto first = std::max_element(keys.begin() + i, keys.end(), before) - keys.begin();
            std::swap(keys[i], keys[first]);
            std::swap(objects[i], objects[first]);
            ASSERT_EQ(selection.Index[std::size_t(i)], objects[i]);
            ASSERT_TRUE(order.Positions[std::size_t(i)] == keys[i] || std::isnan(keys[i]));
        }
    }
}

TEST(mdGraph, GraphsOfNothingOrOfManyAreAskedAbout) {
    EXPECT_FALSE(GraphRequest(1, 9) || GraphRequest(100, 9));
    EXPECT_TRUE(GraphRequest(101, 9)->Text.startsWith(u" 現在、101 個のオブジェクトが選択されています。\r\n 多数の"));
    EXPECT_TRUE(GraphRequest(0, 9)->Flags == MessageStyle::Information &&
                GraphRequest(101, 9)->Flags == MessageStyle::Ask &&
                GraphRequest(1 << 20, 1 << 20)->Flags == MessageStyle::Stop);
}

} // namespace
