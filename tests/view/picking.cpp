#include "view/picking.h"

#include "Picture.h"
#include "platform/device/TraceDevice.h"
#include "result/ModelTest.h"
#include "view/pickedValues.h"

using namespace mdPicking;

namespace {

using Ids = std::vector<int>;

/// Two quads of type 1 side by side, one of type 2 over the first and one of type 1 over both, a line of type 3, an
/// element without nodes and one of type 4 with a node missing. In the second step only the second quad and the line
/// exist.
struct PickingTest : ModelTest {
    PickingTest() {
        VrfBuilder file;
        file.items = {{u"節点"_s, -1}, {u"一"_s, 1}, {u"二"_s, 2}, {u"線"_s, 3}, {u"欠"_s, 4}};
        file.nodes.resize(9);
        file.elements = {{1, 2, 3, 4}, {2, 5, 6, 3}, {1, 2, 3, 4}, {1, 5, 6, 4}, {7, 8}, {0, 0, 0}, {1, 0, 2, 4}};
        const std::vector<std::vector<double>> values(5);
        file.steps = {{0, {}, {1, 1, 2, 1, 3, 1, 4}, values}, {1, {}, {-1, 1, -1, -1, 3, -1, -1}, values}};
        open(file);
        view.NodePoints = {{10, 10}, {30, 10},   {30, 30},   {10, 30}, {50, 10},
                           {50, 30}, {100, 100}, {130, 140}, {11, 10}};
    }
    void loadSecondStep() { ASSERT_TRUE(mdVelorinResultModel::LoadStep(1, 0, model, false, -1)); }
    void select(int kind, const Ids& ids) {
        selection.Clear();
        for (const int id : ids)
            selection.Add(id, kind);
    }
    Ids selected() const {
        Ids ids;
        for (int i = 0; i < selection.Count(); ++i)
            ids.push_back(selection.Item(i));
        return ids;
    }
    Ids click(int item, DevicePoint at, int mode = Mode::Replace, int tolerance = 3) {
        model.CurrentItem = item;
        PickPoint(model, view, selection, mode, at, tolerance);
        return selected();
    }
    Ids drag(int item, DevicePoint from, DevicePoint to, int mode = Mode::Replace) {
        model.CurrentItem = item;
        PickRectangle(model, view, selection, mode, std::array{from, to}, 3);
        return selected();
    }
    std::string marks() const {
        TraceDevice device(200, 200);
        DrawSelection(device, model, view, selection, 5);
        return device.Trace().toStdString();
    }

