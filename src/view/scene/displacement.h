// The displacement of the nodes as the settings say that a picture shows it. Knows no device. Not for other floors.
#pragma once

#include "view/scene/mdScene.h"

class NodeDisplacement {
public:
    explicit NodeDisplacement(const Scene& scene);

    /// One per node, also where the items have fewer: nodes beyond these stay.
    const float* X() const { return x.Values.constData(); }
    const float* Y() const { return y.Values.constData(); }
    /// Device units per unit of displacement in the two scales that are measured on paper, where `length` is that of
    /// the settings on the device.
    double PerUnit(double length) const;

private:
    ItemValues x, y;
    bool byLargest; ///< the length stands for the largest displacement, not for one of 1
    float largest = 0;
};
