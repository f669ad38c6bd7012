// What part of the world a picture must show for the displaced mesh to lie in it wholly. Changes no view.
#pragma once

#include "view/scene/mdScene.h"

namespace mdScene {

/// The displaced mesh as a picture of `size` pixels shows it when just this rectangle is fitted into it, with the
/// margin of the whole mesh. A displacement that is measured on paper has the same length on the device at every scale,
/// so the rectangle depends on both measures of the device. Nothing without displacements, and where no scale leaves
/// the picture room: a displacement longer than the window.
std::optional<PlotRect> DisplacedBounds(const Scene& scene, DeviceSize size, int dotsPerInch);

} // namespace mdScene
