#include "result/readers/vtkCells.h"

#include <utility>

namespace {

/// The type's shape by its number; of any number of corners where there are 0.
constexpr CellShape shapes[] = {
    {},                         // 0 empty
    {CellShape::Point, 0, 1},   // 1 vertex
    {CellShape::Point, 0, 0},   // 2 poly-vertex
    {CellShape::Line, 0, 2},    // 3 line
    {CellShape::Line, 0, 0},    // 4 poly-line
    {CellShape::Face, 0, 3},    // 5 triangle
    {},                         // 6 triangle strip
    {CellShape::Face, 0, 0},    // 7 polygon
    {CellShape::Face, 0, 4},    // 8 pixel
    {CellShape::Face, 0, 4},    // 9 quad
    {CellShape::Volume, 0, 4},  // 10 tetra
    {CellShape::Volume, 0, 8},  // 11 voxel
    {CellShape::Volume, 0, 8},  // 12 hexahedron
    {CellShape::Volume, 0, 6},  // 13 wedge
    {CellShape::Volume, 0, 5},  // 14 pyramid
    {CellShape::Volume, 0, 10}, // 15 pentagonal prism
    {CellShape::Volume, 0, 12}, // 16 hexagonal prism
    {},
    {},
    {},
    {},
    {CellShape::Line, 1, 2},   // 21 quadratic edge
    {CellShape::Face, 1, 3},   // 22 quadratic triangle
    {CellShape::Face, 1, 4},   // 23 quadratic quad
    {CellShape::Volume, 0, 4}, // 24 quadratic tetra
    {CellShape::Volume, 0, 8}, // 25 quadratic hexahedron
    {CellShape::Volume, 0, 6}, // 26 quadratic wedge
    {CellShape::Volume, 0, 5}, // 27 quadratic pyramid
    {CellShape::Face, 1, 4},   // 28 biquadratic quad: and its centre
    {CellShape::Volume, 0, 8}, // 29 triquadratic hexahedron
    {},                        // 30 quadratic on two of its edges
    {CellShape::Volume, 0, 6}, // 31 likewise
    {CellShape::Volume, 0, 6}, // 32 biquadratic wedge
    {CellShape::Volume, 0, 8}, // 33 biquadratic hexahedron
    {CellShape::Face, 1, 3},   // 34 biquadratic triangle: and its centre
    {},                        // 35 cubic line
    {CellShape::Face, 1, 0},   // 36 quadratic polygon
};
constexpr std::int32_t pixel = 8, polyhedron = 42;

CellShape shapeOf(std::int32_t type, std::size_t nodes) {
    CellShape shape;
    if (type >= 0 && type < std::ssize(shapes))
        shape = shapes[std::size_t(type)];
    else if (type == polyhedron)
        shape.Is = CellShape::Volume;
    const std::size_t perCorner = 1U + shape.PerEdge;
    if (shape.Corners == 0)
        shape.Corners = std::uint16_t(std::min<std::size_t>(nodes / perCorner, 0xffff));
    const std::size_t edges = shape.Is == CellShape::Line ? shape.Corners - 1U : shape.Corners;
    const std::size_t least = shape.Is == CellShape::Face ? 3 : shape.Is == CellShape::Line ? 2 : 0;
    // One that lacks some of its nodes is none that could be drawn.
    if (shape.Corners < least || nodes < shape.Corners + edges * shape.PerEdge)
        shape.Is = CellShape::Unknown;
    return shape;
}

} // namespace

bool vtkCells::BuildCells(Lists&& lists, CellTable& cells) {
    if (lists.Types.size() != lists.Ends.size() || !std::ranges::is_sorted(lists.Ends) ||
        (!lists.Ends.empty() && (lists.Ends.front() < 0 || std::size_t(lists.Ends.back()) > lists.Nodes.size())))
        return false;
    cells.Nodes = std::move(lists.Nodes);
    cells.FirstNode = std::move(lists.Ends);
    cells.FirstNode.insert(cells.FirstNode.begin(), 0);
    cells.Shapes.resize(lists.Types.size());
    CellShape shape;
    std::int32_t shapeType = -1, shapeNodes = -1;
    for (std::size_t c = 0; c < lists.Types.size(); ++c) {
        const auto first = std::size_t(cells.FirstNode[c]);
        // Most are like the one before.
        const std::int32_t nodes = cells.FirstNode[c + 1] - cells.FirstNode[c];
        if (lists.Types[c] != shapeType || nodes != shapeNodes) {
            shapeType = lists.Types[c];
            shapeNodes = nodes;
            shape = shapeOf(shapeType, std::size_t(nodes));
        }
        cells.Shapes[c] = shape;
        if (shapeType == pixel && shape.Is == CellShape::Face)
            std::swap(cells.Nodes[first + 2], cells.Nodes[first + 3]);
    }
    return true;
}

QString vtkCells::NameOf(std::string_view text) {
    return QString::fromUtf8(QByteArray::fromPercentEncoding({text.data(), qsizetype(text.size())}));
}
