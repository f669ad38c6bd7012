#include "view/scene/contour.h"

#include "DrawnScene.h"
#include "Picture.h"
#include "result/ValueBounds.h"

#include <limits>

using namespace mdScene;

namespace {

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
        settings.Contour = {.MaxValue = upper, .MinValue = lower, .Divide = count, .Automatic = false};
    }
    void draw(DeviceContext& device) { DrawContour(device, scene(), context); }
    /// All bands over all elements, a call a polygon.
    void drawPlainly(DeviceContext& device) {
        const ContourBands bands(settings.Contour.MinValue, settings.Contour.MaxValue, settings.Contour.Divide);
        for (int band = 0; band < bands.Count; ++band) {
            const ColorRef color = ContourColor(1 / float(bands.Count - 1) * float(band), settings.Contour);
            const std::pair old{device.SelectPen(solidPen(color)), device.SelectBrush(solidBrush(color))};
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
            device.SelectBrush(old.second);
            device.SelectPen(old.first);
        }
    }
    QByteArray trace(Draw by = &Contour::draw) {
        TraceDevice device(100, 100);
        (this->*by)(device);
        return device.Trace();
    }
    QImage picture(Draw by = &Contour::draw) {
        Picture picture(96, 80, 0);
        (this->*by)(picture.Device);
        return picture.Image;
    }
};

TEST_F(Contour, RangeAndContext) {
    make({{1, 2, 3, 4}}, {{0, 0}, {90, 0}, {90, 70}, {0, 70}}, {1, 2, 4, 3});
    trace();
    EXPECT_TRUE(context.ContourMax == 4 && context.ContourMin == 1 && context.ContourDivide == 20);
    fixRange(5, 1, 7);
    EXPECT_EQ(trace(), "");
    EXPECT_EQ(context.ContourDivide, 7) << "a reversed range is kept for the legend and paints nothing";
    fixRange(0, 1, 1);
    trace();
    EXPECT_EQ(context.ContourDivide, 7) << "one band leaves the context alone";
    fixRange(1, 4, std::numeric_limits<int>::max());
    EXPECT_NE(picture().pixelColor(40, 30), QColor(Qt::white)) << "the cost is bounded by the pixels";
}

/// The range of what can be seen, by an oracle that looks at each element's box.
TEST_F(Contour, TheVisibleRangeIsThatOfTheElementsInThePicture) {
    Dice dice(7);
    const DeviceRect area{20, 20, 60, 50};
    settings.Contour = {.Divide = 7, .Range = ContourRange::Visible};
    for (int round = 0; round < 50; ++round) {
        const auto points = dice.Points(9, 0, 90);
        std::vector<double> values(9, std::nan(""));
        for (int i = 1; i < 9; ++i)
            values[std::size_t(i)] = dice.Between(-99, 99);
        std::vector<std::vector<qint32>> elements;
        for (int e = 0; e < 4; ++e)
            elements.push_back({dice.Between(1, 9), dice.Between(1, 9), dice.Between(1, 9)});
        make(elements, {points.begin(), points.end()}, values);
        ValueBounds bounds;
        for (const auto& element : elements) {
            QRect box;
            for (const int node : element)
                box |= QRect(points[std::size_t(node - 1)].X, points[std::size_t(node - 1)].Y, 1, 1);
            if (box.intersects(QRect(20, 20, 40, 30)))
                for (const int node : element)
                    bounds.Take(float(values[std::size_t(node - 1)]));
        }
        const ContourScale scale = ContourScaleOf(scene(), ContourValues(scene()), area);
        EXPECT_TRUE(scale.Ends.Lower == bounds.Min && scale.Ends.Upper == bounds.Max && scale.Count == 7) << round;
    }
}

TEST(ContourColors, PresetsReadWithoutHues) {
    ContourSettings settings{.ColorIndex = 5};
    const auto light = [](ColorRef c) { return 0.2126 * redOf(c) + 0.7152 * greenOf(c) + 0.0722 * blueOf(c); };
    for (const int preset : {ColorPreset::Viridis, ColorPreset::Cividis})
        for (const bool reverse : {false, true}) {
            settings.Preset = preset;
            settings.Reverse = reverse;
            for (int i = 0; i < 63; ++i) {
                const double rise = light(ContourColor(float(i + 1) / 63, settings, {3, 9})) -
                                    light(ContourColor(float(i) / 63, settings, {3, 9}));
                EXPECT_GT(reverse ? -rise : rise, 0) << preset << ' ' << i;
            }
        }
    // From blue over grey at 0 to red, equal magnitudes equally far from grey.
    settings = {.ColorIndex = 5, .Preset = ColorPreset::Diverging};
    const auto at = [&](float value, ContourEnds ends) {
        return ContourColor((value - ends.Lower) / (ends.Upper - ends.Lower), settings, ends);
    };
    EXPECT_EQ(at(-4, {-4, 4}), makeColor(0x3b, 0x4c, 0xc0));
    for (const ContourEnds& ends : {ContourEnds{-4, 4}, {-1, 4}, {-4, 2}, {0, 4}})
        EXPECT_EQ(at(0, ends), 0xddddddu) << ends.Lower;
    EXPECT_EQ(at(2, {-1, 4}), at(2, {-4, 4}));
    EXPECT_EQ(at(-1, {-4, 2}), at(-1, {-1, 4}));
    EXPECT_EQ(at(4, {2, 4}), makeColor(0xb4, 0x04, 0x26));
}

/// Random elements of 1 to 6 corners with values on and off the borders, among them NaN and infinity, in few and many
/// bands: the layer must give the pixels and the calls of the plain loops.
TEST_F(Contour, AsByThePlainLoops) {
    Dice dice(5);
    for (int round = 0; round < 60; ++round) {
        std::vector<DevicePoint> points;
        std::vector<double> values;
        while (points.size() < 12) {
            points.push_back({dice.Between(-2, round % 3 ? 97 : 3997), dice.Between(-2, 77)});
            const int kind = dice.Between(0, 39);
            const double value = kind < 20 ? dice.Between(0, 4) : dice.Between(0, 4999) / 1000.0;
            values.push_back(kind > 1 ? value : kind == 0 ? std::nan("") : HUGE_VAL);
        }
        std::vector<std::vector<qint32>> elements(8);
        for (auto& element : elements)
            for (int k = dice.Between(1, 6); k > 0; --k)
                element.push_back(dice.Between(1, 12));
        make(elements, points, values);
        // Far from 0 a single tells only some of many levels apart.
        const float shift = round % 7 == 0 ? 4096 : 0;
        for (float& value : model.Mesh.Nodes.Value)
            value += shift;
        fixRange(shift + 0, shift + 4, std::array{2, 3, 20, 400, 3000}[std::size_t(round % 5)]);
        ASSERT_EQ(picture(), picture(&Contour::drawPlainly)) << round;
        ASSERT_EQ(trace(), trace(&Contour::drawPlainly)) << round;
    }
}

} // namespace
