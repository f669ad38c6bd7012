#include "view/contour.h"

#include "platform/RasterDevice.h"
#include "platform/TraceDevice.h"
#include "result/VrfBuilder.h"
#include "result/mdVelorinResultModel.h"

#include <gtest/gtest.h>
#include <limits>
#include <random>

using namespace mdScene;

namespace {

constexpr float nan = std::numeric_limits<float>::quiet_NaN();

/// A model with given device positions and node values, as after a load and `ComputeDevicePoints`.
struct Fixture {
    ResultModel model;
    ApplicationSettings settings;
    ViewState view;

    Fixture(const std::vector<std::vector<qint32>>& elements, const std::vector<DevicePoint>& points,
            const std::vector<double>& values) {
        VrfBuilder file;
        file.items = {{QStringLiteral("v"), -1, 0}};
        file.nodes.assign(points.size(), {0, 0});
        file.elements = elements;
        file.steps = {{0, {}, std::vector<qint32>(elements.size(), 0), {values}}};
        TestFolder folder;
        EXPECT_TRUE(mdVelorinResultModel::LoadResultFile(folder.Write(file.Bytes()), model));
        EXPECT_TRUE(mdVelorinResultModel::LoadStep(0, 0, model, false, -1));
        view.NodePoints = points;
    }
    void fixRange(float lower, float upper, int count) {
        settings.Contour.Automatic = false;
        settings.Contour.MinValue = lower;
        settings.Contour.MaxValue = upper;
        settings.Contour.Divide = count;
    }
    PaintContext drawOn(DeviceContext& device) {
        PaintContext context;
        DrawContour(device, {model, settings, view}, context);
        return context;
    }
    QByteArray trace() {
        TraceDevice device(100, 100);
        drawOn(device);
        return device.Trace();
    }
    QImage picture(int threads = 0) {
        QImage image(96, 80, QImage::Format_RGB32);
        image.fill(Qt::white);
        RasterDevice device(image, 96, threads);
        drawOn(device);
        return image;
    }
    /// All bands over all elements, a call a polygon.
    void drawPlainly(DeviceContext& device, float lower, float upper, int count) {
        const ContourBands bands(lower, upper, count);
        for (int band = 0; band < count; ++band) {
            const Colour colour = ContourColor(1 / float(count - 1) * float(band), settings.Contour);
            const Pen oldPen = device.SelectPen({PenStyle::Solid, 1, colour});
            const Brush oldBrush = device.SelectBrush({colour});
            for (std::int32_t e = 0; e < model.Mesh.ElementCount; ++e) {
                ContourElement element;
                std::vector<DevicePoint> polygon;
                for (const std::int32_t node : model.Mesh.Elements[e].NodeIndex) {
                    element.Points.push_back(view.NodePoints[std::size_t(node)]);
                    element.Values.push_back(model.Mesh.Nodes.Value.at(node));
                }
                if (model.Mesh.Elements.ElementType.at(e) >= 0 && AppendClipPolygon(element, bands, band, polygon))
                    device.Polygon(polygon);
            }
            device.SelectBrush(oldBrush);
            device.SelectPen(oldPen);
        }
    }
};

TEST(Contour, OneSquareInTwoBands) {
    // Values rise from 0 at the left to 2 at the right: the border lies in the middle.
    Fixture square({{1, 2, 3, 4}}, {{0, 0}, {20, 0}, {20, 20}, {0, 20}}, {0, 2, 2, 0});
    square.fixRange(0, 2, 2);
    square.settings.Contour.ColorIndex = 0;
    square.settings.Contour.Reverse = true;
    // Corners on the border of the range give a point twice; the ring starts at the last corner.
    EXPECT_EQ(square.trace(), "Pen 0 1 0x00000000\nBrush 0x00000000 -1\n"
                              "Polygon 6 0 20 0 0 0 0 10 0 10 20 0 20\n"
                              "StockBrush 0\nStockPen 7\n"
                              "Pen 0 1 0x00ffffff\nBrush 0x00ffffff -1\n"
                              "Polygon 6 10 0 20 0 20 0 20 20 20 20 10 20\n"
                              "StockBrush 0\nStockPen 7\n");
}

TEST(Contour, RampThroughTheUsersColours) {
    ContourSettings settings;
    settings.ColorIndex = 5;
    settings.Colors = {0x0000ff, 0x00ff00, 0xff0000};
    EXPECT_EQ(ContourColor(0, settings), 0xff0000u) << "not reversed the lowest value has the colour of the maximum";
    settings.Reverse = true;
    EXPECT_EQ(ContourColor(0, settings), 0x0000ffu);
    EXPECT_EQ(ContourColor(0.5f, settings), 0x00ff00u);
    EXPECT_EQ(ContourColor(0.5625f, settings), 0x20df00u) << "just past the middle colour";
}

TEST(Contour, RangeAndContext) {
    Fixture square({{1, 2, 3, 4}}, {{0, 0}, {20, 0}, {20, 20}, {0, 20}}, {1, 2, 3, 4});
    TraceDevice device(100, 100);
    PaintContext context = square.drawOn(device);
    EXPECT_EQ(context.ContourMax, 4);
    EXPECT_EQ(context.ContourMin, 1);
    EXPECT_EQ(context.ContourDivide, 20);
    square.fixRange(5, 1, 7);
    context = square.drawOn(device);
    EXPECT_EQ(context.ContourDivide, 7) << "a reversed range is kept for the legend and paints nothing";
    square.fixRange(0, 1, 1);
    EXPECT_EQ(square.drawOn(device).ContourDivide, 0) << "one band leaves the context alone";
    Fixture flat({{1, 2, 3}}, {{0, 0}, {9, 0}, {9, 9}}, {5, 5, 5});
    EXPECT_EQ(flat.trace(), "");
}

TEST(Contour, LevelsOnEdgesAndTheirOrder) {
    DevicePoint point;
    const DevicePoint ends[2] = {{0, 0}, {10, 5}};
    EXPECT_TRUE(EdgeLevelPoint(ends, {1, 3}, 2, point));
    EXPECT_EQ(point, (DevicePoint{5, 2})) << "2.5 goes to the even neighbour";
    EXPECT_TRUE(EdgeLevelPoint(ends, {3, 1}, 3, point));
    EXPECT_EQ(point, (DevicePoint{0, 0}));
    EXPECT_FALSE(EdgeLevelPoint(ends, {3, 3}, 3, point));
    EXPECT_FALSE(EdgeLevelPoint(ends, {1, 3}, 3.5f, point));
    EXPECT_FALSE(EdgeLevelPoint(ends, {1, nan}, 2, point));

    double distances[] = {2, 2, 1};
    int order[] = {0, 1, 2};
    SortByDistance(3, distances, order);
    EXPECT_EQ(std::vector(order, order + 3), (std::vector{2, 1, 0})) << "the swap puts the first behind the second";
}

/// Random elements of 1 to 6 corners with values on and off the borders, among them NaN and infinity, in few and many
/// bands: the layer must give the pixels and the calls of the plain loops.
TEST(Contour, AsByThePlainLoops) {
    std::mt19937 random(5);
    const auto upTo = [&](int n) { return int(random() % unsigned(n)); };
    const int bandCounts[] = {2, 3, 20, 400, 3000};
    for (int round = 0; round < 60; ++round) {
        std::vector<DevicePoint> points(12);
        std::vector<double> values;
        for (DevicePoint& point : points) {
            point = {upTo(round % 3 ? 100 : 4000) - 2, upTo(80)};
            const int kind = upTo(40);
            values.push_back(kind == 0   ? double(nan)
                             : kind == 1 ? std::numeric_limits<double>::infinity()
                             : kind < 20 ? upTo(5)
                                         : upTo(5000) / 1000.0);
        }
        std::vector<std::vector<qint32>> elements(8);
        for (auto& element : elements)
            for (int k = 1 + upTo(6); k > 0; --k)
                element.push_back(1 + upTo(12));
        Fixture fixture(elements, points, values);
        const int count = bandCounts[round % 5];
        // Far from 0 a single tells only some of many levels apart.
        const float shift = round % 7 == 0 ? 4096 : 0;
        for (float& value : fixture.model.Mesh.Nodes.Value)
            value += shift;
        fixture.fixRange(shift + 0, shift + 4, count);

        QImage expected(96, 80, QImage::Format_RGB32);
        expected.fill(Qt::white);
        RasterDevice raster(expected, 96);
        fixture.drawPlainly(raster, shift, shift + 4, count);
        TraceDevice trace(96, 80);
        fixture.drawPlainly(trace, shift, shift + 4, count);
        ASSERT_EQ(fixture.picture(), expected) << round;
        ASSERT_EQ(fixture.picture(1), expected) << round;
        ASSERT_EQ(fixture.trace(), trace.Trace()) << round;
    }
}

TEST(Contour, CostIsBoundedByThePixels) {
    Fixture square({{1, 2, 3, 4}}, {{0, 0}, {90, 0}, {90, 70}, {0, 70}}, {0, 1, 3, 2});
    square.fixRange(0, 3, std::numeric_limits<int>::max());
    EXPECT_NE(square.picture().pixelColor(40, 30), QColor(Qt::white));
}

} // namespace
