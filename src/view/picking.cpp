#include "view/picking.h"

#include "platform/base/brenlib.h"
#include "result/mdVelorinResultModel.h"

namespace mdPicking {

namespace {

__extension__ using Wide = __int128;

/// One entry per node or element; bytes, as bits would cost more than they save in a single pass.
using Flags = std::vector<std::uint8_t>;

/// Edges all included; wide enough for any position and any tolerance.
struct Area {
    std::int64_t left, top, right, bottom;

    bool Holds(DevicePoint point) const {
        return point.X >= left && point.X <= right && point.Y >= top && point.Y <= bottom;
    }
};

/// Type of the elements that can be picked, negative for nodes; nothing when nothing can.
std::optional<std::int32_t> pickedType(const ResultModel& model) {
    if (model.CurrentItem < 0 || model.CurrentItem >= model.Items.size())
        return {};
    return model.Items.at(model.CurrentItem).ElementType;
}

/// What every pick begins with: the current item's element type, none when there is nothing to pick from.
std::optional<std::int32_t> beginPick(const ResultModel& model, clsMouse& selection, int mode) {
    if (mdVelorinResultModel::IsFileClosed(model))
        return {};
    if (mode == Mode::Replace)
        selection.Clear();
    return pickedType(model);
}

std::span<const std::int32_t> nodesOf(const MeshData& mesh, std::int32_t element) {
    const std::int32_t first = mesh.Elements.FirstCorner[element];
    return {mesh.Elements.NodeIndex.constData() + first, std::size_t(mesh.Elements.NodeCount(element))};
}

Flags flagsOf(const clsMouse& selection, std::int32_t count) {
    Flags flags(std::size_t(std::max(count, 0)), 0);
    for (std::int32_t i = 0; i < selection.Count(); ++i)
        if (std::size_t(selection.Item(i)) < flags.size())
            flags[std::size_t(selection.Item(i))] = 1;
    return flags;
}

void select(const Flags& flags, std::int32_t count, int objectType, clsMouse& selection) {
    for (std::int32_t i = 0; i < count; ++i)
        if (flags[std::size_t(i)] != 0)
            selection.Add(i, objectType);
}

std::int32_t nearestNode(const MeshData& mesh, std::span<const DevicePoint> points, DevicePoint at, double reach) {
    const std::uint8_t* active = mesh.Nodes.Active.constData();
    const auto count = std::int32_t(std::min(std::size_t(mesh.NodeCount), points.size()));
    std::int32_t nearest = -1;
    // Squares of all distances that can count are exact, so they tell nearer from equally near as the roots do.
    double best = reach * reach;
    for (std::int32_t i = 0; i < count; ++i) {
        const double dx = double(at.X) - points[std::size_t(i)].X;
        const double dy = double(at.Y) - points[std::size_t(i)].Y;
        const double square = dx * dx + dy * dy;
        if (square > best || active[i] == 0 || (square == best && nearest >= 0))
            continue;
        best = square;
        nearest = i;
    }
    return reach < 0 ? -1 : nearest;
}

/// For each position the sides of the area on which it lies beyond it, a bit each.
Flags sidesOf(std::span<const DevicePoint> points, const Area& area) {
    Flags sides(points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        const auto [x, y] = points[i];
        sides[i] = std::uint8_t((x < area.left) | (x > area.right) << 1 | (y < area.top) << 2 | (y > area.bottom) << 3);
    }
    return sides;
}

/// False when all corners lie beyond one side; nearly all elements are done with after this, and it reads bytes only.
bool mayTouch(std::span<const std::int32_t> nodes, const Flags& sides) {
    unsigned common = 0xf;
    for (const std::int32_t node : nodes)
        if (std::size_t(node) < sides.size())
            common &= sides[std::size_t(node)];
    return common == 0;
}

bool isOnLine(DevicePoint from, DevicePoint to, DevicePoint at, double reach) {
    const double x[] = {double(from.X), double(to.X)};
    const double y[] = {double(from.Y), double(to.Y)};
    return brenlib::NodeOnLine(x, y, at.X, at.Y, reach);
}

std::int32_t firstElementAt(const MeshData& mesh, std::span<const DevicePoint> points, std::int32_t type,
                            DevicePoint at, std::int64_t reach) {
    const std::int64_t around = std::max<std::int64_t>(reach, 0);
    const Flags sides = sidesOf(points, {at.X - around, at.Y - around, at.X + around, at.Y + around});
    const std::int32_t* types = mesh.Elements.ElementType.constData();
    std::vector<DevicePoint> corners;
    for (std::int32_t e = 0; e < mesh.ElementCount; ++e) {
        if (types[e] != type)
            continue;
        const std::span<const std::int32_t> nodes = nodesOf(mesh, e);
        if (!mayTouch(nodes, sides))
            continue;
        corners.clear();
        for (const std::int32_t node : nodes)
            if (std::size_t(node) < points.size())
                corners.push_back(points[std::size_t(node)]);
        if (nodes.size() == 2 ? corners.size() == 2 && isOnLine(corners[0], corners[1], at, double(reach))
                              : IsInPolygon(corners, at))
            return e;
    }
    return -1;
}

Flags nodesInside(const MeshData& mesh, std::span<const DevicePoint> points, const Area& area) {
    Flags inside(std::size_t(std::max(mesh.NodeCount, 0)), 0);
    const std::size_t count = std::min(inside.size(), points.size());
    for (std::size_t i = 0; i < count; ++i)
        inside[i] = area.Holds(points[i]);
    return inside;
}

/// Whether each element of `type` lies inside with all the corners that it has.
Flags elementsInside(const MeshData& mesh, const Flags& inside, std::int32_t type) {
    Flags all(std::size_t(std::max(mesh.ElementCount, 0)), 0);
    const std::int32_t* types = mesh.Elements.ElementType.constData();
    for (std::int32_t e = 0; e < mesh.ElementCount; ++e) {
        if (types[e] != type)
            continue;
        bool anyIn = false, anyOut = false;
        for (const std::int32_t node : nodesOf(mesh, e)) {
            if (std::size_t(node) >= inside.size())
                continue;
            anyIn |= inside[std::size_t(node)] != 0;
            anyOut |= inside[std::size_t(node)] == 0;
        }
        all[std::size_t(e)] = anyIn && !anyOut;
    }
    return all;
}

bool combined(int mode, bool current, bool inside) {
    if (mode == Mode::Toggle)
        return current != inside;
    return inside || (mode == Mode::Add && current);
}

} // namespace

bool IsInPolygon(std::span<const DevicePoint> polygon, DevicePoint point) {
    bool inside = false;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        DevicePoint from = polygon[i];
        DevicePoint to = polygon[i + 1 < polygon.size() ? i + 1 : 0];
        if (from.Y > to.Y)
            std::swap(from, to);
        if (point.Y < from.Y || point.Y >= to.Y)
            continue;
        // Each side turns all that is on it or right of it.
        const Wide down = Wide(point.Y) - from.Y, height = Wide(to.Y) - from.Y;
        inside ^= (Wide(point.X) - from.X) * height >= down * (Wide(to.X) - from.X);
    }
    return inside;
}

