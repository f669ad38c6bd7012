#include "result/readers/XmlVtkReader.h"

#include "platform/base/NativePath.h"
#include "result/readers/VtkXmlFile.h"
#include "result/readers/vtkCells.h"

#include <filesystem>
#include <map>

namespace {

/// A file with pieces of a grid. Where there are many its handle is closed, and it is opened when it is asked.
struct GridFile {
    QString Path;
    VtkXmlFile Content;

    ReadHandle Handle() const { return Content.File.IsOpen() ? Content.File : ReadHandle::Open(Path); }
};

/// A step of a series, or the only one, and the files that make it up.
struct Step {
    double Time = 0;
    std::vector<std::shared_ptr<const GridFile>> Files;
};

template<class Use>
bool forEachPiece(const Step& step, const Use& use) {
    for (const auto& file : step.Files) {
        const ReadHandle handle = file->Handle();
        for (const VtkXmlFile::Piece& piece : file->Content.Pieces)
            if (!use(handle, piece))
                return false;
    }
    return true;
}

bool readMesh(const Step& step, std::vector<double>& points, vtkCells::Lists& cells) {
    return forEachPiece(step, [&](const ReadHandle& file, const VtkXmlFile::Piece& piece) {
        const auto firstPoint = qint64(points.size()) / 3;
        const auto firstNode = qint64(cells.Nodes.size());
        const auto append = [](std::vector<std::int32_t>& list, qint64 added) {
            return [&list, added](std::span<const std::int32_t> numbers) {
                const std::size_t before = list.size();
                list.resize(before + numbers.size());
                std::ranges::transform(numbers, list.begin() + qsizetype(before), [added](std::int32_t number) {
                    return number < 0 ? number : NumberAs<std::int32_t>(number + added);
                });
            };
        };
        const auto appendPoints = [&points](std::span<const double> numbers) {
            points.insert(points.end(), numbers.begin(), numbers.end());
        };
        if (!ReadNumbers<double>(file, piece.Coordinates, qint64(piece.Points) * 3, appendPoints) ||
            !ReadNumbers<std::int32_t>(file, piece.Types, piece.Cells, append(cells.Types, 0)) ||
            !ReadNumbers<std::int32_t>(file, piece.Offsets, piece.Cells, append(cells.Ends, firstNode)))
            return false;
        const qint64 nodes = piece.Cells > 0 ? cells.Ends.back() - firstNode : 0;
        return nodes >= 0 &&
               ReadNumbers<std::int32_t>(file, piece.Connectivity, nodes, append(cells.Nodes, firstPoint));
    });
}

/// Whether all steps have the mesh of the first. Where the bytes are the same nothing need be read as numbers.
bool haveSameMesh(const Step& first, const Step& other) {
    const auto sameBytes = [](const auto& fileA, const auto& fileB) {
        if (fileA == fileB)
            return true;
        const ReadHandle handleA = fileA->Handle(), handleB = fileB->Handle();
        const auto samePiece = [&](const VtkXmlFile::Piece& a, const VtkXmlFile::Piece& b) {
            return a.Points == b.Points && a.Cells == b.Cells &&
                   HaveSameBytes(handleA, a.Coordinates, handleB, b.Coordinates) &&
                   HaveSameBytes(handleA, a.Types, handleB, b.Types) &&
                   HaveSameBytes(handleA, a.Offsets, handleB, b.Offsets) &&
                   HaveSameBytes(handleA, a.Connectivity, handleB, b.Connectivity);
        };
        return std::ranges::equal(fileA->Content.Pieces, fileB->Content.Pieces, samePiece);
    };
    if (std::ranges::equal(first.Files, other.Files, sameBytes))
        return true;
    std::vector<double> points, otherPoints;
    vtkCells::Lists cells, otherCells;
    return readMesh(first, points, cells) && readMesh(other, otherPoints, otherCells) &&
           std::ranges::equal(points, otherPoints) && cells.Types == otherCells.Types &&
           cells.Ends == otherCells.Ends && cells.Nodes == otherCells.Nodes;
}

bool isOf(const ForeignArray& array, const VtkXmlFile::NamedArray& candidate) {
    return candidate.OnCells == array.OnCells && candidate.Data.Name == array.Name &&
           candidate.Data.Components == array.Components;
}

/// The arrays of all steps, each under its name once.
void collectArrays(const std::vector<Step>& steps, ForeignResult& result) {
    const auto indexOf = [&result](const VtkXmlFile::NamedArray& array) {
        const auto known = std::ranges::find_if(
            result.Arrays, [&array](const ForeignArray& candidate) { return isOf(candidate, array); });
        const auto index = std::int32_t(known - result.Arrays.begin());
        if (known == result.Arrays.end())
            result.Arrays.push_back({array.Data.Name, array.Data.Components, array.Data.ComponentNames, array.OnCells});
        return index;
    };
    for (const Step& step : steps) {
        ForeignStep& target = result.Steps.emplace_back();
        target.Time = step.Time;
        for (const auto& file : step.Files)
            for (const VtkXmlFile::Piece& piece : file->Content.Pieces)
                std::ranges::transform(piece.Arrays, std::back_inserter(target.Arrays), indexOf);
        std::ranges::sort(target.Arrays);
    }
}

std::vector<float> readArray(const Step& step, const ForeignArray& array) {
    std::vector<float> values;
    std::size_t end = 0;
    forEachPiece(step, [&](const ReadHandle& file, const VtkXmlFile::Piece& piece) {
        const qint64 count = qint64(array.OnCells ? piece.Cells : piece.Points) * array.Components;
        const auto found = std::ranges::find_if(
            piece.Arrays, [&array](const VtkXmlFile::NamedArray& candidate) { return isOf(array, candidate); });
        if (found != piece.Arrays.end())
            ReadNumbers<float>(file, found->Data, count, [&values](std::span<const float> numbers) {
                values.insert(values.end(), numbers.begin(), numbers.end());
            });
        // What a piece lacks must not move those behind it.
        end += std::size_t(count);
        values.resize(end);
        return true;
    });
    return values;
}

/// Of a file of one piece with the array as it is.
std::optional<DirectArray> findArray(const Step& step, const ForeignArray& array) {
    if (step.Files.size() != 1 || step.Files.front()->Content.Pieces.size() != 1)
        return {};
    const GridFile& file = *step.Files.front();
    const VtkXmlFile::Piece& piece = file.Content.Pieces.front();
    const auto found = std::ranges::find_if(
        piece.Arrays, [&array](const VtkXmlFile::NamedArray& candidate) { return isOf(array, candidate); });
    if (found == piece.Arrays.end())
        return {};
    const ReadHandle handle = file.Handle();
    const qint64 count = array.OnCells ? piece.Cells : piece.Points;
    const VtkDataArray& data = found->Data;
    const std::optional<qint64> offset = data.PlainOffset(handle, count * array.Components);
    if (!offset)
        return {};
    return DirectArray{handle, *offset, array.Components * BytesOf(data.Type), count,
                       BinaryRecord(data.Type, data.BigEndian)};
}

bool requireGrid(const VtkXmlFile& file, QString& problem) {
    if (file.Kind != u"UnstructuredGrid")
        problem = u"データセット %1 は読むことができません。"_s.arg(file.Kind);
    return problem.isEmpty();
}

double timeOf(const VtkXmlFile& file) {
    double time = 0;
    ReadNumbers<double>(file.File, file.Time, 1, [&time](std::span<const double> numbers) {
        for (const double number : numbers)
            time = number;
    });
    return time;
}

/// The path of a file of the series at `path`; nothing for one that lies outside its folder.
std::optional<QString> pathOfMember(const QString& path, const QString& name) {
    const std::filesystem::path folder = NativePath::Of(NativePath::Absolute(path)).parent_path();
    const std::filesystem::path member = (folder / NativePath::Of(name)).lexically_normal();
    const auto inside = member.lexically_relative(folder.lexically_normal());
    if (name.isEmpty() || inside.empty() || *inside.begin() == ".." || *inside.begin() == ".")
        return {};
    return NativePath::Text(QByteArray::fromStdString(member.native()));
}

/// The files of a series, each of which is read once.
class Series {
public:
    Series(const QString& seriesPath, const LoadProgress& whileReading) : path(seriesPath), progress(whileReading) {}

