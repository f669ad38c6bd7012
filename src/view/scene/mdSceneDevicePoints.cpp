// Where the nodes and the element centres lie on the device, displacement included.
#include "view/scene/mdScene.h"

#include "platform/base/Parallel.h"
#include "platform/base/Rounding.h"
#include "view/scene/displacement.h"
#include "view/scene/valueScale.h"

#include <limits>

namespace mdScene {

namespace {

/// `from` moved by `distance`; a distance that is no number, or without end, moves nothing.
DevicePoint moved(DevicePoint from, RealPair distance) {
    const RealPair none{};
    const RealPair finite = distance - distance == none ? distance : none;
    return RoundPair(RealPair{double(from.X), double(from.Y)} + finite);
}

/// Beyond which sides of an area a point lies, a bit each.
std::uint8_t sidesOf(const DeviceRect& area, DevicePoint point) {
    return std::uint8_t(int(point.X < area.Left) | int(point.X >= area.Right) << 1 | int(point.Y < area.Top) << 2 |
                        int(point.Y >= area.Bottom) << 3);
}

/// The nodes' positions on the way to be known, and beyond which sides of what can be seen they lie.
struct NodePlaces {
    std::vector<DevicePoint>& Points;
    const std::optional<DeviceRect>& Area;
    /// None without an area; else a power of two, so that one question does for several nodes. Beyond the last node all
    /// sides are set, which tells nothing.
    std::vector<std::uint8_t> Sides;
    static constexpr std::uint8_t EverySide = 15;

