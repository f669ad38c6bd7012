#include "view/scene/displacement.h"

#include "result/mdVelorinResultModel.h"
#include "view/scene/valueScale.h"

NodeDisplacement::NodeDisplacement(const Scene& scene)
    : x(mdVelorinResultModel::GetDisplacementX(scene.Model, scene.Settings.Difference.ApplyDisplacement)),
      y(mdVelorinResultModel::GetDisplacementY(scene.Model, scene.Settings.Difference.ApplyDisplacement)),
      byLargest(scene.Settings.Displacement.Fiducial == 2) {
    for (ItemValues* values : {&x, &y})
        if (values->Values.size() < scene.Model.Mesh.NodeCount)
            values->Values.resize(scene.Model.Mesh.NodeCount);
    if (byLargest)
        largest = scene.SlideShow.SlideShowRunning ? scene.SlideShow.SlideMaxDisplacement : largestMagnitude(x, y);
}

double NodeDisplacement::PerUnit(double length) const {
    if (!byLargest)
        return length;
    return largest != 0 ? double(float(length / double(largest))) : 0;
}
