// How a graph looks: fonts, texts and styles from the settings, and the legend box.
#include "plot/mdGraph.h"

namespace mdGraph {
LabelMacros GraphMacros(const Graph&, const ResultModel&) {
    return {};
}
void ApplyGraphStyle(const GraphDefaults&, const ResultModel&, const DeviceContext&, Graph&) {}
void DrawGraphLegend(DeviceContext&, const clsPlot&, const GraphDefaults&) {}
} // namespace mdGraph
