#include "view/scene/meshFade.h"

#include "app/mdTipsDrawing.h"
#include "platform/base/Parallel.h"
#include "platform/base/Rounding.h"
#include "view/scene/CommonSides.h"

#include <cmath>

namespace mdScene {

namespace {

/// Steps of fading; an edge of the last one is drawn in its own colour.
constexpr int levels = 16;
/// As many colours of the contour are told apart.
constexpr int mostShades = 256;

double fadeWidth(int dotsPerInch) {
    return 3.0 * dotsPerInch / 96;
}

/// The corners of an element, once in device positions and once in the world's lengths on the device. One with a corner
/// that the mesh does not have has none.
class DrawnElement {
public:
    DrawnElement(const MeshData& mesh, std::int32_t e, std::span<const DevicePoint> nodePoints, double worldScale)
        : nodes(mesh.Elements[e].NodeIndex), points(nodePoints), x(mesh.Nodes.X.constData()),
          y(mesh.Nodes.Y.constData()), scale(worldScale) {
        for (const std::int32_t node : nodes)
            if (std::size_t(node) >= points.size())
                nodes = {};
    }
    std::size_t Corners() const { return nodes.size(); }
    std::int32_t Node(std::size_t i) const { return nodes[i < nodes.size() ? i : 0]; }
    bool LiesBeyond(const std::optional<DeviceRect>& visible) const {
        if (!visible)
            return false;
        CommonSides sides(*visible);
        for (const std::int32_t node : nodes)
            sides.Take(points[std::size_t(node)]);
        return sides.Any();
    }

private:
    auto drawn() const {
        return [this](std::int32_t node) {
            const DevicePoint at = points[std::size_t(node)];
            return std::pair(double(at.X), double(at.Y));
        };
    }
    auto undisplaced() const {
        return [this](std::int32_t node) { return std::pair(double(x[node]) * scale, double(y[node]) * scale); };
    }
    template<class Place>
    double areaOf(const Place& place) const {
        double twice = 0;
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            const auto [x0, y0] = place(Node(i));
            const auto [x1, y1] = place(Node(i + 1));
            twice += x0 * y1 - x1 * y0;
        }
        return std::abs(twice) / 2;
    }
    template<class Place>
    double acrossIn(const Place& place, std::size_t i) const {
        const auto [x0, y0] = place(Node(i));
        const auto [x1, y1] = place(Node(i + 1));
        const double length = std::hypot(x1 - x0, y1 - y0);
        return length > 0 ? areaOf(place) / length * (nodes.size() == 3 ? 2 : 1) : 0;
    }

public:
    double Area() const { return areaOf(drawn()); }
    /// How far the element reaches across the edge from corner `i`: the height of a triangle, the mean of others. Where
    /// the positions tell it only to a unit more or less, as undisplaced.
    double Across(std::size_t i) const {
        const double rounded = acrossIn(drawn(), i), exact = acrossIn(undisplaced(), i);
        return std::abs(rounded - exact) < 1 ? exact : rounded;
    }

private:
    std::span<const std::int32_t> nodes;
    std::span<const DevicePoint> points;
    const float* x;
    const float* y;
    double scale;
};

/// The contour's colours under the edges, by number: shade 0 is where there is none.
class Ground {
public:
    Ground(const Scene& scene, const ContourScale& scale, std::span<const float> nodeValues)
        : settings(scene.Settings.Contour), bare(scene.WindowColor), values(nodeValues), ends(scale.Ends),
          shades(std::min(scale.Count, mostShades)) {
        if (scene.Model.LineElementsOnly || shades < 2 || !(ends.Upper > ends.Lower))
            shades = 0;
    }
    int ShadeCount() const { return shades + 1; }
    int ShadeAt(std::int32_t from, std::int32_t to) const {
        if (shades == 0 || std::size_t(std::max(from, to)) >= values.size())
            return 0;
        const double value = (double(values[std::size_t(from)]) + double(values[std::size_t(to)])) / 2;
        const double place = (value - ends.Lower) / (double(ends.Upper) - ends.Lower);
        return place >= 0 && place <= 1 ? 1 + std::min(int(place * shades), shades - 1) : 0;
    }
    ColorRef Mixed(int shade, int level, ColorRef edge) const {
        const ColorRef under = shade == 0 ? bare : ContourColor(float(shade - 1) / float(shades - 1), settings, ends);
        const auto mix = [&](int (*of)(ColorRef)) {
            return Round(of(under) + (of(edge) - of(under)) * double(level) / levels);
        };
        return makeColor(mix(redOf), mix(greenOf), mix(blueOf));
    }

private:
    const ContourSettings& settings;
    ColorRef bare;
    std::span<const float> values;
    ContourEnds ends;
    int shades;
};

/// Line steps by shade and level, those of level 1 first; the edges in their own colour stand behind all.
struct Buckets {
    std::vector<std::vector<std::int32_t>> Steps;

