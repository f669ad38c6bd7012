// What the user sees of picking: marks, band, their sizes, and the question before a graph.
#include "view/picking.h"

#include "app/mdTipsDrawing.h"

namespace mdPicking {

namespace {

constexpr ColorRef markColor = 0x4040FF;
constexpr ColorRef bandColor = 0x3F007F;
constexpr int markPenWidth = 2;

int shareOf(double share, int width, int screenWidth) {
    return Round(share * std::max(width, screenWidth));
}

void markElements(DeviceContext& device, const MeshData& mesh, std::span<const DevicePoint> nodePoints,
                  const clsMouse& selection) {
    std::vector<DevicePoint> points;
    std::vector<int> counts;
    for (std::int32_t i = 0; i < selection.Count(); ++i) {
        const std::int32_t e = selection.Item(i);
        if (e < 0 || e >= mesh.ElementCount || mesh.Elements.ElementType[e] < 0)
            continue;
        const std::size_t before = points.size();
        for (std::int32_t k = mesh.Elements.FirstCorner[e]; k < mesh.Elements.FirstCorner[e + 1]; ++k)
            if (std::size_t(mesh.Elements.NodeIndex[k]) < nodePoints.size())
                points.push_back(nodePoints[std::size_t(mesh.Elements.NodeIndex[k])]);
        if (points.size() > before)
            counts.push_back(int(points.size() - before));
    }
    if (!counts.empty())
        device.PolyPolygon(points, counts);
}

void markNodes(DeviceContext& device, const MeshData& mesh, std::span<const DevicePoint> nodePoints,
               const clsMouse& selection, int markSize) {
    const auto count = std::min(std::size_t(std::max(mesh.NodeCount, 0)), nodePoints.size());
    const auto moved = [](std::int32_t from, int by) { return Round(double(from) + by); };
    for (std::int32_t i = 0; i < selection.Count(); ++i) {
        const auto node = std::size_t(selection.Item(i));
        if (node >= count || mesh.Nodes.Active[qsizetype(node)] == 0)
            continue;
        const DevicePoint at = nodePoints[node];
        device.Rectangle(
            {moved(at.X, -markSize), moved(at.Y, -markSize), moved(at.X, markSize), moved(at.Y, markSize)});
    }
}

/// Runs `draw` with pen, brush and raster mode as given, and puts them back.
template<typename Draw>
void drawMixed(DeviceContext& device, int rasterMode, ColorRef color, int penWidth, Draw draw) {
    device.SetRop2(rasterMode);
    const Pen oldPen = mdTips::SelectSolidPen(device, color, penWidth, PenStyle::Solid);
    const Brush oldBrush = mdTips::SelectBrush(device, color, -1);
    draw();
    mdTips::RestoreObject(device, oldPen);
    mdTips::RestoreObject(device, oldBrush);
    device.SetRop2(RasterMode::CopyPen);
}

} // namespace

void DrawSelection(DeviceContext& device, const ResultModel& model, const ViewState& view, const clsMouse& selection,
                   int markSize) {
    if (selection.Count() == 0)
        return;
    device.SaveDC();
    drawMixed(device, RasterMode::MergePenNot, markColor, markPenWidth, [&] {
        if (selection.ObjectType() != PickedKind::Nodes)
            markElements(device, model.Mesh, view.NodePoints, selection);
        else
            markNodes(device, model.Mesh, view.NodePoints, selection, markSize);
    });
    device.RestoreDC();
}

void DrawRubberBand(DeviceContext& device, std::span<const DevicePoint, 2> corners) {
    drawMixed(device, RasterMode::XorPen, bandColor, 1, [&] {
        device.Rectangle({corners[0].X, corners[0].Y, corners[1].X, corners[1].Y});
    });
}

int PickTolerance(int deviceWidth, int screenWidth) {
    return shareOf(0.002, deviceWidth, screenWidth);
}

int NodeMarkSize(int clientWidth, int screenWidth) {
    return shareOf(0.004, clientWidth, screenWidth);
}

} // namespace mdPicking
