// Published colour maps that the user's scheme can take in place of its three colours. Data and the way between two
// entries; which way round a map runs is not decided here.
#pragma once

#include "platform/base/Geometry.h"

namespace mdScene {

/// Colour of a map, one of `ColorPreset`, at `t` from 0 to 1.
ColorRef PresetColor(int preset, float t);

} // namespace mdScene
