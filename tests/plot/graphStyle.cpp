#include "Golden.h"
#include "platform/device/TraceDevice.h"
#include "plot/mdGraph.h"

using namespace mdGraph;

namespace {
constexpr int dotsPerInch = 254; // 10 units a millimetre

/// Four series of two points, the second one hidden, and a reference line of each type.
Graph graphOf(int type) {
    Graph graph;
    graph.GraphType = type;
    graph.ItemName = u"沈下%title%"_s;
    clsPlot& plot = graph.Plot;
    for (int i = 1; i <= 4; ++i) {
        plot.DataAdd(i, 0, float(i));
        plot.DataAdd(i, 10, float(-i));
        plot.SetDataLabel(i, u"節点 : "_s + QString::number(i));
        plot.PickupLineAdd(2, i - 1, 0xff, 5, i - 1);
    }
    plot.SetDataLegendHidden(2, true);
    plot.SetDrawArea(0, 0, 1000, 500);
    return graph;
}
} // namespace

TEST(GraphStyle, WholeGraphs) {
    ResultModel model;
    model.Title = u"盛土 %file%"_s;
    model.FileName = u"/data/a.b.vrf"_s;
    ApplicationSettings settings;
    GraphDefaults& defaults = settings.Graph;
    for (const int type : {GraphType::History, GraphType::Distribution}) {
        Graph graph = graphOf(type);
        graph.Plot.Orientation = type;
        graph.Plot.EndPaint = [&](DeviceContext& device) { DrawGraphLegend(device, graph.Plot, defaults); };
        TraceDevice device(1000, 500, dotsPerInch);
        ApplyGraphStyle(settings, model, device, graph);
        EXPECT_TRUE(*graph.Plot.ScaleFont(0) == *graph.Plot.ScaleFont(1) &&
                    graph.Plot.ScaleFont(0) != graph.Plot.ScaleFont(1) &&
                    graph.Plot.DataLineColor(2) == defaults.LegendStyles.value(0, {0, 0xff}).LineColor);
        graph.Plot.Redraw(&device, nullptr);
        EXPECT_TRUE(Golden().MatchesText(u"traces/graphStyle%1.trace"_s.arg(type), device.Trace()));
        // The second graph has neither grid nor numbers, and red series with black samples.
        defaults.PlotGrid = defaults.PlotScale = false;
        defaults.LegendStyles.clear();
    }
    Graph graph = graphOf(GraphType::History);
    graph.Plot.SetDataLegendHidden(1, true);
    ApplyGraphStyle({}, {}, TraceDevice(1, 1), graph);
    EXPECT_TRUE(graph.Plot.DotSize == 0 && graph.Plot.DataLineWidth(1) == 0);
    // Counted over visible series: before the first one stands the last style.
    EXPECT_TRUE(graph.Plot.DataLineColor(2) == 0x808040 && graph.Plot.DataLineColor(3) == 0xff0000);
}

TEST(GraphLegend, StandsWhereItIsPut) {
    TraceDevice device(1000, 500, dotsPerInch);
    Graph graph = graphOf(GraphType::History);
    graph.Plot.SetDrawArea(0, 0, 632, 232); // rows enough to be cut off
    graph.Plot.Redraw(&device, nullptr);
    GraphDefaults defaults;
    const qsizetype start = device.Trace().size();
    for (defaults.LegendPosition = -1; defaults.LegendPosition < 6; ++defaults.LegendPosition)
        DrawGraphLegend(device, graph.Plot, defaults);
    graph.Plot.DataLegendRemove(4);
    graph.Plot.DataLegendRemove(3);
    graph.Plot.SetDataLegendHidden(1, true); // no row is left
    DrawGraphLegend(device, graph.Plot, defaults);
    DrawGraphLegend(device, clsPlot(), {});
    DrawGraphLegend(device, graphOf(0).Plot, {.PlotLegend = false});
    EXPECT_TRUE(Golden().MatchesText(u"traces/graphLegend.trace"_s, device.Trace().mid(start)));
}
