#include "platform/base/Parallel.h"

#include <QThread>
#include <atomic>
#include <exception>
#include <system_error>
#include <thread>
#include <vector>
#ifdef __x86_64__
#include <immintrin.h>
#endif

#ifdef __x86_64__
namespace {

[[gnu::target("avx")]] void clearUpperHalves() {
    _mm256_zeroupper();
}

} // namespace

void tidyVectorRegisters() {
    static const bool hasUpperHalves = __builtin_cpu_supports("avx");
    if (hasUpperHalves)
        clearUpperHalves();
}
#else
void tidyVectorRegisters() {}
#endif

int coreCount() {
    static const int count = std::max(1, QThread::idealThreadCount());
    return count;
}

void parallelFor(int count, const std::function<void(int)>& work, int threadLimit) {
    tidyVectorRegisters();
    const int threadCount = std::min(threadLimit > 0 ? threadLimit : coreCount(), count);
    if (threadCount <= 1) {
        for (int i = 0; i < count; ++i)
            work(i);
        return;
    }

    std::atomic<int> next = 0;
    std::exception_ptr failure;
    std::atomic_flag failed;
    const auto run = [&] {
        try {
            for (int i = next++; i < count; i = next++)
                work(i);
        } catch (...) {
            if (!failed.test_and_set())
                failure = std::current_exception();
            next = count;
        }
    };
    {
        std::vector<std::jthread> helpers;
        helpers.reserve(std::size_t(threadCount - 1));
        try {
            while (int(helpers.size()) < threadCount - 1)
                helpers.emplace_back(run);
        } catch (const std::system_error&) {
            // A system out of threads makes the work slower, not incomplete: those that did start do it all.
        }
        run();
    }
    if (failure)
        std::rethrow_exception(failure);
}
