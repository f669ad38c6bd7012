#include "result/ValueBounds.h"

#include <array>

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
    constexpr std::size_t lanes = 16;
    std::array<float, lanes> highest, lowest;
    highest.fill(-BoundStart);
    lowest.fill(BoundStart);
    std::size_t i = 0;
    for (; i + lanes <= values.size(); i += lanes)
        for (std::size_t lane = 0; lane < lanes; ++lane) {
            const float value = values[i + lane];
            highest[lane] = value > highest[lane] ? value : highest[lane];
            lowest[lane] = value < lowest[lane] ? value : lowest[lane];
        }
    ValueBounds bounds;
    for (std::size_t lane = 0; lane < lanes; ++lane)
        bounds.Take(ValueBounds{highest[lane], lowest[lane]});
    for (; i < values.size(); ++i)
        bounds.Take(values[i]);
    if (bounds.Max == 0)
        bounds.Max = firstZero(values);
    if (bounds.Min == 0)
        bounds.Min = firstZero(values);
    return bounds;
}
