#include "result/readers/LegacyVtkMesh.h"

std::optional<LegacyVtkLines::Words> LegacyVtkLines::Next() {
    const auto text = Scanner.FilledLine();
    if (!text)
        return {};
    line = *text;
    return WordsOf(line);
}

bool LegacyVtkLines::Count(const Words& words, std::size_t index, qint64& value, qint64 most) {
    return index < words.size() && FileScanner::NumberOf(words[index], value) && value >= 0 && value <= most;
}

LegacyVtkBlock LegacyVtkLines::Block(qint64 numbers, NumberType type) const {
    return {Scanner.Position(), numbers, type, IsText};
}

bool LegacyVtkMesh::readPoints(LegacyVtkLines& in, const LegacyVtkLines::Words& words) {
    qint64 points = 0;
    if (words.size() < 3 || !LegacyVtkLines::Count(words, 1, points) || !Points.empty())
        return false;
    const auto type = LegacyVtkBlock::TypeOf(words[2]);
    const LegacyVtkBlock block = in.Block(points * 3, type.value_or(NumberType::Float64));
    if (!type || !block.HasRoom(in.Scanner))
        return false;
    Points.reserve(std::size_t(block.Count));
    return block.Read<double>(in.Scanner,
                              [this](auto numbers) { Points.insert(Points.end(), numbers.begin(), numbers.end()); });
}

/// The number of a cell's nodes before them: all in one list.
bool LegacyVtkMesh::readOldCells(LegacyVtkLines& in, qint64 cellCount, qint64 numbers) {
    const LegacyVtkBlock block = in.Block(numbers, NumberType::Int32);
    if (numbers < cellCount || !block.HasRoom(in.Scanner))
        return false;
    auto used = qsizetype(Cells.Nodes.size());
    auto cell = qsizetype(Cells.Ends.size());
    const qsizetype lastCell = cell + cellCount;
    Cells.Ends.resize(std::size_t(lastCell));
    Cells.Nodes.resize(std::size_t(used + numbers - cellCount));
    std::ptrdiff_t left = 0; ///< of the cell's nodes
    bool isGood = true;
    const auto take = [&](std::span<const std::int32_t> all) {
        const std::int32_t* number = all.data();
        const std::int32_t* const end = number + all.size();
        while (number != end && isGood) {
            if (left == 0) {
                left = std::max(*number++, 0);
                isGood = cell < lastCell && left <= std::ssize(Cells.Nodes) - used;
                if (!isGood)
                    return;
            }
            const std::ptrdiff_t here = std::min(left, end - number);
            for (std::ptrdiff_t node = 0; node < here; ++node)
                Cells.Nodes[std::size_t(used + node)] = number[node];
            used += here;
            number += here;
            left -= here;
            if (left == 0)
                Cells.Ends[std::size_t(cell++)] = std::int32_t(used);
        }
    };
    return block.Read<std::int32_t>(in.Scanner, take) && isGood && left == 0 && cell == lastCell;
}

/// Where the nodes of each cell begin, then the nodes.
bool LegacyVtkMesh::readNewCells(LegacyVtkLines& in, qint64 offsets, qint64 nodes) {
    const auto base = std::int32_t(Cells.Nodes.size());
    const auto part = [&](std::string_view name, qint64 numbers, std::int32_t added, std::vector<std::int32_t>& list) {
        const auto words = in.Next();
        const auto type =
            words && words->size() > 1 && words->front() == name ? LegacyVtkBlock::TypeOf((*words)[1]) : std::nullopt;
        const LegacyVtkBlock block = in.Block(numbers, type.value_or(NumberType::Int32));
        if (!type || !block.HasRoom(in.Scanner))
            return false;
        list.reserve(list.size() + std::size_t(numbers));
        return block.Read<std::int32_t>(in.Scanner, [&](auto all) {
            for (const std::int32_t number : all)
                list.push_back(NumberAs<std::int32_t>(qint64(number) + added));
        });
    };
    // The first cell begins at 0, and where it begins is no end of another.
    const std::size_t before = Cells.Ends.size();
    if (offsets < 1 || !part("OFFSETS", offsets, base, Cells.Ends) || !part("CONNECTIVITY", nodes, 0, Cells.Nodes))
        return false;
    Cells.Ends.erase(Cells.Ends.begin() + qsizetype(before));
    return true;
}

/// Unstructured cells tell their types in a section of their own; those of the sections of polygonal data are of one.
bool LegacyVtkMesh::readCells(LegacyVtkLines& in, const LegacyVtkLines::Words& words) {
    static constexpr std::pair<std::string_view, std::int32_t> sections[] = {
        {"CELLS", 0}, {"VERTICES", 2}, {"LINES", 4}, {"POLYGONS", 7}, {"TRIANGLE_STRIPS", 6}};
    const auto* const section = std::ranges::find(sections, words.front(), [](const auto& row) { return row.first; });
    if (section == std::end(sections))
        return false;
    qint64 first = 0, second = 0;
    constexpr std::int32_t splitSince = 500;
    if (!LegacyVtkLines::Count(words, 1, first) || !LegacyVtkLines::Count(words, 2, second) ||
        !(in.Version >= splitSince ? readNewCells(in, first, second) : readOldCells(in, first, second)))
        return false;
    if (section->second > 0)
        Cells.Types.resize(Cells.Ends.size(), section->second);
    return true;
}

bool LegacyVtkMesh::readCellTypes(LegacyVtkLines& in, const LegacyVtkLines::Words& words) {
    qint64 types = 0;
    if (!LegacyVtkLines::Count(words, 1, types))
        return false;
    const LegacyVtkBlock block = in.Block(types, NumberType::Int32);
    return block.HasRoom(in.Scanner) && block.Read<std::int32_t>(in.Scanner, [this](auto numbers) {
        Cells.Types.insert(Cells.Types.end(), numbers.begin(), numbers.end());
    });
}

bool LegacyVtkMesh::Read(LegacyVtkLines& in, const LegacyVtkLines::Words& words) {
    if (words.front() == "POINTS")
        return readPoints(in, words);
    return words.front() == "CELL_TYPES" ? readCellTypes(in, words) : readCells(in, words);
}
