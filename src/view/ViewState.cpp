#include "view/ViewState.h"

#include "app/NumberFormat.h"
#include "platform/base/Rounding.h"

#include <cmath>

namespace mdView {

namespace {

struct Travel {
    float whole, view, wholeStart, viewStart;
};

Travel travelOf(const ViewState& view, ScrollBar bar) {
    if (bar == ScrollBar::Horizontal)
        return {view.WholeBounds.Width(), view.ViewBounds.Width(), view.WholeBounds.Left(), view.ViewBounds.Left()};
    return {view.WholeBounds.Height(), view.ViewBounds.Height(), view.WholeBounds.Top(), view.ViewBounds.Top()};
}

std::optional<int> percentage(float part, float whole) {
    const float percent = part / whole * 100;
    return whole == 0 || !std::isfinite(percent) ? std::nullopt : std::optional(Round(double(percent)));
}

} // namespace

void SetViewBounds(const MeshData& mesh, ViewState& view) {
    constexpr float loneExtent = 100;
    float xMin = -loneExtent, xMax = loneExtent, yMin = -loneExtent, yMax = loneExtent;
    if (mesh.NodeCount == 1) {
        xMin += mesh.Nodes.X.at(0);
        xMax += mesh.Nodes.X.at(0);
        yMin += mesh.Nodes.Y.at(0);
        yMax += mesh.Nodes.Y.at(0);
    } else if (mesh.NodeCount > 1) {
        xMin = yMin = BoundStart;
        xMax = yMax = -BoundStart;
        for (std::int32_t i = 0; i < mesh.NodeCount; ++i) {
            const float x = mesh.Nodes.X.at(i);
            const float y = mesh.Nodes.Y.at(i);
            xMin = x < xMin ? x : xMin;
            xMax = x > xMax ? x : xMax;
            yMin = y < yMin ? y : yMin;
            yMax = y > yMax ? y : yMax;
        }
    }
    const float margin = std::min(0.1f * (yMax - yMin), 0.1f * (xMax - xMin));
    for (PlotRect* rect : {&view.WholeBounds, &view.ViewBounds})
        rect->SetRect(xMin - margin, yMax + margin, xMax + margin, yMin - margin);
}

bool ValueInBand(float value, float upper, float lower, float tolerance) {
    return (value >= upper - tolerance && value <= lower + tolerance) ||
           (value >= lower - tolerance && value <= upper + tolerance);
}

float ZoomPercent(const ViewState& view) {
    return view.ZoomTable[std::size_t(view.Zoom - ZoomMin)];
}

void ApplyZoom(int value, ViewState& view) {
    const PlotRect& whole = view.WholeBounds;
    PlotRect& rect = view.ViewBounds;
    view.Zoom = std::clamp(value, ZoomMin, ZoomMax);
    const float factor = 1 / (ZoomPercent(view) * 0.01f);
    const float centreX = rect.CentreX();
    const float centreY = rect.CentreY();
    rect.SetWidth(whole.Width() * factor);
    rect.SetHeight(whole.Height() * factor);
    if (ValueInBand(factor, 1, 1, 0.001f) || factor > 1)
        rect.MoveTo(whole.CentreX() - rect.Width() * 0.5f, whole.CentreY() - rect.Height() * 0.5f);
    else
        // Right and bottom are left open: a view near them may lie partly outside until it is scrolled.
        rect.MoveTo(std::max(whole.Left(), centreX - rect.Width() * 0.5f),
                    std::min(whole.Top(), centreY - rect.Height() * 0.5f));
}

void ZoomAt(int value, float x, float y, ViewState& view) {
    const PlotRect before = view.ViewBounds;
    ApplyZoom(value, view);
    if (view.Zoom < 1 || before.Width() == 0 || before.Height() == 0)
        return;
    PlotRect& rect = view.ViewBounds;
    const float across = (x - before.Left()) / before.Width();
    const float down = (y - before.Top()) / before.Height();
    rect.MoveTo(x - across * rect.Width(), y - down * rect.Height());
}

void MoveBy(double across, double down, ViewState& view) {
    if (!view.CoordConverter)
        return;
    double x = 0, y = 0;
    view.CoordConverter->DeviceWayToWorld(across, down, x, y);
    view.ViewBounds.OffsetBy(float(-x), float(-y));
}

ScrollBarState ScrollState(const ViewState& view, ScrollBar bar) {
    ScrollBarState state;
    state.Enabled = view.Zoom >= 1;
    if (!state.Enabled)
        return state;
    const Travel travel = travelOf(view, bar);
    state.Value = percentage(travel.viewStart - travel.wholeStart, travel.whole - travel.view);
    state.PageStep = percentage(travel.view, travel.whole);
    return state;
}

void Scroll(ViewState& view, ScrollBar bar, int percent) {
    const Travel travel = travelOf(view, bar);
    const float offset = float(percent) / 100 * (travel.whole - travel.view) + travel.wholeStart - travel.viewStart;
    if (bar == ScrollBar::Horizontal)
        view.ViewBounds.OffsetBy(offset, 0);
    else
        view.ViewBounds.OffsetBy(0, offset);
}

QString MouseCoordinates(const ViewState& view, float windowWidth, double x, double y) {
    if (!view.CoordConverter)
        return {};
    float worldX = 0, worldY = 0;
    view.CoordConverter->DeviceToWorld(Round(x), Round(y), worldX, worldY);
    constexpr double commonLogOfE = 0.434294481903252;
    // A width that has no logarithm leaves the number of digits at 0.
    const double power = std::floor(std::log(double(windowWidth)) * commonLogOfE);
    const int digits = std::isfinite(power) ? int(power) - 3 : 0;
    const QString mask = digits < 1 ? u"0."_s + QString(-digits, u'0') : u"0.0"_s;
    return NumberFormat::Format(worldX, mask) + u", " + NumberFormat::Format(worldY, mask);
}

} // namespace mdView
