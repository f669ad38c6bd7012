// From the picked objects and the steps of a file to the series of a graph.
#include "plot/mdGraph.h"

#include "platform/base/Parallel.h"
#include "result/StepSampler.h"
#include "result/ValueBounds.h"
#include "view/clsMouse.h"

#include <algorithm>
#include <atomic>
#include <numeric>
#include <thread>

namespace mdGraph {

namespace {

/// What both graphs begin with: the plot as it is styled, without series, and what the graph is of.
Graph startOf(int type, const ResultModel& model, const SelectionSnapshot& selection, const clsPlot& plot) {
    Graph graph;
    graph.Plot = plot;
    graph.Plot.DataLegendClear();
    graph.GraphType = type;
    graph.Invalid = selection.Index.empty();
    if (!graph.Invalid && model.CurrentItem >= 0 && model.CurrentItem < model.Items.size())
        graph.ItemName = model.Items.at(model.CurrentItem).Name;
    return graph;
}

using StepValues = std::vector<std::optional<float>>;

/// Hands the values of the selected objects in each step to `take`, in the order of the steps. As many steps are read
/// at a time as memory is well spent on, so that the cores share them and a slow disk is asked for more than one thing.
bool walkSteps(const ResultModel& model, const DifferenceSettings& difference, const SelectionSnapshot& selection,
               const LoadProgress& progress, const std::function<void(std::int32_t, const StepValues&)>& take) {
    const StepSampler sampler(model, model.CurrentItem, selection.Index,
                              difference.ApplyContour ? difference.StandardStep : -1);
    constexpr std::int32_t mostValues = 1 << 20;
    const std::int32_t stepsAtOnce = std::max(mostValues / selection.Count(), 1);
    std::vector<StepValues> values;
    for (std::int32_t first = 0; first < model.StepCount; first += stepsAtOnce) {
        if (progress && !progress(first, model.StepCount))
            return false;
        values.resize(std::size_t(std::min(stepsAtOnce, model.StepCount - first)));
        const auto caller = std::this_thread::get_id();
        std::atomic<bool> stopped = false;
        parallelFor(int(values.size()), [&](int i) {
            // Only on the caller's thread may its procedure be called, and steps may take long.
            if (progress && std::this_thread::get_id() == caller && !progress(first + i, model.StepCount))
                stopped = true;
            if (!stopped)
                values[std::size_t(i)] = sampler.Read(first + i);
        });
        if (stopped)
            return false;
        for (std::int32_t i = 0; i < std::int32_t(values.size()); ++i)
            take(first + i, values[std::size_t(i)]);
    }
    return true;
}

/// The objects in the order of a sort that puts the first largest key of the rest in the place of the rest's first,
/// which goes to where that key was. With equal keys this is not the order of a stable sort, and to look through the
/// rest each time is too slow for many. Here all objects of one key keep the places where they stand at the moment in a
/// heap with the first place on top: the largest key's top is the object wanted, and the object that makes room for it
/// is on top of its own heap, since no place before it is left. NaN is never larger and stays where it is.
std::vector<std::size_t> bySelection(const std::vector<float>& keys) {
    std::vector<std::size_t> objectAt(keys.size());
    std::iota(objectAt.begin(), objectAt.end(), std::size_t(0));
    std::vector<std::size_t> places;
    std::ranges::copy_if(objectAt, std::back_inserter(places), [&](std::size_t i) { return !std::isnan(keys[i]); });
    std::ranges::stable_sort(places, std::greater(), [&](std::size_t i) { return keys[i]; });

    struct Heap {
        std::ptrdiff_t first, end; ///< among `places`, which are ascending and so are heaps already
    };
    std::vector<Heap> heaps;
    std::vector<std::size_t> heapOf(keys.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (i == 0 || keys[places[i]] != keys[places[i - 1]])
            heaps.push_back({std::ptrdiff_t(i), std::ptrdiff_t(i)});
        ++heaps.back().end;
        heapOf[places[i]] = heaps.size() - 1;
    }

    const auto popTop = [&](const Heap& heap) {
        std::ranges::pop_heap(places.begin() + heap.first, places.begin() + heap.end, std::greater());
    };
    auto largest = heaps.begin();
    for (std::size_t place = 0; place < keys.size(); ++place) {
        if (std::isnan(keys[objectAt[place]]))
            continue;
        while (largest->first == largest->end)
            ++largest;
        popTop(*largest);
        const std::size_t from = places[std::size_t(--largest->end)];
        if (from == place)
            continue;
        const Heap& moved = heaps[heapOf[objectAt[place]]];
        popTop(moved);
        places[std::size_t(moved.end - 1)] = from;
        std::ranges::push_heap(places.begin() + moved.first, places.begin() + moved.end, std::greater());
        std::swap(objectAt[place], objectAt[from]);
    }
    return objectAt;
}

/// From the bounds' fixed start on, so coordinates beyond it spread less than they do.
float extentOf(const std::vector<float>& coordinates) {
    ValueBounds bounds;
    for (const float coordinate : coordinates)
        bounds.Take(coordinate);
    return bounds.Max - bounds.Min;
}

} // namespace

bool BuildHistory(const ResultModel& model, const DifferenceSettings& difference, const SelectionSnapshot& selection,
                  Graph& graph, const LoadProgress& progress) {
    Graph built = startOf(GraphType::History, model, selection, graph.Plot);
    clsPlot& plot = built.Plot;
    if (!built.Invalid) {
        plot.Orientation = 0;
        const QString kind = selection.ObjectType == PickedKind::Nodes ? u"節点 : "_s : u"要素 : "_s;
        for (const qint64 index : selection.Index)
            plot.SetDataLabel(plot.DataLegendAdd(), kind + QString::number(index + 1));
        built.Gaps.resize(selection.Index.size());
        const auto addPoints = [&](std::int32_t step, const StepValues& values) {
            if (std::ranges::none_of(values, &std::optional<float>::has_value))
                return;
            const auto row = std::int32_t(built.RowSteps.size());
            built.RowSteps.push_back(step);
            for (std::size_t i = 0; i < values.size(); ++i) {
                if (values[i])
                    plot.DataAdd(int(i) + 1, model.Steps.at(step).Time, *values[i]);
                else
                    built.Gaps[i].push_back(row);
            }
        };
        if (!walkSteps(model, difference, selection, progress, addPoints))
            return false;
        built.Selection = selection;
        built.Caption = built.ItemName + u" 時系列図";
    }
    graph = std::move(built);
    return true;
}

bool BuildDistribution(const ResultModel& model, const DifferenceSettings& difference,
                       const SelectionSnapshot& selection, Graph& graph, const LoadProgress& progress) {
    Graph built = startOf(GraphType::Distribution, model, selection, graph.Plot);
    clsPlot& plot = built.Plot;
    if (!built.Invalid) {
        built.Selection = selection;
        const AxisOrder order = OrderAlongAxis(model.Mesh, built.Selection);
        built.RunAxis = order.RunAxis;
        plot.Orientation = order.RunAxis == 1 ? 0 : 1;
        const auto addSeries = [&](std::int32_t, const StepValues& values) {
            const int series = plot.DataLegendAdd();
            plot.SetDataLabel(series, u"ステップ : " + QString::number(series));
            std::vector<std::int32_t>& gaps = built.Gaps.emplace_back();
            for (std::size_t i = 0; i < values.size(); ++i) {
                if (values[i])
                    plot.DataAdd(series, order.Positions[i], *values[i]);
                else
                    gaps.push_back(std::int32_t(i));
            }
        };
        if (!walkSteps(model, difference, built.Selection, progress, addSeries))
            return false;
        built.Caption = built.ItemName + u" 分布図";
    }
    graph = std::move(built);
    return true;
}

std::optional<PointOrigin> OriginOf(const Graph& graph, int series, int point) {
    if (point < 1 || point > graph.Plot.DataCount(series) || std::size_t(series) > graph.Gaps.size())
        return {};
    std::int32_t place = point - 1;
    for (const std::int32_t gap : graph.Gaps[std::size_t(series) - 1])
        place += gap <= place;
    if (graph.GraphType == GraphType::Distribution)
        return PointOrigin{series - 1, graph.Selection.Index.at(std::size_t(place))};
    return PointOrigin{graph.RowSteps.at(std::size_t(place)), graph.Selection.Index.at(std::size_t(series) - 1)};
}

AxisOrder OrderAlongAxis(const MeshData& mesh, SelectionSnapshot& selection) {
    const bool areNodes = selection.ObjectType == PickedKind::Nodes;
    const auto coordinates = [&](const QList<float>& ofObjects) {
        std::vector<float> result;
        for (const std::int32_t index : selection.Index)
            result.push_back(ofObjects.value(index, 0));
        return result;
    };
    const std::vector<float> across = coordinates(areNodes ? mesh.Nodes.X : mesh.Elements.CentreX);
    const std::vector<float> up = coordinates(areNodes ? mesh.Nodes.Y : mesh.Elements.CentreY);
    AxisOrder order;
    order.RunAxis = extentOf(across) > extentOf(up) ? 1 : 2;
    const std::vector<float>& along = order.RunAxis == 1 ? across : up;
    std::vector<float> keys = along;
    if (order.RunAxis == 1)
        std::ranges::transform(keys, keys.begin(), std::negate());
    const std::vector<std::int32_t> index = selection.Index;
    std::size_t place = 0;
    for (const std::size_t object : bySelection(keys)) {
        order.Positions.push_back(along[object]);
        selection.Index[place++] = index[object];
    }
    return order;
}

} // namespace mdGraph
