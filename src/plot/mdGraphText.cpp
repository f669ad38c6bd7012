// The numbers of a graph as text.
#include "plot/mdGraph.h"

#include "app/NumberFormat.h"

namespace {

constexpr qsizetype usualFieldLength = 12; ///< ",1.23456E-5"

QString numberText(float value) {
    return NumberFormat::Format(value, u"0.00000E-0");
}

QString head(QStringView kind, const clsPlot& plot, QChar separator) {
    QString line = kind.toString();
    for (const QString& text :
         {plot.GraphTitle, plot.ScaleLabel(clsPlot::ScaleBase), plot.ScaleLabel(clsPlot::ScalePlot)})
        line += separator + (u'"' + text + u'"');
    return line;
}

/// A column for each series beside the base values of the first. Commas stand throughout, whatever the first line has;
/// a series that is shorter than the first has empty fields.
void appendHistory(QString& text, const clsPlot& plot) {
    text += u"\r\n";
    const int series = plot.DataLegendCount();
    for (int s = 1; s <= series; ++s)
        text += u",\""_s + plot.DataLabel(s) + u'"';
    const int points = plot.DataCount(1);
    for (int point = 1; point <= points; ++point) {
        text += u"\r\n";
        text += numberText(plot.DataBase(1, point));
        for (int s = 1; s <= series; ++s) {
            text += u',';
            if (point <= plot.DataCount(s))
                text += numberText(plot.DataPlot(s, point));
        }
    }
}

/// Two lines for each series: base values behind the label, then plot values behind an empty field.
void appendDistribution(QString& text, const clsPlot& plot, QChar separator) {
    for (int s = 1; s <= plot.DataLegendCount(); ++s) {
        const int points = plot.DataCount(s);
        text += u"\r\n\""_s + plot.DataLabel(s) + u'"';
        for (int point = 1; point <= points; ++point) {
            text += separator;
            text += numberText(plot.DataBase(s, point));
        }
        text += u"\r\n";
        for (int point = 1; point <= points; ++point) {
            text += separator;
            text += numberText(plot.DataPlot(s, point));
        }
    }
}

} // namespace

QString mdGraph::GraphText(const Graph& graph, QChar separator) {
    const clsPlot& plot = graph.Plot;
    const bool distribution = graph.GraphType == GraphType::Distribution;
    const QStringView runs = plot.Orientation == 0 ? u"HORIZONTAL" : u"VERTICAL";
    QString text = head(distribution ? runs : u"HISTORY", plot, separator);

    qsizetype points = 0;
    for (int s = 1; s <= plot.DataLegendCount(); ++s)
        points += plot.DataCount(s);
    const qsizetype baseValues = distribution ? points : std::max(plot.DataCount(1), 0);
    text.reserve(text.size() + (points + baseValues) * usualFieldLength);
    if (distribution)
        appendDistribution(text, plot, separator);
    else
        appendHistory(text, plot);
    return text;
}
