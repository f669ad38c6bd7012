// Graphs of results: builds a plot from the values of picked nodes or elements over the steps, styles it, draws its
// legend, and writes it as text. The graph window and the command line share it; it knows neither.
#pragma once

#include "app/ApplicationSettings.h"
#include "platform/base/Literals.h"
#include "plot/clsPlot.h"
#include "result/mdVelorinResultModel.h"

/// What a graph shows.
namespace GraphType {
enum : int {
    History = 0,     ///< the value of each object over time, one series an object
    Distribution = 1 ///< the values along the objects, one series a step
};
}

/// The picked objects at the moment when a graph is built.
struct SelectionSnapshot {
    int ObjectType = 0;              ///< `PickedKind`
    std::vector<std::int32_t> Index; ///< from 0, in the order of picking

    std::int32_t Count() const { return std::int32_t(Index.size()); }
};

/// A graph and what it was built from.
struct Graph {
    bool Invalid = false; ///< nothing was picked, nothing was built
    int GraphType = GraphType::History;
    int RunAxis = 0; ///< distribution: 1 the objects run across, 2 they run up
    QString ItemName;
    QString Caption = u"グラフウィンドウ"_s; ///< of a window that shows it
    SelectionSnapshot Selection;             ///< a distribution has it in the order along its axis
    /// For each series the places without a point of it, ascending. A place is a row of a history, and in a
    /// distribution one in `Selection`.
    std::vector<std::vector<std::int32_t>> Gaps;
    std::vector<std::int32_t> RowSteps; ///< of a history: a row is a step that has any value
    clsPlot Plot;
};

/// What to tell or ask before a graph is made, as for a message box. Go on only when the answer is Yes.
struct GraphQuestion {
    QString Text;
    int Flags = 0;
};

namespace mdGraph {

/// The question for a graph of `selectedCount` objects in `stepCount` steps; none when there is nothing to ask. More
/// points than memory is well spent on get a refusal.
std::optional<GraphQuestion> GraphRequest(std::int32_t selectedCount, std::int32_t stepCount);

// Both take the item `CurrentItem` of the model and the steps of its file; the model stays as it is. With
// `ApplyContour` and a reference step the values are the differences to that step. Values that a step does not have
// make no points. Of `graph` the plot's styles stay and all else is new; with nothing picked it is `Invalid` and has no
// series. `progress` counts steps; when it says no, the build ends with false and `graph` is as it was.

/// One series for each picked object, its value over the steps' times.
bool BuildHistory(const ResultModel& model, const DifferenceSettings& difference, const SelectionSnapshot& selection,
                  Graph& graph, const LoadProgress& progress = {});

/// One series for each step, the values of the picked objects over their positions.
bool BuildDistribution(const ResultModel& model, const DifferenceSettings& difference,
                       const SelectionSnapshot& selection, Graph& graph, const LoadProgress& progress = {});

/// The positions of a distribution.
struct AxisOrder {
    int RunAxis = 2;
    std::vector<float> Positions; ///< one for each object, in the new order
};

/// Orders the objects along the axis on which they spread more: by ascending X, or by descending Y when they don't
/// spread more across. Positions are plain coordinates. Objects that the mesh does not have count as at 0. The order of
/// equal ones is that of a selection sort that swaps the first extreme of the rest to the front.
AxisOrder OrderAlongAxis(const MeshData& mesh, SelectionSnapshot& selection);

/// What a point of a graph stands for.
struct PointOrigin {
    std::int32_t Step = 0;
    std::int32_t Object = 0; ///< index of a node or an element
};
/// Nothing for a point that the graph does not have.
std::optional<PointOrigin> OriginOf(const Graph& graph, int series, int point);

/// The macros of titles and captions, in the order in which they are replaced.
LabelMacros GraphMacros(const Graph& graph, const ResultModel& model);

/// Takes fonts, grid, axes, texts and the styles of the series from the settings, with lengths as `device` has them.
void ApplyGraphStyle(const ApplicationSettings& settings, const ResultModel& model, const DeviceContext& device,
                     Graph& graph);

/// Draws the graph with its legend over the whole device, as it is styled.
void DrawGraph(DeviceContext& device, const GraphDefaults& defaults, Graph& graph);

/// Where the graph goes on a page that `device` prints: within margins (left, top, right, bottom in tenths of a
/// millimetre), which count from the edges of the sheet while the place counts from where printing can begin. Margins
/// below what the printer leaves free lead to a negative corner, larger ones than the sheet to a negative size.
PlotArea PrintArea(const DeviceContext& device, const std::array<int, 4>& margins);
/// Prints the graph there with its legend. Dots and lines keep the sizes, in device units, of the style that was
/// applied last; fonts are those of the page.
void PrintGraph(DeviceContext& device, const ApplicationSettings& settings, Graph& graph);

// Marks that stand over a picture of the graph and are not part of it; `graph` is as `DrawGraph` left it.

/// The line at the time of `step` in a history; nothing for any other graph, and beyond its axis.
void DrawStepLine(DeviceContext& device, const Graph& graph, const ResultModel& model, std::int32_t step);
/// The name of the point's series and its two values, each in a line.
QStringList PointTexts(const Graph& graph, const PlotPoint& point);
/// A ring round the point, and beside it a label with its texts, within the device.
void DrawPointMark(DeviceContext& device, const Graph& graph, const PlotPoint& point);

/// The legend box inside the plot rectangle of the last `Redraw`; call it when the plot has been painted.
void DrawGraphLegend(DeviceContext& device, const clsPlot& plot, const GraphDefaults& defaults);

/// The numbers of the graph as lines of text with CR LF between them: `separator` is a comma for a file and a tab for
/// the clipboard. From the second line on a history has commas in either case, and a line for each step that has any of
/// the values, with an empty field for one that it doesn't have.
QString GraphText(const Graph& graph, QChar separator);
/// The same as the content of a file, in code page 932 and with CR LF at its end.
QByteArray GraphTextFile(const Graph& graph, QChar separator);

} // namespace mdGraph
