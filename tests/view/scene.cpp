#include "view/mdScene.h"

#include "platform/TraceDevice.h"
#include "result/VrfBuilder.h"
#include "result/mdVelorinResultModel.h"

#include <gtest/gtest.h>
#include <limits>

using namespace mdScene;

namespace {

PlotRect rectOf(float left, float top, float right, float bottom) {
    PlotRect rect;
    rect.SetRect(left, top, right, bottom);
    return rect;
}

VrfBuilder oneSquare() {
    VrfBuilder file = twoSquares();
    file.elements = {{1, 2, 5, 4}};
    file.steps = {{0, {}, {1}, {{0, 0, 0, 0, 0, 0}, {}}}};
    return file;
}

/// The pens of the defaults at 96 dpi, where a tenth of a millimetre is less than a dot.
constexpr char meshPen[] = "GeometricPen 0 1 0x00008000\n";
constexpr char linePen[] = "GeometricPen 0 2 0x00008000\n";
constexpr char oldPen[] = "StockPen 7\n";

/// A scene where the world point (x, y) falls on the device point (100 x, 100 - 100 y).
class SceneTest : public testing::Test {
protected:
    void open(const VrfBuilder& file, int step = 0) {
        ASSERT_TRUE(mdVelorinResultModel::LoadResultFile(folder.Write(file.Bytes()), model));
        ASSERT_TRUE(mdVelorinResultModel::LoadStep(step, 0, model, false, -1));
        settings.Displacement.Fiducial = 0;
    }
    Scene scene() { return {model, settings, view}; }
    PlotConverter converter(int dotsPerInch = 96) const {
        return {window, {0, 0, 200, 100}, 100, TraceDevice(200, 100, dotsPerInch)};
    }
    PaintContext compute() {
        PaintContext context;
        context.DisplacementScale = 7;
        ComputeDevicePoints(converter(), window, scene(), context);
        return context;
    }
    std::string meshTrace(int dotsPerInch = 96) {
        compute();
        TraceDevice device(200, 100, dotsPerInch);
        DrawMesh(device, converter(dotsPerInch), scene());
        return device.Trace().toStdString();
    }
    QByteArray paint(const PlotDocument& document = {0, 0, 200, 100}) {
        TraceDevice device(200, 100);
        PlotCanvas canvas(device, device, window, document, converter());
        PaintScene(canvas, false, scene());
        return device.Trace();
    }

