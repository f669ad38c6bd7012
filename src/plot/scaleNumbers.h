// Where the ticks of a scale are, and the numbers that stand at them. Singles are what a scale is kept in. Draws
// nothing.
#pragma once

#include "plot/PlotRecords.h"

/// True when the larger values lie at the smaller device coordinates.
inline bool IsFlipped(const PlotScale& scale, bool across) {
    return scale.ScaleReverse == across;
}

/// The values from `WorkMin` towards `WorkMax`, `step` apart: `WorkMScale` for the major, `WorkHScale` for the minor
/// ticks. Their number is rounded, so the last may lie up to half a step to either side of `WorkMax`. None when the
/// step is 0, at least twice the axis, or too short for any picture, and when the limits are no finite distance apart.
std::vector<float> TickValues(const PlotScale& scale, float step);

/// By `mask`, or when that is empty with one to three decimals; one, with an exponent, above 1000, and up to three,
/// with an exponent, below 0.01. What is negligible on an axis of length `range` is 0.
QString FormatScaleValue(float value, float range, const QString& mask);
