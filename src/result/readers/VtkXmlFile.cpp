#include "result/readers/VtkXmlFile.h"

#include "result/readers/TextNumbers.h"

#include <QXmlStreamReader>
#include <limits>

namespace {

constexpr qint64 longestTag = 1 << 16;
constexpr qint64 mostTags = 1 << 26; ///< bytes
constexpr std::int32_t mostComponents = 99;

/// The tags of a file, and where the texts of its arrays stand: in the place of each is its number.
struct Skeleton {
    QByteArray Tags;
    std::vector<std::pair<qint64, qint64>> Texts;
    qint64 Appended = -1; ///< what offsets of appended arrays count from
};

/// A tag up to its end; nothing for one that doesn't end, and for what declares or quotes, which no such file does.
std::optional<QByteArray> readTag(FileScanner& in) {
    QByteArray tag;
    char quote = 0;
    while (tag.size() < longestTag) {
        const auto c = in.Byte();
        if (!c)
            return {};
        tag += *c;
        const bool isComment = tag.startsWith("<!--");
        if (tag.size() == 4 && tag.startsWith("<!") && !isComment)
            return {};
        if (isComment) {
            if (tag.size() > 6 && tag.endsWith("-->"))
                return QByteArray();
            // A comment may be of any length.
            if (tag.size() > 64)
                tag.remove(4, 32);
            continue;
        }
        if (quote != 0)
            quote = *c == quote ? 0 : quote;
        else if (*c == '"' || *c == '\'')
            quote = *c;
        else if (*c == '>')
            return tag;
    }
    return {};
}

bool readSkeleton(FileScanner& in, Skeleton& skeleton) {
    QByteArray tag;
    for (qint64 textStart = 0; SkipTo(in, '<'); textStart = in.Position()) {
        if (tag.startsWith("<DataArray") && !tag.endsWith("/>")) {
            skeleton.Tags += QByteArray::number(qint64(skeleton.Texts.size()));
            skeleton.Texts.emplace_back(textStart, in.Position());
        }
        const auto next = readTag(in);
        if (!next || skeleton.Tags.size() > mostTags)
            return false;
        if (next->isEmpty())
            continue;
        tag = *next;
        skeleton.Tags += tag;
        if (tag.startsWith("<AppendedData") && !tag.endsWith("/>")) {
            // Behind the mark stands what may look like anything.
            if (!SkipTo(in, '_'))
                return false;
            skeleton.Appended = in.Position() + 1;
            skeleton.Tags += "</AppendedData></VTKFile>";
            return true;
        }
    }
    return !in.WasStopped();
}

std::optional<NumberType> typeOf(QStringView name) {
    static constexpr const char16_t* names[] = {u"Int8",   u"UInt8", u"Int16",  u"UInt16",  u"Int32",
                                                u"UInt32", u"Int64", u"UInt64", u"Float32", u"Float64"};
    const auto* const found = std::ranges::find(names, name, [](const char16_t* known) { return QStringView(known); });
    return found == std::end(names) ? std::nullopt : std::optional(NumberType(found - names));
}

/// The reading of one file's tags.
class TagReader {
public:
    TagReader(const Skeleton& fileSkeleton, VtkXmlFile& target) : skeleton(fileSkeleton), content(target) {}

    bool Read();
    QString Problem;

private:
    bool readFile(const QXmlStreamAttributes& attributes);
    bool startElement();
    bool readPiece(const QXmlStreamAttributes& attributes);
    bool readArray(const QXmlStreamAttributes& attributes);
    void place(const VtkDataArray& array);
    void endAppended();

