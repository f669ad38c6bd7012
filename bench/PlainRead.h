// What reading is held against: the bytes and nothing else, in pieces of 1 MB into one buffer.
#pragma once

#include "platform/base/ReadHandle.h"

#include <benchmark/benchmark.h>

#include <vector>

inline void readPlainly(const ReadHandle& file, qint64 from, qint64 to) {
    static std::vector<char> buffer(1 << 20);
    for (qint64 position = from; position < to; position += qint64(buffer.size()))
        file.ReadAt(position, buffer.data(), std::min(to - position, qint64(buffer.size())));
    benchmark::DoNotOptimize(buffer.data());
}
