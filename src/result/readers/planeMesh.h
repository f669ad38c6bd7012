// What points and cells in space become: the elements of a plane mesh, or a reason why they can't. Knows no values.
#pragma once

#include "result/readers/CellTable.h"
#include "result/readers/ResultContent.h"

/// The two axes that the mesh lies along, and the one that it doesn't.
struct PlaneAxes {
    int Across = 0, Up = 1, Out = 2;
};

struct PlaneMesh {
    PlaneAxes Axes;
    std::vector<std::int32_t> CellOfElement; ///< of which each element is all or a part
    QStringList LeftOut;                     ///< kinds of cells that are no elements, a few words each
    QString Problem;                         ///< why there is no mesh; then there is nothing else
};

/// Puts the mesh into `content`. `points` has x, y and z of each.
PlaneMesh BuildPlaneMesh(std::vector<double>&& points, CellTable&& cells, ResultContent& content);
