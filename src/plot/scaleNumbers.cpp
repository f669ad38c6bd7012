#include "plot/scaleNumbers.h"

#include "app/NumberFormat.h"

#include <cmath>
#include <limits>

namespace {
/// More ticks than any picture has room for.
constexpr int mostTicks = 32767;
} // namespace

std::vector<float> TickValues(const PlotScale& scale, float step) {
    const int count = Round(double(scale.WorkRange()) / step);
    if (count == 0 || count > mostTicks || count < -mostTicks)
        return {};
    std::vector<float> values;
    values.reserve(std::size_t(std::abs(count)) + 1);
    float value = scale.WorkMin;
    for (int i = 0; i != count + (count > 0 ? 1 : -1); i += count > 0 ? 1 : -1) {
        mdTips::Narrow(scale.WorkMin + double(step) * i, value);
        values.push_back(value);
    }
    return values;
}

QString FormatScaleValue(float value, float range, const QString& mask) {
    // The bounds are singles as well, so that 0.01 itself is not below 0.01.
    const float size = std::abs(value);
    if (!(float(std::abs(double(range)) * 1e-7) < size))
        value = 0;
    if (!mask.isEmpty())
        return NumberFormat::Format(value, mask);
    if (value == 0)
        return u"0.0"_s;
    if (size > 1000)
        return NumberFormat::Format(value, u"0.0E-0");
    if (size < 0.01f)
        return NumberFormat::Format(value, u"0.0##E-0");
    return NumberFormat::Format(value, u"0.0##");
}
