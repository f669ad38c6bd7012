// The steps of a file that has its arrays in an order and a form of its own. Most can only be read whole, since their
// text or their compression must be followed from its beginning; of others single values are read.
#pragma once

#include "result/readers/ForeignResult.h"

#include <mutex>

class ArraySteps final : public StepSource {
public:
    struct Item {
        std::int32_t Array = 0, Component = 0;
    };
    /// Takes the arrays, the steps and the way to read them from `result`. `cellOf` has the cell of every element among
    /// `cells` of them.
    ArraySteps(ForeignResult&& result, std::vector<Item> allItems, std::vector<std::int32_t> cellOf, std::int32_t cells,
               std::int32_t points);

private:
    /// An array on its way into the model.
    struct Whole {
        std::int32_t Step = -1, Array = -1;
        std::once_flag IsRead;
        std::vector<float> Values;
    };

    qint64 typesAt(std::int32_t step, qint64 first, std::span<std::int32_t> types) const override;
    std::int32_t countOf(std::int32_t step, std::int32_t item) const override;
    qint64 valuesAt(std::int32_t step, std::int32_t item, qint64 first, std::span<float> values) const override;
    qint64 endOf(std::int32_t step) const override { return steps[std::size_t(step)].End; }
    bool readDirectly(std::int32_t step, const Item& item, qint64 first, std::span<float> values) const;
    bool isKnown(std::int32_t step, std::int32_t array) const;
    std::shared_ptr<const Whole> wholeOf(std::int32_t step, std::int32_t array) const;

    std::vector<ForeignArray> arrays;
    std::vector<ForeignStep> steps;
    ReadArray read;
    FindArray find;
    std::vector<Item> items;
    std::vector<std::int32_t> cellOfElement; ///< empty where each is its own
    std::int32_t elementCount, pointCount;
    mutable std::mutex lock; ///< of what follows
    /// The arrays asked for last: as the cores share a step out, they are at work on some at once.
    mutable std::array<std::shared_ptr<Whole>, 4> recent;
};
