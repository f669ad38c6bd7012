// Where the nodes and the element centres lie on the device, displacement included.
#include "view/scene/mdScene.h"

#include "platform/base/Parallel.h"
#include "platform/base/Rounding.h"
#include "view/scene/displacement.h"
#include "view/scene/valueScale.h"

namespace mdScene {

namespace {

/// `from` moved by `distance`, or `from` when that leads nowhere: a value that is no number moves nothing.
std::int32_t moved(std::int32_t from, double distance) {
    return std::isfinite(distance) ? Round(distance + from) : from;
}

/// Writes `pointOf(i)` for every node.
template<class PointOf>
void computeEach(std::vector<DevicePoint>& points, PointOf pointOf) {
    parallelStretches(std::int32_t(points.size()),
                      [target = points.data(), pointOf](std::int32_t first, std::int32_t last) {
                          for (std::int32_t i = first; i < last; ++i)
                              target[i] = pointOf(i);
                      });
}

void computeNodePoints(const PlotConverter& converter, const PlotRect& window, const Scene& scene,
                       PaintContext& context) {
    const DisplacementSettings& settings = scene.Settings.Displacement;
    const MeshData& mesh = scene.Model.Mesh;
    std::vector<DevicePoint>& points = scene.View.NodePoints;
    points.resize(std::size_t(std::max(mesh.NodeCount, 0)));
    const float* x = mesh.Nodes.X.constData();
    const float* y = mesh.Nodes.Y.constData();
    if (settings.Fiducial < 0 || settings.Fiducial > 3) {
        std::fill(points.begin(), points.end(), DevicePoint{});
        return;
    }
    if (settings.Fiducial == 0) {
        context.DisplacementScale = 0;
        computeEach(points, [=](std::int32_t i) { return converter.WorldToDevice(x[i], y[i]); });
        return;
    }
    const NodeDisplacement displacement(scene);
    const float* dx = displacement.X();
    const float* dy = displacement.Y();
    if (settings.Fiducial == 3) {
        double unused = 0;
        converter.WorldLengthToDevice(1.0, 0, context.DisplacementScale, unused);
        computeEach(points, [=](std::int32_t i) { return converter.WorldToDevice(x[i] + dx[i], y[i] + dy[i]); });
        return;
    }
    double kx = 0, ky = 0;
    converter.PaperLengthToDevice(settings.Scale * 0.1, settings.Scale * 0.1, kx, ky);
    kx = displacement.PerUnit(kx);
    ky = displacement.PerUnit(ky * signOf(window.Height()));
    context.DisplacementScale = kx;
    computeEach(points, [=](std::int32_t i) {
        const DevicePoint point = converter.WorldToDevice(x[i], y[i]);
        return DevicePoint{moved(point.X, double(dx[i]) * kx), moved(point.Y, double(dy[i]) * ky)};
    });
}

void computeElementCentres(const MeshData& mesh, ViewState& view) {
    view.ElementCentres.resize(std::size_t(std::max(mesh.ElementCount, 0)));
    const std::int32_t* firstCorner = mesh.Elements.FirstCorner.constData();
    const std::int32_t* nodeIndex = mesh.Elements.NodeIndex.constData();
    const std::span<const DevicePoint> points = view.NodePoints;
    DevicePoint* const centres = view.ElementCentres.data();
    parallelStretches(mesh.ElementCount, [=](std::int32_t first, std::int32_t last) {
        for (std::int32_t e = first; e < last; ++e) {
            const std::int32_t count = firstCorner[e + 1] - firstCorner[e];
            std::int64_t sumX = 0, sumY = 0;
            for (std::int32_t k = firstCorner[e]; k < firstCorner[e + 1]; ++k) {
                const std::size_t node = std::size_t(nodeIndex[k]);
                if (node >= points.size())
                    continue;
                sumX += points[node].X;
                sumY += points[node].Y;
            }
            centres[e] =
                count < 1 ? DevicePoint{} : DevicePoint{Round(double(sumX) / count), Round(double(sumY) / count)};
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
