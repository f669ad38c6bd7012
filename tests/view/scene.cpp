#include "DrawnScene.h"
#include "Picture.h"

#include "result/ValueBounds.h"
#include "view/scene/Session.h"
#include "view/scene/meshFade.h"

#include <limits>

using namespace mdScene;

namespace {

using Points = std::vector<DevicePoint>;

VrfBuilder squaresWith(const std::vector<std::vector<qint32>>& elements, const std::vector<qint32>& types) {
    VrfBuilder file = twoSquares();
    file.elements = elements;
    file.steps = {{0, {}, types, {{0, 0, 0, 0, 0, 0}, {}}}};
    return file;
}

/// A scene where the world point (x, y) falls on the device point (100 x, 100 - 100 y).
struct SceneTest : DrawnScene {
    void SetUp() override { settings.Displacement.Fiducial = 0; }
    PlotConverter converter() const { return {window, {0, 0, 200, 100}, 100, TraceDevice(200, 100)}; }
    void compute() {
        context.DisplacementScale = 7;
        ComputeDevicePoints(converter(), window, scene(), context);
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
        std::vector<std::vector<qint32>> elements(1, {1, 2, 5, 4});
        std::vector<qint32> types(8);
        for (qint32& type : types) {
            type = dice.Between(-1, 4);
            elements.push_back(elements.back());
            if (dice.Between(0, 2) == 0)
                elements.back()[std::size_t(dice.Between(0, 3))] = dice.Between(1, 6);
        }
        types.push_back(1);
        open(squaresWith(elements, types));
        compute();
        Picture usual(200, 100), every(200, 100);
        EveryCall device(every.Image);
        DrawMesh(usual.Device, converter(), scene());
        DrawMesh(device, converter(), scene());
        EXPECT_EQ(usual.Image, every.Image) << seed;
    }
}

TEST_F(SceneTest, APartOfTheMeshIsPaintedAsIfAllOfItWere) {
    constexpr qint32 across = 41;
    VrfBuilder file = squaresWith({}, std::vector<qint32>((across - 1) * (across - 1), 1));
    file.nodes.clear();
    for (qint32 i = 0; i < across * across; ++i)
        file.nodes.push_back({i % across * 0.05, i / across * 0.05});
    for (qint32 e = 1; e < across * (across - 1); ++e)
        if (e % across > 0)
            file.elements.push_back({e, e + 1, e + across + 1, e + across});
    file.steps[0].values[0].clear();
    for (std::size_t i = 0; i < file.nodes.size(); ++i)
        file.steps[0].values[0].push_back(double(i * i % 31));
    open(file);
    for (unsigned seed = 0; seed < 60; ++seed) {
        Dice dice(seed);
        settings.Window.Mesh = seed % 3 > 0;
        settings.Style.LineStyles[0].Width = dice.Between(0, 1) * 40;
        const float left = float(dice.Between(-20, 210)) / 100, top = float(dice.Between(-20, 220)) / 100;
        window.SetRect(left, top, left + 0.4f, top - 0.2f);
        const PlotConverter zoomed(window, {0, 0, 200, 100}, 500, TraceDevice(200, 100));
        Picture usual(200, 100, 4), every(200, 100);
        EveryCall everyDevice(every.Image);
        for (DeviceContext* device :
             {static_cast<DeviceContext*>(&usual.Device), static_cast<DeviceContext*>(&everyDevice)}) {
            PlotCanvas canvas(*device, *device, window, {0, 0, 200, 100}, zoomed);
            PaintScene(canvas, false, scene());
        }
        EXPECT_EQ(usual.Image, every.Image) << seed;
    }
}

TEST_F(SceneTest, EdgesInTheirStylesAsFarAsTheMeshHasTheirNodes) {
    const auto expectMesh = [this](const std::string& edges, const std::string& lineElements) {
        compute();
        TraceDevice device(200, 100);
        DrawMesh(device, converter(), scene());
        // The pens of the defaults at 96 dpi, where a tenth of a millimetre is less than a dot.
        EXPECT_EQ(device.Trace().toStdString(), "GeometricPen 0 1 0x00008000\n" + edges +
                                                    "StockPen 7\nGeometricPen 0 2 0x00008000\n" + lineElements +
                                                    "StockPen 7\n");
    };
    open(squaresWith({{1, 2, 99, 4}, {0, 5}, {0, -2147483647 - 1, 7}, {}, {2, 4}}, {1, 1, 1, 1, -1}));
    expectMesh("MoveTo 0 100\nLineTo 100 100\nMoveTo 0 0\nLineTo 0 100\n", "MoveTo 100 0\n");
    EXPECT_EQ(ElementCentres(scene()), (Points{{25, 50}, {50, 0}, {0, 0}, {0, 0}, {50, 50}}))
        << "divided by all corners";
    open(squaresWith({{1, 2}, {2, 3}, {4, 5}, {6}, {}}, {0, 3, -1, 0, 0}));
    const std::string lines = "MoveTo 0 100\nLineTo 100 100\nMoveTo 100 100\nLineTo 200 100\n";
    expectMesh({}, lines);
    // In the outline only the very first edge of a file is not its own other side.
    settings.Window.Mesh = false;
    expectMesh("MoveTo 0 100\nLineTo 100 100\nMoveTo 100 100\nLineTo 0 100\nMoveTo 200 0\nLineTo 200 0\n", lines);
}

/// A grid of cells that grow narrower from left to right, with a value that rises along it.
TEST_F(SceneTest, NarrowEdgesFadeToTheContourAndWideOnesStay) {
    const int columns = 90;
    VrfBuilder file;
    file.items = {{u"v"_s, -1, 0}};
    std::vector<double> values;
    for (int i = 0; i <= columns; ++i)
        for (const double y : {0.0, 0.5, 1.0}) {
            file.nodes.push_back({2 * std::sqrt(double(i) / columns), y});
            values.push_back(i);
        }
    for (int i = 0; i < columns; ++i)
        for (const int j : {1, 2})
            file.elements.push_back({3 * i + j, 3 * i + j + 3, 3 * i + j + 4, 3 * i + j + 1});
    file.steps = {{0, {}, std::vector<qint32>(file.elements.size(), 1), {values}}};
    open(file);
    compute();
    const auto drawn = [this](bool fades, bool every) {
        settings.Window.FadeMesh = fades;
        Picture picture(200, 100);
        EveryCall single(picture.Image);
        DeviceContext& device = every ? static_cast<DeviceContext&>(single) : picture.Device;
        DrawContour(device, scene(), context);
        DrawMesh(device, converter(), scene(), context);
        return picture.Image;
    };
    const QRgb edge = qRgb(0, 0x80, 0);
    const QImage plain = drawn(false, false), faded = drawn(true, false);
    EXPECT_EQ(faded, drawn(true, true));
    EXPECT_EQ(faded.copy(0, 0, 60, 100), plain.copy(0, 0, 60, 100)) << "cells of 3 pixels and more";
    for (int x = 150; x < 199; ++x)
        EXPECT_NE(faded.pixel(x, 25), edge) << x;
    EXPECT_EQ(faded.pixel(175, 0), edge) << "the outline stays";
    EXPECT_TRUE(!IsMeshDense(model.Mesh, view, {0, 0, 30, 100}, 96));
    EXPECT_TRUE(IsMeshDense(model.Mesh, view, {0, 0, 200, 100}, 1920)) << "3 pixels of 1/96 inch are 60 dots";
}

TEST_F(SceneTest, PaintsWhatThereIs) {
    open(twoSquares());
    settings.Displacement.Original = true;
    for (const int fiducial : {0, 1}) {
        settings.Displacement.Fiducial = fiducial;
        EXPECT_EQ(paint().contains("GeometricPen 1 1 0x008080ff\n"), fiducial == 1) << "the original mesh";
    }
    model.NoDisplacement = true;
    EXPECT_FALSE(paint().contains("GeometricPen 1 1 "));
    EXPECT_FALSE(paint().contains("STEP : 1"));
    settings.HeaderDisplay = true;
    EXPECT_TRUE(paint().contains("STEP : 1"));
    EXPECT_EQ(paint({5, 0, 5, 100}), "");
    window.SetRect(1, 1, 1, 0);
    EXPECT_EQ(paint(), "");
}

TEST(SessionRange, OfAllStepsFollowsItemAndReference) {
    TestFolder folder;
    Session session;
    ContourSettings& contour = session.Settings.Contour;
    ASSERT_TRUE(session.Open(folder.Write(twoSquares().Bytes())));
    contour.Range = ContourRange::AllSteps;
    const auto expect = [&](int item, const char* what) {
        ASSERT_TRUE(session.LoadStep(1, item));
        const float upper = contour.MaxValue, lower = contour.MinValue;
        EXPECT_FALSE(session.LacksRange(item) || contour.Automatic) << what;
        ValueBounds bounds;
        for (int step = 0; step < session.Model.StepCount; ++step) {
            ASSERT_TRUE(session.LoadStep(step, item));
            const bool differs = session.Settings.Difference.ApplyContour;
            const ItemValues shown = mdVelorinResultModel::GetNodeValues(differs, session.Model.Mesh);
            const ItemValues own = mdVelorinResultModel::GetItemValues(item, session.Model, false);
            bounds.Take(differs ? ValueBounds{shown.MaxValue, shown.MinValue}
                                : ValueBounds{own.MaxValue, own.MinValue});
        }
        EXPECT_TRUE(upper == bounds.Max && lower == bounds.Min) << what << ' ' << lower << ' ' << upper;
    };
    expect(0, "per node");
    expect(1, "per element");
    session.Settings.Difference = {.StandardStep = 0, .ApplyContour = true};
    expect(0, "a difference");
    contour.MaxValue = 1000;
    EXPECT_TRUE(session.LacksRange(0)) << "someone else has set it";
    EXPECT_FALSE(session.FindRange(0, [](qint64, qint64) { return false; }));
}

TEST(SessionRange, OfAFileThatGrowsIsThatOfAllItsSteps) {
    TestFolder folder;
    VrfBuilder file = twoSquares();
    file.steps = {{0, {}, {1, 2}, {std::vector<double>(6, 5), {1}}}, {1, {}, {1, 2}, {std::vector<double>(6, 7), {1}}}};
    const QByteArray two = file.Bytes();
    file.steps.push_back({2, {}, {1, 2}, {std::vector<double>(6, 6), {1}}});
    file.steps.push_back({3, {}, {1, 2}, {std::vector<double>(6, 9), {1}}});
    // The last step opened half shows zeros, and the reference step may be among those that come.
    for (const auto& [cut, reference, lowest, highest] : {std::tuple(0, -1, 5, 9), {5, -1, 5, 9}, {0, 3, -4, 0}}) {
        const QString path = folder.Write(two.chopped(cut));
        Session session;
        ASSERT_TRUE(session.Open(path));
        session.Settings.Difference = {.StandardStep = reference, .ApplyContour = true};
        session.Settings.Contour.Range = ContourRange::AllSteps;
        ASSERT_TRUE(session.LoadStep(1, 0));
        ResultModel more;
        ASSERT_TRUE(
            mdVelorinResultModel::ExtendSettledFile(session.Model, QFileInfo(folder.Write(file.Bytes())).size(), more));
        session.TakeUpAnew(more, true);
        ASSERT_TRUE(session.LacksRange(0) && session.LoadStep(3, 0));
        EXPECT_EQ(session.Settings.Contour.MinValue, lowest) << cut << ' ' << reference;
        EXPECT_EQ(session.Settings.Contour.MaxValue, highest) << cut << ' ' << reference;
    }
}

/// Displacement X and Y as items of their own; the largest magnitude is Y's 2.
TEST_F(SceneTest, NodesAreDisplacedInEachScale) {
    VrfBuilder file = twoSquares();
    file.items = {{u"X"_s, -1, 1}, {u"Y"_s, -1, 2}};
    file.steps = {{0, {}, {1, 2}, {{0.5, -1, 0, 0, 0, 0}, {0, 0.5, -2, 0, 0, 0}}},
                  {1, {}, {1, 2}, {{0.5, 0, 0, 0, 0, 0}, {1, 0, 0, 0, 0, 0}}}};
    open(file, 0, 0, 1);
    settings.Displacement.Scale = 254; // 96 dots at 96 dpi
    const auto expect = [this](int fiducial, const Points& points, double scale) {
        settings.Displacement.Fiducial = fiducial;
        compute();
        EXPECT_DOUBLE_EQ(context.DisplacementScale, scale) << fiducial;
        EXPECT_EQ(Points(view.NodePoints.begin(), view.NodePoints.begin() + 3), points) << fiducial;
    };
    const Points undisplaced = {{0, 100}, {100, 100}, {200, 100}};
    expect(0, undisplaced, 0);
    expect(4, {{}, {}, {}}, 7);
    expect(1, {{48, 100}, {4, 52}, {200, 292}}, 96);
    EXPECT_EQ(ElementCentres(scene()), (Points{{38, 38}, {126, 86}})) << "the mean of the displaced corners";
    settings.Difference.ApplyDisplacement = true;
    expect(1, {{0, 196}, {4, 52}, {200, 292}}, 96);
    window.SetRect(0, 0, 2, 1); // Y down
    expect(1, {{0, -96}, {4, 48}, {200, -192}}, 96);
    window.SetRect(0, 1, 2, 0);
    settings.Difference.ApplyDisplacement = false;
    model.ItemData[0].Values[1] = std::numeric_limits<float>::quiet_NaN();
    model.ItemData[0].Values[2] = std::numeric_limits<float>::infinity();
    expect(1, {{48, 100}, {100, 52}, {200, 292}}, 96);
    slideShow = {.SlideShowRunning = true, .SlideMaxDisplacement = 4};
    expect(2, {{12, 100}, {100, 88}, {200, 148}}, 24);
    slideShow.SlideMaxDisplacement = 0;
    expect(2, undisplaced, 0);
    model.DisplacementItemX = model.DisplacementItemY = -1;
    expect(3, undisplaced, 100);
}

} // namespace
