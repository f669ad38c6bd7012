#include "result/readers/GmshReader.h"

#include "result/readers/GmshData.h"
#include "result/readers/GmshMesh.h"

#include <map>

namespace {

using Place = GmshData::Place;

/// One file on its way into a `ForeignResult`.
class File {
public:
    File(const ReadHandle& openFile, const LoadProgress& progress) : in(openFile, progress) { data.File = openFile; }

    /// False, perhaps with the reason in `Problem`, when there is no mesh to be had.
    bool Read();

    /// Whether the file ends where something was to come.
    bool IsCut() { return !in.CanGive(1) || in.IsCut(); }

    ForeignResult Result;
    QString Problem;

private:
    bool readFormat();
    bool readSection(std::string_view name);
    bool readData(Place place);
    bool skipData(Place place, const GmshData::Section& section, std::int64_t components);
    std::size_t arrayOf(const QString& name, std::int32_t components, Place place);
    bool skipTo(std::string_view end);
    void finish();

    FileScanner in;
    GmshNumbers numbers{in};
    bool isVersion4 = false;
    GmshMesh mesh;
    GmshData data;
    std::map<std::int64_t, ForeignStep> steps; ///< by their numbers
    std::int64_t lastStep = 0;                 ///< that of the section of values read last
};

bool File::readFormat() {
    double version = 0;
    std::int64_t isBinary = 0, width = 0, one = 1;
    if (!in.Number(version) || !in.Number(isBinary) || !in.Number(width))
        return false;
    in.Line();
    Result.Version = std::int32_t(std::clamp(version, 0.0, 99.0) * 100 + 0.5);
    constexpr std::int32_t version4 = 410;
    isVersion4 = Result.Version == version4;
    if ((Result.Version / 100 != 2 && !isVersion4) || width != 8) {
        Problem = u"バージョン %1 の .msh は読むことができません。"_s.arg(version);
        return false;
    }
    numbers.IsText = isBinary == 0;
    if (!numbers.IsText && !numbers.Int(one))
        return false;
    numbers.IsBigEndian = one != 1;
    return true;
}

/// The array of that name and kind, which is new when there is none.
std::size_t File::arrayOf(const QString& name, std::int32_t components, Place place) {
    std::size_t index = 0;
    for (; index < Result.Arrays.size(); ++index)
        if (Result.Arrays[index].Name == name && Result.Arrays[index].Components == components &&
            data.Places[index] == place)
            return index;
    Result.Arrays.push_back({name, components, {}, place == Place::Elements});
    data.Places.push_back(place);
    return index;
}

/// Notes where the values stand and goes past them.
bool File::readData(Place place) {
    std::int64_t texts = 0, reals = 0, wholes = 0;
    QString name;
    if (!in.Number(texts) || texts < 0)
        return false;
    in.Line();
    for (std::int64_t i = 0; i < texts; ++i) {
        const auto line = in.Line();
        if (!line)
            return false;
        if (i == 0)
            name = QString::fromUtf8(line->data(), qsizetype(line->size())).trimmed();
    }
    if (name.size() > 1 && name.startsWith(u'"') && name.endsWith(u'"'))
        name = name.sliced(1, name.size() - 2);
    double time = 0, real = 0;
    if (!in.Number(reals))
        return false;
    for (std::int64_t i = 0; i < reals; ++i)
        if (!in.Number(i == 0 ? time : real))
            return false;
    std::int64_t step = 0, components = 1, entries = 0, other = 0;
    if (!in.Number(wholes))
        return false;
    for (std::int64_t i = 0; i < wholes; ++i)
        if (!in.Number(i == 0 ? step : i == 1 ? components : i == 2 ? entries : other))
            return false;
    in.Line();
    if (components < 1 || components > GmshData::MostComponents || !numbers.CanHold(entries, NumberType::Int32))
        return false;
    if (entries < 1)
        return true;
    GmshData::Section section{arrayOf(name, std::int32_t(components), place), step, entries, in.Position()};
    data.Sections.push_back(section);
    steps.try_emplace(step, ForeignStep{time, {}, 0});
    lastStep = step;
    return skipData(place, section, components);
}

bool File::skipData(Place place, const GmshData::Section& section, std::int64_t components) {
    if (numbers.IsText) // where no name can stand between the numbers
        return SkipTo(in, '$');
    const std::int64_t values = components * qint64(sizeof(double));
    if (place != Place::ElementNodes) {
        in.Seek(std::min(section.Offset + section.Entries * (4 + values), section.Offset + in.Remaining()));
        return true;
    }
    for (std::int64_t left = section.Entries; left > 0; --left) {
        std::int64_t id = 0, nodes = 0;
        if (!numbers.Int(id) || !numbers.Int(nodes) || !numbers.CanHold(nodes, NumberType::Float64) ||
            nodes * values > in.Remaining())
            return false;
        in.Seek(in.Position() + nodes * values);
    }
    return true;
}

/// False ends the reading: at what can't be understood, or where the file is cut short.
bool File::readSection(std::string_view name) {
    if (name == "MeshFormat")
        return readFormat();
    if (name == "Nodes")
        return mesh.ReadNodes(numbers, isVersion4);
    if (name == "Elements")
        return mesh.ReadElements(numbers, isVersion4);
    if (name == "NodeData")
        return readData(Place::Nodes);
    if (name == "ElementData")
        return readData(Place::Elements);
    return name != "ElementNodeData" || readData(Place::ElementNodes);
}

/// Past the mark of a section's end, before which any bytes may stand. False when it isn't there.
bool File::skipTo(std::string_view end) {
    while (SkipTo(in, '$'))
        if (in.Word().ends_with(end))
            return true;
    return false;
}

/// What the sections give together.
void File::finish() {
    data.IsText = numbers.IsText;
    data.IsBigEndian = numbers.IsBigEndian;
    data.Points = mesh.PointIds.size();
    data.Cells = mesh.CellIds.size();
    data.PointIndex = mesh.PointIndex;
    data.CellIndex = IdIndex(mesh.CellIds);
    if (std::ranges::find(data.Places, Place::ElementNodes) != data.Places.end())
        data.NodesOfCells = mesh.Cells;
    Result.Magic = u"Gmsh"_s;
    Result.Points = std::move(mesh.Points);
    Result.Cells = std::move(mesh.Cells);
    for (const auto& [number, step] : steps) {
        Result.Steps.push_back(step);
        data.Steps.push_back(number);
    }
    std::ranges::stable_sort(data.Sections, {}, &GmshData::Section::Array);
    for (const GmshData::Section& section : data.Sections) {
        const auto step = std::ranges::lower_bound(data.Steps, section.Step) - data.Steps.begin();
        std::vector<std::int32_t>& there = Result.Steps[std::size_t(step)].Arrays;
        if (there.empty() || there.back() != std::int32_t(section.Array))
            there.push_back(std::int32_t(section.Array));
    }
    const auto all = std::make_shared<const GmshData>(std::move(data));
    Result.Read = [all, arrays = Result.Arrays](std::int32_t step, std::int32_t array) {
        return all->Read(step, arrays[std::size_t(array)], array);
    };
    Result.Find = [all, arrays = Result.Arrays](std::int32_t step, std::int32_t array) {
        return all->Find(step, arrays[std::size_t(array)], array);
    };
}

bool File::Read() {
    while (const auto line = in.FilledLine()) {
        if (!line->starts_with('$'))
            continue;
        const std::string name(WordsOf(line->substr(1)).empty() ? std::string_view()
                                                                : WordsOf(line->substr(1)).front());
        const bool isWhole = readSection(name) && skipTo("$End" + name);
        if (const auto step = steps.find(lastStep); step != steps.end())
            step->second.End = isWhole ? in.Position() : in.End() + 1;
        if (!isWhole) {
            Result.LeftOut.append(CutData.toString());
            Result.IsCut = IsCut();
            break;
        }
        in.Line();
    }
    if (in.WasStopped() || !Problem.isEmpty() || mesh.Points.empty() || mesh.Points.size() != mesh.PointIds.size() * 3)
        return false;
    finish();
    return true;
}

} // namespace

bool GmshReader::Recognises(QByteArrayView start, const QString& path) {
    return start.startsWith("$MeshFormat") || (start.startsWith('$') && path.endsWith(u".msh", Qt::CaseInsensitive));
}

bool GmshReader::Open(const QString& path, ResultContent& content, const LoadProgress& progress) {
    File file(ReadHandle::Open(path), progress);
    if (!file.Read()) {
        content.Note = WhyRefused(file.Problem, file.IsCut());
        return false;
    }
    return BuildContent(std::move(file.Result), content);
}
