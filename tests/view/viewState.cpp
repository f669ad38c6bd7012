#include "view/ViewState.h"

#include "platform/TraceDevice.h"

#include <gtest/gtest.h>

using namespace mdView;

namespace {

std::array<float, 4> edgesOf(const PlotRect& rect) {
    return {rect.Left(), rect.Top(), rect.Right(), rect.Bottom()};
}
using Edges = std::array<float, 4>; ///< left, top, right, bottom

ViewState boundsOfNodes(const QList<float>& xs, const QList<float>& ys) {
    MeshData mesh;
    mesh.NodeCount = std::int32_t(xs.size());
    mesh.Nodes.X = xs;
    mesh.Nodes.Y = ys;
    ViewState view;
    view.ViewBounds.SetRect(1, 2, 3, 4);
    SetViewBounds(mesh, view);
    EXPECT_EQ(edgesOf(view.WholeBounds), edgesOf(view.ViewBounds));
    return view;
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
    EXPECT_EQ(edgesOf(boundsOfNodes({}, {}).ViewBounds), (Edges{-120, 120, 120, -120}));
    EXPECT_EQ(edgesOf(boundsOfNodes({30}, {-7}).ViewBounds), (Edges{-90, 113, 150, -127}));
    EXPECT_EQ(edgesOf(boundsOfNodes({5, -15, 65}, {30, 0, 10}).ViewBounds), (Edges{-18, 33, 68, -3}));
    EXPECT_EQ(edgesOf(boundsOfNodes({0, 8}, {2, 2}).ViewBounds), (Edges{0, 2, 8, 2}));
}

TEST(ApplyZoom, IsHeldBetweenItsEndsAndFollowsTheTable) {
    EXPECT_EQ(wideWorld(100).Zoom, 9);
    EXPECT_EQ(wideWorld(-100).Zoom, -7);
    const float percents[] = {8.33f, 12.5f, 25,  33.33f, 50,  66.67f, 75,   100, 125,
                              150,   200,   300, 400,    600, 800,    1200, 1600};
    for (int zoom = -7; zoom <= 9; ++zoom) {
        const ViewState view = wideWorld(zoom);
        const float percent = percents[zoom + 7];
        EXPECT_EQ(ZoomPercent(view), percent);
        EXPECT_NEAR(view.ViewBounds.Width() * percent, 100 * 100, 0.01) << zoom;
        EXPECT_NEAR(view.ViewBounds.Height() * percent, -50 * 100, 0.01) << zoom;
    }
}

TEST(ApplyZoom, KeepsTheCentreInsideTheLeftAndTopEdgesOnly) {
    ViewState view = wideWorld(percent200);
    EXPECT_EQ(edgesOf(view.ViewBounds), (Edges{25, 37.5f, 75, 12.5f}));
    view.ViewBounds.MoveTo(0, 50);
    ApplyZoom(percent400, view);
    EXPECT_EQ(edgesOf(view.ViewBounds), (Edges{12.5f, 43.75f, 37.5f, 31.25f}));
    view.ViewBounds.MoveTo(2, 49);
    ApplyZoom(percent200, view);
    EXPECT_EQ(edgesOf(view.ViewBounds), (Edges{0, 50, 50, 25}));
    ApplyZoom(percent400, view);
    view.ViewBounds.MoveTo(75, 12.5f);
    ApplyZoom(percent200, view);
    EXPECT_EQ(edgesOf(view.ViewBounds), (Edges{62.5f, 18.75f, 112.5f, -6.25f}));
    ApplyZoom(0, view);
    EXPECT_EQ(edgesOf(view.ViewBounds), (Edges{0, 50, 100, 0}));
}

TEST(ZoomAt, HoldsThePointWhenZoomedIn) {
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
    view.ViewBounds.MoveTo(6.25f, 43.25f);
    const ScrollBarState across = ScrollState(view, ScrollBar::Horizontal);
    EXPECT_TRUE(across.Enabled);
    EXPECT_EQ(across.Value, 12) << "12.5, a half to the even neighbour";
    EXPECT_EQ(across.PageStep, 50);
    EXPECT_EQ(ScrollState(view, ScrollBar::Vertical).Value, 27);
    EXPECT_EQ(ScrollState(wideWorld(2), ScrollBar::Vertical).PageStep, 67);

    view.WholeBounds.SetRect(3, 50, 3, 0);
    view.ViewBounds.SetRect(3, 37.5f, 3, 12.5f);
    const ScrollBarState noWidth = ScrollState(view, ScrollBar::Horizontal);
    EXPECT_TRUE(noWidth.Enabled);
    EXPECT_FALSE(noWidth.Value || noWidth.PageStep);

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
    PlotDocument document;
    document.SetWindow({200, 200});
    view.CoordConverter = PlotConverter(window, document, 2, TraceDevice(200, 200));
    const float infinite = std::numeric_limits<float>::infinity();
    struct {
        float width;
        const char16_t* text;
    } const cases[] = {
        {0.05f, u"12.50000, -1.00000"}, {5, u"12.500, -1.000"}, {999, u"12.5, -1.0"}, {2000, u"13., -1."},
        {20000, u"12.5, -1.0"},         {3e38f, u"12.5, -1.0"}, {0, u"13., -1."},     {infinite, u"13., -1."},
        {-infinite, u"13., -1."}};
    for (const auto& expected : cases)
        EXPECT_EQ(MouseCoordinates(view, expected.width, 24.6, 201.6), QString::fromUtf16(expected.text))
            << expected.width;
}

} // namespace
