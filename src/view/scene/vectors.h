// Arrows of two items of the loaded step, at the nodes or the elements. Lengths are those of a paper, whatever the
// zoom.
#pragma once

#include "view/scene/mdScene.h"

namespace mdScene {

/// Between an arrow's shaft and each of its barbs: 20 degrees in radians.
inline constexpr double BarbAngle = 0.349065850398866;

/// One arrow for each object of the item set in use, at the device positions of the view state; nothing without such a
/// set, or when its two items stand on different objects. A value is taken at the object's own index, also for items
/// packed per element type; where there is none there is no arrow. Writes `VectorScale` of `context` when it gets as
/// far as a scale. What lies outside the device's visible area is left out.
void DrawVectors(DeviceContext& device, const PlotConverter& converter, const PlotRect& window, const Scene& scene,
                 PaintContext& context);

/// One arrow centred on (x, y) in the selected pen; (vx, vy) times `scale` is its extent in device units, Y down.
void DrawArrow(DeviceContext& device, int x, int y, float vx, float vy, float scale);

/// Direction of (x, y) in radians, -pi/2 to below 2 pi: negative where x is positive and y negative.
double ArrowAngle(float x, float y);

} // namespace mdScene
