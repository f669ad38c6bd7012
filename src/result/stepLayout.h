// Where the values of a step stand in a result file, and values read from there; shared by the step load and the
// sampler, and of no use to others.
#pragma once

#include "result/ResultModel.h"

namespace mdVelorinResultModel {

/// One item's values in one step.
struct ItemBlock {
    qint64 FileOffset = 0;  ///< of the first value
    std::int32_t Count = 0; ///< as told, which may be below 1
};

/// What of a model tells where values stand. Keeps the lists when the model changes or goes.
class StepLayout {
public:
    explicit StepLayout(const ResultModel& model);

    qint64 TypesOffset(std::int32_t step) const { return steps.at(step).TypesOffset; }
    /// The blocks of the step's first `count` items. A count above both the number of nodes and that of elements which
    /// the rest of the file doesn't hold counts as none. A step that breaks off within its types has no values.
    std::vector<ItemBlock> Blocks(std::int32_t step, std::int32_t count) const;

private:
    QList<StepInfo> steps;
    QList<std::int32_t> valueCounts;
    std::int32_t itemCount, elementCount, mostInMesh;
    qint64 fileSize;
};

/// At most this many values are read at once.
inline constexpr qint64 valuesPerPiece = 32768;

/// Fills `target` (up to `valuesPerPiece`) with the values from `fileOffset` on, narrowed; 0 for those that the file
/// doesn't have. May be called from several threads at once.
void readValues(const ReadHandle& file, qint64 fileOffset, std::span<float> target);

} // namespace mdVelorinResultModel
