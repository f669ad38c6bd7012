#include "result/readers/IdIndex.h"

IdIndex::IdIndex(std::span<const std::int64_t> ids) {
    if (ids.empty())
        return;
    const auto [least, most] = std::ranges::minmax(ids);
    lowest = least;
    constexpr std::uint64_t roomPerId = 4;
    const std::uint64_t span = std::uint64_t(most) - std::uint64_t(least);
    if (span < ids.size() * roomPerId) {
        table.assign(std::size_t(span) + 1, -1);
        for (std::size_t i = ids.size(); i-- > 0;)
            table[std::size_t(ids[i] - lowest)] = std::int32_t(i);
        return;
    }
    sorted.reserve(ids.size());
    for (std::size_t i = 0; i < ids.size(); ++i)
        sorted.push_back({ids[i], std::int32_t(i)});
    std::ranges::stable_sort(sorted, {}, &Entry::Id);
}

std::int32_t IdIndex::find(std::int64_t id) const {
    const auto found = std::ranges::lower_bound(sorted, id, {}, &Entry::Id);
    return found != sorted.end() && found->Id == id ? found->Position : -1;
}
