// The mesh layers: edges and line elements.
#include "view/scene/mdScene.h"

#include "app/mdTipsDrawing.h"
#include "platform/base/Parallel.h"
#include "view/scene/CommonSides.h"
#include "view/scene/meshFade.h"

namespace mdScene {

namespace {

/// Line steps over the node positions. An edge with an end that the mesh does not have is left out.
class LineSteps {
public:
    LineSteps(std::span<const DevicePoint> nodePoints, const std::optional<DeviceRect>& visibleArea,
              std::vector<std::int32_t>& collected)
        : points(nodePoints), visible(visibleArea), steps(collected) {}

    /// Whether no line between these nodes can be seen.
    bool Hides(std::span<const std::int32_t> nodes) const {
        if (!visible)
            return false;
        CommonSides sides(*visible);
        for (const std::int32_t node : nodes) {
            if (has(node))
                sides.Take(points[std::size_t(node)]);
            if (!sides.Any())
                return false;
        }
        return true;
    }
    /// Whether element `e` has the corners of the one before, which has left none of its lines to it: they are drawn.
    bool Repeats(const MeshData& mesh, std::int32_t e) const {
        if (!visible || e == 0 || mesh.Elements.ElementType.at(e - 1) < 0)
            return false;
        const ElementRecord element = mesh.Elements[e];
        return std::ranges::equal(element.NodeIndex, mesh.Elements[e - 1].NodeIndex) &&
               std::ranges::find(element.Neighbour, e - 1) == element.Neighbour.end();
    }
    void MoveTo(std::int32_t node) {
        if (!has(node))
            return;
        // Of two moves the second counts, but where every call is shown.
        if (visible && !steps.empty() && steps.back() < 0)
            steps.back() = ~node;
        else
            steps.push_back(~node);
    }
    /// The edge from `from`, where the pen stands, to `to`.
    void LineTo(std::int32_t from, std::int32_t to) {
        if (has(from) && has(to))
            steps.push_back(to);
        else
            MoveTo(to);
    }

private:
    bool has(std::int32_t node) const { return std::size_t(node) < points.size(); }

    std::span<const DevicePoint> points;
    const std::optional<DeviceRect>& visible;
    std::vector<std::int32_t>& steps;
};

/// Draws what `collect(mesh, e, steps)` collects for each element e that may be seen, in their order.
template<class Collect>
void drawElements(DeviceContext& device, std::span<const DevicePoint> points, const MeshData& mesh,
                  const VisibleElements& visible, Collect collect) {
    const std::optional<DeviceRect> area = device.VisibleArea();
    device.LinePieces(points, stretchCount(mesh.ElementCount), [&](int stretch, std::vector<std::int32_t>& collected) {
        LineSteps steps(points, area, collected);
        visible.ForEach(stretch, mesh.ElementCount, [&](std::int32_t e) { collect(mesh, e, steps); });
    });
}

// What `drawElements` calls for each element; as objects, so that the calls are compiled in place.

/// Only the edges without an element on their other side.
constexpr auto collectOutline = [](const MeshData& mesh, std::int32_t e, LineSteps& steps) {
    const ElementRecord element = mesh.Elements[e];
    if (element.ElementType < 0)
        return;
    for (std::int32_t j = 0; j < element.NodeCount; ++j) {
        if (element.Neighbour[std::size_t(j)] >= 0)
            continue;
        const std::int32_t from = element.NodeIndex[std::size_t(j)];
        steps.MoveTo(from);
        steps.LineTo(from, element.NodeIndex[std::size_t(j + 1 < element.NodeCount ? j + 1 : 0)]);
    }
};

/// Every edge of an area element, an edge between two by the later one.
constexpr auto collectAllEdges = [](const MeshData& mesh, std::int32_t e, LineSteps& steps) {
    const ElementRecord element = mesh.Elements[e];
    if (element.ElementType < 0 || element.NodeCount < 3 || steps.Hides(element.NodeIndex) || steps.Repeats(mesh, e))
        return;
    std::int32_t from = element.NodeIndex[0];
    steps.MoveTo(from);
    for (std::int32_t j = 0; j < element.NodeCount; ++j) {
        const std::int32_t to = element.NodeIndex[std::size_t(j + 1 < element.NodeCount ? j + 1 : 0)];
        if (element.Neighbour[std::size_t(j)] >= e)
            steps.MoveTo(to);
        else
            steps.LineTo(from, to);
        from = to;
    }
};

constexpr auto collectLineElement = [](const MeshData& mesh, std::int32_t e, LineSteps& steps) {
    if (mesh.Elements.NodeCount(e) != 2 || mesh.Elements.ElementType.at(e) < 0)
        return;
    const ElementRecord element = mesh.Elements[e];
    steps.MoveTo(element.NodeIndex[0]);
    steps.LineTo(element.NodeIndex[0], element.NodeIndex[1]);
};

void drawEdges(DeviceContext& device, std::span<const DevicePoint> points, const Scene& scene,
               const VisibleElements& visible) {
    if (scene.Settings.Window.Mesh)
        drawElements(device, points, scene.Model.Mesh, visible, collectAllEdges);
    else
        drawElements(device, points, scene.Model.Mesh, visible, collectOutline);
}

} // namespace

void DrawMesh(DeviceContext& device, const PlotConverter& converter, const Scene& scene, const PaintContext& context) {
    const auto& styles = scene.Settings.Style.LineStyles;
    Pen old = SelectLineStyle(device, converter, styles[0]);
    if (scene.Settings.Window.Mesh && scene.Settings.Window.FadeMesh)
        DrawFadingEdges(device, converter, styles[0], scene,
                        {{context.ContourMin, context.ContourMax}, context.ContourDivide}, context.Visible);
    else
        drawEdges(device, scene.View.NodePoints, scene, context.Visible);
    mdTips::RestoreObject(device, old);
    old = SelectLineStyle(device, converter, styles[3]);
    drawElements(device, scene.View.NodePoints, scene.Model.Mesh, context.Visible, collectLineElement);
    mdTips::RestoreObject(device, old);
}

void DrawOriginalMesh(DeviceContext& device, const PlotConverter& converter, const Scene& scene) {
    const NodeTable& nodes = scene.Model.Mesh.Nodes;
    const int count = scene.Model.Mesh.NodeCount;
    std::vector<DevicePoint> points(std::size_t(std::max(count, 0)));
    for (std::size_t i = 0; i < points.size(); ++i)
        points[i] = converter.WorldToDevice(nodes.X.at(qsizetype(i)), nodes.Y.at(qsizetype(i)));
    const Pen old = SelectLineStyle(device, converter, scene.Settings.Style.LineStyles[1]);
    // Other positions than those by which it is known what may be seen.
    drawEdges(device, points, scene, {});
    mdTips::RestoreObject(device, old);
}

} // namespace mdScene
