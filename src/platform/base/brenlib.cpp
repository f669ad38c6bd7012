#include "platform/base/brenlib.h"

#include <algorithm>
#include <cmath>

namespace brenlib {
int GetDllVersion() {
    return 100;
}

bool NodeOnLine(const double x[2], const double y[2], double px, double py, double tolerance) {
    const double dx = x[1] - x[0], dy = y[1] - y[0];
    const double lengthSquared = dx * dx + dy * dy;
    double along = 0;
    if (lengthSquared > 0)
        along = std::clamp(((px - x[0]) * dx + (py - y[0]) * dy) / lengthSquared, 0.0, 1.0);
    return std::hypot(px - (x[0] + along * dx), py - (y[0] + along * dy)) <= tolerance;
}

void GetMaxMin(int count, const double* values, int& maxIndex, int& minIndex) {
    maxIndex = minIndex = 0;
    for (int i = 0; i < count; ++i) {
        if (std::isnan(values[i]))
            continue;
        if (maxIndex == 0 || values[i] > values[maxIndex - 1])
            maxIndex = i + 1;
        if (minIndex == 0 || values[i] < values[minIndex - 1])
            minIndex = i + 1;
    }
}
} // namespace brenlib
