// The legend box of a graph: which series stand in it, where it lies in the plot rectangle, and its rows.
#include "app/mdTipsDrawing.h"
#include "plot/mdGraph.h"

namespace {

/// The visible series' labels and the room that the largest of them takes.
struct LegendRows {
    QStringList Labels;
    DeviceSize Largest;
};

LegendRows rowsOf(const DeviceContext& device, const clsPlot& plot) {
    LegendRows rows;
    for (int series = 1; series <= plot.DataLegendCount(); ++series) {
        if (plot.DataLegendHidden(series))
            continue;
        rows.Labels += plot.DataLabel(series);
        const DeviceSize size = mdTips::MeasureText(device, rows.Labels.back());
        rows.Largest.Width = std::max(rows.Largest.Width, size.Width);
        rows.Largest.Height = std::max(rows.Largest.Height, size.Height);
    }
    return rows;
}

/// In 64 bits: labels may be too many or too long for positions.
struct Box {
    std::int64_t Left, Top, Width, Height;
};

/// The box at `position`, a row of the list of positions, `gap` away from the sides of the plot rectangle.
Box boxIn(const PlotArea& area, int position, std::int64_t gap, std::int64_t width, std::int64_t height) {
    const std::int64_t left = area.Left + gap, top = area.Top + gap;
    const std::int64_t right = std::int64_t(area.Left) + area.Width - gap;
    const std::int64_t bottom = std::int64_t(area.Top) + area.Height - gap;
    Box box{right - width, bottom - height, width, height};
    if (position >= 0 && position <= 2)
        box.Top = top;
    if (position == 0 || position == 3)
        box.Left = left;
    else if (position == 1 || position == 4)
        box.Left = (left + right - width) / 2;
    return box;
}

int device32(std::int64_t position) {
    return Round(double(position));
}

/// True when a row about `middle` lies above or below the plot rectangle, to which the legend is clipped: of very many
/// rows, hardly any are seen. `reach` is how far its text, line and dot go.
bool isUnseen(const DeviceContext& device, const PlotArea& area, std::int64_t middle, std::int64_t reach) {
    const std::int64_t bottom = std::int64_t(area.Top) + area.Height;
    return !device.ShowsEveryCall() && (middle + reach < area.Top || middle - reach > bottom);
}

void drawRows(DeviceContext& device, const clsPlot& plot, const GraphDefaults& defaults, const LegendRows& rows) {
    const double perMillimetre = mdTips::UnitsPerMillimetre(device);
    const std::int64_t gap = Round(perMillimetre + perMillimetre);
    const DeviceSize row = rows.Largest;
    const PlotArea area = plot.DataPlotArea();
    const Box box = boxIn(area, defaults.LegendPosition, gap, 2 * std::int64_t(row.Width) + 3 * gap,
                          std::int64_t(row.Height) * rows.Labels.size() + 2 * gap);
    device.SelectPen(stockPen(Stock::BlackPen));
    device.SelectBrush(stockBrush(Stock::WhiteBrush));
    device.Rectangle(
        {device32(box.Left), device32(box.Top), device32(box.Left + box.Width), device32(box.Top + box.Height)});

    const int textLeft = device32(box.Left + gap);
    const std::int64_t sampleRight = box.Left + box.Width - gap, sampleLeft = sampleRight - row.Width;
    const int middle = Round(double(sampleLeft + sampleRight) / 2);
    const int lineWidth = Round(perMillimetre * defaults.LineSize * 0.1);
    const std::int64_t reach = std::int64_t(row.Height) + std::abs(std::int64_t(plot.DotSize)) + lineWidth + 1;
    const QList<LegendStyle>& styles = defaults.LegendStyles;
    for (qsizetype i = 0; i < rows.Labels.size(); ++i) {
        const int y = Round((double(i) + 0.5) * row.Height + double(box.Top + gap));
        if (isUnseen(device, area, y, reach))
            continue;
        // Without styles the samples are black, although the series then are red.
        const LegendStyle style =
            styles.isEmpty() ? LegendStyle{.DotStyle = DotStyle::Circle} : styles[i % styles.size()];
        mdTips::DrawAnchoredText(device, textLeft, y, rows.Labels[i], 4);
        plot.SpecialPlot_Line(device, style.LineStyle, style.LineColor, lineWidth, device32(sampleLeft), y,
                              device32(sampleRight), y);
        plot.SpecialPlot_Dot(device, style.DotStyle, style.DotColor, style.DotColor, 8, 0, middle, y, 0);
    }
}

} // namespace

void mdGraph::DrawGraphLegend(DeviceContext& device, const clsPlot& plot, const GraphDefaults& defaults) {
    if (plot.DataLegendCount() == 0 || !defaults.PlotLegend)
        return;
    const PlotArea area = plot.DataPlotArea();
    device.SaveDC();
    device.ClipRect(
        {area.Left, area.Top, Round(double(area.Left) + area.Width), Round(double(area.Top) + area.Height)});
    ColorRef unused = 0;
    const FontObject font = mdTips::ParseFontString(defaults.GraphFonts[3], unused);
    const Font old = mdTips::SelectFontFor(device, device, font, 0);
    const LegendRows rows = rowsOf(device, plot);
    if (!rows.Labels.isEmpty())
        drawRows(device, plot, defaults, rows);
    mdTips::RestoreObject(device, old);
    device.RestoreDC();
}
