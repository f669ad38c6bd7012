#include "result/readers/planeMesh.h"

#include "platform/base/Lists.h"
#include "platform/base/Parallel.h"

#include <limits>
#include <numeric>

namespace {

struct Extent {
    double Low = std::numeric_limits<double>::infinity();
    double High = -Low;
    void Take(double value) {
        Low = value < Low ? value : Low; // never true for what is no number
        High = value > High ? value : High;
    }
    double Length() const { return High > Low ? High - Low : 0; }
    double Farthest() const { return High < Low ? 0 : std::abs(Low) > std::abs(High) ? Low : High; }
};

using Counts = std::array<std::int32_t, CellShape::Volume + 1>;

Counts countKinds(const CellTable& cells) {
    Counts counts{};
    for (const CellShape& shape : cells.Shapes)
        ++counts[shape.Is];
    return counts;
}

bool hasAllNodes(const std::vector<double>& points, const CellTable& cells) {
    // Those below 0 are the highest.
    std::uint32_t highest = 0;
    for (const std::int32_t node : cells.Nodes)
        highest = std::max(highest, std::uint32_t(node));
    return cells.Nodes.empty() || highest < points.size() / 3;
}

/// Whether all points, used or not, have one Z.
bool lieInXY(const std::vector<double>& points) {
    for (std::size_t z = 2; z < points.size(); z += 3)
        if (points[z] != points[2])
            return false;
    return true;
}

/// The plane of the smallest extent of what is no mere point, beside faces no mere line; nothing when that isn't flat.
std::optional<PlaneAxes> planeOf(const std::vector<double>& points, const CellTable& cells, const Counts& counts,
                                 QString& problem) {
    if (lieInXY(points))
        return PlaneAxes{};
    const auto least = counts[CellShape::Face] + counts[CellShape::Volume] > 0 ? CellShape::Face : CellShape::Line;
    // Each point once, however many cells meet there.
    std::vector<std::uint8_t> isUsed(points.size() / 3);
    for (std::int32_t cell = 0; cell < cells.Count(); ++cell)
        if (cells.Shapes[std::size_t(cell)].Is >= least)
            for (const std::int32_t node : cells.NodesOf(cell))
                isUsed[std::size_t(node)] = 1;
    std::array<Extent, 3> extents;
    for (std::size_t point = 0; point < isUsed.size(); ++point)
        for (std::size_t axis = 0; isUsed[point] && axis < 3; ++axis)
            extents[axis].Take(points[point * 3 + axis]);
    int out = 2;
    double longest = 0;
    for (int axis = 2; axis >= 0; --axis) {
        const double length = extents[std::size_t(axis)].Length();
        out = length < extents[std::size_t(out)].Length() ? axis : out;
        longest = std::max(longest, length);
    }
    // Coordinates may be written with seven digits.
    const Extent& outside = extents[std::size_t(out)];
    if (outside.Length() > 1e-6 * longest + 2e-7 * std::abs(outside.Farthest())) {
        problem = u"平面のモデルではありません。(面外の座標の最大 %1 = %2)"_s.arg(QChar(u"XYZ"[out]))
                      .arg(outside.Farthest(), 0, 'g', 7);
        return {};
    }
    return PlaneAxes{out == 0 ? 1 : 0, out == 2 ? 1 : 2, out};
}

QStringList leftOutKinds(const Counts& counts) {
    constexpr std::pair<CellShape::Kind, const char16_t*> kinds[] = {{CellShape::Point, u"点要素 %1"},
                                                                     {CellShape::Line, u"線要素 %1"},
                                                                     {CellShape::Volume, u"立体要素 %1"},
                                                                     {CellShape::Unknown, u"不明な型の要素 %1"}};
    QStringList parts;
    for (const auto& [kind, words] : kinds)
        if (counts[kind] > 0 && (kind != CellShape::Line || counts[CellShape::Face] > 0))
            parts.append(QStringView(words).toString().arg(counts[kind]));
    return parts;
}

/// The elements, and for each the cell that it is or is a part of.
class ElementList {
public:
    ElementList(const CellTable& allCells, CellShape::Kind wantedKind, ResultContent& content)
        : cells(allCells), kind(wantedKind) {
        if (takeAll(content))
            return;
        // Each cell is counted before room is made for it.
        visit([this](std::int32_t, std::span<const std::int32_t> nodes) {
            ++elements;
            corners += qint64(nodes.size());
        });
        if (corners > std::numeric_limits<std::int32_t>::max())
            return;
        content.FirstCorner = listOf<std::int32_t>(elements + 1);
        content.NodeIndex = listOf<std::int32_t>(corners);
        cellOf.reserve(std::size_t(elements));
        std::int32_t* first = content.FirstCorner.data();
        std::int32_t* node = content.NodeIndex.data();
        std::int32_t used = 0;
        visit([&](std::int32_t cell, std::span<const std::int32_t> nodes) {
            for (const std::int32_t index : nodes)
                node[used++] = index;
            *++first = used;
            cellOf.push_back(cell);
        });
    }
    bool Fits() const { return !cellOf.empty(); }
    std::vector<std::int32_t> TakeCells() { return std::move(cellOf); }

private:
    /// Where all cells are elements as they stand. False when they aren't.
    bool takeAll(ResultContent& content) {
        for (std::int32_t cell = 0; cell < cells.Count(); ++cell) {
            const CellShape shape = cells.Shapes[std::size_t(cell)];
            if (shape.Is != CellShape::Face || shape.PerEdge > 0 || shape.Corners != cells.NodesOf(cell).size())
                return false;
        }
        content.FirstCorner = listOf(std::span<const std::int32_t>(cells.FirstNode));
        content.NodeIndex = listOf(std::span<const std::int32_t>(cells.Nodes));
        cellOf.resize(cells.Shapes.size());
        std::iota(cellOf.begin(), cellOf.end(), 0);
        return true;
    }
    template<class Take>
    void visit(const Take& take) {
        for (std::int32_t cell = 0; cell < cells.Count(); ++cell) {
            const CellShape shape = cells.Shapes[std::size_t(cell)];
            if (shape.Is != kind)
                continue;
            const auto nodes = cells.NodesOf(cell);
            const std::size_t ends = std::min<std::size_t>(shape.Corners, nodes.size());
            if (kind == CellShape::Line)
                walkLine(nodes, ends, shape.PerEdge, [&](auto piece) { take(cell, piece); });
            else if (shape.PerEdge == 0)
                take(cell, nodes.first(ends));
            else
                take(cell, around(nodes, ends, shape.PerEdge));
        }
    }
    /// Corners and edge nodes in their order around the cell.
    std::span<const std::int32_t> around(std::span<const std::int32_t> nodes, std::size_t ends, std::size_t perEdge) {
        ring.clear();
        for (std::size_t k = 0; k < ends; ++k) {
            ring.push_back(nodes[k]);
            for (std::size_t j = ends + k * perEdge; j < std::min(ends + (k + 1) * perEdge, nodes.size()); ++j)
                ring.push_back(nodes[j]);
        }
        return ring;
    }
    /// A line of several pieces, by its ends or with nodes between them, is an element for each.
    template<class Take>
    void walkLine(std::span<const std::int32_t> nodes, std::size_t ends, std::size_t perEdge, const Take& take) {
        ring.assign(nodes.begin(), nodes.begin() + qsizetype(ends));
        if (perEdge > 0 && ends == 2)
            ring.insert(ring.begin() + 1, nodes.begin() + 2,
                        nodes.begin() + qsizetype(std::min(2 + perEdge, nodes.size())));
        for (std::size_t k = 0; k + 1 < ring.size(); ++k)
            take(std::span<const std::int32_t>(ring).subspan(k, 2));
    }

