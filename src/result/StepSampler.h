// Values of one item at chosen nodes or elements, step by step, without loading the steps: a graph over many steps of a
// large file reads only what it shows. Keeps no step.
#pragma once

#include "result/ResultModel.h"

#include <limits>
#include <optional>
#include <vector>

/// The values are those that `LoadStep` and then `ExpandItemValues`, with `SubtractValues` before it when there is a
/// reference, give at the same indexes. Holds a share of the model's source, so the model may change or go meanwhile.
class StepSampler {
public:
    /// `places` are indexes of nodes for an item per node and of elements for any other, in any order, and may repeat.
    /// `referenceStep` below 0 means the values themselves; otherwise what they are more than in that step, whose
    /// values count as 0 when there is no such step. An item that isn't there has no values.
    StepSampler(const ResultModel& model, std::int32_t item, std::span<const std::int32_t> places,
                std::int32_t referenceStep);

    /// One entry per place: nothing where the step has no value for it. `step` that isn't there, or a closed file: no
    /// values. May be called from several threads at once.
    ///
    /// An item per node costs a short read for each group of near places. An item per element costs the element types
    /// up to the last place besides.
    std::vector<std::optional<float>> Read(std::int32_t step) const;

private:
    /// A value that is wanted: its position in the mesh or in a block, and the entry that it goes to.
    struct Place {
        std::int32_t position;
        std::int32_t entry;
    };
    using Places = std::vector<Place>; ///< by ascending position
    using Sampled = std::vector<std::optional<float>>;

    void readAt(std::span<const Place> wanted, std::int32_t step, Sampled& result) const;
    void readOnElements(std::int32_t step, std::int32_t valueCount, Sampled& result) const;

    std::shared_ptr<const StepSource> source;
    std::int32_t item;
    std::int32_t elementType = -1;
    std::size_t placeCount;
    Places places; ///< those that can have a value
    // Values of a reference step that isn't there need not be subtracted, but still bound the number.
    std::int32_t referenceStep = -1; ///< below 0: nothing to subtract
    std::int32_t referenceCount = std::numeric_limits<std::int32_t>::max();
};