    NodePlaces(std::vector<DevicePoint>& points, std::int32_t count, const std::optional<DeviceRect>& area)
        : Points(points), Area(area) {
        Points.resize(std::size_t(std::max(count, 0)));
        if (Area)
            Sides.resize(std::bit_ceil(Points.size()), EverySide);
    }
    /// `pointOf(i)` for every node.
    template<class PointOf>
    void Compute(PointOf pointOf) {
        parallelStretches(std::int32_t(Points.size()), [&, pointOf](std::int32_t first, std::int32_t last) {
            // So few at a time that they are still at hand when their sides are asked for.
            constexpr std::int32_t atOnce = 1024;
            for (; first < last; first += atOnce)
                computeSome(first, std::min(last, first + atOnce), pointOf);
        });
    }

private:
    template<class PointOf>
    void computeSome(std::int32_t first, std::int32_t last, PointOf pointOf) {
        DevicePoint* const points = Points.data();
        for (std::int32_t i = first; i < last; ++i)
            points[i] = pointOf(i);
        if (!Area)
            return;
        const DeviceRect area = *Area;
        std::uint8_t* const sides = Sides.data();
        for (std::int32_t i = first; i < last; ++i)
            sides[i] = sidesOf(area, points[i]);
    }
};

void computeNodePoints(const PlotConverter& converter, const PlotRect& window, const Scene& scene, NodePlaces& places,
                       PaintContext& context) {
    const DisplacementSettings& settings = scene.Settings.Displacement;
    const MeshData& mesh = scene.Model.Mesh;
    const float* x = mesh.Nodes.X.constData();
    const float* y = mesh.Nodes.Y.constData();
    if (settings.Fiducial < 0 || settings.Fiducial > 3) {
        places.Compute([](std::int32_t) { return DevicePoint{}; });
        return;
    }
    if (settings.Fiducial == 0) {
        context.DisplacementScale = 0;
        places.Compute([=](std::int32_t i) { return converter.WorldToDevice(x[i], y[i]); });
        return;
    }
    const NodeDisplacement displacement(scene);
    const float* dx = displacement.X();
    const float* dy = displacement.Y();
    if (settings.Fiducial == 3) {
        double unused = 0;
        converter.WorldLengthToDevice(1.0, 0, context.DisplacementScale, unused);
        places.Compute([=](std::int32_t i) { return converter.WorldToDevice(x[i] + dx[i], y[i] + dy[i]); });
        return;
    }
    double kx = 0, ky = 0;
    converter.PaperLengthToDevice(settings.Scale * 0.1, settings.Scale * 0.1, kx, ky);
    kx = displacement.PerUnit(kx);
    ky = displacement.PerUnit(ky * signOf(window.Height()));
    context.DisplacementScale = kx;
    places.Compute([=](std::int32_t i) {
        return moved(converter.WorldToDevice(x[i], y[i]), RealPair{double(dx[i]), double(dy[i])} * RealPair{kx, ky});
    });
}

/// Beyond which sides all of these nodes lie.
unsigned commonSides(std::span<const std::uint8_t> sides, std::span<const std::int32_t> nodes) {
    // Most elements have four corners, all in the mesh.
    if (nodes.size() == 4 && std::size_t(nodes[0] | nodes[1] | nodes[2] | nodes[3]) < sides.size()) [[likely]]
        return unsigned(sides[std::size_t(nodes[0])]) & sides[std::size_t(nodes[1])] & sides[std::size_t(nodes[2])] &
               sides[std::size_t(nodes[3])];
    unsigned common = NodePlaces::EverySide;
    for (const std::int32_t node : nodes)
        if (std::size_t(node) < sides.size())
            common &= sides[std::size_t(node)];
    return common;
}

/// Beyond which sides all nodes of a span lie; none when they are too many to be worth the look.
unsigned commonSides(std::span<const std::uint8_t> sides, NodeSpans::Span span) {
    constexpr std::size_t most = 16 * NodeSpans::ElementsPerBlock;
    const std::size_t last = std::min(std::size_t(std::max(span.Last, 0)) + 1, sides.size());
    if (span.First > span.Last || last - std::min(last, std::size_t(span.First)) > most)
        return span.First > span.Last ? NodePlaces::EverySide : 0;
    std::uint8_t common = NodePlaces::EverySide;
    for (std::size_t node = std::size_t(span.First); node < last; ++node)
        common &= sides[node];
    return common;
}

/// The elements that don't have all of their corners beyond one side of what can be seen.
void findVisible(const MeshData& mesh, const NodePlaces& places, std::span<const NodeSpans::Span> spans,
                 VisibleElements& visible) {
    const std::int32_t* firstCorner = mesh.Elements.FirstCorner.constData();
    const std::int32_t* nodeIndex = mesh.Elements.NodeIndex.constData();
    const std::span<const std::uint8_t> sides = places.Sides;
    constexpr std::int32_t perBlock = NodeSpans::ElementsPerBlock;
    static_assert(indexesPerStretch % perBlock == 0);
    visible.Begin(stretchCount(mesh.ElementCount));
    parallelStretches(mesh.ElementCount, [=, &visible](std::int32_t first, std::int32_t last) {
        std::vector<std::int32_t>& all = visible.Of(first / indexesPerStretch);
        std::array<std::int32_t, perBlock> some;
        for (std::int32_t start = first; start < last; start += perBlock) {
            if (commonSides(sides, spans[std::size_t(start / perBlock)]) != 0)
                continue;
            // Written without asking and kept by counting on: what is seen and what not changes too often for a guess.
            std::size_t count = 0;
            for (std::int32_t e = start; e < std::min(last, start + perBlock); ++e) {
                some[count] = e;
                count += commonSides(sides, {nodeIndex + firstCorner[e], nodeIndex + firstCorner[e + 1]}) == 0 ? 1 : 0;
            }
            all.insert(all.end(), some.begin(), some.begin() + std::ptrdiff_t(count));
        }
    });
}

DevicePoint centreOf(const MeshData& mesh, std::span<const DevicePoint> points, std::int32_t e) {
    double x = 0, y = 0;
    const std::int32_t first = mesh.Elements.FirstCorner.at(e), last = mesh.Elements.FirstCorner.at(e + 1);
    for (std::int32_t k = first; k < last; ++k)
        if (const auto node = std::size_t(mesh.Elements.NodeIndex.at(k)); node < points.size()) {
            x += points[node].X;
            y += points[node].Y;
        }
    return last <= first ? DevicePoint{} : DevicePoint{Round(x / (last - first)), Round(y / (last - first))};
}

} // namespace

void ComputeDevicePoints(const PlotConverter& converter, const PlotRect& window, const Scene& scene,
                         PaintContext& context) {
    const MeshData& mesh = scene.Model.Mesh;
    NodePlaces places(scene.View.NodePoints, mesh.NodeCount, context.Visible.Area);
    scene.View.ElementCentres.clear();
    computeNodePoints(converter, window, scene, places, context);
    if (context.Visible.Area)
        findVisible(mesh, places, scene.View.Spans.Of(mesh.Elements), context.Visible);
}

const std::vector<DevicePoint>& ElementCentres(const Scene& scene) {
    std::vector<DevicePoint>& centres = scene.View.ElementCentres;
    const MeshData& mesh = scene.Model.Mesh;
    if (centres.empty()) {
        centres.resize(std::size_t(std::max(mesh.ElementCount, 0)));
        parallelStretches(mesh.ElementCount, [&](std::int32_t first, std::int32_t last) {
            for (std::int32_t e = first; e < last; ++e)
                centres[std::size_t(e)] = centreOf(mesh, scene.View.NodePoints, e);
        });
    }
    return centres;
}

} // namespace mdScene
