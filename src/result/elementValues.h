// Packed element values onto elements and from there onto nodes; shared by the step load and the queries.
#pragma once

#include "platform/base/Parallel.h"
#include "result/ValueBounds.h"

#include <vector>

namespace mdVelorinResultModel {

/// One entry per element: in element order each element of `elementType` takes the next of `values`, all others 0.
QList<float> unpackOntoElements(const ItemValues& values, const MeshData& mesh, std::int32_t elementType);

/// For each node the mean of `onElements` over those of its elements that `counts` accepts, summed in list order in
/// single precision; 0, and no part in the bounds, for a node with none. Writes `mesh.NodeCount` entries.
template<typename Counts>
ValueBounds averageOntoNodes(const QList<float>& onElements, const MeshData& mesh, Counts counts, float* target) {
    const float* values = onElements.constData();
    const std::int32_t* firstEntry = mesh.Nodes.FirstEntry.constData();
    const std::int32_t* elements = mesh.Nodes.ElementIndex.constData();
    std::vector<ValueBounds> boundsOfStretch(std::size_t(stretchCount(mesh.NodeCount)));
    parallelStretches(mesh.NodeCount, [&](std::int32_t first, std::int32_t last) {
        ValueBounds bounds;
        for (std::int32_t node = first; node < last; ++node) {
            float sum = 0;
            std::int32_t count = 0;
            for (std::int32_t entry = firstEntry[node]; entry < firstEntry[node + 1]; ++entry)
                if (counts(elements[entry])) {
                    sum += values[elements[entry]];
                    ++count;
                }
            target[node] = count > 0 ? sum / float(count) : 0;
            if (count > 0)
                bounds.Take(target[node]);
        }
        boundsOfStretch[std::size_t(first / indexesPerStretch)] = bounds;
    });
    ValueBounds bounds;
    for (const ValueBounds& later : boundsOfStretch)
        bounds.Take(later);
    return bounds;
}

} // namespace mdVelorinResultModel
