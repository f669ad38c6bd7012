// What part of the world is in view, and where its nodes and elements came to lie in the latest paint. Arithmetic only:
// it paints nothing and asks no window.
#pragma once

#include "platform/device/DocumentPlotter.h"
#include "result/ResultModel.h"
#include "view/NodeSpans.h"

#include <array>
#include <optional>
#include <vector>

constexpr int ZoomMin = -7;
constexpr int ZoomMax = 9;

struct ViewState {
    PlotRect WholeBounds; ///< what 100 percent shows: the mesh, displaced if so wanted, and its margin
    PlotRect ViewBounds;  ///< the visible part, moved by zoom and scrolling
    int Zoom = 0;         ///< ZoomMin to ZoomMax, index relative to 100 percent
    /// Percentages by `Zoom` - ZoomMin.
    std::array<float, ZoomMax - ZoomMin + 1> ZoomTable{8.33f, 12.5f, 25,  33.33f, 50,  66.67f, 75,   100, 125,
                                                       150,   200,   300, 400,    600, 800,    1200, 1600};
    bool RefitPending = false; ///< a file has opened since the plotter last asked

    std::optional<PlotConverter> CoordConverter; ///< of the latest paint
    std::vector<DevicePoint> NodePoints;         ///< of the latest paint, one per node, displacement included
    NodeSpans Spans;                             ///< of the mesh of the latest paint
    std::vector<DevicePoint> ElementCentres;     ///< of the latest paint, one per element; none until a layer asks

    std::array<DevicePoint, 2> RubberBand; ///< corners of the drag rectangle, the second where the mouse is
    bool Dragging = false;                 ///< a left drag is in progress
};

/// State of a scroll bar, 0 to 100 percent of the free travel. A measure that cannot be told leaves the bar's as it
/// was.
struct ScrollBarState {
    bool Enabled = false;
    std::optional<int> Value;
    std::optional<int> PageStep;
};

enum class ScrollBar : int { Horizontal = 0, Vertical = 1 };

namespace mdView {

/// Both rectangles around the whole mesh.
void SetViewBounds(const MeshData& mesh, ViewState& view);

/// Sets `Zoom`, held within its range, and moves `ViewBounds`: all of the world is centred up to 100 percent, beyond
/// that the centre stays, held inside the whole's left and top edges.
void ApplyZoom(int value, ViewState& view);

/// `ApplyZoom` by one step in or out, with the world point (x, y) staying at its place in the picture when zoomed in.
void ZoomAt(int value, float x, float y, ViewState& view);

/// Moves `ViewBounds` so that the world goes `across` and `down` by pixels of the latest paint; nothing before it.
void MoveBy(double across, double down, ViewState& view);

float ZoomPercent(const ViewState& view);

ScrollBarState ScrollState(const ViewState& view, ScrollBar bar);

/// Moves `ViewBounds` to `percent` of the bar's free travel.
void Scroll(ViewState& view, ScrollBar bar, int percent);

/// World coordinates of a device position as text, about four digits of `windowWidth`; empty before the first paint.
QString MouseCoordinates(const ViewState& view, float windowWidth, double x, double y);

/// True when `value` lies between `upper` and `lower`, in whichever order these stand, ends and `tolerance` included.
bool ValueInBand(float value, float upper, float lower, float tolerance);

} // namespace mdView
