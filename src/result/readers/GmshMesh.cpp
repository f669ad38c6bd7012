#include "result/readers/GmshMesh.h"

#include <limits>

namespace {

struct ElementType {
    CellShape Shape;
    std::uint8_t Nodes = 0; ///< 0: not known
};

/// The element types by their numbers. What lies within comes last in a node list.
constexpr auto elementTypes = [] {
    std::array<ElementType, 94> types{};
    using enum CellShape::Kind;
    constexpr std::array<std::uint8_t, 5> lines{1, 8, 26, 27, 28}, triangles{2, 9, 21, 23, 25},
        quads{3, 10, 36, 37, 38};
    for (std::uint8_t between = 0; between < lines.size(); ++between) {
        const int order = between + 1;
        types[lines[between]] = {{Line, between, 2}, std::uint8_t(order + 1)};
        types[triangles[between]] = {{Face, between, 3}, std::uint8_t((order + 1) * (order + 2) / 2)};
        types[quads[between]] = {{Face, between, 4}, std::uint8_t((order + 1) * (order + 1))};
    }
    // Without nodes within.
    types[16] = {{Face, 1, 4}, 8};
    types[20] = {{Face, 2, 3}, 9};
    types[22] = {{Face, 3, 3}, 12};
    types[24] = {{Face, 4, 3}, 15};
    types[39] = {{Face, 2, 4}, 12};
    types[40] = {{Face, 3, 4}, 16};
    types[41] = {{Face, 4, 4}, 20};
    types[15] = {{Point, 0, 1}, 1};
    constexpr std::pair<int, int> volumes[] = {{4, 4},   {5, 8},   {6, 6},   {7, 5},   {11, 10}, {12, 27},
                                               {13, 18}, {14, 14}, {17, 20}, {18, 15}, {19, 13}, {29, 20},
                                               {30, 35}, {31, 56}, {92, 64}, {93, 125}};
    for (const auto& [type, nodes] : volumes)
        types[std::size_t(type)] = {{Volume, 0, 4}, std::uint8_t(nodes)};
    return types;
}();

const ElementType& typeOf(std::int64_t number) {
    static constexpr ElementType unknown;
    return number >= 0 && number < std::ssize(elementTypes) ? elementTypes[std::size_t(number)] : unknown;
}

constexpr std::int64_t usualNumbers = 8; ///< of an element
constexpr std::int64_t mostNodes = std::numeric_limits<std::int32_t>::max();

} // namespace

bool GmshMesh::ReadNodes(GmshNumbers& in, bool isVersion4) {
    if (!Points.empty() || !(isVersion4 ? readNodes4(in) : readNodes2(in)))
        return false;
    PointIndex = IdIndex(PointIds);
    return true;
}

bool GmshMesh::ReadElements(GmshNumbers& in, bool isVersion4) {
    return Cells.Count() == 0 && (isVersion4 ? readElements4(in) : readElements2(in));
}

bool GmshMesh::readNodes2(GmshNumbers& in) {
    std::int64_t count = 0;
    // The count is text in any file.
    if (!in.Scanner().Number(count) || count > mostNodes || !in.CanHold(count, NumberType::Float64))
        return false;
    in.Scanner().Line();
    Points.reserve(std::size_t(count) * 3);
    PointIds.reserve(std::size_t(count));
    const GmshNumbers::Run run(in, count * 4, GmshNumbers::Run::OfReals);
    for (; count > 0; --count) {
        std::int64_t id = 0;
        std::array<double, 3> place;
        if (!in.Int(id) || !in.Reals(place))
            return false;
        PointIds.push_back(id);
        Points.insert(Points.end(), place.begin(), place.end());
    }
    return true;
}

