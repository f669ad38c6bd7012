#include "DrawnScene.h"
#include "Picture.h"

#include <limits>

using namespace mdScene;

namespace {

using Points = std::vector<DevicePoint>;

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
struct SceneTest : DrawnScene {
    void SetUp() override { settings.Displacement.Fiducial = 0; }
    PlotConverter converter(int dotsPerInch = 96) const {
        return {window, {0, 0, 200, 100}, 100, TraceDevice(200, 100, dotsPerInch)};
    }
    PaintContext compute() {
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
};

TEST_F(SceneTest, AnElementThatComesAgainLeavesAllLinesInPlace) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        Dice dice(seed);
        VrfBuilder file = twoSquares();
        file.steps.resize(1);
        for (int e = dice.Between(1, 6); e > 0; --e) {
            const bool again = dice.Between(0, 2) > 0;
            file.elements.push_back(again ? file.elements.back() : std::vector<qint32>{});
            for (int k = dice.Between(3, 5); !again && k > 0; --k)
                file.elements.back().push_back(dice.Between(1, 6));
            file.steps[0].types.push_back(dice.Between(-1, 4));
        }
        open(file);
        compute();
        Picture usual(200, 100), every(200, 100);
        DrawMesh(usual.Device, converter(), scene());
        EveryCall device(every.Image);
        DrawMesh(device, converter(), scene());
        EXPECT_EQ(usual.Image, every.Image) << seed;
    }
}

TEST_F(SceneTest, LineElementsHaveTheirOwnStyle) {
    VrfBuilder file = oneSquare();
    file.elements = {{1, 2}, {2, 3}, {4, 5}, {6}, {}};
    file.steps[0].types = {0, 3, -1, 0, 0};
    open(file);
    const std::string lines =
        std::string(oldPen) + linePen + "MoveTo 0 100\nLineTo 100 100\nMoveTo 100 100\nLineTo 200 100\n" + oldPen;
    EXPECT_EQ(meshTrace(), meshPen + lines);
    // In the outline only the very first edge of a file is not its own other side.
    settings.Window.Mesh = false;
    EXPECT_EQ(meshTrace(), meshPen +
                               std::string("MoveTo 0 100\nLineTo 100 100\nMoveTo 100 100\nLineTo 0 100\n"
                                           "MoveTo 200 0\nLineTo 200 0\n") +
                               lines);
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
    for (const auto& [width, units] : {std::pair{1, "2"}, {-5, "1"}, {10, "24"}}) {
        settings.Style.LineStyles[0] = {width, PenStyle::Dash, 0x123456};
        EXPECT_TRUE(meshTrace(600).starts_with(std::string("GeometricPen 1 ") + units + " 0x00123456\n")) << width;
    }
}

TEST_F(SceneTest, TheOriginalMeshNeedsADisplacement) {
    open(twoSquares());
    settings.Displacement.Original = true;
    for (const auto& [fiducial, none] : {std::pair{0, false}, {1, false}, {1, true}}) {
        settings.Displacement.Fiducial = fiducial;
        model.NoDisplacement = none;
        EXPECT_EQ(paint().contains("GeometricPen 1 1 0x008080ff\n"), fiducial == 1 && !none);
    }
}

TEST_F(SceneTest, NothingIsPaintedWithoutAWorldADeviceOrAMesh) {
    open(twoSquares());
    EXPECT_EQ(paint({5, 0, 5, 100}), "");
    window.SetRect(1, 1, 1, 0);
    EXPECT_EQ(paint(), "");
    window.SetRect(0, 1, 2, 0);
    model = {};
    EXPECT_EQ(paint(), "");
    EXPECT_FALSE(view.CoordConverter.has_value());
    EXPECT_EQ(meshTrace(), std::string(meshPen) + oldPen + linePen + oldPen);
}

/// Displacement X and Y as items of their own; the largest magnitude is Y's 2.
struct DevicePointsTest : SceneTest {
    void SetUp() override {
        VrfBuilder file = twoSquares();
        file.items = {{u"X"_s, -1, 1}, {u"Y"_s, -1, 2}};
        file.steps = {{0, {}, {1, 2}, {{0.5, -1, 0, 0, 0, 0}, {0, 0.5, -2, 0, 0, 0}}},
                      {1, {}, {1, 2}, {{0.5, 0, 0, 0, 0, 0}, {1, 0, 0, 0, 0, 0}}}};
        open(file);
        settings.Displacement.Scale = 254; // 96 dots at 96 dpi
    }
    /// What the first three nodes and the scale become.
    void expect(int fiducial, const Points& points, double scale) {
        settings.Displacement.Fiducial = fiducial;
        EXPECT_DOUBLE_EQ(compute().DisplacementScale, scale) << fiducial;
        EXPECT_EQ(Points(view.NodePoints.begin(), view.NodePoints.begin() + 3), points) << fiducial;
    }
};

const Points undisplaced = {{0, 100}, {100, 100}, {200, 100}};

TEST_F(DevicePointsTest, EachModeOfScaleInASlideShowAndFromAReference) {
    expect(0, undisplaced, 0);
    expect(1, {{48, 100}, {4, 52}, {200, 292}}, 96);
    expect(2, {{24, 100}, {52, 76}, {200, 196}}, 48);
    expect(3, {{50, 100}, {0, 50}, {200, 300}}, 100);
    expect(4, {{}, {}, {}}, 7);
    slideShow.SlideShowRunning = true;
    slideShow.SlideMaxDisplacement = 4;
    expect(2, {{12, 100}, {76, 88}, {200, 148}}, 24);
    slideShow.SlideMaxDisplacement = 0;
    expect(2, undisplaced, 0);
    ASSERT_TRUE(mdVelorinResultModel::LoadStep(0, 0, model, false, 1));
    settings.Difference.ApplyDisplacement = true;
    expect(1, {{0, 196}, {4, 52}, {200, 292}}, 96);
    window.SetRect(0, 0, 2, 1); // Y down
    expect(1, {{0, -96}, {4, 48}, {200, -192}}, 96);
}

TEST_F(DevicePointsTest, NoDisplacementOrNoneOfUseLeavesTheNodesInPlace) {
    model.ItemData[0].Values[1] = std::numeric_limits<float>::quiet_NaN();
    model.ItemData[0].Values[2] = std::numeric_limits<float>::infinity();
    expect(1, {{48, 100}, {100, 52}, {200, 292}}, 96);
    model.DisplacementItemX = model.DisplacementItemY = -1;
    for (const auto& [fiducial, scale] : {std::pair{1, 96}, {2, 0}, {3, 100}})
        expect(fiducial, undisplaced, scale);
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
    settings.Displacement.Fiducial = 0;
    compute();
    EXPECT_EQ(view.ElementCentres, (Points{{0, 98}, {0, 0}, {0, 100}})) << "halves go to the even neighbour";
}

} // namespace
