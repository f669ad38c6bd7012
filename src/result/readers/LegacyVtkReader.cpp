#include "result/readers/LegacyVtkReader.h"

#include "result/readers/ForeignResult.h"
#include "result/readers/LegacyVtkMesh.h"

namespace {

constexpr std::string_view magic = "# vtk DataFile Version ";
constexpr qint64 mostComponents = 99;

/// One file on its way into a `ForeignResult`.
class File {
public:
    File(const ReadHandle& openFile, const LoadProgress& progress) : file(openFile), in(openFile, progress) {}

    /// False, perhaps with the reason in `Problem`, when there is no mesh to be had.
    bool Read();

    /// Whether the file ends where something was to come.
    bool IsCut() { return !in.Scanner.CanGive(1) || in.Scanner.IsCut(); }

    ForeignResult Result;
    QString Problem;

private:
    using Words = LegacyVtkLines::Words;

    bool readHeader();
    bool readSection(const Words& words);
    bool readScalars(const Words& words);
    bool readArray(std::string_view name, qint64 components, qint64 tuples, std::string_view type);
    bool readFields(const Words& words);
    void skipMetadata();

    ReadHandle file;
    LegacyVtkLines in;
    LegacyVtkMesh mesh;
    std::vector<LegacyVtkBlock> blocks; ///< of the arrays
    enum { OfFile, OfPoints, OfCells } place = OfFile;
    qint64 placeCount = 0;
};

bool File::readHeader() {
    const auto first = in.Scanner.Line();
    if (!first)
        return false;
    double version = 0;
    FileScanner::NumberOf(first->substr(std::min(magic.size(), first->size())), version);
    in.Version = Result.Version = std::int32_t(std::clamp(version, 0.0, 99.0) * 100);
    const auto title = in.Scanner.Line();
    if (!title)
        return false;
    Result.Title = QString::fromUtf8(title->data(), qsizetype(title->size())).trimmed();
    const auto form = in.Next();
    if (!form || form->empty())
        return false;
    in.IsText = QByteArrayView(form->front()).compare("ASCII", Qt::CaseInsensitive) == 0;
    return in.IsText || QByteArrayView(form->front()).compare("BINARY", Qt::CaseInsensitive) == 0;
}

/// Notes where an array stands and goes past it; one of which nothing is there doesn't count.
bool File::readArray(std::string_view name, qint64 components, qint64 tuples, std::string_view type) {
    const auto numbers = LegacyVtkBlock::TypeOf(type);
    if (!numbers || components < 1 || components > mostComponents) {
        if (in.Scanner.CanGive(1)) // else the name of the type may be cut
            Problem = u"配列 %1 を読むことができません。"_s.arg(vtkCells::NameOf(name));
        return false;
    }
    const LegacyVtkBlock block = in.Block(components * tuples, *numbers);
    constexpr std::string_view timeNames[] = {"TIME", "TimeValue"};
    if (place != OfFile && tuples == placeCount && in.Scanner.Remaining() > 0) {
        Result.Arrays.push_back({vtkCells::NameOf(name), std::int32_t(components), {}, place == OfCells});
        blocks.push_back(block);
    } else if (block.Count == 1 && std::ranges::find(timeNames, name) != std::end(timeNames)) {
        return block.Read<double>(in.Scanner, [this](auto time) {
            if (!time.empty())
                Result.Steps.front().Time = time.front();
        });
    }
    return block.Skip(in.Scanner);
}

bool File::readScalars(const Words& words) {
    qint64 components = 1;
    if (words.size() < 3 || (words.size() > 3 && !LegacyVtkLines::Count(words, 3, components, mostComponents)))
        return false;
    const std::string name(words[1]), type(words[2]);
    // The line that names the table of colours may be missing, and then the values begin where it would.
    const qint64 start = in.Scanner.Position();
    const auto table = in.Next();
    if (!table || table->front() != "LOOKUP_TABLE")
        in.Scanner.Seek(start);
    return readArray(name, components, placeCount, type);
}

/// Lines up to a blank one.
void File::skipMetadata() {
    for (auto text = in.Scanner.Line(); text && !WordsOf(*text).empty();)
        text = in.Scanner.Line();
}

bool File::readFields(const Words& words) {
    qint64 arrays = 0;
    if (!LegacyVtkLines::Count(words, 2, arrays))
        return false;
    while (arrays > 0) {
        const auto header = in.Next();
        if (!header)
            return false;
        if (header->front() == "METADATA") {
            skipMetadata();
            continue;
        }
        qint64 components = 0, tuples = 0;
        if (header->size() < 4 || !LegacyVtkLines::Count(*header, 1, components) ||
            !LegacyVtkLines::Count(*header, 2, tuples) || !readArray((*header)[0], components, tuples, (*header)[3]))
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
        return LegacyVtkLines::Count(words, 1, placeCount) &&
               std::size_t(placeCount) == (place == OfCells ? mesh.Cells.Ends.size() : mesh.Points.size() / 3);
    }
    qint64 components = 0;
    if (name == "TEXTURE_COORDINATES")
        return words.size() > 3 && LegacyVtkLines::Count(words, 2, components) &&
               readArray(words[1], components, placeCount, words[3]);
    if (name == "METADATA") {
        skipMetadata();
        return true;
    }
    if (name == "COLOR_SCALARS" || name == "LOOKUP_TABLE") {
        // Colours, and no values: four to an entry of a table, and bytes in a binary file.
        const bool isTable = name == "LOOKUP_TABLE";
        return LegacyVtkLines::Count(words, 2, components) &&
               in.Block(isTable ? components * 4 : components * placeCount, NumberType::UInt8).Skip(in.Scanner);
    }
    return mesh.Read(in, words);
}

bool File::Read() {
    if (!readHeader())
        return false;
    Result.Magic = u"VTK"_s;
    Result.Steps.resize(1);
    const auto dataset = in.Next();
    if (!dataset || dataset->size() < 2 || dataset->front() != "DATASET")
        return false;
    if ((*dataset)[1] != "UNSTRUCTURED_GRID" && (*dataset)[1] != "POLYDATA") {
        if (in.Scanner.CanGive(1))
            Problem = u"データセット %1 は読むことができません。"_s.arg(QString::fromUtf8((*dataset)[1]));
        return false;
    }
    qint64& end = Result.Steps.front().End;
    for (auto words = in.Next(); words; words = in.Next()) {
        if (!readSection(*words)) {
            Result.LeftOut.append(CutData.toString());
            Result.IsCut = IsCut();
            end = in.Scanner.End() + 1;
            break;
        }
        // Of a text that ends with a digit there may be more.
        end = in.Scanner.Position() + (in.IsText ? 1 : 0);
    }
    if (in.Scanner.WasStopped() || mesh.Points.empty() || !vtkCells::BuildCells(std::move(mesh.Cells), Result.Cells))
        return false;
    Result.Points = std::move(mesh.Points);
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
    if (!in.IsText)
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
