// The mesh layers: edges and line elements.
#include "view/mdScene.h"

#include "app/mdTipsDrawing.h"

namespace mdScene {

namespace {

/// Collects line steps over the node positions and hands them to the device a batch at a time, so that a large mesh
/// never stands in memory as lines. An edge with an end that the mesh does not have is left out.
class LineCollector {
public:
    LineCollector(DeviceContext& onDevice, std::span<const DevicePoint> nodePoints)
        : device(onDevice), points(nodePoints) {
        steps.reserve(batchSteps + 64);
    }
    ~LineCollector() { flush(); }
    LineCollector(const LineCollector&) = delete;
    LineCollector& operator=(const LineCollector&) = delete;

    void MoveTo(std::int32_t node) {
        if (has(node))
            steps.push_back(~node);
    }
    /// The edge from `from`, where the pen stands, to `to`.
    void LineTo(std::int32_t from, std::int32_t to) {
        if (has(from) && has(to))
            steps.push_back(to);
        else
            MoveTo(to);
    }
    void EndFigure() {
        if (steps.size() >= batchSteps)
            flush();
    }

private:
    static constexpr std::size_t batchSteps = 1 << 18;

    bool has(std::int32_t node) const { return std::size_t(node) < points.size(); }
    void flush() {
        device.Lines(points, steps);
        steps.clear();
    }

    DeviceContext& device;
    std::span<const DevicePoint> points;
    std::vector<std::int32_t> steps;
};

/// Only the edges without an element on their other side.
void drawOutline(LineCollector& lines, const MeshData& mesh) {
    for (std::int32_t e = 0; e < mesh.ElementCount; ++e) {
        const ElementRecord element = mesh.Elements[e];
        if (element.ElementType < 0)
            continue;
        for (std::int32_t j = 0; j < element.NodeCount; ++j) {
            if (element.Neighbour[std::size_t(j)] >= 0)
                continue;
            const std::int32_t from = element.NodeIndex[std::size_t(j)];
            lines.MoveTo(from);
            lines.LineTo(from, element.NodeIndex[std::size_t(j + 1 < element.NodeCount ? j + 1 : 0)]);
        }
        lines.EndFigure();
    }
}

/// Every edge of every area element, an edge between two by the later one.
void drawAllEdges(LineCollector& lines, const MeshData& mesh) {
    for (std::int32_t e = 0; e < mesh.ElementCount; ++e) {
        const ElementRecord element = mesh.Elements[e];
        if (element.ElementType < 0 || element.NodeCount < 3)
            continue;
        std::int32_t from = element.NodeIndex[0];
        lines.MoveTo(from);
        for (std::int32_t j = 0; j < element.NodeCount; ++j) {
            const std::int32_t to = element.NodeIndex[std::size_t(j + 1 < element.NodeCount ? j + 1 : 0)];
            if (element.Neighbour[std::size_t(j)] >= e)
                lines.MoveTo(to);
            else
                lines.LineTo(from, to);
            from = to;
        }
        lines.EndFigure();
    }
}

void drawEdges(DeviceContext& device, std::span<const DevicePoint> points, const Scene& scene) {
    LineCollector lines(device, points);
    if (scene.Settings.Window.Mesh)
        drawAllEdges(lines, scene.Model.Mesh);
    else
        drawOutline(lines, scene.Model.Mesh);
}

void drawLineElements(DeviceContext& device, std::span<const DevicePoint> points, const MeshData& mesh) {
    LineCollector lines(device, points);
    for (std::int32_t e = 0; e < mesh.ElementCount; ++e) {
        if (mesh.Elements.NodeCount(e) != 2 || mesh.Elements.ElementType.at(e) < 0)
            continue;
        const ElementRecord element = mesh.Elements[e];
        lines.MoveTo(element.NodeIndex[0]);
        lines.LineTo(element.NodeIndex[0], element.NodeIndex[1]);
        lines.EndFigure();
    }
}

} // namespace

void DrawMesh(DeviceContext& device, const PlotConverter& converter, const Scene& scene) {
    const auto& styles = scene.Settings.Style.LineStyles;
    Pen old = SelectLineStyle(device, converter, styles[0]);
    drawEdges(device, scene.View.NodePoints, scene);
    mdTips::RestoreObject(device, old);
    old = SelectLineStyle(device, converter, styles[3]);
    drawLineElements(device, scene.View.NodePoints, scene.Model.Mesh);
    mdTips::RestoreObject(device, old);
}

void DrawOriginalMesh(DeviceContext& device, const PlotConverter& converter, const Scene& scene) {
    const NodeTable& nodes = scene.Model.Mesh.Nodes;
    const int count = scene.Model.Mesh.NodeCount;
    std::vector<int> xs(std::size_t(count), 0), ys(std::size_t(count), 0);
    converter.WorldArrayToDevice(count, nodes.X.constData(), nodes.Y.constData(), xs.data(), ys.data());
    std::vector<DevicePoint> points(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < points.size(); ++i)
        points[i] = {xs[i], ys[i]};
    const Pen old = SelectLineStyle(device, converter, scene.Settings.Style.LineStyles[1]);
    drawEdges(device, points, scene);
    mdTips::RestoreObject(device, old);
}

} // namespace mdScene
