// The cells of a mesh in space as the files of other solvers have them, whatever their shapes. Knows no formats and no
// points.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

/// What a cell is, and how its nodes are listed: the corners in order around it, behind them the nodes on its edges,
/// edge by edge, and behind those what lies within, which is left out.
struct CellShape {
    enum Kind : std::uint8_t { Unknown, Point, Line, Face, Volume };
    Kind Is = Unknown;
    std::uint8_t PerEdge = 0;
    std::uint16_t Corners = 0;
};

struct CellTable {
    std::vector<CellShape> Shapes;
    std::vector<std::int32_t> FirstNode{0}; ///< of cell c up to before FirstNode[c + 1]
    std::vector<std::int32_t> Nodes;        ///< from 0

    std::int32_t Count() const { return std::int32_t(Shapes.size()); }
    std::span<const std::int32_t> NodesOf(std::int32_t cell) const {
        const auto first = std::size_t(FirstNode[std::size_t(cell)]);
        return std::span(Nodes).subspan(first, std::size_t(FirstNode[std::size_t(cell) + 1]) - first);
    }
    /// Room for so many cells with the usual number of nodes.
    void Reserve(std::int64_t cells) {
        constexpr std::int64_t usualNodes = 4;
        Shapes.reserve(std::size_t(cells));
        FirstNode.reserve(std::size_t(cells) + 1);
        Nodes.reserve(std::size_t(cells * usualNodes));
    }
    /// Ends the cell whose nodes were appended.
    void Add(const CellShape& shape) {
        Shapes.push_back(shape);
        FirstNode.push_back(std::int32_t(Nodes.size()));
    }
};
