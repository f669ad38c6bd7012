// What is to be told of nodes and elements that were picked or lie under the mouse: their values of the current item,
// as numbers and as texts. Finds no objects and knows no window.
#pragma once

#include "app/ApplicationSettings.h"
#include "result/ResultModel.h"
#include "view/clsMouse.h"

#include <optional>

namespace mdPicking {

/// The current item's values in the loaded step, by the indexes of its nodes or elements. Shares the model's columns:
/// to make one costs a pass over the elements at most.
class ObjectValues {
public:
    /// With `difference`, less those of the reference step.
    ObjectValues(const ResultModel& model, bool difference);

    /// Nothing for an object that has no value: it doesn't exist in the step, is of another type, or its value is no
    /// number.
    std::optional<float> Of(std::int32_t object) const;

private:
    const MeshData& mesh;
    std::int32_t elementType = -1;
    QList<float> values;
};

struct ValueSummary {
    std::int32_t Counted = 0; ///< objects with a value; the rest only if there is one
    float Least = 0, Largest = 0;
    double Mean = 0;
};

ValueSummary SummaryOf(const ObjectValues& values, const clsMouse& selection);

/// One line on all that is picked, empty for nothing: how many, their least, largest and mean value and how many have
/// none. Differences when the contour or the numbers show them.
QString SummaryText(const ResultModel& model, const DifferenceSettings& difference, const clsMouse& selection);

/// Lines on one node or element, whichever the current item is of: its number, place and value, and where there is a
/// reference step, the difference from it.
QString ObjectText(const ResultModel& model, const DifferenceSettings& difference, std::int32_t object);

} // namespace mdPicking
