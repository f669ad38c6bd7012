// Steps that a test makes up, and the source that gives them from memory: what every other source is held against.
#pragma once

#include "result/readers/StepSource.h"

#include <vector>

/// `count` of `all` from position `first` on, narrowed; zeros beyond the end.
template<class T, class U>
std::vector<T> partOf(const std::vector<U>& all, qint64 first, std::size_t count) {
    std::vector<T> part(count);
    for (std::size_t i = 0; i < count && std::size_t(first) + i < all.size(); ++i)
        part[i] = T(all[std::size_t(first) + i]);
    return part;
}

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
    const Block& block(std::int32_t step, std::int32_t item) const {
        return steps[std::size_t(step)].blocks[std::size_t(item)];
    }
    qint64 typesAt(std::int32_t step, qint64 first, std::span<std::int32_t> types) const override {
        std::ranges::copy(partOf<std::int32_t>(steps[std::size_t(step)].types, first, types.size()), types.begin());
        return qint64(types.size());
    }
    std::int32_t countOf(std::int32_t step, std::int32_t item) const override { return block(step, item).told; }
    qint64 valuesAt(std::int32_t step, std::int32_t item, qint64 first, std::span<float> values) const override {
        std::ranges::copy(partOf<float>(block(step, item).values, first, values.size()), values.begin());
        return qint64(values.size());
    }

    const std::vector<Step> steps;
};