    /// The steps in their order; false, with the reason in `Problem`, when they don't make a result.
    bool Read(const VtkXmlFile& series, std::vector<Step>& steps);

    std::int32_t Missing = 0, Outside = 0, Unfinished = 0;
    QString Problem;
    std::vector<NamedStamp> Parts;

private:
    std::shared_ptr<const GridFile> fileOf(const VtkXmlFile::Member& member);

    const QString& path;
    const LoadProgress& progress;
    std::map<QString, std::shared_ptr<const GridFile>> known;
};

/// Null for one that can't be had or, with a problem, not used.
std::shared_ptr<const GridFile> Series::fileOf(const VtkXmlFile::Member& member) {
    const auto memberPath = pathOfMember(path, member.File);
    if (!memberPath) {
        ++Outside;
        return {};
    }
    if (const auto found = known.find(*memberPath); found != known.end())
        return found->second;
    const ReadHandle handle = ReadHandle::Open(*memberPath);
    Parts.push_back({*memberPath, handle.Stamp()});
    if (!handle.IsOpen()) {
        ++Missing;
        return {};
    }
    auto file = std::make_shared<GridFile>();
    file->Path = *memberPath;
    QString why;
    const bool isRead = ReadVtkXml(handle, progress, file->Content, why);
    if (why.isEmpty() && !file->Content.IsWhole) { // perhaps somebody is just writing it
        ++Unfinished;
        return {};
    }
    if (!isRead || !requireGrid(file->Content, why)) {
        Problem = NativePath::Shown(member.File) + u": "_s + (why.isEmpty() ? u"ファイルの形式が不正です。"_s : why);
        return {};
    }
    file->Content.File.Close();
    known.emplace(*memberPath, file);
    return file;
}

bool Series::Read(const VtkXmlFile& series, std::vector<Step>& steps) {
    for (const VtkXmlFile::Member& member : series.Members) {
        const std::shared_ptr<const GridFile> file = fileOf(member);
        if (!Problem.isEmpty())
            return false;
        if (!file)
            continue;
        if (steps.empty() || steps.back().Time != member.Time)
            steps.push_back({member.Time, {}});
        if (std::ranges::find(steps.back().Files, file) == steps.back().Files.end())
            steps.back().Files.push_back(file);
    }
    if (steps.empty())
        Problem = u"系列のファイルがありません。"_s;
    for (std::size_t step = 1; step < steps.size() && Problem.isEmpty(); ++step)
        if (!haveSameMesh(steps.front(), steps[step]))
            Problem = u"ステップによってメッシュが異なります。"_s;
    return Problem.isEmpty();
}

} // namespace