    std::vector<std::int32_t>& Of(int shade, int level, int shadeCount) {
        return Steps[level >= levels ? Steps.size() - 1 : std::size_t((level - 1) * shadeCount + shade)];
    }
};

/// What all elements of a paint have in common.
struct Edges {
    const MeshData& Mesh;
    std::span<const DevicePoint> Points;
    std::optional<DeviceRect> Visible;
    double WorldScale;
    double Width; ///< at which edges begin to fade
    const Ground& Under;

    void Collect(std::int32_t e, Buckets& buckets) const;
};

void Edges::Collect(std::int32_t e, Buckets& buckets) const {
    const ElementRecord element = Mesh.Elements[e];
    if (element.ElementType < 0 || element.NodeCount < 3)
        return;
    const DrawnElement drawn(Mesh, e, Points, WorldScale);
    if (drawn.LiesBeyond(Visible))
        return;
    for (std::size_t i = 0; i < drawn.Corners(); ++i) {
        const std::int32_t neighbour = element.Neighbour[i];
        if (neighbour >= e)
            continue;
        const std::int32_t from = drawn.Node(i), to = drawn.Node(i + 1);
        const double share = neighbour < 0 ? 1 : std::min(drawn.Across(i) / Width, 1.0);
        const int level = Round(share * share * levels);
        if (level < 1)
            continue;
        std::vector<std::int32_t>& steps = buckets.Of(Under.ShadeAt(from, to), level, Under.ShadeCount());
        steps.push_back(~from);
        steps.push_back(to);
    }
}

void drawBuckets(DeviceContext& device, const PlotConverter& converter, const LineStyle& style, const Ground& ground,
                 std::span<const DevicePoint> points, std::vector<Buckets>& group) {
    for (std::size_t i = 0; i < group.front().Steps.size(); ++i) {
        const int level = int(i) / ground.ShadeCount() + 1, shade = int(i) % ground.ShadeCount();
        LineStyle mixed = style;
        if (level < levels)
            mixed.Color = ground.Mixed(shade, level, style.Color);
        const Pen old = SelectLineStyle(device, converter, mixed);
        for (Buckets& buckets : group) {
            device.Lines(points, buckets.Steps[i]);
            buckets.Steps[i].clear();
        }
        mdTips::RestoreObject(device, old);
    }
}

} // namespace

void DrawFadingEdges(DeviceContext& device, const PlotConverter& converter, const LineStyle& style, const Scene& scene,
                     const ContourScale& contour, const VisibleElements& visible) {
    const MeshData& mesh = scene.Model.Mesh;
    const std::span<const DevicePoint> points = scene.View.NodePoints;
    double scale = 0, unused = 0;
    converter.WorldLengthToDevice(1, 1, scale, unused);
    const QList<float> values = ContourValues(scene).Values;
    const Ground ground(scene, contour, {values.constData(), std::size_t(values.size())});
    const Edges edges = {
        mesh, points, device.VisibleArea(), scale, fadeWidth(device.GetDeviceCaps(DeviceCaps::LogPixelsX)), ground};
    // A few stretches at a time, as a large mesh would take much memory as lines.
    const int stretches = stretchCount(mesh.ElementCount);
    std::vector<Buckets> group(std::size_t(std::min(stretches, 4 * coreCount())));
    for (Buckets& buckets : group)
        buckets.Steps.resize(std::size_t((levels - 1) * ground.ShadeCount()) + 1);
    for (int start = 0; start < stretches; start += int(group.size())) {
        parallelFor(std::min(int(group.size()), stretches - start), [&](int i) {
            visible.ForEach(start + i, mesh.ElementCount,
                            [&](std::int32_t e) { edges.Collect(e, group[std::size_t(i)]); });
        });
        drawBuckets(device, converter, style, ground, points, group);
    }
}

bool IsMeshDense(const MeshData& mesh, const ViewState& view, const DeviceRect& picture, int dotsPerInch) {
    constexpr std::int32_t mostSamples = 1000;
    const double width = fadeWidth(dotsPerInch);
    const std::int32_t stride = std::max(1, mesh.ElementCount / mostSamples);
    int seen = 0, small = 0;
    for (std::int64_t e = 0; e < mesh.ElementCount; e += stride) {
        const DrawnElement drawn(mesh, std::int32_t(e), view.NodePoints, 0);
        if (mesh.Elements.ElementType.at(e) < 0 || drawn.Corners() < 3 || drawn.LiesBeyond(picture))
            continue;
        ++seen;
        small += drawn.Area() < width * width;
    }
    return small * 2 > seen;
}

} // namespace mdScene