/// Blocks of an entity of the geometry each: the numbers of its nodes, then their places, which may come with
/// parameters.
bool GmshMesh::readNodes4(GmshNumbers& in) {
    std::int64_t blocks = 0, count = 0, ignored = 0;
    if (!in.Size(blocks) || !in.Size(count) || !in.Size(ignored) || !in.Size(ignored) || count > mostNodes ||
        !in.CanHold(count, NumberType::Float64))
        return false;
    Points.reserve(std::size_t(count) * 3);
    PointIds.reserve(std::size_t(count));
    const GmshNumbers::Run run(in, count * 4, GmshNumbers::Run::OfReals);
    for (; blocks > 0; --blocks) {
        std::int64_t dimension = 0, isParametric = 0, here = 0;
        if (!in.Int(dimension) || !in.Int(ignored) || !in.Int(isParametric) || !in.Size(here) || here < 0 ||
            here > count)
            return false;
        count -= here;
        for (std::int64_t i = 0; i < here; ++i) {
            std::int64_t id = 0;
            if (!in.Size(id))
                return false;
            PointIds.push_back(id);
        }
        // A place may come with up to three parameters.
        std::array<double, 6> place;
        const std::int64_t parameters = isParametric != 0 ? std::clamp<std::int64_t>(dimension, 0, 3) : 0;
        for (std::int64_t i = 0; i < here; ++i) {
            if (!in.Reals(std::span(place).first(std::size_t(3 + parameters))))
                return false;
            Points.insert(Points.end(), place.begin(), place.begin() + 3);
        }
    }
    return true;
}

void GmshMesh::addCell(std::int64_t id, std::int64_t type, std::span<const std::int64_t> nodes) {
    for (const std::int64_t node : nodes)
        Cells.Nodes.push_back(PointIndex.Of(node));
    CellIds.push_back(id);
    Cells.Add(typeOf(type).Shape);
}

/// As text, an element a line; binary, runs of one type each.
bool GmshMesh::readElements2(GmshNumbers& in) {
    std::int64_t count = 0;
    if (!in.Scanner().Number(count) || count > mostNodes || !in.CanHold(count, NumberType::Int32))
        return false;
    in.Scanner().Line();
    Cells.Reserve(count);
    CellIds.reserve(std::size_t(count));
    const GmshNumbers::Run run(in, count * usualNumbers, GmshNumbers::Run::OfWholes);
    std::array<std::int64_t, GmshNumbers::MostInRow> row;
    while (count > 0) {
        std::array<std::int64_t, 3> head;
        if (!in.Wholes(head, NumberType::Int32))
            return false;
        const std::int64_t type = in.IsText ? head[1] : head[0], tags = head[2];
        const std::size_t nodes = typeOf(type).Nodes;
        std::int64_t inRun = in.IsText ? 1 : head[1];
        // How long a binary one of an unknown type is can't be told.
        if (inRun < 1 || inRun > count || tags < 0 || !in.CanHold(tags, NumberType::Int32) ||
            (nodes == 0 && !in.IsText))
            return false;
        for (; inRun > 0; --inRun, --count) {
            std::int64_t id = head[0];
            if ((!in.IsText && !in.Int(id)) || !in.Skip(tags, NumberType::Int32) ||
                !in.Wholes(std::span(row).first(nodes), NumberType::Int32) ||
                std::ssize(Cells.Nodes) > mostNodes - std::ssize(row))
                return false;
            addCell(id, type, std::span(row).first(nodes));
            if (nodes == 0)
                in.SkipLine();
        }
    }
    return true;
}

bool GmshMesh::readElements4(GmshNumbers& in) {
    std::int64_t blocks = 0, count = 0, ignored = 0;
    if (!in.Size(blocks) || !in.Size(count) || !in.Size(ignored) || !in.Size(ignored) || count > mostNodes ||
        !in.CanHold(count, NumberType::UInt64))
        return false;
    Cells.Reserve(count);
    CellIds.reserve(std::size_t(count));
    const GmshNumbers::Run run(in, count * usualNumbers, GmshNumbers::Run::OfWholes);
    std::array<std::int64_t, GmshNumbers::MostInRow> row; ///< an element's number and its nodes
    for (; blocks > 0; --blocks) {
        std::int64_t type = 0, here = 0;
        if (!in.Int(ignored) || !in.Int(ignored) || !in.Int(type) || !in.Size(here) || here < 0 || here > count)
            return false;
        const std::span<std::int64_t> element(row.data(), 1U + typeOf(type).Nodes);
        if (element.size() == 1 && !in.IsText)
            return false;
        for (count -= here; here > 0; --here) {
            if (!in.Wholes(element, NumberType::UInt64) || std::ssize(Cells.Nodes) > mostNodes - std::ssize(row))
                return false;
            addCell(element.front(), type, element.subspan(1));
            if (element.size() == 1)
                in.SkipLine();
        }
    }
    return true;
}
