// The graph of nodes or elements over the steps, as a picture or as numbers.
#include "batch/JsonWriter.h"
#include "batch/numberList.h"
#include "batch/pictureOptions.h"
#include "batch/settingsFile.h"
#include "platform/base/NativePath.h"
#include "platform/device/Fonts.h"
#include "platform/device/TraceDevice.h"
#include "plot/mdGraph.h"
#include "view/clsMouse.h"

#include <QBuffer>
#include <QFileInfo>
#include <unistd.h>

namespace batch {

namespace {

/// All that the command line says about the graph.
struct Job {
    QString input;
    QString output;
    PictureFile picture;
    QString ending;                 ///< of the output's name, in small letters
    PictureFormat format = nullptr; ///< null for numbers
    int type = GraphType::History;
    QString item;
    DerivedItems derived;
    int objectType = PickedKind::Nodes;
    std::vector<NumberRange> objects;
    std::optional<int> reference;
    ApplicationSettings settings;
    QString style;
    std::optional<QString> title;
};

void declare(Options& options) {
    options.Value(u"o"_s, u"OUT"_s,
                  u"The picture: .png, .svg, .pdf or .trace; or the numbers: .csv, .txt (with tabs) or .json."_s);
    options.Value(u"type"_s, u"history|distribution"_s,
                  u"The value of each object over time, or the values along the objects at each step."_s);
    options.Value(u"item"_s, u"K"_s, u"The item, by number or name."_s);
    DeclareDerivedItems(options);
    options.Value(u"nodes"_s, u"LIST"_s, u"Of these nodes; numbers and ranges, such as 1,5,10-20."_s);
    options.Value(u"elements"_s, u"LIST"_s, u"Of these elements."_s);
    options.Value(u"reference"_s, u"R"_s, u"Show the difference from this step."_s);
    options.Value(u"style"_s, u"FILE"_s, u"A style file for background and scales."_s);
    options.Value(u"title"_s, u"T"_s, u"The title, with %item%, %title%, %file% and %name% for what they name."_s);
    DeclarePictureOptions(options);
}

Job jobFrom(const Options& options) {
    if (!options.IsSet(u"type"_s) || !options.IsSet(u"item"_s) || !options.IsSet(u"o"_s))
        throw Stop{WrongUsage, u"--type, --item and -o are needed"_s};
    if (options.IsSet(u"nodes"_s) == options.IsSet(u"elements"_s))
        throw Stop{WrongUsage, u"one of --nodes and --elements is needed"_s};
    Job job;
    job.input = options.Operand();
    job.output = options.Text(u"o"_s);
    job.picture = PictureFileFrom(options);
    job.ending = QFileInfo(job.output).suffix().toLower();
    job.format = PictureFormatFor(job.output);
    if (!job.format && job.ending != u"csv" && job.ending != u"txt" && job.ending != u"json")
        RefuseEnding(job.output, u".png, .svg, .pdf, .trace, .csv, .txt or .json"_s);
    job.type = options.IsFirst(u"type"_s, u"history"_s, u"distribution"_s, true) ? GraphType::History
                                                                                 : GraphType::Distribution;
    job.item = options.Text(u"item"_s);
    job.derived = DerivedItemsFrom(options);
    const QString listed = options.IsSet(u"nodes"_s) ? u"nodes"_s : u"elements"_s;
    job.objectType = listed == u"nodes" ? PickedKind::Nodes : PickedKind::Elements;
    job.objects = ParseNumberList(listed, options.Text(listed));
    job.reference = options.Integer(u"reference"_s, 1);
    job.style = options.Text(u"style"_s);
    job.settings = SettingsFrom(options);
    if (options.IsSet(u"title"_s))
        job.title = NativePath::Shown(options.Text(u"title"_s));
    return job;
}

/// The objects of the command line. As in the window they need not be of the kind that the item has values for: the
/// values are then those at the same numbers.
SelectionSnapshot selectionFor(const Job& job, const ResultModel& model) {
    const bool nodes = job.objectType == PickedKind::Nodes;
    return {job.objectType, IndexesOf(job.objects, nodes ? u"node"_s : u"element"_s,
                                      nodes ? model.Mesh.NodeCount : model.Mesh.ElementCount, job.input)};
}

Graph build(const Job& job, ResultModel& model) {
    model.CurrentItem = FindItem(job.item, model, job.input);
    const SelectionSnapshot selection = selectionFor(job, model);
    if (job.reference)
        RequireStep(model, job.input, u"reference"_s, *job.reference);
    DifferenceSettings difference;
    difference.ApplyContour = job.reference.has_value();
    difference.StandardStep = job.reference.value_or(0) - 1;
    Graph graph;
    const auto builder = job.type == GraphType::History ? mdGraph::BuildHistory : mdGraph::BuildDistribution;
    if (!builder(model, difference, selection, graph, {}))
        RefuseInput(job.input, u"ファイルの形式が不正です。"_s);
    return graph;
}

/// Gives the graph its looks and texts on `device`: the defaults, over them the style file, over that the title.
void applyStyle(const Job& job, const ResultModel& model, const DeviceContext& device, Graph& graph) {
    mdGraph::ApplyGraphStyle(job.settings, model, device, graph);
    if (!job.style.isEmpty())
        graph.Plot.StyleLoad(job.style);
    if (job.title)
        graph.Plot.GraphTitle = mdTips::ExpandLabelMacros(*job.title, mdGraph::GraphMacros(graph, model));
}

void writeScale(JsonWriter& json, const char* key, int scale, const clsPlot& plot) {
    json.Key(key);
    json.BeginObject();
    json.Member("max", plot.ScaleMax(scale));
    json.Member("min", plot.ScaleMin(scale));
    json.Member("major", plot.ScaleMScale(scale));
    json.Member("minor", plot.ScaleHScale(scale));
    json.EndObject();
}

void writeSeries(JsonWriter& json, int series, const clsPlot& plot) {
    json.BeginObject();
    json.Member("label", plot.DataLabel(series));
    const auto writePoints = [&](const char* key, float (clsPlot::*value)(int, int) const) {
        json.Key(key);
        json.BeginArray();
        for (int point = 1; point <= plot.DataCount(series); ++point)
            json.Value((plot.*value)(series, point));
        json.EndArray();
    };
    writePoints("base", &clsPlot::DataBase);
    writePoints("plot", &clsPlot::DataPlot);
    json.EndObject();
}

/// The scales as they were drawn last, and the points.
QByteArray jsonOf(const Graph& graph) {
    const clsPlot& plot = graph.Plot;
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        JsonWriter json(buffer);
        json.BeginObject();
        json.Member("type", graph.GraphType == GraphType::History ? u"history"_s : u"distribution"_s);
        json.Member("item", graph.ItemName);
        json.Member("title", plot.GraphTitle);
        json.Member("orientation", plot.Orientation);
        writeScale(json, "base", clsPlot::ScaleBase, plot);
        writeScale(json, "plot", clsPlot::ScalePlot, plot);
        json.Key("series");
        json.BeginArray();
        for (int series = 1; series <= plot.DataLegendCount(); ++series)
            writeSeries(json, series, plot);
        json.EndArray();
        json.EndObject();
    }
    return buffer.data();
}

/// The content of the output file.
PictureContent contentOf(const Job& job, const ResultModel& model, Graph& graph) {
    if (job.format)
        return job.format(job.picture, [&](DeviceContext& device) {
            applyStyle(job, model, device, graph);
            mdGraph::DrawGraph(device, job.settings.Graph, graph);
        })();
    TraceDevice device(job.picture.Size.Width, job.picture.Size.Height, job.picture.Resolution());
    applyStyle(job, model, device, graph);
    if (job.ending != u"json")
        return {mdGraph::GraphTextFile(graph, job.ending == u"txt" ? u'\t' : u','), {}};
    // Hidden series count for the scales all the same, and their points don't fill a trace that nobody reads.
    for (int series = 1; series <= graph.Plot.DataLegendCount(); ++series)
        graph.Plot.SetDataLegendHidden(series, true);
    mdGraph::DrawGraph(device, job.settings.Graph, graph);
    return {jsonOf(graph), {}};
}

} // namespace

Status RunGraph(const QStringList& arguments, const Streams& streams) {
    Options options(u"graph"_s, u"Writes a graph of nodes or elements as a picture, or its numbers."_s, u"FILE"_s);
    declare(options);
    options.Parse(arguments, streams);
    const Job job = jobFrom(options);
    // Not opened to find out: what a pipe holds can be had but once.
    const std::filesystem::path style = NativePath::Of(job.style);
    if (std::error_code none;
        !job.style.isEmpty() && (std::filesystem::is_directory(style, none) || ::access(style.c_str(), R_OK) != 0))
        RefuseInput(job.style, u"無効なパラメータです。"_s);

    Fonts::InstallSubstitutions();
    ResultModel model = OpenFile(job.input, job.derived, streams);
    Graph graph = build(job, model);
    if (const std::optional<QString> problem = SaveContent(job.output, contentOf(job, model, graph)))
        RefuseInput(job.output, *problem);
    return Done;
}

} // namespace batch
