#include "result/readers/FrdReader.h"

#include "result/readers/ForeignResult.h"
#include "result/readers/FrdBlock.h"
#include "result/readers/IdIndex.h"

#include <limits>
#include <map>

namespace {

using namespace frd;

constexpr std::int64_t mostOfAKind = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t mostComponents = 99;
QString textAt(std::string_view line, qint64 first, qint64 width) {
    const std::string_view text = Column(line, first, width);
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

/// One file on its way into a `ForeignResult`.
class File {
public:
    File(const ReadHandle& openFile, const LoadProgress& progress) : file(openFile), in(openFile, progress) {}

    bool Read();

    /// Whether the file ends where something was to come.
    bool IsCut() { return !in.CanGive(1) || in.IsCut(); }

    ForeignResult Result;

private:
    bool readRecord(std::string_view line);
    bool readNodes(std::string_view header);
    bool readElements(std::string_view header);
    bool readTextElements(std::int64_t count, Form form);
    void addCell(std::int64_t type, std::span<const std::int64_t> nodes);
    bool readValues(std::string_view header);
    bool readComponents(std::string_view nameLine, ForeignArray& array);
    std::int32_t arrayOf(const ForeignArray& array);

    ReadHandle file;
    FileScanner in;
    std::vector<std::int64_t> ids;
    IdIndex nodes;
    std::map<std::pair<std::int32_t, std::int32_t>, Block> blocks; ///< by step and array
    std::int64_t stepNumber = 0;                                   ///< of the last step, as the file counts them
};

std::optional<Form> formAt(std::string_view line, qint64 first, qint64 width) {
    const auto code = NumberAt<int>(line, first, width);
    return code < ShortText || code > Doubles ? std::nullopt : std::optional(Form(code));
}

bool File::readNodes(std::string_view header) {
    const auto count = NumberAt<std::int64_t>(header, 24, 12);
    const auto form = formAt(header, 73, 2);
    if (!form || count < 1 || count > mostOfAKind || !in.CanGive(count * 8) || !ids.empty())
        return false;
    Result.Points.reserve(std::size_t(count) * 3);
    ids.reserve(std::size_t(count));
    const auto take = [this](std::span<const std::int64_t> some, std::span<const double> places) {
        ids.insert(ids.end(), some.begin(), some.end());
        Result.Points.insert(Result.Points.end(), places.begin(), places.end());
    };
    Block{*form, count, 3, in.Position()}.Read(in, take);
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

bool File::readTextElements(std::int64_t count, Form form) {
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

bool File::readElements(std::string_view header) {
    const auto count = NumberAt<std::int64_t>(header, 24, 12);
    const auto form = formAt(header, 73, 2);
    if (!form || count < 1 || count > mostOfAKind || !in.CanGive(count * 8) || Result.Cells.Count() > 0)
        return false;
    Result.Cells.Reserve(count);
    if (*form < Singles)
        return readTextElements(count, *form);
    for (std::int64_t left = count; left > 0; --left) {
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

/// The lines that name the components behind the one that names the array. Those that aren't stored don't count.
bool File::readComponents(std::string_view nameLine, ForeignArray& array) {
    array.Name = textAt(nameLine, 5, 8);
    const auto count = NumberAt<std::int64_t>(nameLine, 13, 5);
    if (count < 1 || count > mostComponents)
        return false;
    constexpr int vector = 2, matrix = 4;
    for (std::int64_t c = 0; c < count; ++c) {
        const auto line = in.Line();
        if (!line || !IsKey(*line, "-5"))
            return false;
        const auto kind = NumberAt<int>(*line, 18, 5), first = NumberAt<int>(*line, 23, 5),
                   second = NumberAt<int>(*line, 28, 5), isDerived = NumberAt<int>(*line, 33, 5);
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
    const auto time = NumberAt<double>(header, 12, 12);
    const auto entries = NumberAt<std::int64_t>(header, 24, 12), number = NumberAt<std::int64_t>(header, 58, 5);
    const auto form = formAt(header, 73, 2);
    ForeignArray array;
    const auto nameLine = in.Line();
    if (!form || entries < 1 || entries > mostOfAKind || !nameLine || !IsKey(*nameLine, "-4") ||
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
    Block block{*form, entries, array.Components, in.Position()};
    const bool isWhole = block.Skip(in);
    blocks.emplace(std::pair(lastStep(), index), block);
    Result.Steps.back().End = in.Position();
    return isWhole;
}

/// False ends the reading: at what can't be understood, or where the file is cut short.
bool File::readRecord(std::string_view line) {
    const std::string header(line);
    const std::string_view key = Column(header, 0, 6);
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
    for (auto line = in.Line(); line && !Column(*line, 0, 6).starts_with("9999"); line = in.Line())
        if (!readRecord(*line)) {
            Result.LeftOut.append(CutData.toString());
            if (!Result.Steps.empty())
                Result.Steps.back().End = in.End() + 1;
            break;
        }
    Result.IsCut = in.IsCut(); // there is a mark for the file's end
    if (in.WasStopped() || ids.empty() || Result.Points.size() != ids.size() * 3)
        return false;
    for (const auto& [place, block] : blocks)
        Result.Steps[std::size_t(place.first)].Arrays.push_back(place.second);
    struct Values {
        ReadHandle File;
        IdIndex Nodes;
        std::size_t Points;
        std::map<std::pair<std::int32_t, std::int32_t>, Block> Blocks;
    };
    const auto all = std::make_shared<const Values>(Values{file, std::move(nodes), ids.size(), std::move(blocks)});
    Result.Read = [all](std::int32_t step, std::int32_t array) {
        const Block& block = all->Blocks.at({step, array});
        std::vector<float> values(all->Points * std::size_t(block.Components));
        FileScanner reader(all->File);
        block.Read(reader, [&](std::span<const std::int64_t> some, std::span<const double> reals) {
            const double* real = reals.data();
            for (const std::int64_t id : some) {
                if (const std::int32_t node = all->Nodes.Of(id); node >= 0)
                    std::copy_n(real, block.Components, values.begin() + qsizetype(node) * block.Components);
                real += block.Components;
            }
        });
        return values;
    };
    Result.Find = [all](std::int32_t step, std::int32_t array) -> std::optional<DirectArray> {
        const Block& block = all->Blocks.at({step, array});
        if (block.EntryBytes == 0)
            return {};
        return DirectArray{all->File, block.Offset, block.EntryBytes, block.Entries, block.RecordReader(all->Nodes)};
    };
    return true;
}

} // namespace

bool FrdReader::Recognises(QByteArrayView start, const QString& path) {
    return start.startsWith("    1C") || (start.startsWith("    1U") && path.endsWith(u".frd", Qt::CaseInsensitive));
}

bool FrdReader::Open(const QString& path, ResultContent& content, const LoadProgress& progress) {
    File file(ReadHandle::Open(path), progress);
    if (!file.Read()) {
        content.Note = WhyRefused({}, file.IsCut());
        return false;
    }
    return BuildContent(std::move(file.Result), content);
}
