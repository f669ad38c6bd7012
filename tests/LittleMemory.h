// While it lives the program gets little more memory than it has. Address sanitizers need all there is.
#pragma once

#include "TestFolder.h"

#include <cstdlib>
#include <memory>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

class LittleMemory {
public:
    explicit LittleMemory(rlim_t mebibytes = 0) {
        constexpr std::size_t smallest = 1 << 17, greatest = 1 << 27;
        getrlimit(RLIMIT_AS, &usual);
        const rlim_t pages = TestFolder::Read(QStringLiteral("/proc/self/statm")).split(' ').front().toULongLong();
        const rlim_t taken = pages * rlim_t(sysconf(_SC_PAGESIZE));
        limit(taken);
        // What earlier tests have given back is had without asking the system.
        for (std::size_t size = greatest; size >= smallest; size /= 2)
            while (void* block = std::malloc(size))
                blocks.emplace_back(block, std::free);
        limit(taken + (mebibytes << 20));
    }
    ~LittleMemory() { setrlimit(RLIMIT_AS, &usual); }
    LittleMemory(const LittleMemory&) = delete;
    LittleMemory& operator=(const LittleMemory&) = delete;

private:
    void limit(rlim_t bytes) const {
        const rlimit tight{bytes, usual.rlim_max};
        setrlimit(RLIMIT_AS, &tight);
    }

    rlimit usual{};
    std::vector<std::unique_ptr<void, void (*)(void*)>> blocks;
};
