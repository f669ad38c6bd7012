#include "result/readers/XmlVtkReader.h"

#include "result/readers/ForeignResult.h"
#include "result/readers/VtkSeries.h"

namespace {

bool isOf(const ForeignArray& array, const VtkXmlFile::NamedArray& candidate) {
    return candidate.OnCells == array.OnCells && candidate.Data.Name == array.Name &&
           candidate.Data.Components == array.Components;
}

/// The arrays of all steps, each under its name once.
void collectArrays(const std::vector<VtkStep>& steps, ForeignResult& result) {
    const auto indexOf = [&result](const VtkXmlFile::NamedArray& array) {
        const auto known = std::ranges::find_if(
            result.Arrays, [&array](const ForeignArray& candidate) { return isOf(candidate, array); });
        const auto index = std::int32_t(known - result.Arrays.begin());
        if (known == result.Arrays.end())
            result.Arrays.push_back({array.Data.Name, array.Data.Components, array.Data.ComponentNames, array.OnCells});
        return index;
    };
    for (const VtkStep& step : steps) {
        ForeignStep& target = result.Steps.emplace_back();
        target.Time = step.Time;
        for (const auto& file : step.Files)
            for (const VtkXmlFile::Piece& piece : file->Content.Pieces)
                std::ranges::transform(piece.Arrays, std::back_inserter(target.Arrays), indexOf);
        std::ranges::sort(target.Arrays);
    }
}

std::vector<float> readArray(const VtkStep& step, const ForeignArray& array) {
    std::vector<float> values;
    std::size_t end = 0;
    step.ForEachPiece([&](const ReadHandle& file, const VtkXmlFile::Piece& piece) {
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
std::optional<DirectArray> findArray(const VtkStep& step, const ForeignArray& array) {
    if (step.Files.size() != 1 || step.Files.front()->Content.Pieces.size() != 1)
        return {};
    const VtkGridFile& file = *step.Files.front();
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

double timeOf(const VtkXmlFile& file) {
    double time = 0;
    ReadNumbers<double>(file.File, file.Time, 1, [&time](std::span<const double> numbers) {
        for (const double number : numbers)
            time = number;
    });
    return time;
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
    std::vector<VtkStep> steps;
    QString problem;
    if (!ReadVtkXml(ReadHandle::Open(path), progress, file, problem)) {
        content.Note = WhyRefused(problem, !file.IsWhole);
        return false;
    }
    if (file.Kind == u"Collection") {
        VtkSeries series(path, progress);
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
        if (!RequireGrid(file, content.Note))
            return false;
        const double time = timeOf(file);
        steps.push_back({time, {std::make_shared<const VtkGridFile>(VtkGridFile{path, file})}});
    }
    result.Magic = u"VTK XML"_s;
    result.Version = std::int32_t(std::clamp(file.Version.toDouble(), 0.0, 99.0) * 100);
    vtkCells::Lists cells;
    if (!steps.front().ReadMesh(result.Points, cells) || !vtkCells::BuildCells(std::move(cells), result.Cells)) {
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
    const auto all = std::make_shared<const std::vector<VtkStep>>(std::move(steps));
    result.Read = [all, arrays = result.Arrays](std::int32_t step, std::int32_t array) {
        return readArray((*all)[std::size_t(step)], arrays[std::size_t(array)]);
    };
    result.Find = [all, arrays = result.Arrays](std::int32_t step, std::int32_t array) {
        return findArray((*all)[std::size_t(step)], arrays[std::size_t(array)]);
    };
    return BuildContent(std::move(result), content);
}
