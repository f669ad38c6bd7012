#include "result/readers/FrdReader.h"

#include "result/readers/FileScanner.h"
#include "result/readers/ForeignResult.h"
#include "result/readers/IdIndex.h"
#include "result/readers/numberTypes.h"

#include <limits>
#include <map>

namespace {

constexpr std::int64_t mostOfAKind = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t mostComponents = 99;
constexpr qint64 keyWidth = 3, realWidth = 12;
constexpr qint64 realsPerLine = 6;

/// How the numbers of a block are written; the files' own codes.
enum Form : std::int8_t { ShortText = 0, LongText = 1, Singles = 2, Doubles = 3 };

qint64 idWidthOf(Form form) {
    return form == ShortText ? 5 : 10;
}

/// A column of a line without the blanks around it.
std::string_view column(std::string_view line, qint64 first, qint64 width) {
    std::string_view text = line.substr(std::min(std::size_t(first), line.size()), std::size_t(width));
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

/// 0 where there is no number.
template<class T>
T numberAt(std::string_view line, qint64 first, qint64 width) {
    T value{};
    return FileScanner::NumberOf(column(line, first, width), value) ? value : T{};
}

QString textAt(std::string_view line, qint64 first, qint64 width) {
    const std::string_view text = column(line, first, width);
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

bool isKey(std::string_view line, std::string_view key) {
    return column(line, 0, keyWidth) == key;
}

/// A block of so many reals for each of some nodes.
struct Block {
    Form Written = LongText;
    std::int64_t Entries = 0;
    std::int32_t Components = 0;
    qint64 Offset = 0;
};

/// Reads on from the block's beginning: `take(id, reals)` for each entry, up to the mark of its end, its count, or
/// where it can't be understood.
template<class Take>
void readBlock(FileScanner& in, const Block& block, const Take& take) {
    std::vector<double> reals(std::size_t(block.Components));
    in.Seek(block.Offset);
    if (block.Written >= Singles) {
        const NumberType type = block.Written == Singles ? NumberType::Float32 : NumberType::Float64;
        std::vector<char> bytes(sizeof(std::int32_t) + reals.size() * std::size_t(BytesOf(type)));
        for (std::int64_t left = block.Entries; left > 0 && in.ReadBytes(bytes.data(), std::ssize(bytes)); --left) {
            std::int64_t id = 0;
            ConvertNumbers(bytes.data(), 1, NumberType::Int32, false, &id);
            ConvertNumbers(bytes.data() + sizeof(std::int32_t), block.Components, type, false, reals.data());
            take(id, reals);
        }
        return;
    }
    // In text it is the mark that counts.
    const qint64 start = keyWidth + idWidthOf(block.Written);
    for (auto line = in.Line(); line && isKey(*line, "-1");) {
        const auto id = numberAt<std::int64_t>(*line, keyWidth, idWidthOf(block.Written));
        qint64 onLine = 0;
        for (double& real : reals) {
            if (onLine == realsPerLine) {
                line = in.Line();
                onLine = 0;
                if (!line || !isKey(*line, "-2"))
                    return;
            }
            real = numberAt<double>(*line, start + onLine++ * realWidth, realWidth);
        }
        take(id, reals);
        line = in.Line();
    }
}

/// One file on its way into a `ForeignResult`.
class File {
public:
    File(const ReadHandle& openFile, const LoadProgress& progress) : file(openFile), in(openFile, progress) {}

    bool Read();

    ForeignResult Result;

private:
    bool readRecord(std::string_view line);
    bool readNodes(std::string_view header);
    bool readElements(std::string_view header);
    bool readTextElement(std::string_view line, Form form);
    void addCell(std::int64_t type, std::span<const std::int64_t> nodes);
    bool readValues(std::string_view header);
    bool readComponents(std::string_view nameLine, ForeignArray& array);
    bool skipBlock(const Block& block);
    std::int32_t arrayOf(const ForeignArray& array);

    ReadHandle file;
    FileScanner in;
    std::vector<std::int64_t> ids;
    IdIndex nodes;
    std::map<std::pair<std::int32_t, std::int32_t>, Block> blocks; ///< by step and array
    std::int64_t stepNumber = 0;                                   ///< of the last step, as the file counts them
};

std::optional<Form> formAt(std::string_view line, qint64 first, qint64 width) {
    const auto code = numberAt<int>(line, first, width);
    return code < ShortText || code > Doubles ? std::nullopt : std::optional(Form(code));
}

bool File::readNodes(std::string_view header) {
    const auto count = numberAt<std::int64_t>(header, 24, 12);
    const auto form = formAt(header, 73, 2);
    if (!form || count < 1 || count > mostOfAKind || count > in.Remaining() / 8 || !ids.empty())
        return false;
    Result.Points.reserve(std::size_t(count) * 3);
    readBlock(in, {*form, count, 3, in.Position()}, [this](std::int64_t id, std::span<const double> place) {
        ids.push_back(id);
        Result.Points.insert(Result.Points.end(), place.begin(), place.end());
    });
    nodes = IdIndex(ids);
    return std::ssize(ids) == count;
}

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

void File::addCell(std::int64_t type, std::span<const std::int64_t> cellNodes) {
    for (const std::int64_t node : cellNodes)
        Result.Cells.Nodes.push_back(nodes.Of(node));
    Result.Cells.Add(nodesOfType(type) > 0 ? elementTypes[type].Shape : CellShape());
}

/// The element's nodes stand on the lines behind it.
bool File::readTextElement(std::string_view line, Form form) {
    const qint64 width = idWidthOf(form);
    const auto type = numberAt<std::int64_t>(line, keyWidth + width, 5);
    std::vector<std::int64_t> cellNodes(nodesOfType(type));
    const qint64 perLine = form == ShortText ? 15 : 10;
    std::optional<std::string_view> next;
    for (std::size_t n = 0; n < cellNodes.size(); ++n) {
        const qint64 onLine = qint64(n) % perLine;
        if (onLine == 0)
            next = in.Line();
        if (!next || !isKey(*next, "-2"))
            return false;
        cellNodes[n] = numberAt<std::int64_t>(*next, keyWidth + onLine * width, width);
    }
    addCell(type, cellNodes);
    return true;
}

bool File::readElements(std::string_view header) {
    const auto count = numberAt<std::int64_t>(header, 24, 12);
    const auto form = formAt(header, 73, 2);
    if (!form || count < 1 || count > mostOfAKind || count > in.Remaining() / 8 || Result.Cells.Count() > 0)
        return false;
    if (*form < Singles) {
        // What is of an unknown type has lines that nobody takes, and they are no elements.
        for (auto line = in.Line(); line && !isKey(*line, "-3"); line = in.Line())
            if (isKey(*line, "-1") && !readTextElement(*line, *form))
                return false;
        return true;
    }
    for (std::int64_t left = count; left > 0; --left) {
        std::array<std::int32_t, 20> numbers{};
        constexpr qint64 headBytes = 4 * sizeof(std::int32_t);
        if (!in.ReadBytes(numbers.data(), headBytes))
            return false;
        const std::int64_t type = numbers[1];
        const std::size_t nodeCount = nodesOfType(type);
        if (nodeCount == 0 || !in.ReadBytes(numbers.data(), qint64(nodeCount * sizeof(std::int32_t))))
            return false;
        addCell(type, std::vector<std::int64_t>(numbers.begin(), numbers.begin() + qsizetype(nodeCount)));
    }
    return true;
}

/// The lines that name the components behind the one that names the array. Those that aren't stored don't count.
bool File::readComponents(std::string_view nameLine, ForeignArray& array) {
    array.Name = textAt(nameLine, 5, 8);
    const auto count = numberAt<std::int64_t>(nameLine, 13, 5);
    if (count < 1 || count > mostComponents)
        return false;
    constexpr int vector = 2, matrix = 4;
    for (std::int64_t c = 0; c < count; ++c) {
        const auto line = in.Line();
        if (!line || !isKey(*line, "-5"))
            return false;
        const auto kind = numberAt<int>(*line, 18, 5), first = numberAt<int>(*line, 23, 5),
                   second = numberAt<int>(*line, 28, 5), isDerived = numberAt<int>(*line, 33, 5);
        if (isDerived != 0)
            continue;
        constexpr std::u16string_view axes = u"?XYZ";
        const auto axis = [&axes](int number) {
            return QChar(number > 0 && number < 4 ? axes[std::size_t(number)] : axes[0]);
        };
        QString name = textAt(*line, 5, 8);
        if (kind == vector)
            name = axis(first);
        else if (kind == matrix)
            name = QString(axis(std::min(first, second))) + axis(std::max(first, second));
        array.ComponentNames.append(name);
    }
    array.Components = std::int32_t(array.ComponentNames.size());
    if (array.Components == 1)
        array.ComponentNames = {QString()};
    return array.Components > 0;
}

/// Past a block. Where all entries are as long as the first, one look at the end is enough.
bool File::skipBlock(const Block& block) {
    if (block.Written >= Singles) {
        const qint64 bytes = block.Entries * (4 + block.Components * (block.Written == Singles ? 4 : 8));
        const bool isThere = bytes <= in.Remaining();
        in.Seek(block.Offset + std::min(bytes, in.Remaining()));
        return isThere;
    }
    for (qint64 left = (block.Components - 1) / realsPerLine + 1; left > 0; --left)
        in.Line();
    const qint64 end = block.Offset + block.Entries * (in.Position() - block.Offset);
    if (end < file.Size()) {
        in.Seek(end);
        if (const auto line = in.Line(); line && isKey(*line, "-3"))
            return true;
        in.Seek(block.Offset);
    }
    auto line = in.Line();
    while (line && (isKey(*line, "-1") || isKey(*line, "-2")))
        line = in.Line();
    return line && isKey(*line, "-3");
}

std::int32_t File::arrayOf(const ForeignArray& array) {
    const auto known = std::ranges::find_if(Result.Arrays, [&array](const ForeignArray& candidate) {
        return candidate.Name == array.Name && candidate.ComponentNames == array.ComponentNames;
    });
    const auto index = std::int32_t(known - Result.Arrays.begin());
    if (known == Result.Arrays.end())
        Result.Arrays.push_back(array);
    return index;
}

/// The next array of the step that the file is at, or the first of a new one.
bool File::readValues(std::string_view header) {
    const auto time = numberAt<double>(header, 12, 12);
    const auto entries = numberAt<std::int64_t>(header, 24, 12), number = numberAt<std::int64_t>(header, 58, 5);
    const auto form = formAt(header, 73, 2);
    ForeignArray array;
    const auto nameLine = in.Line();
    if (!form || entries < 1 || entries > mostOfAKind || !nameLine || !isKey(*nameLine, "-4") ||
        !readComponents(std::string(*nameLine), array))
        return false;
    if (in.Remaining() == 0)
        return false;
    const std::int32_t index = arrayOf(array);
    const auto lastStep = [this] { return std::int32_t(Result.Steps.size()) - 1; };
    if (Result.Steps.empty() || blocks.contains({lastStep(), index}) || Result.Steps.back().Time != time ||
        stepNumber != number) {
        Result.Steps.push_back({time, {}});
        stepNumber = number;
    }
    const Block block{*form, entries, array.Components, in.Position()};
    blocks.emplace(std::pair(lastStep(), index), block);
    return skipBlock(block);
}

/// False ends the reading: at what can't be understood, or where the file is cut short.
bool File::readRecord(std::string_view line) {
    const std::string header(line);
    const std::string_view key = column(header, 0, 6);
    if (key == "2C")
        return readNodes(header);
    if (key == "3C")
        return readElements(header);
    if (key == "100C")
        return readValues(header);
    return true;
}

bool File::Read() {
    Result.Magic = u"FRD"_s;
    for (auto line = in.Line(); line && !column(*line, 0, 6).starts_with("9999"); line = in.Line())
        if (!readRecord(*line)) {
            Result.LeftOut.append(u"途中から後のデータ"_s);
            break;
        }
    if (in.WasStopped() || ids.empty() || Result.Points.size() != ids.size() * 3)
        return false;
    for (const auto& [place, block] : blocks)
        Result.Steps[std::size_t(place.first)].Arrays.push_back(place.second);
    Result.Read = [openFile = file, index = std::move(nodes), points = ids.size(),
                   all = std::move(blocks)](std::int32_t step, std::int32_t array) {
        const Block& block = all.at({step, array});
        std::vector<float> values(points * std::size_t(block.Components));
        FileScanner reader(openFile);
        readBlock(reader, block, [&](std::int64_t id, std::span<const double> reals) {
            if (const std::int32_t node = index.Of(id); node >= 0)
                std::ranges::copy(reals, values.begin() + qsizetype(node) * block.Components);
        });
        return values;
    };
    return true;
}

} // namespace

bool FrdReader::Recognises(QByteArrayView start, const QString& path) {
    return start.startsWith("    1C") || (start.startsWith("    1U") && path.endsWith(u".frd", Qt::CaseInsensitive));
}

bool FrdReader::Open(const QString& path, ResultContent& content, const LoadProgress& progress) {
    File file(ReadHandle::Open(path), progress);
    return file.Read() && BuildContent(std::move(file.Result), content);
}
