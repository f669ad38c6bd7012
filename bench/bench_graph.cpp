// Graphs: their values out of a large file, beside a plain read of all its bytes, and painting them.
#include "PlainRead.h"
#include "QuadMesh.h"
#include "Stage.h"
#include "Table.h"

#include "platform/raster/RasterDevice.h"
#include "plot/mdGraph.h"
#include "view/clsMouse.h"

#include <numeric>
#include <random>

namespace {

constexpr int elements = 100000, steps = 1000;

/// 2 GB: more items than these two would make the file too large for its format.
const ResultModel& largeFile() {
    constexpr int firstItem = 2;
    static const ResultModel model = [] {
        ResultModel opened;
        if (!mdVelorinResultModel::LoadResultFile(QuadMesh::File(elements, steps, firstItem), opened))
            qFatal("the large file cannot be read");
        return opened;
    }();
    return model;
}

/// `count` objects spread over the mesh, the last one among them.
SelectionSnapshot spread(int count, int kind) {
    SelectionSnapshot selection{kind, {}};
    for (int i = 1; i <= count; ++i)
        selection.Index.push_back(elements / count * i - 1);
    return selection;
}

using Build = bool (*)(const ResultModel&, const DifferenceSettings&, const SelectionSnapshot&, Graph&,
                       const LoadProgress&);

/// Beside a read of the whole file; the first argument is the item (0 per node, 1 per element, for which the types have
/// to be read as well), the second the number of objects.
void build(benchmark::State& state, Build procedure) {
    ResultModel model = largeFile();
    model.CurrentItem = std::int32_t(state.range(0));
    const SelectionSnapshot selection =
        spread(int(state.range(1)), model.CurrentItem == 0 ? PickedKind::Nodes : PickedKind::Elements);
    Table::Measure(state, elements,
                   {[&] {
                        Graph graph;
                        procedure(model, {}, selection, graph, {});
                        benchmark::DoNotOptimize(graph);
                    },
                    [&] { readPlainly(model.FileHandle, 0, model.FileHandle.Size()); },
                    {}});
    if (procedure == mdGraph::BuildHistory && model.CurrentItem == 0)
        state.SetLabel("ratio 0.05");
}

/// Series of a wave each, a little later from one to the next, with so much of noise on it.
clsPlot plotOf(int series, int points, double noise) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> number(-noise, noise);
    clsPlot plot;
    for (int s = 1; s <= series; ++s)
        for (int i = 0; i < points; ++i)
            plot.DataAdd(s, float(i), float(std::sin(12.0 * i / points + 0.05 * s) + number(random)));
    return plot;
}

/// 100 series of 10 thousand points: the bare lines, or with what the graph defaults say. Times are per point.
void redraw(benchmark::State& state, bool withDefaults, double noise) {
    constexpr int series = 100, points = 10000;
    const int threads = int(state.range(0));
    QImage picture(Stage::PictureSize.Width, Stage::PictureSize.Height, QImage::Format_RGB32);
    RasterDevice device(picture, 96, threads);
    Graph graph;
    graph.Plot = plotOf(series, points, noise);
    graph.Plot.SetDrawArea(0, 0, picture.width(), picture.height());
    const ApplicationSettings settings;
    if (withDefaults) {
        mdGraph::ApplyGraphStyle(settings, {}, device, graph);
        graph.Plot.EndPaint = [&](DeviceContext& target) {
            mdGraph::DrawGraphLegend(target, graph.Plot, settings.Graph);
        };
    }
    Table::Measure(state, series * points, {[&] { graph.Plot.Redraw(&device, nullptr); }, {}, {}});
    state.SetLabel("150 ms");
}

} // namespace

int main(int argc, char** argv) {
    using benchmark::RegisterBenchmark;
    RegisterBenchmark("history", build, mdGraph::BuildHistory)
        ->ArgNames({"item", "objects"})
        ->ArgsProduct({{0, 1}, {10}})
        ->Iterations(5)
        ->UseManualTime();
    RegisterBenchmark("distribution", build, mdGraph::BuildDistribution)
        ->ArgNames({"item", "objects"})
        ->ArgsProduct({{0, 1}, {10, 1000}})
        ->Iterations(5)
        ->UseManualTime();
    for (const bool withDefaults : {false, true})
        for (const double noise : {0.0, 1.0})
            RegisterBenchmark((std::string("redraw, ") + (withDefaults ? "graph defaults, " : "bare lines, ") +
                               (noise > 0 ? "noisy" : "smooth"))
                                  .c_str(),
                              redraw, withDefaults, noise)
                ->ArgName("cores")
                ->Arg(1)
                ->Arg(2)
                ->UseManualTime();
    return Table::Main(argc, argv);
}
