#include "result/readers/FrdMesh.h"

namespace frd {

namespace {

constexpr qint64 fewestBytes = 8; ///< of a node or an element

/// The element types by their numbers, with all their nodes.
constexpr struct {
    CellShape Shape;
    std::size_t Nodes;
} elementTypes[] = {{{}, 0},
                    {{CellShape::Volume, 0, 8}, 8},
                    {{CellShape::Volume, 0, 6}, 6},
                    {{CellShape::Volume, 0, 4}, 4},
                    {{CellShape::Volume, 0, 8}, 20},
                    {{CellShape::Volume, 0, 6}, 15},
                    {{CellShape::Volume, 0, 4}, 10},
                    {{CellShape::Face, 0, 3}, 3},
                    {{CellShape::Face, 1, 3}, 6},
                    {{CellShape::Face, 0, 4}, 4},
                    {{CellShape::Face, 1, 4}, 8},
                    {{CellShape::Line, 0, 2}, 2},
                    {{CellShape::Line, 1, 2}, 3}};

std::size_t nodesOfType(std::int64_t type) {
    return type > 0 && type < std::ssize(elementTypes) ? elementTypes[type].Nodes : 0;
}

/// The elements of a stretch of text: the type of each, and the nodes of all.
struct TextElements {
    std::vector<std::int64_t> Types, Nodes;
    bool IsWhole = true;  ///< each has all its nodes
    bool HasEnd = false;  ///< the mark of the block's end
    std::size_t Used = 0; ///< bytes, with the line of the mark

    void Parse(std::string_view text, Form form);
};

void TextElements::Parse(std::string_view text, Form form) {
    const qint64 width = IdWidth(form), perLine = form == ShortText ? 15 : 10;
    Types.clear();
    Nodes.clear();
    IsWhole = true;
    HasEnd = false;
    Lines lines(text);
    while (!lines.AreOver() && !HasEnd && IsWhole) {
        std::string_view line = lines.Take();
        HasEnd = IsKey(line, "-3");
        // What is of an unknown type has lines that nobody takes, and they are no elements.
        if (!IsKey(line, "-1"))
            continue;
        const auto type = WholeAt(line, KeyWidth + width, 5);
        const auto count = qint64(nodesOfType(type));
        Types.push_back(type);
        for (qint64 n = 0; n < count && IsWhole; ++n) {
            if (n % perLine == 0) {
                line = lines.Take();
                IsWhole = IsKey(line, "-2");
            }
            Nodes.push_back(WholeAt(line, KeyWidth + n % perLine * width, width));
        }
    }
    Used = text.size() - lines.BytesLeft();
}

} // namespace

bool Mesh::ReadNodes(FileScanner& in, std::string_view header) {
    const auto head = HeadOf(header);
    if (!head || !in.CanGive(head->Entries * fewestBytes) || !PointIds.empty())
        return false;
    Points.reserve(std::size_t(head->Entries) * 3);
    PointIds.reserve(std::size_t(head->Entries));
    const auto take = [this](std::span<const std::int64_t> some, std::span<const double> places) {
        PointIds.insert(PointIds.end(), some.begin(), some.end());
        Points.insert(Points.end(), places.begin(), places.end());
    };
    Block{head->Written, head->Entries, 3, in.Position()}.Read(in, take);
    Nodes = IdIndex(PointIds);
    return std::ssize(PointIds) == head->Entries;
}

void Mesh::addCell(std::int64_t type, std::span<const std::int64_t> cellNodes) {
    for (const std::int64_t node : cellNodes)
        Cells.Nodes.push_back(Nodes.Of(node));
    Cells.Add(nodesOfType(type) > 0 ? elementTypes[type].Shape : CellShape());
}

bool Mesh::readTextElements(FileScanner& in, std::int64_t count, Form form) {
    constexpr qint64 usualBytes = 72;
    std::vector<TextElements> parts(TextStretches::Slots());
    TextStretches stretches(in, NextEntry,
                            [&](std::size_t slot, std::string_view text) { parts[slot].Parse(text, form); });
    while (const auto slot = stretches.Next(count * usualBytes)) {
        const TextElements& part = parts[*slot];
        if (!part.IsWhole)
            return false;
        std::span<const std::int64_t> left(part.Nodes);
        for (const std::int64_t type : part.Types) {
            addCell(type, left.first(nodesOfType(type)));
            left = left.subspan(nodesOfType(type));
        }
        count -= std::ssize(part.Types);
        if (part.HasEnd) {
            in.Seek(stretches.Start(*slot) + qint64(part.Used));
            return true;
        }
    }
    return true;
}

bool Mesh::ReadElements(FileScanner& in, std::string_view header) {
    const auto head = HeadOf(header);
    if (!head || !in.CanGive(head->Entries * fewestBytes) || Cells.Count() > 0)
        return false;
    Cells.Reserve(head->Entries);
    if (head->Written < Singles)
        return readTextElements(in, head->Entries, head->Written);
    for (std::int64_t left = head->Entries; left > 0; --left) {
        std::array<std::int32_t, 20> numbers{};
        constexpr qint64 headBytes = 4 * sizeof(std::int32_t);
        if (!in.ReadBytes(numbers.data(), headBytes))
            return false;
        const std::int64_t type = numbers[1];
        const std::size_t nodeCount = nodesOfType(type);
        if (nodeCount == 0 || !in.ReadBytes(numbers.data(), qint64(nodeCount * sizeof(std::int32_t))))
            return false;
        std::array<std::int64_t, 20> cellNodes{};
        std::ranges::copy(numbers, cellNodes.begin());
        addCell(type, std::span(cellNodes).first(nodeCount));
    }
    return true;
}

} // namespace frd
