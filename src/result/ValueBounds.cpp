#include "result/ValueBounds.h"

#include <array>
#include <cstring>

namespace {

/// Zeros of both signs are equal, so which of them stays depends on the order: the first one met.
float firstZero(std::span<const float> values) {
    for (const float value : values)
        if (value == 0)
            return value;
    return 0;
}

} // namespace

ValueBounds ValueBounds::Of(std::span<const float> values) {
    // Compilers don't see by themselves that bounds may be kept in lanes; a comparison with NaN is false in each. Four
    // lanes are what every machine has, and two sets of them go on independently of each other.
    constexpr std::size_t laneCount = 4;
    using Lanes [[gnu::vector_size(laneCount * sizeof(float))]] = float;
    std::array<Lanes, 2> highest, lowest;
    highest.fill(Lanes{} - BoundStart);
    lowest.fill(Lanes{} + BoundStart);
    std::size_t i = 0;
    for (; i + 2 * laneCount <= values.size(); i += 2 * laneCount)
        for (std::size_t set = 0; set < 2; ++set) {
            Lanes next;
            std::memcpy(&next, values.data() + i + set * laneCount, sizeof next);
            highest[set] = next > highest[set] ? next : highest[set];
            lowest[set] = next < lowest[set] ? next : lowest[set];
        }
    ValueBounds bounds;
    for (std::size_t set = 0; set < 2; ++set)
        for (std::size_t lane = 0; lane < laneCount; ++lane)
            bounds.Take(ValueBounds{highest[set][lane], lowest[set][lane]});
    for (; i < values.size(); ++i)
        bounds.Take(values[i]);
    if (bounds.Max == 0)
        bounds.Max = firstZero(values);
    if (bounds.Min == 0)
        bounds.Min = firstZero(values);
    return bounds;
}
