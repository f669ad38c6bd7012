#include "result/readers/VtkSeries.h"

#include "platform/base/NativePath.h"

#include <filesystem>

namespace {

/// Whether all steps have the mesh of the first. Where the bytes are the same nothing need be read as numbers.
bool haveSameMesh(const VtkStep& first, const VtkStep& other) {
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
    return first.ReadMesh(points, cells) && other.ReadMesh(otherPoints, otherCells) &&
           std::ranges::equal(points, otherPoints) && cells.Types == otherCells.Types &&
           cells.Ends == otherCells.Ends && cells.Nodes == otherCells.Nodes;
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

} // namespace

bool VtkStep::ReadMesh(std::vector<double>& points, vtkCells::Lists& cells) const {
    return ForEachPiece([&](const ReadHandle& file, const VtkXmlFile::Piece& piece) {
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

bool RequireGrid(const VtkXmlFile& file, QString& problem) {
    if (file.Kind != u"UnstructuredGrid")
        problem = u"データセット %1 は読むことができません。"_s.arg(file.Kind);
    return problem.isEmpty();
}

/// Null for one that can't be had or, with a problem, not used.
std::shared_ptr<const VtkGridFile> VtkSeries::fileOf(const VtkXmlFile::Member& member) {
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
    auto file = std::make_shared<VtkGridFile>();
    file->Path = *memberPath;
    QString why;
    const bool isRead = ReadVtkXml(handle, progress, file->Content, why);
    if (why.isEmpty() && !file->Content.IsWhole) { // perhaps somebody is just writing it
        ++Unfinished;
        return {};
    }
    if (!isRead || !RequireGrid(file->Content, why)) {
        Problem = NativePath::Shown(member.File) + u": "_s + (why.isEmpty() ? u"ファイルの形式が不正です。"_s : why);
        return {};
    }
    file->Content.File.Close();
    known.emplace(*memberPath, file);
    return file;
}

bool VtkSeries::Read(const VtkXmlFile& series, std::vector<VtkStep>& steps) {
    for (const VtkXmlFile::Member& member : series.Members) {
        const std::shared_ptr<const VtkGridFile> file = fileOf(member);
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
