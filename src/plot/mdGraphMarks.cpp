// What stands over the picture of a graph: the line at the step in view, and the point under the mouse.
#include "app/NumberFormat.h"
#include "app/mdTipsDrawing.h"
#include "plot/mdGraph.h"

#include <cmath>

namespace {

constexpr ColorRef markColor = makeColor(0xd0, 0x40, 0x00);
constexpr ColorRef labelGround = makeColor(0xff, 0xff, 0xe1);

int millimetres(const DeviceContext& device, double count) {
    return std::max(Round(mdTips::UnitsPerMillimetre(device) * count), 1);
}

/// `caption` may be long or empty; the value must show.
QString valueLine(const QString& caption, const QString& substitute, float value) {
    return (caption.isEmpty() ? substitute : caption) + u" : " + NumberFormat::Shortest(value);
}

/// Where a box of `size` lies beside `place` within the device: below it to the right, or on the other side of it where
/// there is no room.
DevicePoint beside(const DeviceContext& device, DevicePoint place, DeviceSize size, int gap) {
    const auto along = [gap](int from, int length, int room) {
        const int after = from + gap;
        return after + length <= room ? after : std::max(from - gap - length, 0);
    };
    return {along(place.X, size.Width, device.GetDeviceCaps(DeviceCaps::HorzRes)),
            along(place.Y, size.Height, device.GetDeviceCaps(DeviceCaps::VertRes))};
}

} // namespace

namespace mdGraph {

void DrawStepLine(DeviceContext& device, const Graph& graph, const ResultModel& model, std::int32_t step) {
    if (graph.GraphType != GraphType::History || step < 0 || step >= model.Steps.size())
        return;
    const PlotArea area = graph.Plot.DataPlotArea();
    int x = 0, unused = 0;
    graph.Plot.ConvertPoint(model.Steps.at(step).Time, 0, x, unused);
    if (graph.Plot.DataLegendCount() == 0 || x < area.Left || x > area.Left + area.Width)
        return;
    const Pen old = mdTips::SelectSolidPen(device, markColor, millimetres(device, 0.2), PenStyle::Solid);
    device.MoveTo({x, area.Top});
    device.LineTo({x, area.Top + area.Height});
    mdTips::RestoreObject(device, old);
}

QStringList PointTexts(const Graph& graph, const PlotPoint& point) {
    const clsPlot& plot = graph.Plot;
    return {plot.DataLabel(point.Series),
            valueLine(plot.ScaleLabel(clsPlot::ScaleBase), u"基準"_s, plot.DataBase(point.Series, point.Point)),
            valueLine(plot.ScaleLabel(clsPlot::ScalePlot), u"値"_s, plot.DataPlot(point.Series, point.Point))};
}

void DrawPointMark(DeviceContext& device, const Graph& graph, const PlotPoint& point) {
    device.SaveDC();
    const auto [x, y] = point.Place;
    const int radius = std::max(graph.Plot.DotSize, millimetres(device, 0.8)) + millimetres(device, 0.5);
    device.SelectPen({.Width = millimetres(device, 0.5), .Color = markColor});
    device.SelectBrush(stockBrush(Stock::NullBrush));
    device.Ellipse({x - radius, y - radius, x + radius + 1, y + radius + 1});

    device.SelectFont(stockFont(Stock::GuiFont, device.GetDeviceCaps(DeviceCaps::LogPixelsY)));
    device.SetTextColor(0);
    const QStringList texts = PointTexts(graph, point);
    DeviceSize line;
    for (const QString& text : texts) {
        const DeviceSize size = mdTips::MeasureText(device, text);
        line = {std::max(line.Width, size.Width), std::max(line.Height, size.Height)};
    }
    const int margin = millimetres(device, 1);
    const DeviceSize box{line.Width + 2 * margin, line.Height * int(texts.size()) + 2 * margin};
    const DevicePoint corner = beside(device, point.Place, box, radius + margin);
    device.SelectPen({.Color = markColor});
    device.SelectBrush({.Color = labelGround});
    device.Rectangle({corner.X, corner.Y, corner.X + box.Width, corner.Y + box.Height});
    for (qsizetype i = 0; i < texts.size(); ++i)
        device.Text({corner.X + margin, corner.Y + margin + int(i) * line.Height}, texts[i]);
    device.RestoreDC();
}

} // namespace mdGraph
