#include "platform/TraceDevice.h"
#include "plot/mdGraph.h"

#include <gtest/gtest.h>

using namespace mdGraph;

namespace {
/// `series` series of one point each; the second one is hidden.
Graph graphOf(int series) {
    Graph graph;
    graph.ItemName = u"沈下%title%"_qs;
    for (int i = 1; i <= series; ++i)
        graph.Plot.DataAdd(i, 0, 0);
    graph.Plot.SetDataLegendHidden(2, true);
    return graph;
}

constexpr int dotsPerInch = 254; // 10 units a millimetre
} // namespace

TEST(GraphStyle, TextsAndSeriesFromTheSettings) {
    ResultModel model;
    model.Title = u"盛土 %file%"_qs;
    model.FileName = u"/data/a.b.vrf"_qs;
    Graph graph = graphOf(4);
    graph.GraphType = GraphType::Distribution;
    GraphDefaults defaults;
    defaults.LegendStyles.resize(2);
    defaults.PlotGrid = defaults.PlotScale = false;
    ApplyGraphStyle(defaults, model, TraceDevice(1000, 500, dotsPerInch), graph);
    const clsPlot& plot = graph.Plot;
    EXPECT_EQ(plot.GraphTitle, u"沈下盛土 a.b.vrf分布図"_qs);
    EXPECT_EQ(plot.ScaleLabel(clsPlot::ScaleBase) + plot.ScaleLabel(clsPlot::ScalePlot), u"位置沈下盛土 a.b.vrf"_qs);
    const double sizes[] = {plot.GraphTitleFont->Size, plot.ScaleLabelFont(1)->Size, plot.ScaleFont(1)->Size};
    EXPECT_TRUE(sizes[0] == 12 && sizes[1] == 10 && sizes[2] == 9);
    EXPECT_TRUE(plot.ScaleFont(0) == plot.ScaleFont(1) && plot.ScaleLabelFont(0) == plot.ScaleLabelFont(1));
    EXPECT_FALSE(plot.GridDraw(0) || plot.GridDraw(1) || plot.ScaleDraw(0) || plot.ScaleDraw(1));
    EXPECT_TRUE(plot.GraphTitlePos == 1 && plot.DotSize == 10 && plot.DataLineWidth(1) == 3);
    // Styles go round by visible series: first, (hidden as the first), second, first.
    const Colour colours[] = {0xff0000, 0xff0000, 0x4080ff, 0xff0000};
    for (int i = 1; i <= 4; ++i) {
        EXPECT_EQ(plot.DataLineColor(i), colours[i - 1]);
        EXPECT_EQ(plot.DataDotFillColor(i), colours[i - 1]);
    }
    EXPECT_TRUE(plot.DataLineStyle(3) == 1 && plot.DataDotStyle(3) == 1 && plot.DataDotFillStyle(3) == 8);

    graph.GraphType = GraphType::History;
    graph.Plot.SetDataLegendHidden(1, true);
    ApplyGraphStyle(defaults, model, TraceDevice(1, 1), graph); // no millimetre wide
    EXPECT_TRUE(plot.GraphTitle.endsWith(u"時系列図") && plot.ScaleLabel(clsPlot::ScaleBase) == u"経過時間");
    EXPECT_TRUE(plot.DotSize == 0 && plot.DataLineColor(3) == 0xff0000);
    defaults.LegendStyles.clear();
    ApplyGraphStyle(defaults, model, TraceDevice(1, 1), graph);
    EXPECT_TRUE(plot.DataLineColor(3) == 0xff && plot.DataDotColor(1) == 0xff && plot.DataDotStyle(4) == 1);
}

TEST(GraphLegend, BoxAndRows) {
    Graph graph = graphOf(3);
    clsPlot& plot = graph.Plot;
    plot.SetDataLabel(1, u"節点 : 1"_qs); // 128 by 32 units
    plot.SetDataLabel(3, u"a"_qs);
    plot.SetScaleDraw(clsPlot::ScaleBoth, false);
    plot.SetDrawArea(0, 0, 632, 432);
    TraceDevice page(1000, 500, dotsPerInch);
    plot.Redraw(&page, nullptr);
    ASSERT_EQ(plot.DataPlotArea(), (PlotArea{16, 16, 600, 400}));

    GraphDefaults defaults;
    const auto legend = [&] {
        TraceDevice device(1000, 500, dotsPerInch);
        DrawGraphLegend(device, plot, defaults);
        return QByteArray(device.Trace()).replace('\n', "; ").toStdString();
    };
    const auto sample = [](const std::string& pen, const std::string& colour, int y) {
        const auto at = [y](int offset) { return std::to_string(y + offset) + "; "; };
        return pen + colour + "; MoveTo 448 " + at(0) + "LineTo 576 " + at(0) + "StockPen 7; Pen 0 1 " + colour +
               "; Brush " + colour + " -1; Ellipse 510 " + std::to_string(y - 2) + " 514 " + at(2) +
               "StockBrush 0; StockPen 7; ";
    };
    const std::string begin = "SaveDC; ClipRect 16 16 616 416; Font 32 400 0 0 0 0 \"ＭＳ Ｐゴシック\"; "
                              "StockPen 7; StockBrush 0; Rectangle ";
    const std::string black = "0x00000000", first = "280 36 596 140; Text 300 56 \"節点 : 1\"; ";
    EXPECT_TRUE(legend().starts_with(begin + first + sample("GeometricPen 0 3 ", "0x00ff0000", 72) +
                                     "Text 300 88 \"a\"; " + sample("GeometricPen 1 3 ", "0x004080ff", 104) + "Font "));
    defaults.LegendStyles.clear(); // the samples are black all the same
    EXPECT_TRUE(legend().starts_with(begin + first + sample("GeometricPen 0 3 ", black, 72)));
    const char* const boxes[] = {"36 36 352 140; ",   "158 36 474 140; ",  "280 36 596 140; ", "36 292 352 396; ",
                                 "158 292 474 396; ", "280 292 596 396; ", "280 292 596 396; "};
    for (int position = 0; position < 7; ++position) {
        defaults.LegendPosition = position;
        EXPECT_TRUE(legend().starts_with(begin + boxes[position])) << position;
    }
    plot.SetDataLegendHidden(1, true);
    plot.SetDataLegendHidden(3, true);
    EXPECT_TRUE(legend().ends_with("RestoreDC; ") && legend().find("Rectangle") == std::string::npos);
    defaults.PlotLegend = false;
    EXPECT_EQ(legend(), "");
}
