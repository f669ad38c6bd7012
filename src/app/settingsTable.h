// The tables that say which value of the registry belongs to which field, in the order of writing. Data only: reading
// and writing by them is `settingsStore`'s.
#pragma once

#include "app/ApplicationSettings.h"

#include <climits>
#include <optional>
#include <span>
#include <variant>

namespace settingsTable {
/// A field that is kept as int32 after int32, little-endian.
struct Words {
    std::array<std::uint32_t*, 4> At{};
    int Count = 0;
};

/// Where a value goes and comes from. Its kind decides the type: numbers and booleans are `REG_DWORD`, text and
/// reals are `REG_SZ`, words are `REG_BINARY`. A plain number is only written.
using Field = std::variant<bool*, std::int32_t*, ColorRef*, double*, QString*, Words, std::int32_t>;

template<class Record>
struct Row {
    QStringView Name; ///< as written
    Field (*Of)(Record&);
    int Least = INT_MIN; ///< what is read is held between these two
    int Most = INT_MAX;
    std::optional<int> Absent = {};      ///< what the field gets before the key is read
    int True = 1;                        ///< how a boolean is written
    Field (*Written)(Record&) = nullptr; ///< where the written value comes from, if not from `Of`
    bool Optional = false;               ///< kept only while it differs from what a new record has
};

std::span<const Row<ApplicationSettings>> General();
std::span<const Row<GraphDefaults>> Graph(); ///< without the legend styles
std::span<const Row<PageLabel>> Label();
std::span<const Row<ContourSettings>> Contour();
std::span<const Row<DisplacementSettings>> Displacement();
std::span<const Row<VectorSettings>> Vector();

Field FieldOf(LegendStyle& style);
} // namespace settingsTable
