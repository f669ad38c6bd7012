// The numbers of a graph as text.
#include "plot/mdGraph.h"

namespace mdGraph {
QString GraphText(const Graph&, QChar) {
    return {};
}
} // namespace mdGraph
