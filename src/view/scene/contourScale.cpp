// Whose range a contour has.
#include "view/scene/contour.h"

#include "platform/base/Parallel.h"
#include "result/ValueBounds.h"
#include "result/mdVelorinResultModel.h"
#include "view/scene/CommonSides.h"

namespace mdScene {

namespace {

/// The bounds over the corners of all area elements of which something may lie in `picture`; the start of the search,
/// and thus no contour, when there is none.
ValueBounds visibleBounds(const Scene& scene, const ItemValues& values, const DeviceRect& picture) {
    const MeshData& mesh = scene.Model.Mesh;
    const std::vector<DevicePoint>& points = scene.View.NodePoints;
    const auto known = std::int32_t(std::min<qsizetype>(values.Values.size(), qsizetype(points.size())));
    const float* value = values.Values.constData();
    std::vector<ValueBounds> bounds(std::size_t(stretchCount(mesh.ElementCount)));
    parallelStretches(mesh.ElementCount, [&](std::int32_t first, std::int32_t last) {
        ValueBounds& ofStretch = bounds[std::size_t(first / indexesPerStretch)];
        for (std::int32_t e = first; e < last; ++e) {
            const ElementRecord element = mesh.Elements[e];
            if (element.ElementType < 0 || element.NodeCount < 3)
                continue;
            CommonSides sides(picture);
            ValueBounds own;
            for (const std::int32_t node : element.NodeIndex)
                if (node >= 0 && node < known) {
                    sides.Take(points[std::size_t(node)]);
                    own.Take(value[node]);
                }
            if (!sides.Any())
                ofStretch.Take(own);
        }
    });
    ValueBounds all;
    for (const ValueBounds& one : bounds)
        all.Take(one);
    return all;
}

} // namespace

ItemValues ContourValues(const Scene& scene) {
    const DifferenceSettings& difference = scene.Settings.Difference;
    return mdVelorinResultModel::GetNodeValues(difference.StandardStep >= 0 && difference.ApplyContour,
                                               scene.Model.Mesh);
}

ContourScale ContourScaleOf(const Scene& scene, const ItemValues& values, const DeviceRect& picture) {
    constexpr int automaticBandCount = 20;
    const ContourSettings& settings = scene.Settings.Contour;
    if (settings.Range == ContourRange::Visible) {
        const ValueBounds bounds = visibleBounds(scene, values, picture);
        return {{bounds.Min, bounds.Max}, settings.Divide};
    }
    if (settings.Range == ContourRange::AsStands && settings.Automatic)
        return {{values.MinValue, values.MaxValue}, automaticBandCount};
    return {{settings.MinValue, settings.MaxValue}, settings.Divide};
}

} // namespace mdScene
