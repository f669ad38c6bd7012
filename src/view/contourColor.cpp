#include "view/contour.h"

#include "platform/Rounding.h"

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
Colour threePartRamp(float t) {
    const int v = Round(double(t * 767));
    if (v < channelSize)
        return makeColour(v, 0, 0);
    if (v < 2 * channelSize)
        return makeColour(channelTop, v - channelSize, 0);
    return makeColour(channelTop, channelTop, v - 2 * channelSize);
}

/// Two straight pieces through the three colours, the middle one exactly at 0.5.
Colour userRamp(float t, const std::array<Colour, 3>& colours) {
    const std::size_t piece = t >= 0.5f ? 1 : 0;
    const float part = piece == 1 ? (t - 0.5f) * 2 : t * 2;
    const auto channel = [&](int (*of)(Colour)) {
        const float from = float(of(colours[piece]));
        return Round(double((float(of(colours[piece + 1])) - from) * part + from));
    };
    return makeColour(channel(redOf), channel(greenOf), channel(blueOf));
}

} // namespace

Colour ContourColor(float t, const ContourSettings& settings) {
    if (!settings.Reverse)
        t = 1 - t;
    const RampStep step = twoPartRamp(t);
    switch (settings.ColorIndex) {
    case 1:
        return makeColour(step.first, step.others, step.others);
    case 2:
        return makeColour(step.others, step.first, step.others);
    case 3:
        return makeColour(step.others, step.others, step.first);
    case 4:
        return threePartRamp(t);
    case 5:
        return userRamp(t, settings.Colors);
    default: {
        const int grey = Round(double(t * channelTop));
        return makeColour(grey, grey, grey);
    }
    }
}

} // namespace mdScene
