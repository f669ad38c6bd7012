#include "DrawnScene.h"

#include <limits>

using namespace mdScene;

namespace {

struct Vectors : DrawnScene {
    void SetUp() override {
        addNode({100, 100});
        addNode({300, 300});
        addNode({500, 500}, false);
        addNode({700, 700});
        addItem(-1, {0.5, 0, 9, std::numeric_limits<float>::quiet_NaN()});
        addItem(-1, {0, 0.25, 9, 0});
        useItems(0, 1);
        settings.Vector.Fiducial = 1; // 20 mm: 200 units for 1.0
    }
    std::string draw() {
        context.VectorScale = 0;
        return traceOf([&](DeviceContext& device) { DrawVectors(device, converter(), window, scene(), context); });
    }
};

const std::string toTheRight = "MoveTo 50 100\nLineTo 150 100\nMoveTo 127 91\nLineTo 150 100\nLineTo 127 109\n";
const std::string upwards = "MoveTo 300 325\nLineTo 300 275\nMoveTo 296 287\nLineTo 300 275\nLineTo 304 287\n";

TEST_F(Vectors, AnglesOfTheAxesAndBetweenThem) {
    const std::array<double, 3> angles[] = {
        {0, 2, M_PI * 0.5},    {0, -2, M_PI * 1.5},  {2, 0, 0}, {0, 0, 0}, {-2, 0, M_PI},
        {-1, -1, M_PI * 1.25}, {1, -1, -M_PI * 0.25}};
    for (const auto& [x, y, angle] : angles)
        EXPECT_NEAR(ArrowAngle(float(x), float(y)), angle, 1e-14) << x << ' ' << y;
}

TEST_F(Vectors, StandOnActiveNodesWithYUpInEachScale) {
    EXPECT_EQ(draw(), toTheRight + upwards);
    EXPECT_EQ(context.VectorScale, 200);
    window.SetRect(0, 0, 2, 1);
    EXPECT_EQ(draw(), toTheRight + "MoveTo 300 275\nLineTo 300 325\nMoveTo 304 313\nLineTo 300 325\nLineTo 296 313\n");
    window.SetRect(0, 1, 2, 0);
    settings.Vector.Fiducial = 2; // the largest, 9, belongs to a node that is not drawn
    draw();
    EXPECT_DOUBLE_EQ(context.VectorScale, 200.0 / 9);
    slideShow.SlideShowRunning = true;
    slideShow.SlideMaxVector = 1;
    EXPECT_EQ(draw(), toTheRight + upwards);
    slideShow.SlideMaxVector = 0;
    EXPECT_EQ(draw(), "");
    EXPECT_EQ(context.VectorScale, 0);
    settings.Vector.Fiducial = 1;
    settings.Vector.Scale = 0;
    EXPECT_EQ(draw(), "");
}

TEST_F(Vectors, TakeTwoItemsOfTheSameObjects) {
    MeshData& mesh = model.Mesh;
    mesh.ElementCount = 4;
    mesh.Elements.ElementType = {4, 3, 4, 4};
    mesh.Elements.FirstCorner = {0, 3, 6, 6, 9}; // the third has no corners
    view.ElementCentres = {{100, 100}, {200, 200}, {0, 0}, {300, 300}};
    addItem(4, {0.5, 7, 7, 0});
    addItem(4, {0, 7, 7, 0.25});
    useItems(2, 3);
    EXPECT_EQ(draw(), toTheRight + upwards) << "the value at the element's index";
    for (const auto& [horz, vert] : {std::pair{0, 2}, {-1, 0}, {0, 4}}) {
        useItems(horz, vert);
        EXPECT_EQ(draw(), "") << horz << ' ' << vert;
    }
    useItems(0, 1);
    for (const int set : {-1, 1}) {
        settings.Vector.DefaultItemSet = set;
        EXPECT_EQ(draw(), "") << set;
    }
}

} // namespace
