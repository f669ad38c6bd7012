#include "view/scene/mdScene.h"

#include "app/mdTipsDrawing.h"
#include "platform/base/Rounding.h"
#include "view/scene/contour.h"
#include "view/scene/legends.h"
#include "view/scene/vectors.h"

namespace mdScene {

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
