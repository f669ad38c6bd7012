// The numbers of a graph as text.
#include "plot/mdGraph.h"

#include "app/NumberFormat.h"
#include "platform/base/Codepage.h"

#include <span>

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

/// A series of a history on its way through the rows.
struct Column {
    std::span<const std::int32_t> gaps; ///< those to come
    int points = 0;
    int point = 1; ///< the next one

    /// The point that stands in the row; 0 when none does.
    int TakeRow(std::int32_t row) {
        if (!gaps.empty() && gaps.front() == row) {
            gaps = gaps.subspan(1);
            return 0;
        }
        return point <= points ? point++ : 0;
    }
};

std::vector<Column> columnsOf(const Graph& graph) {
    std::vector<Column> columns(std::size_t(graph.Plot.DataLegendCount()));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        columns[i].points = graph.Plot.DataCount(int(i) + 1);
        if (i < graph.Gaps.size())
            columns[i].gaps = graph.Gaps[i];
    }
    return columns;
}

/// A row for each step, and a column for each series beside the steps' base values. Commas stand throughout, whatever
/// the first line has.
void appendHistory(QString& text, const Graph& graph) {
    const clsPlot& plot = graph.Plot;
    std::vector<Column> columns = columnsOf(graph);
    std::size_t rows = 0;
    text += u"\r\n";
    for (std::size_t i = 0; i < columns.size(); ++i) {
        text += u",\""_s + plot.DataLabel(int(i) + 1) + u'"';
        rows = std::max(rows, columns[i].gaps.size() + std::size_t(columns[i].points));
    }
    for (std::size_t row = 0; row < rows; ++row) {
        QString base, values;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            values += u',';
            const int series = int(i) + 1, point = columns[i].TakeRow(std::int32_t(row));
            if (point > 0)
                values += numberText(plot.DataPlot(series, point));
            if (point > 0 && base.isEmpty())
                base = numberText(plot.DataBase(series, point));
        }
        text += u"\r\n" + base + values;
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
        appendHistory(text, graph);
    return text;
}

QByteArray mdGraph::GraphTextFile(const Graph& graph, QChar separator) {
    return Codepage::Encode(GraphText(graph, separator)) + "\r\n";
}
