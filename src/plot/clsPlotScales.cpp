// Limits and steps of the two scales, found from the data.
#include "plot/clsPlot.h"

#include "platform/base/brenlib.h"
#include "plot/scaleNumbers.h"

#include <algorithm>
#include <cmath>

namespace {

/// The largest and the smallest of the finite values; nothing when there are none.
bool extremesOf(const std::vector<double>& values, double& largest, double& smallest) {
    int maxIndex = 0, minIndex = 0;
    brenlib::GetMaxMin(int(values.size()), values.data(), maxIndex, minIndex);
    if (maxIndex == 0)
        return false;
    largest = values[std::size_t(maxIndex - 1)];
    smallest = values[std::size_t(minIndex - 1)];
    if (std::isfinite(largest) && std::isfinite(smallest))
        return true;
    std::vector<double> finite;
    std::ranges::copy_if(values, std::back_inserter(finite), [](double value) { return std::isfinite(value); });
    return extremesOf(finite, largest, smallest);
}

/// The major step over the power of ten that it starts from, by how many of those the range holds.
double stepFactor(double count) {
    if (count <= 2)
        return 0.5;
    if (count <= 5)
        return 1;
    return count <= 10 ? 2 : 5;
}

/// Moves a limit to `wholeSteps` steps, or one further out when that leaves more than the tolerance outside.
/// `outwards` is 1 for the upper limit, -1 for the lower one.
void snap(float& limit, double wholeSteps, float step, int outwards, float tolerance) {
    float multiple = limit;
    mdTips::Narrow(wholeSteps * step, multiple);
    const float outside = limit - multiple;
    const double oneMore = tolerance < float(outwards) * outside ? double(outwards) * step : 0;
    mdTips::Narrow(multiple + oneMore, limit);
}

bool hasDistinctTicks(PlotScale scale) {
    scale.WorkMax = scale.ScaleMax;
    scale.WorkMin = scale.ScaleMin;
    const std::vector<float> ticks = TickValues(scale, scale.ScaleMScale);
    return ticks.size() > 1 && std::ranges::adjacent_find(ticks, std::greater_equal()) == ticks.end();
}

} // namespace

void clsPlot::GetMemoriScale(float& max, float& min, float& major, float& minor) {
    constexpr double commonLogOfE = 0.434294481903252;
    const float range = max - min;
    if (!std::isfinite(range))
        return;
    // Limits the wrong way round have no logarithm, and the exponent is then 0.
    int exponent = range == 0 ? -1 : 0;
    if (range > 0)
        exponent = int(std::floor(std::log(double(range)) * commonLogOfE)) - 1;
    mdTips::Narrow(std::pow(10.0, exponent), major);
    if (range / double(major) > 15)
        mdTips::Narrow(major * 10.0, major);
    if (const double count = std::floor(range / double(major)); count >= 0) {
        mdTips::Narrow(major * stepFactor(count), major);
        mdTips::Narrow(major * 0.2, minor);
    }
    const float tolerance = float(std::pow(10.0, exponent - 5));
    snap(max, std::floor(max / double(major)), major, 1, tolerance);
    // Cut, where the upper one is rounded down: a positive limit thereby falls to the multiple below it.
    snap(min, std::trunc(min / double(major)), major, -1, tolerance);
}

void clsPlot::setAutomaticScale(int index) {
    std::vector<double> maxima, minima;
    for (const PlotSeries& series : seriesList) {
        double largest = 0, smallest = 0;
        if (extremesOf(index == ScaleBase ? series.BaseValues : series.PlotValues, largest, smallest)) {
            maxima.push_back(largest);
            minima.push_back(smallest);
        }
    }
    PlotScale& scale = scales[std::size_t(index)];
    const auto findSteps = [&scale] {
        GetMemoriScale(scale.ScaleMax, scale.ScaleMin, scale.ScaleMScale, scale.ScaleHScale);
    };
    double largest = 0, smallest = 0, unused = 0;
    if (extremesOf(maxima, largest, unused) && extremesOf(minima, unused, smallest)) {
        scale.ScaleMax = float(largest);
        scale.ScaleMin = float(smallest);
    }
    if (scale.ScaleMax == scale.ScaleMin)
        scale.ScaleMax = float(scale.ScaleMin + 1.0);
    const float constant = scale.ScaleMin;
    const bool isLost = scale.ScaleMax == constant; // the single next to it lies further off than 1
    findSteps();
    for (double width = 2; isLost && std::isfinite(float(constant + width)) && !hasDistinctTicks(scale); width *= 2) {
        scale.ScaleMin = constant;
        scale.ScaleMax = float(constant + width);
        findSteps();
    }
}

void clsPlot::FindScales() {
    for (const int index : {ScaleBase, ScalePlot})
        if (scales[std::size_t(index)].ScaleAutomatic)
            setAutomaticScale(index);
}

void clsPlot::PrepareScales(DeviceContext& device) {
    FindScales();
    device.SaveDC();
    device.ClipRect({DrawLeft, DrawTop, Round(double(DrawLeft) + DrawWidth), Round(double(DrawTop) + DrawHeight)});
    paintBackground(device);
    device.RestoreDC();
}
