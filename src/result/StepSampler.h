// Values of one item at chosen nodes or elements, step by step, without loading the steps: a graph over many steps of a
// large file reads only what it shows. Keeps no step.
#pragma once

#include "result/ResultModel.h"

#include <optional>
#include <vector>

/// The values are those that `LoadStep` and then `ExpandItemValues`, with `SubtractValues` before it when there is a
/// reference, give at the same indexes. Holds a share of the model's file, so the model may change or go meanwhile.
class StepSampler {
public:
    /// `places` are indexes of nodes for an item per node and of elements for any other, in any order. `referenceStep`
    /// below 0 means the values themselves; otherwise what they are more than in that step, whose values count as 0
    /// when there is no such step. An item that isn't there has no values.
    StepSampler(const ResultModel& model, std::int32_t item, std::span<const std::int32_t> places,
                std::int32_t referenceStep);

    /// One entry per place: nothing where the step has no value for it. `step` that isn't there, or a closed file: no
    /// values. May be called from several threads at once.
    std::vector<std::optional<float>> Read(std::int32_t step) const;
};
