#include "result/readers/ArraySteps.h"

ArraySteps::ArraySteps(ForeignResult&& result, std::vector<Item> allItems, std::vector<std::int32_t> cellOf,
                       std::int32_t cells, std::int32_t points)
    : StepSource({std::int32_t(result.Steps.size()), std::int32_t(allItems.size()), std::int32_t(cellOf.size())}),
      arrays(std::move(result.Arrays)), steps(std::move(result.Steps)), read(std::move(result.Read)),
      find(std::move(result.Find)), items(std::move(allItems)), cellOfElement(std::move(cellOf)),
      elementCount(std::int32_t(cellOfElement.size())), pointCount(points) {
    // As many elements as cells, in ascending order and of whole cells: each is its own.
    if (elementCount == cells && std::ranges::adjacent_find(cellOfElement, std::greater_equal()) == cellOfElement.end())
        cellOfElement = {};
}

/// All elements are there in every step, and of one type whatever their shape: so an item on cells has them all.
qint64 ArraySteps::typesAt(std::int32_t, qint64, std::span<std::int32_t> types) const {
    std::ranges::fill(types, 0);
    return qint64(types.size());
}

std::int32_t ArraySteps::countOf(std::int32_t step, std::int32_t item) const {
    const std::int32_t array = items[std::size_t(item)].Array;
    if (!std::ranges::binary_search(steps[std::size_t(step)].Arrays, array))
        return 0;
    return arrays[std::size_t(array)].OnCells ? elementCount : pointCount;
}

qint64 ArraySteps::valuesAt(std::int32_t step, std::int32_t item, qint64 first, std::span<float> values) const {
    if (readDirectly(step, items[std::size_t(item)], first, values))
        return qint64(values.size());
    const auto [array, component] = items[std::size_t(item)];
    const ForeignArray& info = arrays[std::size_t(array)];
    const std::shared_ptr<const Whole> whole = wholeOf(step, array);
    const std::vector<float>& all = whole->Values;
    const bool byCell = info.OnCells && !cellOfElement.empty();
    for (std::size_t i = 0; i < values.size(); ++i) {
        const std::size_t place = std::size_t(first) + i;
        const std::size_t at = (byCell ? std::size_t(cellOfElement[place]) : place) * std::size_t(info.Components) +
                               std::size_t(component);
        values[i] = at < all.size() ? all[at] : 0;
    }
    return qint64(values.size());
}

bool ArraySteps::isKnown(std::int32_t step, std::int32_t array) const {
    const std::lock_guard guard(lock);
    return std::ranges::any_of(
        recent, [&](const auto& known) { return known && known->Step == step && known->Array == array; });
}

/// A few values from where they stand in the file; false when that can't be done or would not be worth it.
bool ArraySteps::readDirectly(std::int32_t step, const Item& item, qint64 first, std::span<float> values) const {
    constexpr qint64 worthWhole = 3, mostAtOnce = 8192, mostBetween = 256;
    const ForeignArray& info = arrays[std::size_t(item.Array)];
    const bool byCell = info.OnCells && !cellOfElement.empty();
    const auto count = qint64(values.size());
    if (!find || count > std::min<qint64>(mostAtOnce, (info.OnCells ? elementCount : pointCount) / worthWhole) ||
        isKnown(step, item.Array))
        return false;
    const auto placeOf = [&](qint64 i) { return byCell ? qint64(cellOfElement[std::size_t(first + i)]) : first + i; };
    const qint64 low = placeOf(0), high = placeOf(count - 1);
    const std::optional<DirectArray> direct = find(step, item.Array);
    if (!direct || high < low || high - low > count + mostBetween || high >= direct->Count)
        return false;
    std::vector<char> bytes(std::size_t((high - low + 1) * direct->Stride));
    const qint64 got = direct->File.ReadAt(direct->Offset + low * direct->Stride, bytes.data(), std::ssize(bytes));
    const std::span<const char> there(bytes.data(), std::size_t(got));
    for (qint64 i = 0; i < count; ++i) {
        const qint64 place = placeOf(i), start = std::min((place - low) * direct->Stride, got);
        if (place < low || place > high)
            return false;
        const auto record = there.subspan(std::size_t(start), std::size_t(std::min(direct->Stride, got - start)));
        if (!direct->Value(record, std::int32_t(place), item.Component, values[std::size_t(i)]))
            return false;
    }
    return true;
}

/// The lock is held for finding it alone; who comes first reads, and others wait for just that array.
std::shared_ptr<const ArraySteps::Whole> ArraySteps::wholeOf(std::int32_t step, std::int32_t array) const {
    std::shared_ptr<Whole> whole;
    {
        const std::lock_guard guard(lock);
        const auto found = std::ranges::find_if(
            recent, [&](const auto& known) { return known && known->Step == step && known->Array == array; });
        if (found != recent.end()) {
            whole = *found;
        } else {
            whole = std::make_shared<Whole>();
            whole->Step = step;
            whole->Array = array;
            std::ranges::move_backward(recent.begin(), recent.end() - 1, recent.end());
            recent.front() = whole;
        }
    }
    std::call_once(whole->IsRead, [&] { whole->Values = read(step, array); });
    return whole;
}
