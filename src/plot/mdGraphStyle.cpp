// How a graph looks: fonts, texts and the styles of its series, from the settings.
#include "app/mdApplication.h"
#include "app/mdTipsDrawing.h"
#include "platform/base/NativePath.h"
#include "plot/mdGraph.h"

#include <QScopeGuard>

namespace {

FontReference fontOf(const QString& fontString) {
    ColorRef unused = 0;
    return std::make_shared<FontObject>(mdTips::ParseFontString(fontString, unused));
}

QString scaleMask(const ApplicationSettings& settings) {
    switch (settings.Graph.ScaleFormat) {
    case ScaleFormat::Options:
        return settings.Style.RealFormat;
    case ScaleFormat::Mask:
        return settings.Graph.ScaleMask;
    default:
        return {};
    }
}

void setTexts(const GraphDefaults& defaults, const LabelMacros& macros, Graph& graph) {
    const auto text = [&](std::size_t label) { return mdTips::ExpandLabelMacros(defaults.GraphLabels[label], macros); };
    const bool distribution = graph.GraphType == GraphType::Distribution;
    graph.Plot.GraphTitle = text(0);
    graph.Plot.SetScaleLabel(clsPlot::ScaleBase, text(distribution ? 3 : 1));
    graph.Plot.SetScaleLabel(clsPlot::ScalePlot, text(distribution ? 4 : 2));
}

void styleSeries(clsPlot& plot, const QList<LegendStyle>& styles, int lineWidth) {
    constexpr ColorRef red = 0xff;
    constexpr LegendStyle withoutStyles{.LineColor = red, .DotStyle = DotStyle::Circle, .DotColor = red};
    constexpr int solidHatch = 8;
    // A hidden series has the style of the last visible one before it, so the legend's rows keep theirs in turn.
    qsizetype visible = 0;
    for (int series = 1; series <= plot.DataLegendCount(); ++series) {
        if (!plot.DataLegendHidden(series))
            ++visible;
        const LegendStyle style =
            styles.isEmpty() ? withoutStyles : styles[(visible - 1 + styles.size()) % styles.size()];
        plot.SetDataLineWidth(series, lineWidth);
        plot.SetDataLineColor(series, style.LineColor);
        plot.SetDataLineStyle(series, style.LineStyle);
        plot.SetDataDotColor(series, style.DotColor);
        plot.SetDataDotStyle(series, style.DotStyle);
        plot.SetDataDotFillColor(series, style.DotColor);
        plot.SetDataDotFillStyle(series, solidHatch);
    }
}

void draw(DeviceContext& device, const GraphDefaults& defaults, const PlotArea& area, Graph& graph) {
    clsPlot& plot = graph.Plot;
    plot.SetDrawArea(area.Left, area.Top, area.Width, area.Height);
    plot.EndPaint = [&](DeviceContext& target) { mdGraph::DrawGraphLegend(target, plot, defaults); };
    const auto forget = qScopeGuard([&plot] { plot.EndPaint = {}; });
    plot.Redraw(&device, nullptr);
}

} // namespace

LabelMacros mdGraph::GraphMacros(const Graph& graph, const ResultModel& model) {
    const bool distribution = graph.GraphType == GraphType::Distribution;
    return {{u"%item%"_s, graph.ItemName},
            {u"%title%"_s, model.Title},
            {u"%file%"_s, NativePath::Shown(mdApplication::PathPart(model.FileName, mdApplication::FileName))},
            {u"%name%"_s, distribution ? u"分布図"_s : u"時系列図"_s}};
}

void mdGraph::ApplyGraphStyle(const ApplicationSettings& settings, const ResultModel& model,
                              const DeviceContext& device, Graph& graph) {
    const GraphDefaults& defaults = settings.Graph;
    clsPlot& plot = graph.Plot;
    plot.GraphTitleFont = fontOf(defaults.GraphFonts[0]);
    // Each axis a font of its own: a style file may change that of one.
    for (const int scale : {clsPlot::ScaleBase, clsPlot::ScalePlot})
        plot.SetScaleFont(scale, fontOf(defaults.GraphFonts[2]));
    plot.SetScaleLabelFont(clsPlot::ScaleBoth, fontOf(defaults.GraphFonts[1]));
    plot.SetGridDraw(clsPlot::ScaleBoth, defaults.PlotGrid);
    plot.SetScaleDraw(clsPlot::ScaleBoth, defaults.PlotScale);
    plot.ScaleMask = scaleMask(settings);
    plot.GraphTitlePos = 1;
    setTexts(defaults, GraphMacros(graph, model), graph);
    const double tenthOfMillimetre = double(mdTips::UnitsPerMillimetre(device)) * 0.1;
    plot.DotSize = Round(tenthOfMillimetre * defaults.DotSize);
    styleSeries(plot, defaults.LegendStyles, Round(tenthOfMillimetre * defaults.LineSize));
}

void mdGraph::DrawGraph(DeviceContext& device, const GraphDefaults& defaults, Graph& graph) {
    draw(device, defaults, {0, 0, device.GetDeviceCaps(DeviceCaps::HorzRes), device.GetDeviceCaps(DeviceCaps::VertRes)},
         graph);
}

PlotArea mdGraph::PrintArea(const DeviceContext& device, const std::array<int, 4>& margins) {
    const double width = device.GetDeviceCaps(DeviceCaps::HorzRes), height = device.GetDeviceCaps(DeviceCaps::VertRes);
    const double offsetX = device.GetDeviceCaps(DeviceCaps::PhysicalOffsetX);
    const double offsetY = device.GetDeviceCaps(DeviceCaps::PhysicalOffsetY);
    const double rightGap = device.GetDeviceCaps(DeviceCaps::PhysicalWidth) - offsetX - width;
    const double bottomGap = device.GetDeviceCaps(DeviceCaps::PhysicalHeight) - offsetY - height;
    const auto perTenth = [&](double dots, DeviceCaps size) {
        const int millimetres = device.GetDeviceCaps(size);
        return millimetres > 0 ? dots / millimetres * 0.1 : 0;
    };
    const double dx = perTenth(width, DeviceCaps::HorzSize), dy = perTenth(height, DeviceCaps::VertSize);
    const int left = Round(dx * margins[0] - offsetX), top = Round(dy * margins[1] - offsetY);
    const int right = Round(width - (dx * margins[2] - rightGap));
    const int bottom = Round(height - (dy * margins[3] - bottomGap));
    return {left, top, Round(double(right) - left), Round(double(bottom) - top)};
}

void mdGraph::PrintGraph(DeviceContext& device, const ApplicationSettings& settings, Graph& graph) {
    draw(device, settings.Graph, PrintArea(device, settings.Page.Margin), graph);
}
