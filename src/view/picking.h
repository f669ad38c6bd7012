// From a place or a rectangle on the device to nodes and elements, and the marks of what is picked. Works on the device
// positions of the latest paint, so it meets the mesh as it was drawn. Knows no window and shows no box.
#pragma once

#include "platform/device/DeviceContext.h"
#include "result/ResultModel.h"
#include "view/ViewState.h"
#include "view/clsMouse.h"

namespace mdPicking {

/// What a pick does with the objects selected before.
namespace Mode {
enum : int { Replace = 0, Add = 1, Toggle = 2 };
}

/// Both picks take objects of the current item: nodes for an item per node, otherwise elements of the item's type. The
/// list comes out in ascending order. Objects selected before count by their numbers alone, also when they were of the
/// other kind. Without an open file nothing happens; without a current item nothing can be hit.

/// The nearest active node within twice `tolerance`, of equally near ones the first; or the first element whose drawn
/// polygon holds `point`, a line element within twice `tolerance`. Missing everything empties the selection in mode 0
/// and keeps it in the others.
void PickPoint(const ResultModel& model, const ViewState& view, clsMouse& selection, int mode, DevicePoint point,
               int tolerance);

/// The active nodes in the rectangle between two `corners`, enlarged by `tolerance` on all sides and its edges
/// included; or the elements with all their corners in it. Nodes that are not active and elements of other types drop
/// out of the selection. An element that has none of the mesh's nodes is never taken.
void PickRectangle(const ResultModel& model, const ViewState& view, clsMouse& selection, int mode,
                   std::span<const DevicePoint, 2> corners, int tolerance);

/// The object that `PickPoint` would take; -1 for none.
std::int32_t ObjectAt(const ResultModel& model, const ViewState& view, DevicePoint point, int tolerance);

/// True when the pixel belongs to the polygon's inside as a device fills it: by the alternate rule, points on a left or
/// an upper edge included, on a right or a lower one not.
bool IsInPolygon(std::span<const DevicePoint> polygon, DevicePoint point);

/// Marks all that is selected and to be seen in the latest paint: elements as one figure, nodes by a square of
/// `markSize` units to each side. Objects that do not exist in the loaded step get no mark.
void DrawSelection(DeviceContext& device, const ResultModel& model, const ViewState& view, const clsMouse& selection,
                   int markSize);

/// The rectangle between two corners, filled; drawn a second time it disappears. Right and bottom edge stay out, so
/// that bands side by side make one.
void DrawRubberBand(DeviceContext& device, std::span<const DevicePoint, 2> corners);

/// How far from its place a click still counts, in device units. A drag over a shorter way is a click.
int PickTolerance(int deviceWidth, int screenWidth);

/// Half the side of a node's mark, in device units.
int NodeMarkSize(int clientWidth, int screenWidth);

} // namespace mdPicking
