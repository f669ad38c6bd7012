#include "view/scene/mdScene.h"

#include "app/mdTipsDrawing.h"
#include "platform/base/Rounding.h"
#include "view/scene/contour.h"
#include "view/scene/legends.h"
#include "view/scene/vectors.h"

namespace mdScene {

namespace {

/// What can be seen of lines in the widest of the styles.
std::optional<DeviceRect> reachOf(const DeviceContext& device, const PlotConverter& converter,
                                  const StyleSettings& styles) {
    std::optional<DeviceRect> area = device.VisibleArea();
    if (!area)
        return {};
    int widest = 1;
    for (const LineStyle& style : styles.LineStyles)
        widest = std::max(widest, LineStyleWidth(converter, style));
    // As far as the device goes itself.
    widest = std::min(widest, 1 << 20);
    return DeviceRect{area->Left - widest, area->Top - widest, area->Right + widest, area->Bottom + widest};
}

} // namespace

int LineStyleWidth(const PlotConverter& converter, const LineStyle& style) {
    double width = 0, unused = 0;
    converter.PaperLengthToDevice(style.Width * 0.1, 0, width, unused);
    return std::max(1, Round(width));
}

Pen SelectLineStyle(DeviceContext& device, const PlotConverter& converter, const LineStyle& style) {
    return mdTips::SelectGeometricPen(device, style.Style, LineStyleWidth(converter, style), style.Color);
}

void PaintScene(PlotCanvas& canvas, bool printing, const Scene& scene) {
    const MeshData& mesh = scene.Model.Mesh;
    if (canvas.Window().Width() == 0 || canvas.Document().DeviceWidth() == 0 || mesh.NodeCount < 1 ||
        mesh.ElementCount < 1)
        return;
    const PlotConverter& converter = canvas.Converter();
    DeviceContext& device = canvas.hDC();
    scene.View.CoordConverter = converter;
    device.SaveDC();
    PaintContext context;
    context.Printing = printing;
    context.Picture = canvas.Document();
    context.BackBrush = printing ? stockBrush(Stock::WhiteBrush) : Brush{scene.WindowColor};
    context.Visible.Area = reachOf(device, converter, scene.Settings.Style);
    ComputeDevicePoints(converter, canvas.Window(), scene, context);
    if (!scene.Model.LineElementsOnly)
        DrawContour(device, scene, context);
    DrawMesh(device, converter, scene, context);
    const DisplacementSettings& displacement = scene.Settings.Displacement;
    if (displacement.Original && displacement.Fiducial != 0 && !scene.Model.NoDisplacement)
        DrawOriginalMesh(device, converter, scene);
    DrawVectors(device, converter, canvas.Window(), scene, context);
    const DeviceContext& reference = canvas.AttributeDC();
    if (scene.Settings.ValueDisplay)
        DrawValues(device, reference, scene);
    DrawLegends(device, reference, converter, canvas.Document(), scene, context);
    if (scene.Settings.HeaderDisplay)
        DrawHeader(device, scene, {context.Picture.Left, context.Picture.Top});
    else if (scene.SlideShow.SlideShowRunning && scene.Settings.SlideShow.PaintHeader)
        DrawHeader(device, scene, {});
    device.RestoreDC();
}

} // namespace mdScene
