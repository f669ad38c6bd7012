// Fuzz target: any bytes as a plot's data file, loaded, written and read again, and the plot as a graph's text.
#include "Fuzz.h"
#include "platform/base/Codepage.h"
#include "plot/mdGraph.h"

#include <QTemporaryDir>

namespace {

QString asSaved(const QString& text) {
    return Codepage::Decode(Codepage::Encode(text));
}

/// Points that come back: numbers near the end of single precision may round to beyond it.
int pointsToCome(const clsPlot& plot, int series) {
    const auto inside = [](float value) { return std::abs(value) < 3.4e38f; };
    int count = 0;
    for (int point = 1; point <= plot.DataCount(series); ++point) {
        const float base = plot.DataBase(series, point), value = plot.DataPlot(series, point);
        require(std::isfinite(base) && std::isfinite(value), "real numbers");
        count += inside(base) && inside(value);
    }
    return count;
}

void requireComesBack(const clsPlot& plot, const clsPlot& back) {
    require(back.GraphTitle == asSaved(plot.GraphTitle), "the title comes back");
    require(back.DataLegendCount() <= plot.DataLegendCount(), "no more series than there were");
    for (int s = 1; s <= plot.DataLegendCount(); ++s) {
        const int points = std::max(back.DataCount(s), 0);
        require(points >= pointsToCome(plot, s) && points <= plot.DataCount(s), "the points come back");
        require(points == 0 || back.DataLabel(s) == asSaved(plot.DataLabel(s)), "the label comes back");
    }
}

void requireLines(Graph& graph) {
    const int series = graph.Plot.DataLegendCount();
    const int points = std::max(graph.Plot.DataCount(1), 0);
    for (const int type : {GraphType::History, GraphType::Distribution}) {
        graph.GraphType = type;
        const qsizetype lines = mdGraph::GraphText(graph, u'\t').count(u"\r\n"_s) + 1;
        require(lines == (type == GraphType::History ? 2 + points : 1 + 2 * series), "a line for each of its kind");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Program program;
    static const MemoryFile input;
    static const QTemporaryDir folder(u"/dev/shm/velorin-XXXXXX"_s);
    const QString path = folder.filePath(u"saved.csv"_s);
    input.Write(data, size);
    Graph graph;
    const clsPlot& read = graph.Plot;
    graph.Plot.CsvLoad(input.Path(), false);
    requireLines(graph);

    clsPlot once, twice;
    read.CsvSave(path);
    once.CsvLoad(path, false);
    requireComesBack(read, once);
    once.CsvSave(path);
    const QByteArray saved = bytesOf(path);
    twice.CsvLoad(path, false);
    twice.CsvSave(path);
    require(bytesOf(path) == saved, "the file stays the same");
    twice.CsvLoad(path, true);
    for (int s = 1; s <= once.DataLegendCount(); ++s)
        require(twice.DataCount(s) == 2 * once.DataCount(s), "kept points and as many again");
    return 0;
}
