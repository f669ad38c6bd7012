// Turns the loaded step into a picture on any device: the layers in their fixed order, from the mesh up. Keeps nothing
// between paints but the device positions in the view state.
#pragma once

#include "app/ApplicationSettings.h"
#include "platform/device/DocumentPlotter.h"
#include "result/ResultModel.h"
#include "view/ViewState.h"
#include "view/scene/VisibleElements.h"

/// What the layers of one paint hand on to each other.
struct PaintContext {
    bool Printing = false;
    Brush BackBrush;              ///< behind legends
    DeviceRect Picture;           ///< the part of the device that the world is drawn on
    double DisplacementScale = 0; ///< device units per unit of displacement
    double VectorScale = 0;       ///< device units per unit of the vector items
    float ContourMax = 0, ContourMin = 0;
    int ContourDivide = 0;
    VisibleElements Visible; ///< its area is to be set before the positions are computed, which finds the elements
};

/// A slide show as far as its pictures differ from those of a step.
struct SlideShowRun {
    bool SlideShowRunning = false;
    float SlideMaxDisplacement = 0; ///< over all steps; stands in for the step's own while a slide show runs
    float SlideMaxVector = 0;
    bool RangeOfAllSteps = false; ///< whether the contour's range is held at that of all steps
};

/// What a scene is made of. The references must outlive the calls that take them.
struct Scene {
    const ResultModel& Model;
    const ApplicationSettings& Settings;
    ViewState& View; ///< its positions and converter are rewritten by each paint
    SlideShowRun SlideShow = {};
    ColorRef WindowColor = makeColor(255, 255, 255); ///< background of the window, behind legends on a screen
};

namespace mdScene {

/// Paints the whole scene; nothing without nodes or elements or on a world without width. The background is the
/// caller's.
void PaintScene(PlotCanvas& canvas, bool printing, const Scene& scene);

/// Device positions of all nodes, displaced as the settings say. Writes `DisplacementScale` and the elements that may
/// be seen to `context`. The centres of the picture before are forgotten.
void ComputeDevicePoints(const PlotConverter& converter, const PlotRect& window, const Scene& scene,
                         PaintContext& context);

/// Device positions of the element centres, each the mean of the displaced corners: worked out by the first layer that
/// stands on elements, and then those of the view.
const std::vector<DevicePoint>& ElementCentres(const Scene& scene);

/// The edges at the displaced positions, each once, or the outline alone when `Mesh` is off; then the line elements.
/// Edges that are to fade do so to the contour of `context`.
void DrawMesh(DeviceContext& device, const PlotConverter& converter, const Scene& scene,
              const PaintContext& context = {});

/// The same edges before displacement, without the line elements.
void DrawOriginalMesh(DeviceContext& device, const PlotConverter& converter, const Scene& scene);

/// A line style's width on paper as at least one device unit.
int LineStyleWidth(const PlotConverter& converter, const LineStyle& style);

/// Selects the pen of a line style at that width; gives back the pen selected before.
Pen SelectLineStyle(DeviceContext& device, const PlotConverter& converter, const LineStyle& style);

} // namespace mdScene
