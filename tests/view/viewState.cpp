#include "view/ViewState.h"

#include "platform/device/TraceDevice.h"

#include <gtest/gtest.h>

using namespace mdView;

namespace {

using Edges = std::array<float, 4>; ///< left, top, right, bottom

Edges edgesOf(const PlotRect& rect) {
    return {rect.Left(), rect.Top(), rect.Right(), rect.Bottom()};
}

Edges boundsOfNodes(const QList<float>& xs, const QList<float>& ys) {
    MeshData mesh;
    mesh.NodeCount = std::int32_t(xs.size());
    mesh.Nodes.X = xs;
    mesh.Nodes.Y = ys;
    ViewState view;
    SetViewBounds(mesh, view);
    EXPECT_EQ(edgesOf(view.WholeBounds), edgesOf(view.ViewBounds));
    return edgesOf(view.ViewBounds);
}

/// A world of 100 by 50, wholly in view.
ViewState wideWorld(int zoom = 0) {
    ViewState view;
    view.WholeBounds.SetRect(0, 50, 100, 0);
    view.ViewBounds = view.WholeBounds;
    ApplyZoom(zoom, view);
    return view;
}

constexpr int percent200 = 3, percent400 = 5;

TEST(ViewBounds, AreTheMeshAndATenthOfItsShorterSide) {
    EXPECT_EQ(boundsOfNodes({}, {}), (Edges{-120, 120, 120, -120}));
    EXPECT_EQ(boundsOfNodes({30}, {-7}), (Edges{-90, 113, 150, -127}));
    EXPECT_EQ(boundsOfNodes({5, -15, 65}, {30, 0, 10}), (Edges{-18, 33, 68, -3}));
    EXPECT_EQ(boundsOfNodes({0, 8}, {2, 2}), (Edges{0, 2, 8, 2}));
}

TEST(Zoom, IsHeldBetweenItsEnds) {
    for (const auto& [zoom, percent] : {std::pair{100, 1600.f}, {-100, 8.33f}, {2, 150.f}, {-4, 33.33f}}) {
        const ViewState view = wideWorld(zoom);
        EXPECT_EQ(ZoomPercent(view), percent);
        EXPECT_NEAR(view.ViewBounds.Width() * percent, 100 * 100, 0.01);
        EXPECT_NEAR(view.ViewBounds.Height() * percent, -50 * 100, 0.01);
    }
}

TEST(Zoom, KeepsTheCentreInsideTheLeftAndTopEdgesOnly) {
    ViewState view = wideWorld(percent200);
    EXPECT_EQ(edgesOf(view.ViewBounds), (Edges{25, 37.5f, 75, 12.5f}));
    const struct {
        float left, top;
        int from, to;
        Edges expected;
    } moves[] = {{0, 50, percent200, percent400, {12.5f, 43.75f, 37.5f, 31.25f}},
                 {2, 49, percent400, percent200, {0, 50, 50, 25}},
                 {75, 12.5f, percent400, percent200, {62.5f, 18.75f, 112.5f, -6.25f}},
                 {75, 12.5f, percent400, 0, {0, 50, 100, 0}}};
    for (const auto& move : moves) {
        view = wideWorld(move.from);
        view.ViewBounds.MoveTo(move.left, move.top);
        ApplyZoom(move.to, view);
        EXPECT_EQ(edgesOf(view.ViewBounds), move.expected);
    }
}

TEST(Zoom, AtAPointHoldsItWhenZoomedIn) {
    ViewState view = wideWorld();
    ZoomAt(percent200, 10, 40, view);
    EXPECT_EQ(edgesOf(view.ViewBounds), (Edges{5, 45, 55, 20}));
    ZoomAt(percent400, 55, 20, view);
    EXPECT_EQ(edgesOf(view.ViewBounds), (Edges{30, 32.5f, 55, 20}));
    ZoomAt(-3, 55, 20, view);
    EXPECT_EQ(edgesOf(view.ViewBounds), (Edges{-50, 75, 150, -25}));
}

TEST(ScrollBars, TellThePlaceInPercentOfTheFreeTravel) {
    for (const int zoom : {-7, 0}) {
        const ScrollBarState off = ScrollState(wideWorld(zoom), ScrollBar::Horizontal);
        EXPECT_FALSE(off.Enabled || off.Value || off.PageStep) << zoom;
    }
    ViewState view = wideWorld(percent200);
    view.ViewBounds.MoveTo(6.75f, 43.25f);
    const ScrollBarState across = ScrollState(view, ScrollBar::Horizontal);
    EXPECT_TRUE(across.Enabled);
    EXPECT_EQ(across.Value, 14) << "13.5, a half to the even neighbour";
    EXPECT_EQ(across.PageStep, 50);
    EXPECT_EQ(ScrollState(view, ScrollBar::Vertical).Value, 27);
    view.WholeBounds.SetRect(3, 50, 3, 0);
    view.ViewBounds.SetRect(3, 37.5f, 3, 12.5f);
    const ScrollBarState noWidth = ScrollState(view, ScrollBar::Horizontal);
    EXPECT_TRUE(noWidth.Enabled && !noWidth.Value && !noWidth.PageStep);

    view = wideWorld(percent400);
    Scroll(view, ScrollBar::Horizontal, 20);
    Scroll(view, ScrollBar::Vertical, 100);
    EXPECT_EQ(edgesOf(view.ViewBounds), (Edges{15, 12.5f, 40, 0}));
}

TEST(MouseCoordinates, ShowAboutFourDigitsOfTheWidth) {
    ViewState view;
    EXPECT_EQ(MouseCoordinates(view, 100, 1, 1), QString());
    PlotRect window;
    window.SetRect(0, 100, 100, 0);
    view.CoordConverter = PlotConverter(window, {0, 0, 200, 200}, 2, TraceDevice(200, 200));
    const float infinite = std::numeric_limits<float>::infinity();
    const std::pair<float, const char*> cases[] = {
        {0.05f, "12.50000, -1.00000"}, {5, "12.500, -1.000"}, {999, "12.5, -1.0"}, {2000, "13., -1."},
        {20000, "12.5, -1.0"},         {3e38f, "12.5, -1.0"}, {0, "13., -1."},     {infinite, "13., -1."},
        {-infinite, "13., -1."}};
    for (const auto& [width, text] : cases)
        EXPECT_EQ(MouseCoordinates(view, width, 24.6, 201.6).toStdString(), text) << width;
}

} // namespace
