#include "result/readers/StepSource.h"

namespace {

bool isBelow(std::int32_t index, std::int32_t count) {
    return index >= 0 && index < count;
}

/// Fills `target`, which begins at `first` of `count` things, with what `read` has of it and zeros behind.
template<class T, class Read>
void fill(std::span<T> target, qint64 first, qint64 count, const Read& read) {
    const qint64 inside = std::clamp<qint64>(count - first, 0, qint64(target.size()));
    const qint64 got = inside > 0 ? read(target.first(std::size_t(inside))) : 0;
    std::fill(target.begin() + got, target.end(), T{});
}

} // namespace

void StepSource::ReadTypes(std::int32_t step, qint64 first, std::span<std::int32_t> types) const {
    fill(types, first, isBelow(step, sizes.Steps) ? sizes.Elements : 0,
         [&](std::span<std::int32_t> inside) { return typesAt(step, first, inside); });
}

std::int32_t StepSource::ValueCount(std::int32_t step, std::int32_t item) const {
    return isBelow(step, sizes.Steps) && isBelow(item, sizes.Items) ? countOf(step, item) : 0;
}

qint64 StepSource::EndOf(std::int32_t step) const {
    return isBelow(step, sizes.Steps) ? endOf(step) : 0;
}

void StepSource::ReadValues(std::int32_t step, std::int32_t item, qint64 first, std::span<float> values) const {
    fill(values, first, ValueCount(step, item),
         [&](std::span<float> inside) { return valuesAt(step, item, first, inside); });
}
