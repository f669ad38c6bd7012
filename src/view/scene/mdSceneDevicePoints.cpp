// Where the nodes and the element centres lie on the device, displacement included.
#include "view/scene/mdScene.h"

#include "platform/base/Parallel.h"
#include "platform/base/Rounding.h"
#include "view/scene/displacement.h"
#include "view/scene/valueScale.h"

#include <limits>

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

/// What is asked of the corners of an element, in reals, which hold it exactly and are quicker.
struct Corners {
    static constexpr double far = std::numeric_limits<double>::infinity();
    double SumX = 0, SumY = 0;
    double Left = far, Top = far, Right = -far, Bottom = -far;

    void Take(DevicePoint point) {
        const double x = point.X, y = point.Y;
        SumX += x;
        SumY += y;
        Left = std::min(Left, x);
        Top = std::min(Top, y);
        Right = std::max(Right, x);
        Bottom = std::max(Bottom, y);
    }
    /// The mean of `count` positions; most elements have four, and their division needs none.
    DevicePoint Centre(std::int32_t count) const {
        if (count == 4)
            return {Round(SumX * 0.25), Round(SumY * 0.25)};
        return count < 1 ? DevicePoint{} : DevicePoint{Round(SumX / count), Round(SumY / count)};
    }
    /// Whether they don't all lie beyond the same side of the area.
    bool MayBeSeen(const DeviceRect& area) const {
        return (Right >= area.Left) & (Left < area.Right) & (Bottom >= area.Top) & (Top < area.Bottom);
    }
};

/// The centres of the elements, and on the way those that may be seen.
void computeElementCentres(const MeshData& mesh, ViewState& view, VisibleElements& visible) {
    view.ElementCentres.resize(std::size_t(std::max(mesh.ElementCount, 0)));
    const std::int32_t* firstCorner = mesh.Elements.FirstCorner.constData();
    const std::int32_t* nodeIndex = mesh.Elements.NodeIndex.constData();
    const std::span<const DevicePoint> points = view.NodePoints;
    DevicePoint* const centres = view.ElementCentres.data();
    const bool isAsked = visible.Area.has_value();
    const DeviceRect area = visible.Area.value_or(DeviceRect());
    if (isAsked)
        visible.Begin(stretchCount(mesh.ElementCount));
    parallelStretches(mesh.ElementCount, [=, &visible](std::int32_t first, std::int32_t last) {
        // Written without asking and kept by counting on: what is seen and what not changes too often for a guess.
        std::vector<std::int32_t> seen(std::size_t(last - first));
        std::int32_t* end = seen.data();
        for (std::int32_t e = first; e < last; ++e) {
            Corners corners;
            for (std::int32_t k = firstCorner[e]; k < firstCorner[e + 1]; ++k)
                if (const auto node = std::size_t(nodeIndex[k]); node < points.size()) [[likely]]
                    corners.Take(points[node]);
            centres[e] = corners.Centre(firstCorner[e + 1] - firstCorner[e]);
            *end = e;
            end += corners.MayBeSeen(area) ? 1 : 0;
        }
        if (isAsked)
            visible.Of(first / indexesPerStretch).assign(seen.data(), end);
    });
}

} // namespace

void ComputeDevicePoints(const PlotConverter& converter, const PlotRect& window, const Scene& scene,
                         PaintContext& context) {
    computeNodePoints(converter, window, scene, context);
    computeElementCentres(scene.Model.Mesh, scene.View, context.Visible);
}

} // namespace mdScene
