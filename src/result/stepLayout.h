// Where the parts of a step stand in a result file, and values read from there; shared by the step load and the
// sampler, and of no use to others.
#pragma once

#include "platform/ReadHandle.h"

#include <span>

namespace mdVelorinResultModel {

/// One item's values in one step.
struct ItemBlock {
    qint64 FileOffset = 0;  ///< of the first value
    std::int32_t Count = 0; ///< as told, which may be below 1
};

/// From the start of a step to its element types.
void skipStepHead(SequentialReader& reader);

/// The block that begins at the reader's position, which moves on behind it. A count above `mostInMesh` (the larger
/// number of nodes or elements) that the rest of the file doesn't hold counts as none.
ItemBlock nextItemBlock(SequentialReader& reader, qint64 mostInMesh);

/// At most this many values are read at once.
inline constexpr qint64 valuesPerPiece = 32768;

/// Fills `target` (up to `valuesPerPiece`) with the values from `fileOffset` on, narrowed; 0 for those that the file
/// doesn't have. May be called from several threads at once.
void readValues(const ReadHandle& file, qint64 fileOffset, std::span<float> target);

} // namespace mdVelorinResultModel
