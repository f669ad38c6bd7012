#include "result/readers/FrdReader.h"

#include "result/readers/ForeignResult.h"
#include "result/readers/FrdMesh.h"

#include <map>

namespace {

using namespace frd;

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
    bool readValues(std::string_view header);
    bool readComponents(std::string_view nameLine, ForeignArray& array);
    std::int32_t arrayOf(const ForeignArray& array);

    ReadHandle file;
    FileScanner in;
    Mesh mesh;
    std::map<std::pair<std::int32_t, std::int32_t>, Block> blocks; ///< by step and array
    std::int64_t stepNumber = 0;                                   ///< of the last step, as the file counts them
};

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
    const auto number = NumberAt<std::int64_t>(header, 58, 5);
    const auto head = HeadOf(header);
    ForeignArray array;
    const auto nameLine = in.Line();
    if (!head || !nameLine || !IsKey(*nameLine, "-4") || !readComponents(std::string(*nameLine), array))
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
    Block block{head->Written, head->Entries, array.Components, in.Position()};
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
        return mesh.ReadNodes(in, header);
    if (key == "3C")
        return mesh.ReadElements(in, header);
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
    if (in.WasStopped() || mesh.PointIds.empty() || mesh.Points.size() != mesh.PointIds.size() * 3)
        return false;
    Result.Points = std::move(mesh.Points);
    Result.Cells = std::move(mesh.Cells);
    for (const auto& [place, block] : blocks)
        Result.Steps[std::size_t(place.first)].Arrays.push_back(place.second);
    struct Values {
        ReadHandle File;
        IdIndex Nodes;
        std::size_t Points;
        std::map<std::pair<std::int32_t, std::int32_t>, Block> Blocks;
    };
    const auto all =
        std::make_shared<const Values>(Values{file, std::move(mesh.Nodes), mesh.PointIds.size(), std::move(blocks)});
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
