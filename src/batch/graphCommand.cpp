// The graph of picked nodes or elements over the steps, as a picture or as numbers.
#include "batch/commandSupport.h"
#include "plot/mdGraph.h"

namespace batch {

Status RunGraph(const QStringList&, const Streams&) {
    return WrongUsage;
}

} // namespace batch
