#include "view/scene/contour.h"

#include "DrawnScene.h"
#include "platform/raster/RasterDevice.h"

#include <limits>
#include <random>

using namespace mdScene;

namespace {

constexpr float nan = std::numeric_limits<float>::quiet_NaN(), infinity = std::numeric_limits<float>::infinity();

/// A model with given device positions and node values, as after a load and `ComputeDevicePoints`.
struct Contour : DrawnScene {
    using Draw = void (Contour::*)(DeviceContext& device);

    void make(const std::vector<std::vector<qint32>>& elements, const std::vector<DevicePoint>& points,
              const std::vector<double>& values) {
        VrfBuilder file;
        file.items = {{u"v"_s, -1, 0}};
        file.nodes.resize(points.size());
        file.elements = elements;
        file.steps = {{0, {}, std::vector<qint32>(elements.size(), 0), {values}}};
        open(file);
        view.NodePoints = points;
    }
    void fixRange(float lower, float upper, int count) {
        settings.Contour.Automatic = false;
        settings.Contour.MinValue = lower;
        settings.Contour.MaxValue = upper;
        settings.Contour.Divide = count;
    }
    void draw(DeviceContext& device) { DrawContour(device, scene(), context); }
    /// All bands over all elements, a call a polygon.
    void drawPlainly(DeviceContext& device) {
        const ContourBands bands(settings.Contour.MinValue, settings.Contour.MaxValue, settings.Contour.Divide);
        for (int band = 0; band < bands.Count; ++band) {
            const ColorRef color = ContourColor(1 / float(bands.Count - 1) * float(band), settings.Contour);
            const Pen oldPen = device.SelectPen({PenStyle::Solid, 1, color});
            const Brush oldBrush = device.SelectBrush({color});
            for (std::int32_t e = 0; e < model.Mesh.ElementCount; ++e) {
                ContourElement element;
                std::vector<DevicePoint> polygon;
                for (const std::int32_t node : model.Mesh.Elements[e].NodeIndex) {
                    element.Points.push_back(view.NodePoints[std::size_t(node)]);
                    element.Values.push_back(model.Mesh.Nodes.Value.at(node));
                }
                if (AppendClipPolygon(element, bands, band, polygon))
                    device.Polygon(polygon);
            }
            device.SelectBrush(oldBrush);
            device.SelectPen(oldPen);
        }
    }
    QByteArray trace(Draw by = &Contour::draw) {
        TraceDevice device(100, 100);
        (this->*by)(device);
        return device.Trace();
    }
    QImage picture(Draw by = &Contour::draw, int threads = 0) {
        QImage image(96, 80, QImage::Format_RGB32);
        image.fill(Qt::white);
        RasterDevice device(image, 96, threads);
        (this->*by)(device);
        return image;
    }
};

TEST_F(Contour, RampThroughTheUsersColors) {
    settings.Contour = {.ColorIndex = 5, .Colors = {0x0000ff, 0x00ff00, 0xff0000}};
    EXPECT_EQ(ContourColor(0, settings.Contour), 0xff0000u) << "not reversed the lowest has the maximum's colour";
    settings.Contour.Reverse = true;
    for (const auto& [t, color] : {std::pair{0.f, 0x0000ffu}, {0.5f, 0x00ff00u}, {0.5625f, 0x20df00u}})
        EXPECT_EQ(ContourColor(t, settings.Contour), color) << t;
}

TEST_F(Contour, RangeAndContext) {
    make({{1, 2, 3, 4}}, {{0, 0}, {20, 0}, {20, 20}, {0, 20}}, {1, 2, 3, 4});
    trace();
    EXPECT_TRUE(context.ContourMax == 4 && context.ContourMin == 1 && context.ContourDivide == 20);
    fixRange(5, 1, 7);
    EXPECT_EQ(trace(), "");
    EXPECT_EQ(context.ContourDivide, 7) << "a reversed range is kept for the legend and paints nothing";
    fixRange(0, 1, 1);
    trace();
    EXPECT_EQ(context.ContourDivide, 7) << "one band leaves the context alone";
}

TEST_F(Contour, LevelsOnEdgesAndTheirOrder) {
    DevicePoint point;
    const DevicePoint ends[2] = {{0, 0}, {10, 5}};
    EXPECT_TRUE(EdgeLevelPoint(ends, {1, 3}, 2, point));
    EXPECT_EQ(point, (DevicePoint{5, 2})) << "2.5 goes to the even neighbour";
    EXPECT_TRUE(EdgeLevelPoint(ends, {3, 1}, 3, point));
    EXPECT_EQ(point, (DevicePoint{0, 0}));
    for (const std::array<float, 3>& c : {std::array{3.f, 3.f, 3.f}, {1, 3, 3.5f}, {1, nan, 2}})
        EXPECT_FALSE(EdgeLevelPoint(ends, {c[0], c[1]}, c[2], point));
    double distances[] = {2, 2, 1};
    int order[] = {0, 1, 2};
    SortByDistance(3, distances, order);
    EXPECT_EQ(std::vector(order, order + 3), (std::vector{2, 1, 0})) << "the swap puts the first behind the second";
}

/// Random elements of 1 to 6 corners with values on and off the borders, among them NaN and infinity, in few and many
/// bands: the layer must give the pixels and the calls of the plain loops.
TEST_F(Contour, AsByThePlainLoops) {
    std::mt19937 random(5);
    const auto upTo = [&](int n) { return int(random() % unsigned(n)); };
    const int bandCounts[] = {2, 3, 20, 400, 3000};
    for (int round = 0; round < 60; ++round) {
        std::vector<DevicePoint> points(12);
        std::vector<double> values;
        for (DevicePoint& point : points) {
            point = {upTo(round % 3 ? 100 : 4000) - 2, upTo(80)};
            const int kind = upTo(40);
            values.push_back(kind < 20 ? upTo(5) : upTo(5000) / 1000.0);
            if (kind < 2)
                values.back() = double(kind == 0 ? nan : infinity);
        }
        std::vector<std::vector<qint32>> elements(8);
        for (auto& element : elements)
            for (int k = 1 + upTo(6); k > 0; --k)
                element.push_back(1 + upTo(12));
        make(elements, points, values);
        // Far from 0 a single tells only some of many levels apart.
        const float shift = round % 7 == 0 ? 4096 : 0;
        for (float& value : model.Mesh.Nodes.Value)
            value += shift;
        fixRange(shift + 0, shift + 4, bandCounts[round % 5]);
        const QImage expected = picture(&Contour::drawPlainly);
        ASSERT_EQ(picture(), expected) << round;
        ASSERT_EQ(picture(&Contour::draw, 1), expected) << round;
        ASSERT_EQ(trace(), trace(&Contour::drawPlainly)) << round;
    }
}

TEST_F(Contour, CostIsBoundedByThePixels) {
    make({{1, 2, 3, 4}}, {{0, 0}, {90, 0}, {90, 70}, {0, 70}}, {0, 1, 3, 2});
    fixRange(0, 3, std::numeric_limits<int>::max());
    EXPECT_NE(picture().pixelColor(40, 30), QColor(Qt::white));
}

} // namespace
