#include "view/scene/colorPresets.h"

#include "app/ApplicationSettings.h"
#include "platform/base/Rounding.h"

#include <algorithm>

namespace mdScene {

namespace {

/// A map at 33 places evenly spread, 0xRRGGBB.
using Map = std::array<std::uint32_t, 33>;

/// Viridis, by S. van der Walt and N. Smith (2015, CC0), taken from its 256 published colours.
constexpr Map viridis{0x440154, 0x470d60, 0x48186a, 0x482374, 0x472d7b, 0x453681, 0x424086, 0x3f4989, 0x3b528b,
                      0x375a8d, 0x33638d, 0x2f6a8e, 0x2c728e, 0x297a8e, 0x26818e, 0x23898e, 0x21908c, 0x1f988b,
                      0x1f9f88, 0x21a685, 0x28ae80, 0x31b57b, 0x3ebc74, 0x4cc26c, 0x5dc963, 0x6ece58, 0x82d34c,
                      0x96d83f, 0xabdc32, 0xc0df24, 0xd5e21a, 0xeae51a, 0xfde725};

/// Cividis, by J. Nunez, C. Anderton and R. Renslow (2018, PLoS ONE 13(7), made for colour-blind readers): likewise.
constexpr Map cividis{0x00224e, 0x00285b, 0x002e6a, 0x043371, 0x1a386f, 0x273e6e, 0x32436d, 0x3b496c, 0x434e6c,
                      0x4b546c, 0x52596d, 0x5a5f6e, 0x61656f, 0x686a71, 0x6f7073, 0x757676, 0x7c7b78, 0x848179,
                      0x8b8778, 0x938d78, 0x9b9376, 0xa39a75, 0xaba072, 0xb3a670, 0xbbad6c, 0xc3b469, 0xccba64,
                      0xd4c15f, 0xddc958, 0xe6d051, 0xefd748, 0xf8df3c, 0xfee838};

/// Blue over light grey to red, by K. Moreland ("Diverging Color Maps for Scientific Visualization", 2009): its
/// published table of 33 colours.
constexpr Map diverging{0x3b4cc0, 0x445acc, 0x4d68d7, 0x5775e1, 0x6282ea, 0x6c8ef1, 0x779af7, 0x82a5fb, 0x8db0fe,
                        0x98b9ff, 0xa3c2ff, 0xaec9fd, 0xb8d0f9, 0xc2d5f4, 0xccd9ee, 0xd5dbe6, 0xdddddd, 0xe5d8d1,
                        0xecd3c5, 0xf1ccb9, 0xf5c4ad, 0xf7bba0, 0xf7b194, 0xf7a687, 0xf49a7b, 0xf18d6f, 0xec7f63,
                        0xe57058, 0xde604d, 0xd55042, 0xcb3e38, 0xc0282f, 0xb40426};

const Map& mapOf(int preset) {
    return preset == ColorPreset::Diverging ? diverging : preset == ColorPreset::Cividis ? cividis : viridis;
}

} // namespace

ColorRef PresetColor(int preset, float t) {
    const Map& map = mapOf(preset);
    const float place = (t > 0 ? std::min(t, 1.f) : 0) * float(map.size() - 1);
    const std::size_t first = std::min(std::size_t(place), map.size() - 2);
    const auto channel = [&](int shift) {
        const auto of = [shift](std::uint32_t color) { return float(color >> shift & 0xff); };
        return Round(double(of(map[first]) + (of(map[first + 1]) - of(map[first])) * (place - float(first))));
    };
    return makeColor(channel(16), channel(8), channel(0));
}

} // namespace mdScene
