// From the picked objects and the steps of a file to the series of a graph.
#include "plot/mdGraph.h"

namespace mdGraph {
bool BuildHistory(const ResultModel&, const DifferenceSettings&, const SelectionSnapshot&, Graph&,
                  const LoadProgress&) {
    return false;
}
bool BuildDistribution(const ResultModel&, const DifferenceSettings&, const SelectionSnapshot&, Graph&,
                       const LoadProgress&) {
    return false;
}
AxisOrder OrderAlongAxis(const MeshData&, SelectionSnapshot&) {
    return {};
}
} // namespace mdGraph