    ViewState view;
    clsMouse selection;
};

TEST_F(PickingTest, ClickTakesTheNearestNodeOrTheFirstElementThatHoldsThePoint) {
    const struct {
        int item;
        DevicePoint at;
        Ids hit;
        int tolerance = 3;
    } cases[] = {
        {0, {100, 106}, {6}},                        // exactly twice the tolerance away
        {0, {104, 105}, {}},                         // less than 6 in both directions, more than 6 away
        {0, {100, 106}, {}, -3}, {0, {11, 10}, {0}}, // node 8 there has no element
        {0, {10, 20}, {0}, 5},                       // node 3 is as near
        {2, {20, 20}, {2}},      {3, {20, 20}, {}},       {1, {10, 10}, {0}},
        {1, {30, 10}, {1}},      {3, {119, 117}, {4}},    // 5 from (115, 120), the middle of the line, at right angles
        {3, {119, 117}, {}, 2},  {3, {136, 148}, {4}, 5}, // 10 beyond an end
        {3, {93, 92}, {}, 5},    {4, {15, 15}, {6}},      {4, {25, 25}, {}}};
    for (const auto& c : cases)
        EXPECT_EQ(click(c.item, c.at, Mode::Replace, c.tolerance), c.hit) << c.item << ' ' << c.at.X << ' ' << c.at.Y;
    EXPECT_EQ(selection.ObjectType(), PickedKind::Nothing);
    loadSecondStep();
    EXPECT_TRUE(click(0, {10, 10}).empty() && click(1, {20, 20}).empty()) << "its elements do not exist";
}

TEST_F(PickingTest, RectangleTakesWhatLiesInItWithItsEdges) {
    EXPECT_EQ(drag(0, {13, 13}, {47, 27}), (Ids{0, 1, 2, 3, 4, 5})) << "exactly the tolerance away";
    EXPECT_EQ(drag(0, {47, 13}, {14, 26}), (Ids{1, 4})) << "from any corner";
    EXPECT_EQ(drag(1, {27, 27}, {13, 14}), Ids{}) << "all corners must be in";
    EXPECT_EQ(drag(1, {0, 0}, {200, 200}), (Ids{0, 1, 3})) << "of the item's type, and with nodes";
    EXPECT_EQ(drag(4, {8, 8}, {32, 32}), Ids{6}) << "a missing node counts nothing";
    view.NodePoints.clear();
    for (const int item : {0, 1, 3})
        EXPECT_TRUE(click(item, {10, 10}).empty() && drag(item, {0, 0}, {99, 99}).empty()) << item;
}

TEST_F(PickingTest, ModesAddAndToggleWhatWasSelectedByItsNumbersAlone) {
    click(0, {50, 10});
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(click(0, {30, 10}, Mode::Add), (Ids{1, 4})) << "in ascending order, and each once";
    EXPECT_EQ(click(0, {30, 10}, Mode::Toggle), Ids{4});
    EXPECT_EQ(drag(0, {8, 8}, {52, 12}, Mode::Toggle), (Ids{0, 1}));
    const Ids all{0, 2, 4, 5, 7, 999, -5};
    select(PickedKind::Nodes, all);
    EXPECT_EQ(click(1, {200, 200}, Mode::Add), (Ids{0, 2, 4, 5}));
    EXPECT_EQ(selection.ObjectType(), PickedKind::Elements);
    EXPECT_EQ(drag(1, {200, 200}, {210, 210}, Mode::Toggle), (Ids{0, 5})) << "other types drop out";
    loadSecondStep();
    select(PickedKind::Nodes, all);
    EXPECT_EQ(click(0, {200, 200}, Mode::Add), (Ids{0, 2, 4, 5, 7})) << "also those not active";
    EXPECT_EQ(drag(0, {200, 200}, {210, 210}, Mode::Add), (Ids{2, 4, 5, 7}));
}

TEST_F(PickingTest, TellsTheValuesThatThereAre) {
    DifferenceSettings difference;
    model.ItemData[0].Values = {1, 2, 6, std::nanf(""), 5, 0, 7, 8, 9};
    model.ReferenceItemData = model.ItemData;
    model.ReferenceItemData[0].Values = {1, 1, 1, 1, 1, 1, 1, 1, 1};
    model.ItemData[1].Values = {-1, -3, 0.5f}; // of elements 1, 2 and 4
    const auto text = [&](int item) {
        model.CurrentItem = item;
        return SummaryText(model, difference, selection);
    };
    EXPECT_EQ(text(0), QString());
    select(PickedKind::Nodes, {0, 1, 2, 3, 8, 99});
    EXPECT_EQ(text(0), u"節点 6 個: 最小 1, 最大 6, 平均 3（値なし 3）"_s) << "no number, no element, no node";
    EXPECT_EQ(text(1), u"節点 6 個"_s) << "picked for another item";
    EXPECT_EQ(ObjectText(model, {}, 1), u"要素 2\n中心 X 0, Y 0\n一: -3"_s);
    select(PickedKind::Elements, {1, 2, 3});
    EXPECT_EQ(text(1), u"要素 3 個: 最小 -3, 最大 0.5, 平均 -1.25（値なし 1）"_s) << "one is of another type";
    difference = {.StandardStep = 1, .ApplyValue = true};
    select(PickedKind::Nodes, {2});
    EXPECT_EQ(text(0), u"節点 1 個（差分）: 最小 5, 最大 5, 平均 5"_s);
    EXPECT_EQ(ObjectText(model, difference, 2), u"節点 3\nX 0, Y 0\n節点: 6\nステップ 2 との差: 5"_s);
    EXPECT_TRUE(ObjectText(model, {}, 3).endsWith(u"節点: 値なし"));
}

TEST_F(PickingTest, NothingToPickFrom) {
    const Ids old{1};
    select(PickedKind::Nodes, old);
    selection.Add(2, PickedKind::Elements);
    selection.Remove(1);
    for (const int item : {-1, 5}) {
        EXPECT_EQ(click(item, {10, 10}, Mode::Toggle), old);
        EXPECT_EQ(drag(item, {0, 0}, {99, 99}, Mode::Add), old);
    }
    mdVelorinResultModel::CloseResultFile(model);
    EXPECT_EQ(click(0, {10, 10}), old);
    EXPECT_EQ(drag(0, {0, 0}, {99, 99}), old);
    selection.Remove(0);
    EXPECT_TRUE(selection.ObjectType() == PickedKind::Nothing && selection.Item(0) == -1);
}

TEST(Picking, InsideOfAPolygonIsWhatADeviceFills) {
    constexpr int side = 56;
    Dice dice(5);
    for (int round = 0; round < 300; ++round) {
        Picture filled(side, side);
        filled.With(stockPen(Stock::NullPen)).With(solidBrush(black));
        const auto polygon = dice.Points(dice.Between(3, 7), -2, round % 2 ? 10 : side);
        filled.Device.Polygon(polygon);
        for (int x = 0; x < side; ++x)
            for (int y = 0; y < side; ++y)
                ASSERT_EQ(IsInPolygon(polygon, {x, y}), filled.Image.pixel(x, y) == toPixel(black)) << round;
    }
    const DevicePoint huge[] = {{INT_MIN, INT_MIN}, {INT_MAX, INT_MIN}, {INT_MAX, INT_MAX}, {INT_MIN, INT_MAX}};
    EXPECT_TRUE(IsInPolygon(huge, {0, 0}) && !IsInPolygon(huge, {INT_MAX, 0}) && !IsInPolygon({}, {0, 0}));
}

TEST_F(PickingTest, MarksAreDrawnInTheirRasterMode) {
    EXPECT_EQ(marks(), "");
    const auto expectMarks = [this](int kind, const Ids& ids, const std::string& shapes) {
        select(kind, ids);
        EXPECT_EQ(marks(), "SaveDC\nRop2 14\nPen 0 2 0x004040ff\nBrush 0x004040ff -1\n" + shapes +
                               "StockPen 7\nStockBrush 0\nRop2 13\nRestoreDC\n");
    };
    expectMarks(PickedKind::Elements, {1, 4, 5, 99}, "PolyPolygon 2 4 2 30 10 50 10 50 30 30 30 100 100 130 140\n");
    loadSecondStep();
    expectMarks(PickedKind::Nodes, {0, 1, 99}, "Rectangle 25 5 35 15\n");
    expectMarks(PickedKind::Elements, {0, 3}, "");
    TraceDevice device(200, 200);
    DrawRubberBand(device, std::array<DevicePoint, 2>{{{7, 9}, {3, 2}}});
    EXPECT_EQ(device.Trace(), "Rop2 7\nPen 0 1 0x003f007f\nBrush 0x003f007f -1\nRectangle 7 9 3 2\n"
                              "StockPen 7\nStockBrush 0\nRop2 13\n");
    EXPECT_TRUE(PickTolerance(900, 1250) == 2 && PickTolerance(3840, 1280) == 8) << "2.5 goes to the even neighbour";
    EXPECT_TRUE(NodeMarkSize(900, 1280) == 5 && NodeMarkSize(3840, 1280) == 15);
}

} // namespace
