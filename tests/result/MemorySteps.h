// Steps that a test makes up, and the source that gives them from memory: what every other source is held against.
#pragma once

#include "result/readers/StepSource.h"

#include <algorithm>
#include <vector>

class MemorySteps final : public StepSource {
public:
    struct Block {
        std::int32_t told = 0;
        std::vector<double> values; ///< may be fewer than told
    };
    struct Step {
        std::vector<std::int32_t> types; ///< may be fewer than there are elements
        std::vector<Block> blocks;
    };

    MemorySteps(std::vector<Step> allSteps, std::int32_t items, std::int32_t elements)
        : StepSource({std::int32_t(allSteps.size()), items, elements}), steps(std::move(allSteps)) {}

private:
    template<class T, class U>
    static qint64 copy(const std::vector<T>& from, qint64 first, std::span<U> to) {
        const qint64 count = std::clamp<qint64>(qint64(from.size()) - first, 0, qint64(to.size()));
        for (qint64 i = 0; i < count; ++i)
            to[std::size_t(i)] = U(from[std::size_t(first + i)]);
        return count;
    }
    const Block& blockOf(std::int32_t step, std::int32_t item) const {
        return steps[std::size_t(step)].blocks[std::size_t(item)];
    }
    qint64 typesAt(std::int32_t step, qint64 first, std::span<std::int32_t> types) const override {
        return copy(steps[std::size_t(step)].types, first, types);
    }
    std::int32_t countOf(std::int32_t step, std::int32_t item) const override { return blockOf(step, item).told; }
    qint64 valuesAt(std::int32_t step, std::int32_t item, qint64 first, std::span<float> values) const override {
        return copy(blockOf(step, item).values, first, values);
    }

    const std::vector<Step> steps;
};
