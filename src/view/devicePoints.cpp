// Where the nodes and the element centres lie on the device, displacement included.
#include "view/mdScene.h"

#include "platform/Parallel.h"
#include "platform/Rounding.h"
#include "result/mdVelorinResultModel.h"
#include "view/valueScale.h"

namespace mdScene {

namespace {

float valueAt(const QList<float>& values, std::int32_t index) {
    return index < values.size() ? values.at(index) : 0;
}

/// `from` moved by `distance`, or `from` when that leads nowhere: a value that is no number moves nothing.
std::int32_t moved(std::int32_t from, double distance) {
    return std::isfinite(distance) ? Round(distance + from) : from;
}

/// Moves each point by its displacement times a device length per unit.
void moveByDisplacement(const ItemValues& dx, const ItemValues& dy, double kx, double ky,
                        std::vector<DevicePoint>& points) {
    parallelStretches(std::int32_t(points.size()), [&](std::int32_t first, std::int32_t last) {
        for (std::int32_t i = first; i < last; ++i) {
            DevicePoint& point = points[std::size_t(i)];
            point.X = moved(point.X, double(valueAt(dx.Values, i)) * kx);
            point.Y = moved(point.Y, double(valueAt(dy.Values, i)) * ky);
        }
    });
}

void computeNodePoints(const PlotConverter& converter, const PlotRect& window, const Scene& scene,
                       PaintContext& context) {
    const DisplacementSettings& settings = scene.Settings.Displacement;
    const MeshData& mesh = scene.Model.Mesh;
    const bool difference = scene.Settings.Difference.ApplyDisplacement;
    std::vector<DevicePoint>& points = scene.View.NodePoints;
    points.assign(std::size_t(std::max(mesh.NodeCount, 0)), DevicePoint{});
    if (settings.Fiducial < 0 || settings.Fiducial > 3)
        return;
    double kx = 0, ky = 0;
    converter.PaperLengthToDevice(settings.Scale * 0.1, settings.Scale * 0.1, kx, ky);
    ky *= signOf(window.Height());
    const float* x = mesh.Nodes.X.constData();
    const float* y = mesh.Nodes.Y.constData();
    if (settings.Fiducial == 3) {
        const ItemValues dx = mdVelorinResultModel::GetDisplacementX(scene.Model, difference);
        const ItemValues dy = mdVelorinResultModel::GetDisplacementY(scene.Model, difference);
        parallelStretches(mesh.NodeCount, [&](std::int32_t first, std::int32_t last) {
            for (std::int32_t i = first; i < last; ++i)
                points[std::size_t(i)] =
                    converter.WorldToDevice(x[i] + valueAt(dx.Values, i), y[i] + valueAt(dy.Values, i));
        });
        double unused = 0;
        converter.WorldLengthToDevice(1.0, 0, context.DisplacementScale, unused);
        return;
    }
    parallelStretches(mesh.NodeCount, [&](std::int32_t first, std::int32_t last) {
        for (std::int32_t i = first; i < last; ++i)
            points[std::size_t(i)] = converter.WorldToDevice(x[i], y[i]);
    });
    context.DisplacementScale = 0;
    if (settings.Fiducial == 0)
        return;
    const ItemValues dx = mdVelorinResultModel::GetDisplacementX(scene.Model, difference);
    const ItemValues dy = mdVelorinResultModel::GetDisplacementY(scene.Model, difference);
    if (settings.Fiducial == 2) {
        const float largest = scene.View.SlideShowRunning ? scene.View.SlideMaxDisplacement : largestMagnitude(dx, dy);
        kx = largest != 0 ? double(float(kx / double(largest))) : 0;
        ky = largest != 0 ? double(float(ky / double(largest))) : 0;
    }
    context.DisplacementScale = kx;
    moveByDisplacement(dx, dy, kx, ky, points);
}

void computeElementCentres(const MeshData& mesh, ViewState& view) {
    view.ElementCentres.assign(std::size_t(std::max(mesh.ElementCount, 0)), DevicePoint{});
    const std::int32_t* firstCorner = mesh.Elements.FirstCorner.constData();
    const std::int32_t* nodeIndex = mesh.Elements.NodeIndex.constData();
    parallelStretches(mesh.ElementCount, [&](std::int32_t first, std::int32_t last) {
        for (std::int32_t e = first; e < last; ++e) {
            const std::int32_t count = firstCorner[e + 1] - firstCorner[e];
            if (count < 1)
                continue;
            std::int64_t sumX = 0, sumY = 0;
            for (std::int32_t k = firstCorner[e]; k < firstCorner[e + 1]; ++k) {
                const std::size_t node = std::size_t(nodeIndex[k]);
                if (node >= view.NodePoints.size())
                    continue;
                sumX += view.NodePoints[node].X;
                sumY += view.NodePoints[node].Y;
            }
            view.ElementCentres[std::size_t(e)] = {Round(double(sumX) / count), Round(double(sumY) / count)};
        }
    });
}

} // namespace

void ComputeDevicePoints(const PlotConverter& converter, const PlotRect& window, const Scene& scene,
                         PaintContext& context) {
    computeNodePoints(converter, window, scene, context);
    computeElementCentres(scene.Model.Mesh, scene.View);
}

} // namespace mdScene
