// Work shared out over threads: all of it, once, and an error comes back.
#include "platform/base/Parallel.h"

#include <atomic>
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>
#include <vector>

TEST(Parallel, DoesEachPieceOnce) {
    for (const int threads : {0, 1, 3, 50}) {
        std::vector<std::atomic<int>> done(37);
        parallelFor(
            37, [&](int i) { ++done[std::size_t(i)]; }, threads);
        for (const std::atomic<int>& count : done)
            EXPECT_EQ(count, 1);
    }
    parallelFor(0, [](int) { FAIL(); });
    parallelFor(-1, [](int) { FAIL(); });
}

TEST(Parallel, HandsAnErrorToTheCaller) {
    EXPECT_THROW(parallelFor(
                     100,
                     [](int i) {
                         if (i == 7)
                             throw std::runtime_error("seven");
                     },
                     4),
                 std::runtime_error);
}
