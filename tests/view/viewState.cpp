#include "view/ViewHistory.h"

#include "platform/device/TraceDevice.h"

#include <gtest/gtest.h>

using namespace mdView;

namespace {

using Edges = std::array<float, 4>; ///< left, top, right, bottom

Edges edgesOf(const PlotRect& rect) {
    return {rect.Left(), rect.Top(), rect.Right(), rect.Bottom()};
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
    const struct {
        QList<float> xs, ys;
        Edges bounds;
    } meshes[] = {{{}, {}, {-120, 120, 120, -120}},
                  {{30}, {-7}, {-90, 113, 150, -127}},
                  {{30, 0, 10}, {5, -15, 65}, {-3, 68, 33, -18}},
                  {{0, 8}, {2, 2}, {0, 2, 8, 2}}};
    for (const auto& [xs, ys, bounds] : meshes) {
        MeshData mesh;
        mesh.NodeCount = std::int32_t(xs.size());
        mesh.Nodes.X = xs;
        mesh.Nodes.Y = ys;
        ViewState view;
        SetViewBounds(mesh, view);
        EXPECT_TRUE(edgesOf(view.WholeBounds) == bounds && edgesOf(view.ViewBounds) == bounds) << mesh.NodeCount;
    }
}

TEST(Zoom, KeepsTheCentreInsideTheLeftAndTopEdgesOnly) {
    const struct {
        int from;
        float left, top;
        int to;
        Edges expected;
    } moves[] = {{0, 0, 50, 99, {46.875f, 26.5625f, 53.125f, 23.4375f}},
                 {0, 0, 50, -5, {-150, 125, 250, -75}},
                 {0, 0, 50, percent200, {25, 37.5f, 75, 12.5f}},
                 {percent200, 0, 50, percent400, {12.5f, 43.75f, 37.5f, 31.25f}},
                 {percent400, 2, 49, percent200, {0, 50, 50, 25}},
                 {percent400, 75, 12.5f, percent200, {62.5f, 18.75f, 112.5f, -6.25f}},
                 {percent400, 75, 12.5f, 0, {0, 50, 100, 0}}};
    for (const auto& move : moves) {
        ViewState view = wideWorld(move.from);
        view.ViewBounds.MoveTo(move.left, move.top);
        ApplyZoom(move.to, view);
        EXPECT_EQ(edgesOf(view.ViewBounds), move.expected);
    }
    ViewState view = wideWorld();
    ZoomAt(percent200, 10, 40, view);
    ZoomAt(percent400, 55, 20, view);
    EXPECT_EQ(edgesOf(view.ViewBounds), (Edges{30, 32.5f, 55, 20})) << "both points stayed where they were";
    ZoomAt(-99, 55, 20, view);
    EXPECT_TRUE(ZoomPercent(view) == 8.33f && view.ViewBounds.CentreX() == 50 && view.ViewBounds.CentreY() == 25);
}

TEST(ViewHistory, GoesBackAndForthAndForgetsWhatComesBehindANewView) {
    ViewHistory seen;
    ViewState view = wideWorld();
    for (const int zoom : {0, 0, 1, 2, 3}) {
        ApplyZoom(zoom, view);
        seen.Note(view);
    }
    const PlotRect last = view.ViewBounds;
    EXPECT_TRUE(seen.Go(-2, view) && view.Zoom == 1);
    EXPECT_TRUE(seen.CanGo(-1) && !seen.CanGo(-2) && seen.CanGo(2));
    EXPECT_TRUE(seen.Go(2, view) && view.ViewBounds == last);
    EXPECT_TRUE(seen.Go(-3, view));
    ApplyZoom(5, view);
    EXPECT_TRUE(seen.Note(view) && !seen.Note(view) && !seen.Go(1, view) && seen.Go(-1, view) && view.Zoom == 0);
    for (int i = 0; i < 1000; ++i)
        view.ViewBounds.OffsetBy(1, 0), seen.Note(view);
    EXPECT_TRUE(seen.CanGo(-99) && !seen.CanGo(-100));
}

TEST(MoveBy, MovesTheWorldWithThePixelsAndAPictureLiesWhereItsPointsDo) {
    DocumentPlotter plotter;
    plotter.Viewport().SetWindow({200, 100});
    ViewState view = wideWorld();
    plotter.SetEventSink({[&view] { return view.ViewBounds; }, {}, {}});
    MoveBy(5, 5, view);
    EXPECT_TRUE(view.ViewBounds == view.WholeBounds) << "nothing is painted yet";
    const PlotConverter painted(view.ViewBounds, {0, 0, 200, 100}, 2, TraceDevice(200, 100));
    view.CoordConverter = painted;
    MoveBy(30, -10, view);
    EXPECT_EQ(edgesOf(view.ViewBounds), (Edges{-15, 45, 85, -5}));
    const PictureShift moved = plotter.ConverterNow(painted).ShiftFrom(painted);
    EXPECT_EQ(moved, (PictureShift{1, 30, -10}));
    ApplyZoom(percent200, view);
    const PlotConverter now = plotter.ConverterNow(painted);
    const PictureShift zoomed = now.ShiftFrom(painted);
    const DevicePoint before = painted.WorldToDevice(20, 30), after = now.WorldToDevice(20, 30);
    EXPECT_EQ(zoomed.Scale, 2);
    EXPECT_NEAR(before.X * zoomed.Scale + zoomed.OffsetX, after.X, 1e-9);
    EXPECT_NEAR(before.Y * zoomed.Scale + zoomed.OffsetY, after.Y, 1e-9);
    double across = 0, onPaper = 0, unused = 0;
    now.PaperLengthToDevice(25.4, 0, across, unused);
    painted.PaperLengthToDevice(25.4, 0, onPaper, unused);
    EXPECT_EQ(across, onPaper);
}

TEST(ScrollBars, TellThePlaceInPercentOfTheFreeTravel) {
    const ScrollBarState off = ScrollState(wideWorld(), ScrollBar::Horizontal);
    EXPECT_FALSE(off.Enabled || off.Value || off.PageStep);
    ViewState view = wideWorld(percent200);
    view.ViewBounds.MoveTo(6.75f, 43.25f);
    const ScrollBarState across = ScrollState(view, ScrollBar::Horizontal);
    EXPECT_TRUE(across.Enabled && across.PageStep == 50);
    EXPECT_EQ(across.Value, 14) << "13.5, a half to the even neighbour";
    EXPECT_EQ(ScrollState(view, ScrollBar::Vertical).Value, 27);
    view.WholeBounds.SetWidth(0);
    view.ViewBounds = view.WholeBounds;
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
    const std::pair<float, const char*> cases[] = {
        {0.05f, "12.50000, -1.00000"}, {5, "12.500, -1.000"}, {999, "12.5, -1.0"},    {2000, "13., -1."},
        {20000, "12.5, -1.0"},         {0, "13., -1."},       {HUGE_VALF, "13., -1."}};
    for (const auto& [width, text] : cases)
        EXPECT_EQ(MouseCoordinates(view, width, 24.6, 201.6).toStdString(), text) << width;
}

} // namespace