bool XmlVtkReader::Recognises(QByteArrayView start, const QString& path) {
    if (start.startsWith("\xef\xbb\xbf"))
        start = start.sliced(3);
    if (!start.startsWith('<'))
        return false;
    return start.contains("<VTKFile") || path.endsWith(u".vtu", Qt::CaseInsensitive) ||
           path.endsWith(u".pvd", Qt::CaseInsensitive);
}

bool XmlVtkReader::Open(const QString& path, ResultContent& content, const LoadProgress& progress) {
    VtkXmlFile file;
    ForeignResult result;
    std::vector<Step> steps;
    QString problem;
    if (!ReadVtkXml(ReadHandle::Open(path), progress, file, problem)) {
        content.Note = WhyRefused(problem, !file.IsWhole);
        return false;
    }
    if (file.Kind == u"Collection") {
        Series series(path, progress);
        const bool good = series.Read(file, steps);
        content.Parts = series.Parts;
        if (series.Missing > 0)
            result.LeftOut.append(u"見つからないファイル %1"_s.arg(series.Missing));
        if (series.Unfinished > 0)
            result.LeftOut.append(u"終わりまで書かれていないファイル %1"_s.arg(series.Unfinished));
        if (series.Outside > 0)
            result.LeftOut.append(u"フォルダの外のファイル %1"_s.arg(series.Outside));
        if (!good) {
            content.Note = QString(series.Problem + u' ' + result.LeftOut.join(u"、")).trimmed();
            return false;
        }
    } else {
        if (!requireGrid(file, content.Note))
            return false;
        const double time = timeOf(file);
        steps.push_back({time, {std::make_shared<const GridFile>(GridFile{path, file})}});
    }
    result.Magic = u"VTK XML"_s;
    result.Version = std::int32_t(std::clamp(file.Version.toDouble(), 0.0, 99.0) * 100);
    vtkCells::Lists cells;
    if (!readMesh(steps.front(), result.Points, cells) || !vtkCells::BuildCells(std::move(cells), result.Cells)) {
        content.Note = WhyRefused({}, !file.IsWhole);
        return false;
    }
    collectArrays(steps, result);
    if (content.Parts.empty()) {
        result.Steps.front().End = file.File.Size() + (file.IsWhole ? 0 : 1);
        result.IsCut = !file.IsWhole;
        if (result.IsCut)
            result.LeftOut.append(CutData.toString());
    }
    const auto all = std::make_shared<const std::vector<Step>>(std::move(steps));
    result.Read = [all, arrays = result.Arrays](std::int32_t step, std::int32_t array) {
        return readArray((*all)[std::size_t(step)], arrays[std::size_t(array)]);
    };
    result.Find = [all, arrays = result.Arrays](std::int32_t step, std::int32_t array) {
        return findArray((*all)[std::size_t(step)], arrays[std::size_t(array)]);
    };
    return BuildContent(std::move(result), content);
}