std::int32_t ObjectAt(const ResultModel& model, const ViewState& view, DevicePoint point, int tolerance) {
    const std::optional<std::int32_t> type = pickedType(model);
    if (!type || mdVelorinResultModel::IsFileClosed(model))
        return -1;
    const std::int64_t reach = std::int64_t(tolerance) * 2;
    return *type < 0 ? nearestNode(model.Mesh, view.NodePoints, point, double(reach))
                     : firstElementAt(model.Mesh, view.NodePoints, *type, point, reach);
}

void PickPoint(const ResultModel& model, const ViewState& view, clsMouse& selection, int mode, DevicePoint point,
               int tolerance) {
    const std::optional<std::int32_t> type = beginPick(model, selection, mode);
    if (!type)
        return;
    const MeshData& mesh = model.Mesh;
    Flags flags = flagsOf(selection, std::max(mesh.NodeCount, mesh.ElementCount));
    selection.Clear();
    const bool isNode = *type < 0;
    const std::int32_t hit = ObjectAt(model, view, point, tolerance);
    if (hit >= 0)
        flags[std::size_t(hit)] = mode != Mode::Toggle || flags[std::size_t(hit)] == 0;
    select(flags, isNode ? mesh.NodeCount : mesh.ElementCount, isNode ? PickedKind::Nodes : PickedKind::Elements,
           selection);
}

void PickRectangle(const ResultModel& model, const ViewState& view, clsMouse& selection, int mode,
                   std::span<const DevicePoint, 2> corners, int tolerance) {
    const std::optional<std::int32_t> type = beginPick(model, selection, mode);
    if (!type)
        return;
    const auto [left, right] = std::minmax(corners[0].X, corners[1].X);
    const auto [top, bottom] = std::minmax(corners[0].Y, corners[1].Y);
    const std::int64_t margin = tolerance;
    const MeshData& mesh = model.Mesh;
    const bool isNode = *type < 0;
    const std::int32_t count = isNode ? mesh.NodeCount : mesh.ElementCount;
    Flags flags = flagsOf(selection, count);
    selection.Clear();
    Flags inside = nodesInside(mesh, view.NodePoints, {left - margin, top - margin, right + margin, bottom + margin});
    if (!isNode)
        inside = elementsInside(mesh, inside, *type);
    for (std::int32_t i = 0; i < count; ++i) {
        const bool pickable = isNode ? mesh.Nodes.Active[i] != 0 : mesh.Elements.ElementType[i] == *type;
        const auto at = std::size_t(i);
        flags[at] = pickable && combined(mode, flags[at] != 0, inside[at] != 0);
    }
    select(flags, count, isNode ? PickedKind::Nodes : PickedKind::Elements, selection);
}

} // namespace mdPicking
