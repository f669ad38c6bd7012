#include "DrawnScene.h"

#include <limits>

using namespace mdScene;

namespace {

constexpr double pi = 3.14159265358979;
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

struct Vectors : DrawnScene {
    void SetUp() override {
        addNode({100, 100});
        addNode({300, 300});
        addNode({500, 500}, false);
        addNode({700, 700});
        addItem(u"u"_qs, -1, {0.5, 0, 9, nan});
        addItem(u"v"_qs, -1, {0, 0.25, 9, 0});
        useItems(0, 1);
        settings.Vector.Fiducial = 1; // 20 mm: 200 units for 1.0
    }
    void useItems(int horz, int vert) {
        settings.Vector.ItemSets = {{u"set"_qs, horz, vert}};
        settings.Vector.ItemSetCount = 1;
        settings.Vector.DefaultItemSet = 0;
    }
    std::string draw(bool selects = false) {
        context.VectorScale = 0;
        return traceOf([&](DeviceContext& device) { DrawVectors(device, converter(window), window, scene(), context); },
                       selects);
    }
};

const std::string toTheRight = "MoveTo 50 100\nLineTo 150 100\nMoveTo 127 91\nLineTo 150 100\nLineTo 127 109\n";
const std::string upwards = "MoveTo 300 325\nLineTo 300 275\nMoveTo 296 287\nLineTo 300 275\nLineTo 304 287\n";

TEST(ArrowAngle, OfEachAxisAndQuarter) {
    EXPECT_EQ(ArrowAngle(0, 2), pi * 0.5);
    EXPECT_EQ(ArrowAngle(0, -2), pi * 1.5);
    EXPECT_EQ(ArrowAngle(2, 0), 0);
    EXPECT_EQ(ArrowAngle(-2, 0), pi);
    EXPECT_DOUBLE_EQ(ArrowAngle(-1, 1), pi - std::atan(1.0));
    EXPECT_DOUBLE_EQ(ArrowAngle(-1, -1), pi + std::atan(1.0));
    EXPECT_DOUBLE_EQ(ArrowAngle(1, -1), -std::atan(1.0)) << "the fourth quarter stays negative";
}

TEST_F(Vectors, ArrowIsCentredAndItsBarbsAreAQuarterOfIt) {
    const auto arrow = [](float vx, float vy) {
        return traceOf([&](DeviceContext& device) { DrawArrow(device, 100, 100, vx, vy, 10); });
    };
    EXPECT_EQ(arrow(0, 10), "MoveTo 100 50\nLineTo 100 150\nMoveTo 109 127\nLineTo 100 150\nLineTo 91 127\n");
    EXPECT_EQ(arrow(-3, 4), "MoveTo 115 80\nLineTo 85 120\nMoveTo 95 113\nLineTo 85 120\nLineTo 89 108\n");
    EXPECT_EQ(arrow(0, 0), "MoveTo 100 100\nLineTo 100 100\nMoveTo 100 100\nLineTo 100 100\nLineTo 100 100\n");
}

TEST_F(Vectors, StandOnActiveNodesWithYUp) {
    EXPECT_EQ(draw(true), "GeometricPen 0 1 0x00c00000\n" + toTheRight + upwards + "StockPen 7\n");
    EXPECT_EQ(context.VectorScale, 200);
    window.SetRect(0, 0, 2, 1);
    EXPECT_EQ(draw(), toTheRight + "MoveTo 300 275\nLineTo 300 325\nMoveTo 304 313\nLineTo 300 325\nLineTo 296 313\n");
}

TEST_F(Vectors, ScaleModes) {
    settings.Vector.Fiducial = 2; // the largest, 9, belongs to a node that is not drawn
    draw();
    EXPECT_DOUBLE_EQ(context.VectorScale, 200.0 / 9);
    view.SlideShowRunning = true;
    view.SlideMaxVector = 1;
    EXPECT_EQ(draw(), toTheRight + upwards);
    view.SlideMaxVector = 0;
    EXPECT_EQ(draw(true), "");
    EXPECT_EQ(context.VectorScale, 0);
    settings.Vector.Fiducial = 1;
    settings.Vector.Scale = 0;
    EXPECT_EQ(draw(true), "");
}

TEST_F(Vectors, OnElementsTakeTheValueAtTheElementsIndex) {
    addElement({100, 100}, 4);
    addElement({200, 200}, 3);
    addElement({0, 0}, 4, 0);
    addElement({300, 300}, 4);
    addItem(u"s"_qs, 4, {0.5, 7, 7, 0});
    addItem(u"t"_qs, 4, {0, 7, 7, 0.25});
    useItems(2, 3);
    EXPECT_EQ(draw(), toTheRight + upwards);
}

TEST_F(Vectors, NothingWithoutTwoItemsOfTheSameObjects) {
    addItem(u"s"_qs, 4, {1});
    for (const auto& [horz, vert] : {std::pair{0, 2}, {-1, 0}, {0, 3}}) {
        useItems(horz, vert);
        EXPECT_EQ(draw(true), "") << horz << ' ' << vert;
    }
    useItems(0, 1);
    for (const int set : {-1, 1}) {
        settings.Vector.DefaultItemSet = set;
        EXPECT_EQ(draw(true), "") << set;
    }
}

} // namespace
