// The steps of an open result file, as the model asks for them: no format shows through. Where values stand, and how
// they are stored, is the business of the reader that made the source.
#pragma once

#include "result/readers/LoadProgress.h"

#include <QList>
#include <cstdint>
#include <memory>
#include <span>

class ReadHandle;
struct StepInfo;

/// A source is never changed, so all may be called from several threads at once. What the file doesn't have, cut short
/// or never there, is no fault: it reads as zeros. Steps, items and positions count from 0.
class StepSource {
public:
    struct Sizes {
        std::int32_t Steps = 0, Items = 0, Elements = 0;
    };

    virtual ~StepSource() = default;
    StepSource(const StepSource&) = delete;
    StepSource& operator=(const StepSource&) = delete;

    std::int32_t StepCount() const { return sizes.Steps; }

    /// Fills `types` with the element types in a step, from element `first` on.
    void ReadTypes(std::int32_t step, qint64 first, std::span<std::int32_t> types) const;
    /// How many values a step has of an item, as the file tells; below 1 there are none.
    std::int32_t ValueCount(std::int32_t step, std::int32_t item) const;
    /// Fills `values` with those of an item in a step from position `first` on, in single precision: per node, or
    /// packed per element of the item's type.
    void ReadValues(std::int32_t step, std::int32_t item, qint64 first, std::span<float> values) const;

    /// The same steps, as many as `steps` has, and those that stand behind them in `longer`, which is the same file
    /// with more in it; `steps` gets the new ones. Null when `progress` says no, and for formats that are read wholly
    /// anew.
    virtual std::shared_ptr<const StepSource> Extended(const ReadHandle& /*longer*/, QList<StepInfo>& /*steps*/,
                                                       const LoadProgress& /*progress*/) const {
        return {};
    }

    /// Where a step ends in the file: beyond the file's own end when it is cut short. 0 for formats that cannot tell.
    qint64 EndOf(std::int32_t step) const;

protected:
    explicit StepSource(const Sizes& sourceSizes) : sizes(sourceSizes) {}

    // What a format does: asked only within the sizes and, for values, within the count. Both reads give the number
    // that the file really has, from the first on.
    virtual qint64 typesAt(std::int32_t step, qint64 first, std::span<std::int32_t> types) const = 0;
    virtual std::int32_t countOf(std::int32_t step, std::int32_t item) const = 0;
    virtual qint64 valuesAt(std::int32_t step, std::int32_t item, qint64 first, std::span<float> values) const = 0;
    virtual qint64 endOf(std::int32_t) const { return 0; }

private:
    const Sizes sizes;
};
