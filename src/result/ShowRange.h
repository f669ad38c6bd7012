// What holds for all steps of a file, so that the pictures of different steps can be compared: the range of an item and
// the largest displacement and vector. Loads no step and keeps nothing.
#pragma once

#include "app/ApplicationSettings.h"
#include "result/ValueBounds.h"
#include "result/mdVelorinResultModel.h"

#include <optional>

struct ShowRange {
    // Of the item. Without any value they stay where the search begins, and then contours are empty.
    float Maximum = -BoundStart, Minimum = BoundStart;
    float MaxDisplacement = 0; ///< largest magnitude of a displacement component
    float MaxVector = 0;       ///< the same of the vector items in use
};

/// Reads the values of `item`, of the displacement and of the vectors in use in every step, and no others; several
/// blocks at once. An item that isn't there widens nothing. `progress`, if there is one, is called on the caller's
/// thread from time to time; nothing comes back when it says no. May be called on another thread as long as nobody
/// changes the model.
std::optional<ShowRange> ComputeItemRange(std::int32_t item, const ResultModel& model, const VectorSettings& vector,
                                          const LoadProgress& progress = {});

/// The bounds of what a contour of `item` shows over all steps from `first` on: of the item's own values, or where the
/// settings take a difference for the contour, of that on the nodes. The difference is found in a copy of `model`, step
/// after step. `progress` and threads as above; without any value the bounds stay where the search begins.
std::optional<ValueBounds> ComputeContourRange(std::int32_t item, const ResultModel& model,
                                               const DifferenceSettings& difference, std::int32_t first,
                                               const LoadProgress& progress = {});

/// Holds the contour's range and its number of bands, whatever a step's own range is.
void FixContour(ContourSettings& contour, float maximum, float minimum, int bands);
