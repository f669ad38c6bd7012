// The positions of things that a file names by numbers of its own, which may have gaps and any order.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

class IdIndex {
public:
    IdIndex() = default;
    /// Of `ids`, in the order of their positions; of two the same the first counts.
    explicit IdIndex(std::span<const std::int64_t> ids);

    /// From 0; -1 for a number that isn't there.
    std::int32_t Of(std::int64_t id) const {
        if (table.empty())
            return find(id);
        const std::uint64_t place = std::uint64_t(id) - std::uint64_t(lowest);
        return place < table.size() ? table[std::size_t(place)] : -1;
    }

private:
    std::int32_t find(std::int64_t id) const;

    struct Entry {
        std::int64_t Id;
        std::int32_t Position;
    };
    std::int64_t lowest = 0;
    std::vector<std::int32_t> table; ///< by the number less the lowest, where there are few gaps
    std::vector<Entry> sorted;       ///< else by number
};
