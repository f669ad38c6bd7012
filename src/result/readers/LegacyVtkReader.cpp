#include "result/readers/LegacyVtkReader.h"

#include "result/readers/LegacyVtkBlock.h"
#include "result/readers/vtkCells.h"

#include <limits>

namespace {

constexpr std::string_view magic = "# vtk DataFile Version ";
constexpr qint64 mostOfAKind = std::numeric_limits<std::int32_t>::max();
constexpr qint64 mostComponents = 99;

/// One file on its way into a `ForeignResult`.
class File {
public:
    File(const ReadHandle& openFile, const LoadProgress& progress) : file(openFile), in(openFile, progress) {}

    /// False, perhaps with the reason in `Problem`, when there is no mesh to be had.
    bool Read();

    /// Whether the file ends where something was to come.
    bool IsCut() { return !in.CanGive(1) || in.IsCut(); }

    ForeignResult Result;
    QString Problem;

private:
    using Words = std::vector<std::string_view>;

    bool readHeader();
    bool readSection(const Words& words);
    bool readPoints(const Words& words);
    bool readCells(const Words& words);
    bool readOldCells(qint64 cells, qint64 numbers);
    bool readNewCells(qint64 offsets, qint64 nodes);
    bool readCellTypes(const Words& words);
    bool readScalars(const Words& words);
    bool readArray(std::string_view name, qint64 components, qint64 tuples, std::string_view type);
    bool readFields(const Words& words);
    void skipMetadata();

    std::optional<Words> wordsOfLine();
    static bool count(const Words& words, std::size_t index, qint64& value, qint64 most = mostOfAKind);
    LegacyVtkBlock blockOf(qint64 numbers, NumberType type) const;

