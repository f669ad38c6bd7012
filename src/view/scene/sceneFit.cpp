#include "view/scene/sceneFit.h"

#include "platform/base/Parallel.h"
#include "view/scene/displacement.h"

#include <cmath>
#include <mutex>

namespace mdScene {

namespace {

/// Where a node lies in one direction at a scale: `World` times the scale, and `Device` units beside it.
struct Place {
    double World = 0, Device = 0;

    double At(double scale) const { return World * scale + Device; }
};

/// The outermost places of the mesh in one direction at a scale.
struct Extent {
    Place Low, High;

    /// Their distance, as a place is told.
    Place Length() const { return {High.World - Low.World, High.Device - Low.Device}; }
    void Take(const Place& place, double scale) {
        if (place.At(scale) < Low.At(scale))
            Low = place;
        if (place.At(scale) > High.At(scale))
            High = place;
    }
};

struct DisplacedMesh {
    const float *X, *Y, *DX, *DY;
    std::int32_t NodeCount;
    bool InWorld;   ///< the displacement belongs to the coordinates, not to the device
    double PerUnit; ///< device units per unit of displacement otherwise

    Place At(float coordinate, float displacement) const {
        const double moved = InWorld ? double(coordinate) + displacement : coordinate;
        const double beside = InWorld ? 0 : displacement * PerUnit;
        // A value that is no number moves nothing.
        return std::isfinite(moved) && std::isfinite(beside) ? Place{moved, beside} : Place{coordinate, 0};
    }

    std::array<Extent, 2> ExtentAt(double scale) const {
        const Place x = At(X[0], DX[0]), y = At(Y[0], DY[0]);
        std::array<Extent, 2> all{Extent{x, x}, Extent{y, y}};
        std::mutex guard;
        parallelStretches(NodeCount, [&](std::int32_t first, std::int32_t last) {
            std::array<Extent, 2> part{Extent{x, x}, Extent{y, y}};
            for (std::int32_t i = first; i < last; ++i) {
                part[0].Take(At(X[i], DX[i]), scale);
                part[1].Take(At(Y[i], DY[i]), scale);
            }
            const std::lock_guard lock(guard);
            for (std::size_t side = 0; side < 2; ++side)
                for (const Place& place : {part[side].Low, part[side].High})
                    all[side].Take(place, scale);
        });
        return all;
    }
};

constexpr double marginPart = 0.1;

/// The largest scale at which both lengths, each with two margins, have room; 0 when there is none.
double roomyScale(const Place& across, const Place& down, double scale, DeviceSize size) {
    const Place& shorter = across.At(scale) < down.At(scale) ? across : down;
    double found = 0;
    for (const auto& [length, room] : {std::pair(across, size.Width), std::pair(down, size.Height)}) {
        const double world = length.World + 2 * marginPart * shorter.World;
        const double left = room - length.Device - 2 * marginPart * shorter.Device;
        if (world > 0 && (found == 0 || left / world < found))
            found = left / world;
    }
    return std::max(found, 0.0);
}

} // namespace

std::optional<PlotRect> DisplacedBounds(const Scene& scene, DeviceSize size, int dotsPerInch) {
    const DisplacementSettings& settings = scene.Settings.Displacement;
    const MeshData& nodes = scene.Model.Mesh;
    if (settings.Fiducial < 1 || settings.Fiducial > 3 || scene.Model.NoDisplacement || nodes.NodeCount < 2)
        return {};
    constexpr double mmPerInch = 25.4;
    const NodeDisplacement displacement(scene);
    const double perUnit = displacement.PerUnit(settings.Scale * 0.1 * dotsPerInch / mmPerInch);
    const DisplacedMesh mesh{nodes.Nodes.X.constData(), nodes.Nodes.Y.constData(), displacement.X(), displacement.Y(),
                             nodes.NodeCount,           settings.Fiducial == 3,    perUnit};
    // The outermost nodes change with the scale, and the scale with them; each round takes the scale at which the
    // nodes of the one before would just fit. At first it is so large that the mesh alone counts.
    double scale = 1e30;
    std::array<Extent, 2> extent;
    constexpr int mostRounds = 50;
    for (int round = 0; round < mostRounds; ++round) {
        extent = mesh.ExtentAt(scale);
        const double next = roomyScale(extent[0].Length(), extent[1].Length(), scale, size);
        if (next <= 0 || !std::isfinite(next))
            return {};
        const bool settled = std::abs(next - scale) <= 1e-6 * scale;
        scale = next;
        if (settled)
            break;
    }
    const auto at = [scale](const Place& place) { return place.At(scale) / scale; };
    const auto& [across, down] = extent;
    const double margin = marginPart * std::min(at(across.High) - at(across.Low), at(down.High) - at(down.Low));
    PlotRect bounds;
    bounds.SetRect(float(at(across.Low) - margin), float(at(down.High) + margin), float(at(across.High) + margin),
                   float(at(down.Low) - margin));
    return bounds;
}

} // namespace mdScene
