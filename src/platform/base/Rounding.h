// From reals to integers as all device work does it. Kept apart from the other helpers for the sake of inner loops.
#pragma once

#include <bit>
#include <cstdint>
#include <limits>

/// Nearest integer, a half to the even neighbour; beyond 32 bits the nearest end of the range, NaN gives 0.
inline int Round(double value) {
    // Adding 1.5 * 2^52 leaves the rounded value in the low bits of the sum, without a call into the math library.
    if (value > -2147483648.5 && value < 2147483647.5) [[likely]]
        return std::int32_t(std::bit_cast<std::int64_t>(value + 6755399441055744.0));
    if (value > 0)
        return std::numeric_limits<int>::max();
    return value < 0 ? std::numeric_limits<int>::min() : 0;
}
