// Shares independent pieces of work out over the cores; knows nothing of what the work is.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <future>
#include <system_error>

/// Number of cores that `parallelFor` may use; at least 1.
int coreCount();

/// Some code of others comes back with the upper halves of the vector registers in use, and on some processors all
/// arithmetic with reals then takes three times as long. This clears them: before long loops; costs nothing.
void tidyVectorRegisters();

/// Calls `work(i)` for every i from 0 to `count` - 1, on up to `threadLimit` threads (0: `coreCount()`), and returns
/// when all are done. The calls must not depend on each other's order. With one thread or one piece all runs on the
/// caller's. Arithmetic in `work` is as fast as the machine has it, whatever ran before.
void parallelFor(int count, const std::function<void(int)>& work, int threadLimit = 0);

/// Indexes in a stretch of `parallelStretches`; the last may hold fewer.
inline constexpr std::int32_t indexesPerStretch = 32768;

/// Number of stretches that 0 to `count` - 1 fall into.
constexpr int stretchCount(std::int32_t count) {
    return count / indexesPerStretch + (count % indexesPerStretch > 0 ? 1 : 0);
}

/// Calls `work(first, last)` for the stretches of 0 to `count` - 1, `last` left out, as `parallelFor` does.
template<class Work>
void parallelStretches(std::int32_t count, const Work& work) {
    parallelFor(stretchCount(count), [&](int stretch) {
        const std::int32_t first = stretch * indexesPerStretch;
        work(first, first + std::min(count - first, indexesPerStretch));
    });
}

/// Begins `work` on another thread, or where there is none to be had leaves it to be done when its result is asked for.
/// The result's destructor waits for the end of work that has begun.
template<class Work>
auto startBeside(Work work) -> std::future<decltype(work())> {
    try {
        return std::async(std::launch::async, work);
    } catch (const std::system_error&) {
        return std::async(std::launch::deferred, work);
    }
}
