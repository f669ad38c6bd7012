// Fills the inside of polygons. Draws no outline.
#pragma once

#include "platform/raster/PixelSurface.h"

namespace AreaFill {
/// Rings of `counts` points each, filled together by the alternate rule. A pixel is inside when its point (x, y) is;
/// of points on an edge those on a left or an upper one are inside. Areas side by side therefore share no pixel and
/// leave none out. Exact for all coordinates, and the cost depends on the rows that can be seen only. Points that
/// `counts` does not cover are left out, and a negative count ends them.
void Polygons(const PixelSurface& surface, const Ink& ink, std::span<const DevicePoint> points,
              std::span<const int> counts);

/// `left` and `top` belong to the rectangle, `right` and `bottom` don't.
void Rectangle(const PixelSurface& surface, const Ink& ink, std::int64_t left, std::int64_t top, std::int64_t right,
               std::int64_t bottom);
} // namespace AreaFill