    const CellTable& cells;
    const CellShape::Kind kind;
    qint64 elements = 0, corners = 0;
    std::vector<std::int32_t> ring, cellOf;
};

void projectPoints(const std::vector<double>& points, const PlaneAxes& plane, ResultContent& content) {
    const auto count = std::int32_t(points.size() / 3);
    content.NodeX = listOf<float>(count);
    content.NodeY = listOf<float>(count);
    float* x = content.NodeX.data();
    float* y = content.NodeY.data();
    parallelStretches(count, [&](std::int32_t first, std::int32_t last) {
        const double* point = points.data() + std::size_t(first) * 3;
        for (std::int32_t i = first; i < last; ++i, point += 3) {
            x[i] = float(point[plane.Across]);
            y[i] = float(point[plane.Up]);
        }
    });
}

} // namespace

PlaneMesh BuildPlaneMesh(std::vector<double>&& points, CellTable&& cells, ResultContent& content) {
    PlaneMesh mesh;
    if (!hasAllNodes(points, cells)) {
        mesh.Problem = u"要素の節点番号に対応する節点がありません。"_s;
        return mesh;
    }
    const Counts counts = countKinds(cells);
    const std::optional<PlaneAxes> plane = planeOf(points, cells, counts, mesh.Problem);
    if (!plane)
        return mesh;
    const CellShape::Kind kind = counts[CellShape::Face] > 0 ? CellShape::Face : CellShape::Line;
    ElementList elements(cells, kind, content);
    if (!elements.Fits()) {
        mesh.Problem = u"平面の要素がありません。"_s;
        return mesh;
    }
    cells = {};
    projectPoints(points, *plane, content);
    points = {};
    mesh.Axes = *plane;
    mesh.CellOfElement = elements.TakeCells();
    mesh.LeftOut = leftOutKinds(counts);
    return mesh;
}
