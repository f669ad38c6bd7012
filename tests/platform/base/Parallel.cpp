// Work shared out over threads: all of it, once, and an error comes back.
#include "platform/base/Parallel.h"

#include <atomic>
#include <gtest/gtest.h>
#include <stdexcept>
#include <vector>

TEST(Parallel, DoesEachPieceOnceAndHandsAnErrorBack) {
    for (const int threads : {0, 1, 3, 50}) {
        std::vector<std::atomic<int>> done(37);
        const auto work = [&](int i) {
            if (++done[std::size_t(i)] > 1)
                throw std::runtime_error("twice");
        };
        parallelFor(37, work, threads);
        for (const std::atomic<int>& count : done)
            EXPECT_EQ(count, 1);
        EXPECT_THROW(parallelFor(1, work, threads), std::runtime_error);
    }
    for (const int count : {0, -1})
        parallelFor(count, [](int) { FAIL(); });
}
