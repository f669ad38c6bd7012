// From reals to integers as all device work does it. Kept apart from the other helpers for the sake of inner loops.
#pragma once

#include "platform/base/Geometry.h"

#include <bit>
#include <cstdint>
#include <limits>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

/// Nearest integer, a half to the even neighbour; beyond 32 bits the nearest end of the range, NaN gives 0.
inline int Round(double value) {
    // Adding 1.5 * 2^52 leaves the rounded value in the low bits of the sum, without a call into the math library.
    if (value > -2147483648.5 && value < 2147483647.5) [[likely]]
        return std::int32_t(std::bit_cast<std::int64_t>(value + 6755399441055744.0));
    if (value > 0)
        return std::numeric_limits<int>::max();
    return value < 0 ? std::numeric_limits<int>::min() : 0;
}

/// Both coordinates of a point, so that one operation does for the two.
using RealPair = double __attribute__((vector_size(16)));

/// `Round` of both.
inline DevicePoint RoundPair(RealPair value) {
#ifdef __SSE2__
    // What is too low becomes the lowest number by itself.
    const __m128d number = _mm_and_pd(value, _mm_cmpord_pd(value, value));
    const __m128i rounded = _mm_cvtpd_epi32(_mm_min_pd(number, _mm_set1_pd(std::numeric_limits<int>::max())));
    return std::bit_cast<DevicePoint>(_mm_cvtsi128_si64(rounded));
#else
    return {Round(value[0]), Round(value[1])};
#endif
}