    ReadHandle file;
    FileScanner in;
    std::string line; ///< the words of the last line stand in it
    bool isText = true;
    vtkCells::Lists cells;
    std::vector<LegacyVtkBlock> blocks; ///< of the arrays
    enum { OfFile, OfPoints, OfCells } place = OfFile;
    qint64 placeCount = 0;
};

std::optional<File::Words> File::wordsOfLine() {
    const auto text = in.FilledLine();
    if (!text)
        return {};
    line = *text;
    return WordsOf(line);
}

bool File::count(const Words& words, std::size_t index, qint64& value, qint64 most) {
    return index < words.size() && FileScanner::NumberOf(words[index], value) && value >= 0 && value <= most;
}

/// The numbers from here on, as many as that.
LegacyVtkBlock File::blockOf(qint64 numbers, NumberType type) const {
    return {in.Position(), numbers, type, isText};
}

bool File::readHeader() {
    const auto first = in.Line();
    if (!first)
        return false;
    double version = 0;
    FileScanner::NumberOf(first->substr(std::min(magic.size(), first->size())), version);
    Result.Version = std::int32_t(std::clamp(version, 0.0, 99.0) * 100);
    const auto title = in.Line();
    if (!title)
        return false;
    Result.Title = QString::fromUtf8(title->data(), qsizetype(title->size())).trimmed();
    const auto form = wordsOfLine();
    if (!form || form->empty())
        return false;
    isText = QByteArrayView(form->front()).compare("ASCII", Qt::CaseInsensitive) == 0;
    return isText || QByteArrayView(form->front()).compare("BINARY", Qt::CaseInsensitive) == 0;
}

bool File::readPoints(const Words& words) {
    qint64 points = 0;
    if (words.size() < 3 || !count(words, 1, points) || !Result.Points.empty())
        return false;
    const auto type = LegacyVtkBlock::TypeOf(words[2]);
    const LegacyVtkBlock block = blockOf(points * 3, type.value_or(NumberType::Float64));
    if (!type || !block.HasRoom(in))
        return false;
    Result.Points.reserve(std::size_t(block.Count));
    return block.Read<double>(
        in, [this](auto numbers) { Result.Points.insert(Result.Points.end(), numbers.begin(), numbers.end()); });
}

/// The number of a cell's nodes before them: all in one list.
bool File::readOldCells(qint64 cellCount, qint64 numbers) {
    const LegacyVtkBlock block = blockOf(numbers, NumberType::Int32);
    if (numbers < cellCount || !block.HasRoom(in))
        return false;
    auto used = qsizetype(cells.Nodes.size());
    auto cell = qsizetype(cells.Ends.size());
    const qsizetype lastCell = cell + cellCount;
    cells.Ends.resize(std::size_t(lastCell));
    cells.Nodes.resize(std::size_t(used + numbers - cellCount));
    std::ptrdiff_t left = 0; ///< of the cell's nodes
    bool isGood = true;
    const auto take = [&](std::span<const std::int32_t> all) {
        const std::int32_t* number = all.data();
        const std::int32_t* const end = number + all.size();
        while (number != end && isGood) {
            if (left == 0) {
                left = std::max(*number++, 0);
                isGood = cell < lastCell && left <= std::ssize(cells.Nodes) - used;
                if (!isGood)
                    return;
            }
            const std::ptrdiff_t here = std::min(left, end - number);
            for (std::ptrdiff_t node = 0; node < here; ++node)
                cells.Nodes[std::size_t(used + node)] = number[node];
            used += here;
            number += here;
            left -= here;
            if (left == 0)
                cells.Ends[std::size_t(cell++)] = std::int32_t(used);
        }
    };
    return block.Read<std::int32_t>(in, take) && isGood && left == 0 && cell == lastCell;
}

/// Where the nodes of each cell begin, then the nodes.
bool File::readNewCells(qint64 offsets, qint64 nodes) {
    const auto base = std::int32_t(cells.Nodes.size());
    const auto part = [&](std::string_view name, qint64 numbers, std::int32_t added, std::vector<std::int32_t>& list) {
        const auto words = wordsOfLine();
        const auto type =
            words && words->size() > 1 && words->front() == name ? LegacyVtkBlock::TypeOf((*words)[1]) : std::nullopt;
        const LegacyVtkBlock block = blockOf(numbers, type.value_or(NumberType::Int32));
        if (!type || !block.HasRoom(in))
            return false;
        list.reserve(list.size() + std::size_t(numbers));
        return block.Read<std::int32_t>(in, [&](auto all) {
            for (const std::int32_t number : all)
                list.push_back(NumberAs<std::int32_t>(qint64(number) + added));
        });
    };
    // The first cell begins at 0, and where it begins is no end of another.
    const std::size_t before = cells.Ends.size();
    if (offsets < 1 || !part("OFFSETS", offsets, base, cells.Ends) || !part("CONNECTIVITY", nodes, 0, cells.Nodes))
        return false;
    cells.Ends.erase(cells.Ends.begin() + qsizetype(before));
    return true;
}

/// Unstructured cells tell their types in a section of their own; those of the sections of polygonal data are of one.
bool File::readCells(const Words& words) {
    static constexpr std::pair<std::string_view, std::int32_t> sections[] = {
        {"CELLS", 0}, {"VERTICES", 2}, {"LINES", 4}, {"POLYGONS", 7}, {"TRIANGLE_STRIPS", 6}};
    const auto* const section = std::ranges::find(sections, words.front(), [](const auto& row) { return row.first; });
    if (section == std::end(sections))
        return false;
    qint64 first = 0, second = 0;
    constexpr std::int32_t splitSince = 500;
    if (!count(words, 1, first) || !count(words, 2, second) ||
        !(Result.Version >= splitSince ? readNewCells(first, second) : readOldCells(first, second)))
        return false;
    if (section->second > 0)
        cells.Types.resize(cells.Ends.size(), section->second);
    return true;
}

bool File::readCellTypes(const Words& words) {
    qint64 types = 0;
    if (!count(words, 1, types))
        return false;
    const LegacyVtkBlock block = blockOf(types, NumberType::Int32);
    return block.HasRoom(in) && block.Read<std::int32_t>(in, [this](auto numbers) {
        cells.Types.insert(cells.Types.end(), numbers.begin(), numbers.end());
    });
}

/// Notes where an array stands and goes past it; one of which nothing is there doesn't count.
bool File::readArray(std::string_view name, qint64 components, qint64 tuples, std::string_view type) {
    const auto numbers = LegacyVtkBlock::TypeOf(type);
    if (!numbers || components < 1 || components > mostComponents) {
        if (in.CanGive(1)) // else the name of the type may be cut
            Problem = u"配列 %1 を読むことができません。"_s.arg(vtkCells::NameOf(name));
        return false;
    }
    const LegacyVtkBlock block = blockOf(components * tuples, *numbers);
    constexpr std::string_view timeNames[] = {"TIME", "TimeValue"};
    if (place != OfFile && tuples == placeCount && in.Remaining() > 0) {
        Result.Arrays.push_back({vtkCells::NameOf(name), std::int32_t(components), {}, place == OfCells});
        blocks.push_back(block);
    } else if (block.Count == 1 && std::ranges::find(timeNames, name) != std::end(timeNames)) {
        return block.Read<double>(in, [this](auto time) {
            if (!time.empty())
                Result.Steps.front().Time = time.front();
        });
    }
    return block.Skip(in);
}

bool File::readScalars(const Words& words) {
    qint64 components = 1;
    if (words.size() < 3 || (words.size() > 3 && !count(words, 3, components, mostComponents)))
        return false;
    const std::string name(words[1]), type(words[2]);
    // The line that names the table of colours may be missing, and then the values begin where it would.
    const qint64 start = in.Position();
    const auto table = wordsOfLine();
    if (!table || table->front() != "LOOKUP_TABLE")
        in.Seek(start);
    return readArray(name, components, placeCount, type);
}

/// Lines up to a blank one.
void File::skipMetadata() {
    for (auto text = in.Line(); text && !WordsOf(*text).empty();)
        text = in.Line();
}

bool File::readFields(const Words& words) {
    qint64 arrays = 0;
    if (!count(words, 2, arrays))
        return false;
    while (arrays > 0) {
        const auto header = wordsOfLine();
        if (!header)
            return false;
        if (header->front() == "METADATA") {
            skipMetadata();
            continue;
        }
        qint64 components = 0, tuples = 0;
        if (header->size() < 4 || !count(*header, 1, components) || !count(*header, 2, tuples) ||
            !readArray((*header)[0], components, tuples, (*header)[3]))
            return false;
        --arrays;
    }
    return true;
}

/// False ends the reading: at what can't be understood, or where the file is cut short.
bool File::readSection(const Words& words) {
    const std::string_view name = words.front();
    static constexpr std::pair<std::string_view, std::int32_t> arrays[] = {
        {"VECTORS", 3}, {"NORMALS", 3}, {"TENSORS", 9}, {"TENSORS6", 6}};
    const auto* const array = std::ranges::find(arrays, name, [](const auto& row) { return row.first; });
    if (array != std::end(arrays))
        return words.size() > 2 && readArray(words[1], array->second, placeCount, words[2]);
    if (name == "SCALARS")
        return readScalars(words);
    if (name == "FIELD")
        return readFields(words);
    if (name == "POINT_DATA" || name == "CELL_DATA") {
        place = name == "CELL_DATA" ? OfCells : OfPoints;
        return count(words, 1, placeCount) &&
               std::size_t(placeCount) == (place == OfCells ? cells.Ends.size() : Result.Points.size() / 3);
    }
    qint64 components = 0;
    if (name == "TEXTURE_COORDINATES")
        return words.size() > 3 && count(words, 2, components) && readArray(words[1], components, placeCount, words[3]);
    if (name == "METADATA") {
        skipMetadata();
        return true;
    }
    if (name == "POINTS")
        return readPoints(words);
    if (name == "CELL_TYPES")
        return readCellTypes(words);
    if (name == "COLOR_SCALARS" || name == "LOOKUP_TABLE") {
        // Colours, and no values: four to an entry of a table, and bytes in a binary file.
        const bool isTable = name == "LOOKUP_TABLE";
        return count(words, 2, components) &&
               blockOf(isTable ? components * 4 : components * placeCount, NumberType::UInt8).Skip(in);
    }
    return readCells(words);
}

bool File::Read() {
    if (!readHeader())
        return false;
    Result.Magic = u"VTK"_s;
    Result.Steps.resize(1);
    const auto dataset = wordsOfLine();
    if (!dataset || dataset->size() < 2 || dataset->front() != "DATASET")
        return false;
    if ((*dataset)[1] != "UNSTRUCTURED_GRID" && (*dataset)[1] != "POLYDATA") {
        if (in.CanGive(1))
            Problem = u"データセット %1 は読むことができません。"_s.arg(QString::fromUtf8((*dataset)[1]));
        return false;
    }
    qint64& end = Result.Steps.front().End;
    for (auto words = wordsOfLine(); words; words = wordsOfLine()) {
        if (!readSection(*words)) {
            Result.LeftOut.append(CutData.toString());
            Result.IsCut = IsCut();
            end = in.End() + 1;
            break;
        }
        // Of a text that ends with a digit there may be more.
        end = in.Position() + (isText ? 1 : 0);
    }
    if (in.WasStopped() || Result.Points.empty() || !vtkCells::BuildCells(std::move(cells), Result.Cells))
        return false;
    for (std::size_t a = 0; a < blocks.size(); ++a)
        Result.Steps.front().Arrays.push_back(std::int32_t(a));
    const auto all = std::make_shared<const std::vector<LegacyVtkBlock>>(std::move(blocks));
    Result.Read = [openFile = file, all](std::int32_t, std::int32_t array) {
        const LegacyVtkBlock& block = (*all)[std::size_t(array)];
        FileScanner reader(openFile);
        std::vector<float> values;
        values.reserve(std::size_t(std::min(block.Count, openFile.Size() - block.Offset)));
        block.Read<float>(reader, [&values](auto part) { values.insert(values.end(), part.begin(), part.end()); });
        return values;
    };
    if (!isText)
        Result.Find = [openFile = file, all, arrays = Result.Arrays](std::int32_t, std::int32_t array) {
            const LegacyVtkBlock& block = (*all)[std::size_t(array)];
            const std::int32_t components = arrays[std::size_t(array)].Components;
            return std::optional(DirectArray{openFile, block.Offset, components * BytesOf(block.Type),
                                             block.Count / components, BinaryRecord(block.Type, true)});
        };
    return Problem.isEmpty();
}

} // namespace

bool LegacyVtkReader::Recognises(QByteArrayView start, const QString&) {
    return start.startsWith(magic);
}

bool LegacyVtkReader::Open(const QString& path, ResultContent& content, const LoadProgress& progress) {
    File file(ReadHandle::Open(path), progress);
    if (!file.Read()) {
        content.Note = WhyRefused(file.Problem, file.IsCut());
        return false;
    }
    return BuildContent(std::move(file.Result), content);
}
