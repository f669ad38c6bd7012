#include "view/scene/contour.h"

#include "platform/base/Rounding.h"
#include "view/scene/colorPresets.h"

#include <cmath>

namespace mdScene {

namespace {

constexpr int channelTop = 255;
constexpr int channelSize = 256;

/// A ramp that fills one channel first and then the two others together: black over a colour to white.
struct RampStep {
    int first, others;
};

RampStep twoPartRamp(float t) {
    const int v = Round(double(t * 511));
    return v < channelSize ? RampStep{v, 0} : RampStep{channelTop, v - channelSize};
}

/// Black over red and yellow to white.
ColorRef threePartRamp(float t) {
    const int v = Round(double(t * 767));
    if (v < channelSize)
        return makeColor(v, 0, 0);
    if (v < 2 * channelSize)
        return makeColor(channelTop, v - channelSize, 0);
    return makeColor(channelTop, channelTop, v - 2 * channelSize);
}

/// Two straight pieces through the three colours, the middle one exactly at 0.5.
ColorRef userRamp(float t, const std::array<ColorRef, 3>& colors) {
    const std::size_t piece = t >= 0.5f ? 1 : 0;
    const float part = piece == 1 ? (t - 0.5f) * 2 : t * 2;
    const auto channel = [&](int (*of)(ColorRef)) {
        const float from = float(of(colors[piece]));
        return Round(double((float(of(colors[piece + 1])) - from) * part + from));
    };
    return makeColor(channel(redOf), channel(greenOf), channel(blueOf));
}

ColorRef presetRamp(float t, const ContourSettings& settings, ContourEnds ends) {
    if (settings.Preset == ColorPreset::Diverging) {
        const double value = ends.Lower + double(t) * (double(ends.Upper) - ends.Lower);
        t = float(0.5 + 0.5 * value / std::max<double>(std::abs(ends.Lower), std::abs(ends.Upper)));
    }
    return PresetColor(settings.Preset, settings.Reverse ? 1 - t : t);
}

} // namespace

ColorRef ContourColor(float t, const ContourSettings& settings, ContourEnds ends) {
    constexpr int userScheme = 5;
    if (settings.ColorIndex == userScheme && settings.Preset != ColorPreset::None)
        return presetRamp(t, settings, ends);
    if (!settings.Reverse)
        t = 1 - t;
    const RampStep step = twoPartRamp(t);
    switch (settings.ColorIndex) {
    case 1:
        return makeColor(step.first, step.others, step.others);
    case 2:
        return makeColor(step.others, step.first, step.others);
    case 3:
        return makeColor(step.others, step.others, step.first);
    case 4:
        return threePartRamp(t);
    case userScheme:
        return userRamp(t, settings.Colors);
    default: {
        const int grey = Round(double(t * channelTop));
        return makeColor(grey, grey, grey);
    }
    }
}

} // namespace mdScene