    TestFolder folder;
    ResultModel model;
    ApplicationSettings settings;
    ViewState view;
    PlotRect window = rectOf(0, 1, 2, 0);
};

TEST_F(SceneTest, LineElementsHaveTheirOwnStyle) {
    VrfBuilder file = oneSquare();
    file.elements = {{1, 2}, {2, 3}, {4, 5}, {6}, {}};
    file.steps[0].types = {0, 3, -1, 0, 0};
    open(file);
    const std::string both = "MoveTo 0 100\nLineTo 100 100\nMoveTo 100 100\nLineTo 200 100\n";
    EXPECT_EQ(meshTrace(), std::string(meshPen) + oldPen + linePen + both + oldPen);
    // In the outline only the very first edge of a file is not its own other side.
    settings.Window.Mesh = false;
    EXPECT_EQ(meshTrace(), meshPen +
                               std::string("MoveTo 0 100\nLineTo 100 100\nMoveTo 100 100\nLineTo 0 100\n"
                                           "MoveTo 200 0\nLineTo 200 0\n") +
                               oldPen + linePen + both + oldPen);
}

TEST_F(SceneTest, EdgesToNodesThatTheMeshDoesNotHaveAreLeftOut) {
    VrfBuilder file = oneSquare();
    file.elements = {{1, 2, 99, 4}, {0, 5}, {0, -2147483647 - 1, 7}};
    file.steps[0].types = {1, 1, 1};
    open(file);
    EXPECT_EQ(meshTrace(), meshPen + std::string("MoveTo 0 100\nLineTo 100 100\nMoveTo 0 0\nLineTo 0 100\n") + oldPen +
                               linePen + "MoveTo 100 0\n" + oldPen);
    EXPECT_EQ(view.ElementCentres[0], (DevicePoint{25, 50})) << "the missing corner counts in the mean's divisor";
}

TEST_F(SceneTest, LineWidthIsTheSameOnPaperEverywhere) {
    open(oneSquare());
    auto& styles = settings.Style.LineStyles;
    styles[0] = {1, PenStyle::Dash, 0x123456};
    EXPECT_TRUE(meshTrace(600).starts_with("GeometricPen 1 2 0x00123456\n"));
    EXPECT_NE(meshTrace(600).find("GeometricPen 0 12 0x00008000\n"), std::string::npos);
    styles[0].Width = -5;
    EXPECT_TRUE(meshTrace(600).starts_with("GeometricPen 1 1 0x00123456\n"));
}

TEST_F(SceneTest, TheOriginalMeshNeedsADisplacement) {
    open(twoSquares());
    const std::string originalPen = "GeometricPen 1 1 0x008080ff\n";
    for (const int fiducial : {0, 1}) {
        settings.Displacement = {.Fiducial = fiducial, .Original = true};
        EXPECT_EQ(paint().contains(originalPen), fiducial == 1);
    }
    model.NoDisplacement = true;
    EXPECT_FALSE(paint().contains(originalPen));
}

TEST_F(SceneTest, NothingIsPaintedWithoutAWorldADeviceOrAMesh) {
    open(twoSquares());
    window = rectOf(1, 1, 1, 0);
    EXPECT_EQ(paint(), "");
    window = rectOf(0, 1, 2, 0);
    EXPECT_EQ(paint({5, 0, 5, 100}), "");
    model = {};
    EXPECT_EQ(paint(), "");
    EXPECT_FALSE(view.CoordConverter.has_value());
    EXPECT_EQ(meshTrace(), std::string(meshPen) + oldPen + linePen + oldPen);
}

/// Displacement X and Y as items of their own; the largest magnitude is Y's 2.
class DevicePointsTest : public SceneTest {
protected:
    void SetUp() override {
        VrfBuilder file = twoSquares();
        file.items = {{u"X"_qs, -1, 1}, {u"Y"_qs, -1, 2}};
        file.steps = {{0, {}, {1, 2}, {{0.5, -1, 0, 0, 0, 0}, {0, 0.5, -2, 0, 0, 0}}},
                      {1, {}, {1, 2}, {{0.5, 0, 0, 0, 0, 0}, {1, 0, 0, 0, 0, 0}}}};
        open(file);
        settings.Displacement.Scale = 254; // 96 dots at 96 dpi
    }
    using Points = std::vector<DevicePoint>;
    Points firstThree() const { return {view.NodePoints.begin(), view.NodePoints.begin() + 3}; }
    /// What the first three nodes and the scale become.
    void expect(int fiducial, const Points& points, double scale) {
        settings.Displacement.Fiducial = fiducial;
        EXPECT_DOUBLE_EQ(compute().DisplacementScale, scale) << fiducial;
        EXPECT_EQ(firstThree(), points) << fiducial;
    }
};

const std::vector<DevicePoint> undisplaced = {{0, 100}, {100, 100}, {200, 100}};

TEST_F(DevicePointsTest, EachModeOfScaleInASlideShowAndFromAReference) {
    expect(0, undisplaced, 0);
    expect(1, {{48, 100}, {4, 52}, {200, 292}}, 96);
    expect(2, {{24, 100}, {52, 76}, {200, 196}}, 48);
    expect(3, {{50, 100}, {0, 50}, {200, 300}}, 100);
    expect(4, {{}, {}, {}}, 7);
    view.SlideShowRunning = true;
    view.SlideMaxDisplacement = 4;
    expect(2, {{12, 100}, {76, 88}, {200, 148}}, 24);
    view.SlideMaxDisplacement = 0;
    expect(2, undisplaced, 0);
    ASSERT_TRUE(mdVelorinResultModel::LoadStep(0, 0, model, false, 1));
    settings.Difference.ApplyDisplacement = true;
    expect(1, {{0, 196}, {4, 52}, {200, 292}}, 96);
    window = rectOf(0, 0, 2, 1); // Y down
    expect(1, {{0, -96}, {4, 48}, {200, -192}}, 96);
}

TEST_F(DevicePointsTest, NoDisplacementOrNoneOfUseLeavesTheNodesInPlace) {
    model.ItemData[0].Values[1] = std::numeric_limits<float>::quiet_NaN();
    model.ItemData[0].Values[2] = std::numeric_limits<float>::infinity();
    expect(1, {{48, 100}, {100, 52}, {200, 292}}, 96);
    model.DisplacementItemX = model.DisplacementItemY = -1;
    for (const int fiducial : {1, 2, 3})
        expect(fiducial, undisplaced, std::array{0, 96, 0, 100}[std::size_t(fiducial)]);
}

TEST_F(DevicePointsTest, CentresAreTheMeanOfTheDisplacedCorners) {
    settings.Displacement.Fiducial = 1; // the first square's corners: 48 100, 4 52, 100 0, 0 0
    compute();
    EXPECT_EQ(view.ElementCentres, (Points{{38, 38}, {126, 86}}));
    VrfBuilder file = oneSquare();
    file.nodes[1] = {0.01, 0.03};
    file.elements = {{1, 2}, {}, {1}};
    file.steps[0].types = {1, 1, -1};
    open(file);
    compute();
    EXPECT_EQ(view.ElementCentres, (Points{{0, 98}, {0, 0}, {0, 100}})) << "halves go to the even neighbour";
}

} // namespace