    const Skeleton& skeleton;
    VtkXmlFile& content;
    QXmlStreamReader xml{skeleton.Tags};
    VtkDataArray common; ///< what the file says of all its arrays
    VtkDataArray::Packing appended = VtkDataArray::Base64;
    QString section;
};

bool TagReader::readFile(const QXmlStreamAttributes& attributes) {
    content.Kind = attributes.value(u"type"_s).toString();
    content.Version = attributes.value(u"version"_s).toString();
    common.BigEndian = attributes.value(u"byte_order"_s) == u"BigEndian";
    common.HasWideHeader = attributes.value(u"header_type"_s) == u"UInt64";
    const QStringView compressor = attributes.value(u"compressor"_s);
    if (compressor == u"vtkZLibDataCompressor")
        common.Compressed = VtkDataArray::Zlib;
    else if (compressor == u"vtkLZ4DataCompressor")
        common.Compressed = VtkDataArray::Lz4;
    else if (!compressor.isEmpty())
        Problem = u"圧縮 %1 を解くことができません。"_s.arg(compressor);
    return Problem.isEmpty();
}

bool TagReader::readPiece(const QXmlStreamAttributes& attributes) {
    bool goodPoints = false, goodCells = false;
    VtkXmlFile::Piece piece;
    piece.Points = attributes.value(u"NumberOfPoints"_s).toInt(&goodPoints);
    piece.Cells = attributes.value(u"NumberOfCells"_s).toInt(&goodCells);
    content.Pieces.push_back(piece);
    return goodPoints && goodCells && piece.Points >= 0 && piece.Cells >= 0;
}

bool TagReader::readArray(const QXmlStreamAttributes& attributes) {
    VtkDataArray array = common;
    array.Name = attributes.value(u"Name"_s).toString();
    const auto type = typeOf(attributes.value(u"type"_s));
    if (!type) // such as texts
        return true;
    array.Type = *type;
    if (attributes.hasAttribute(u"NumberOfComponents"_s))
        array.Components = attributes.value(u"NumberOfComponents"_s).toInt();
    if (array.Components < 1 || array.Components > mostComponents) {
        Problem = u"配列 %1 を読むことができません。"_s.arg(array.Name);
        return false;
    }
    for (int c = 0; c < array.Components; ++c)
        if (const QString name = u"ComponentName%1"_s.arg(c); attributes.hasAttribute(name))
            array.ComponentNames.append(attributes.value(name).toString());
    if (array.ComponentNames.size() != array.Components)
        array.ComponentNames.clear();
    const QStringView format = attributes.value(u"format"_s);
    if (format == u"appended") {
        bool good = false;
        array.Packed = VtkDataArray::Raw; // until it is known
        array.Offset = attributes.value(u"offset"_s).toLongLong(&good);
        if (!good || array.Offset < 0 || skeleton.Appended < 0 || array.Offset > content.File.Size())
            return false;
        array.Offset += skeleton.Appended;
        array.End = -1;
    } else {
        array.Packed = format == u"binary" ? VtkDataArray::Base64 : VtkDataArray::Text;
        bool good = false;
        const auto text = std::size_t(xml.readElementText().toUInt(&good));
        if (good && text < skeleton.Texts.size())
            std::tie(array.Offset, array.End) = skeleton.Texts[text];
    }
    place(array);
    return true;
}

/// An array where it belongs.
void TagReader::place(const VtkDataArray& array) {
    if (section == u"FieldData" && (array.Name == u"TimeValue" || array.Name == u"TIME"))
        content.Time = array;
    if (content.Pieces.empty())
        return;
    VtkXmlFile::Piece& piece = content.Pieces.back();
    if (section == u"Points")
        piece.Coordinates = array;
    else if (section == u"PointData" || section == u"CellData")
        piece.Arrays.push_back({array, section == u"CellData"});
    else if (section == u"Cells" && array.Name == u"connectivity")
        piece.Connectivity = array;
    else if (section == u"Cells" && array.Name == u"offsets")
        piece.Offsets = array;
    else if (section == u"Cells" && array.Name == u"types")
        piece.Types = array;
}

bool TagReader::startElement() {
    const QStringView name = xml.name();
    const QXmlStreamAttributes attributes = xml.attributes();
    if (name == u"VTKFile")
        return readFile(attributes);
    if (name == u"Piece")
        return readPiece(attributes);
    if (name == u"DataArray")
        return readArray(attributes);
    if (name == u"DataSet")
        content.Members.push_back({attributes.value(u"timestep"_s).toDouble(), attributes.value(u"file"_s).toString()});
    else if (name == u"AppendedData")
        appended = attributes.value(u"encoding"_s) == u"raw" ? VtkDataArray::Raw : VtkDataArray::Base64;
    section = name.toString();
    return true;
}

/// How appended arrays are packed stands behind them all; each ends where the next begins.
void TagReader::endAppended() {
    std::vector<VtkDataArray*> arrays;
    const auto collect = [&arrays](VtkDataArray& array) {
        if (array.Offset >= 0 && array.End < 0)
            arrays.push_back(&array);
    };
    for (VtkXmlFile::Piece& piece : content.Pieces) {
        for (VtkDataArray* array : {&piece.Coordinates, &piece.Connectivity, &piece.Offsets, &piece.Types})
            collect(*array);
        for (VtkXmlFile::NamedArray& array : piece.Arrays)
            collect(array.Data);
    }
    collect(content.Time);
    std::ranges::sort(arrays, {}, &VtkDataArray::Offset);
    qint64 end = content.File.Size();
    for (std::size_t i = arrays.size(); i-- > 0;) {
        arrays[i]->Packed = appended;
        arrays[i]->End = i + 1 < arrays.size() && arrays[i + 1]->Offset == arrays[i]->Offset ? arrays[i + 1]->End : end;
        end = arrays[i]->Offset;
    }
}

bool TagReader::Read() {
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (token == QXmlStreamReader::StartElement && !startElement())
            return false;
    }
    endAppended();
    return !xml.hasError();
}

bool endsWhole(const ReadHandle& file) {
    char end[512]; // a comment may follow
    const qint64 bytes = file.ReadAt(std::max<qint64>(file.Size() - qint64(sizeof end), 0), end, sizeof end);
    return QByteArrayView(end, bytes).contains("</VTKFile>");
}

/// Whether the mesh of each piece could stand in the file.
bool canHoldMeshes(const VtkXmlFile& content) {
    qint64 points = 0, cells = 0;
    for (const VtkXmlFile::Piece& piece : content.Pieces) {
        points += piece.Points;
        cells += piece.Cells;
        if (!piece.Coordinates.CanHold(qint64(piece.Points) * 3) || !piece.Offsets.CanHold(piece.Cells) ||
            !piece.Types.CanHold(piece.Cells) || piece.Coordinates.Components != 3)
            return false;
    }
    return std::max(points, cells) <= std::numeric_limits<std::int32_t>::max();
}

} // namespace

bool ReadVtkXml(const ReadHandle& file, const LoadProgress& progress, VtkXmlFile& content, QString& problem) {
    content.File = file;
    content.IsWhole = endsWhole(file);
    FileScanner in(file, progress);
    Skeleton skeleton;
    if (!readSkeleton(in, skeleton))
        return false;
    TagReader tags(skeleton, content);
    const bool good = tags.Read() && canHoldMeshes(content);
    problem = tags.Problem;
    return good;
}
