// Edges that grow fainter the closer they lie together, so that a dense mesh does not hide the contour under it. Works
// on every device with plain pens: an edge is drawn in a mixture of its own colour and of what the contour has there.
#pragma once

#include "view/scene/contour.h"

namespace mdScene {

/// All edges at `points`, as `DrawMesh` draws them, but those of elements that are less than 3 pixels wide across the
/// edge, a pixel being 1/96 inch on any device: these fade with the square of that width, and below a sixth of it
/// they are left out. The outline of the mesh never fades. `contour` is the scale of the one beneath; without one the
/// edges fade to the colour of the window.
void DrawFadingEdges(DeviceContext& device, const PlotConverter& converter, const LineStyle& style, const Scene& scene,
                     const ContourScale& contour, const VisibleElements& visible);

/// Whether most elements of the latest paint were drawn so small that their edges would fade.
bool IsMeshDense(const MeshData& mesh, const ViewState& view, const DeviceRect& picture, int dotsPerInch);

} // namespace mdScene
