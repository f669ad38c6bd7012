// What the layers share that turn a pair of values into lengths on the device. Not for other floors.
#pragma once

#include "result/ResultModel.h"

#include <algorithm>
#include <cmath>

/// The larger of the two items' magnitudes, from their bounds.
inline float largestMagnitude(const ItemValues& a, const ItemValues& b) {
    return std::max({std::abs(a.MaxValue), std::abs(a.MinValue), std::abs(b.MaxValue), std::abs(b.MinValue)});
}

inline int signOf(float value) {
    return value > 0 ? 1 : value < 0 ? -1 : 0;
}
