// The hatch patterns of brushes as pixels. Nothing is drawn here.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// 8 x 8 pixels, laid from the device's origin: a number for each row, its lowest bit the leftmost column.
using HatchPattern = std::array<std::uint8_t, 8>;

/// Null for a brush without a pattern.
inline const HatchPattern* hatchPattern(int hatch) {
    static constexpr std::array<HatchPattern, 6> patterns = {{
        {0, 0, 0, 0xff, 0, 0, 0, 0},
        {0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08},
        {0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80},
        {0x80, 0x40, 0x20, 0x10, 0x08, 0x04, 0x02, 0x01},
        {0x08, 0x08, 0x08, 0xff, 0x08, 0x08, 0x08, 0x08},
        {0x81, 0x42, 0x24, 0x18, 0x18, 0x24, 0x42, 0x81},
    }};
    return hatch >= 0 && hatch < int(patterns.size()) ? &patterns[std::size_t(hatch)] : nullptr;
}
