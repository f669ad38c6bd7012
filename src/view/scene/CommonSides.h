// Tells figures that cannot be seen: all of their points lie beyond the same side of the device's visible area.
#pragma once

#include "platform/base/Geometry.h"

class CommonSides {
public:
    explicit CommonSides(const DeviceRect& visibleArea) : area(visibleArea) {}

    void Take(DevicePoint point) {
        sides &= unsigned(point.X < area.Left) | unsigned(point.X >= area.Right) << 1 |
                 unsigned(point.Y < area.Top) << 2 | unsigned(point.Y >= area.Bottom) << 3;
    }
    /// Whether there is a side beyond which all points taken so far lie; true before the first.
    bool Any() const { return sides != 0; }

private:
    DeviceRect area;
    unsigned sides = 15;
};
