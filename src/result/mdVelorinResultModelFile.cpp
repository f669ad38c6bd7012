// The walk through a result file from its first byte to its last.
#include "result/mdVelorinResultModel.h"

#include "app/NumberFormat.h"
#include "app/mdApplication.h"
#include "platform/base/Codepage.h"

#include <QFileInfo>
#include <limits>

namespace mdVelorinResultModel {

namespace {

constexpr qint64 fewestBytesPerItem = 12;
constexpr qint64 bytesPerNode = 16;
constexpr qint64 fewestBytesPerElement = 4;
constexpr qint64 bytesPerValue = 8;

/// A count as the number of things to read, 0 for a negative one.
qint64 howMany(std::int32_t count) {
    return std::max(count, 0);
}

/// False when the text claims more bytes than the file has left. A text without bytes leaves `text` as it is.
bool readText(SequentialReader& reader, QString& text) {
    std::int32_t length = 0;
    if (!reader.ReadInt32(length))
        return false;
    if (length < 1)
        return true;
    if (length > reader.Remaining())
        return false;
    QByteArray bytes(length, Qt::Uninitialized);
    if (!reader.ReadBytes(bytes.data(), length))
        return false;
    text = Codepage::Decode(bytes);
    return true;
}

bool readHeaderAndItems(SequentialReader& reader, ResultModel& model) {
    if (!reader.ReadInt32(model.Version) || !readText(reader, model.Title))
        return false;
    model.DisplacementItemX = model.DisplacementItemY = -1;
    if (!reader.ReadInt32(model.ItemCount) || howMany(model.ItemCount) * fewestBytesPerItem > reader.Remaining())
        return false;
    model.Items.reserve(howMany(model.ItemCount));
    for (std::int32_t i = 0; i < model.ItemCount; ++i) {
        ItemInfo item;
        item.Name = u"Item - "_s + QString::number(i + 1);
        if (!readText(reader, item.Name) || !reader.ReadInt32(item.ElementType) || !reader.ReadInt32(item.Flags))
            return false;
        model.Items.append(item);
    }
    return true;
}

/// Between two calls of the progress lie this many nodes or elements.
constexpr qint64 progressStride = 65536;

bool goesOn(const LoadProgress& progress, const SequentialReader& reader) {
    return !progress || progress(reader.Position(), reader.Position() + reader.Remaining());
}

bool readNodes(SequentialReader& reader, MeshData& mesh, const LoadProgress& progress) {
    const qint64 count = howMany(mesh.NodeCount);
    NodeTable& nodes = mesh.Nodes;
    for (QList<float>* column : {&nodes.X, &nodes.Y, &nodes.Value, &nodes.ReferenceValue})
        column->resize(count);
    nodes.Active.resize(count);
    float* x = nodes.X.data();
    float* y = nodes.Y.data();
    for (qint64 i = 0; i < count; ++i) {
        double position[2];
        if (!reader.ReadBytes(position, sizeof position) || (i % progressStride == 0 && !goesOn(progress, reader)))
            return false;
        x[i] = float(position[0]);
        y[i] = float(position[1]);
    }
    return true;
}

bool readElements(SequentialReader& reader, MeshData& mesh, const LoadProgress& progress) {
    const qint64 count = howMany(mesh.ElementCount);
    ElementTable& elements = mesh.Elements;
    elements.ElementType.resize(count);
    elements.FirstCorner.resize(count + 1);
    std::int32_t* first = elements.FirstCorner.data();
    // The room asked for grows with what was really read, so that a false count costs no memory.
    std::vector<std::int32_t> numbers;
    numbers.reserve(std::size_t(std::min(count * 4, reader.Remaining() / 4)));
    for (qint64 e = 0; e < count; ++e) {
        std::int32_t nodeCount = 0;
        if (e % progressStride == 0 && !goesOn(progress, reader))
            return false;
        if (!reader.ReadInt32(nodeCount) || howMany(nodeCount) * 4 > reader.Remaining())
            return false;
        const std::size_t start = numbers.size();
        numbers.resize(start + std::size_t(howMany(nodeCount)));
        if (!reader.ReadBytes(numbers.data() + start, howMany(nodeCount) * 4))
            return false;
        first[e + 1] = std::int32_t(numbers.size());
    }
    elements.NodeIndex.resize(qsizetype(numbers.size()));
    std::transform(numbers.begin(), numbers.end(), elements.NodeIndex.data(), [](std::int32_t number) {
        return number == std::numeric_limits<std::int32_t>::min() ? number : number - 1;
    });
    elements.Neighbour.fill(-1, elements.NodeIndex.size());
    return true;
}

bool readMesh(SequentialReader& reader, MeshData& mesh, const LoadProgress& progress) {
    if (!reader.ReadInt32(mesh.NodeCount) || !reader.ReadInt32(mesh.ElementCount))
        return false;
    if (howMany(mesh.NodeCount) * bytesPerNode + howMany(mesh.ElementCount) * fewestBytesPerElement >
        reader.Remaining())
        return false;
    if (!readNodes(reader, mesh, progress) || !readElements(reader, mesh, progress))
        return false;
    constexpr qint64 reservedBytes = 16;
    reader.Skip(reservedBytes);
    return true;
}

bool scanSteps(SequentialReader& reader, ResultModel& model, const LoadProgress& progress) {
    model.FirstStepOffset = std::int32_t(reader.Position());
    while (reader.Remaining() > 0) {
        if (!goesOn(progress, reader))
            return false;
        StepInfo step;
        step.FileOffset = std::int32_t(reader.Position());
        double time = 0;
        reader.ReadDouble(time);
        step.Time = float(time);
        if (!readText(reader, step.Name))
            reader.Skip(reader.Remaining());
        if (step.Name.isEmpty())
            step.Name = u"Time : "_s + mdApplication::FormatAutoNumber(time, 3, false);
        step.TypesOffset = std::int32_t(reader.Position());
        reader.Skip(howMany(model.Mesh.ElementCount) * 4);
        for (std::int32_t i = 0; i < model.ItemCount; ++i) {
            std::int32_t valueCount = 0;
            reader.ReadInt32(valueCount);
            reader.Skip(howMany(valueCount) * bytesPerValue);
            model.ValueCounts.append(valueCount);
        }
        model.Steps.append(step);
    }
    model.StepCount = std::int32_t(model.Steps.size());
    return true;
}

void findDisplacementItems(ResultModel& model) {
    for (std::int32_t i = model.ItemCount - 1; i >= 0; --i) {
        if (model.Items.at(i).Flags & 1)
            model.DisplacementItemX = i;
        if (model.Items.at(i).Flags & 2)
            model.DisplacementItemY = i;
    }
    model.NoDisplacement = model.DisplacementItemX < 0 && model.DisplacementItemY < 0;
}

bool isNodeOf(const MeshData& mesh, std::int32_t node) {
    return node >= 0 && node < mesh.NodeCount;
}

/// Element centres, and the way back from each node to its elements.
void deriveFromElements(MeshData& mesh) {
    ElementTable& elements = mesh.Elements;
    NodeTable& nodes = mesh.Nodes;
    const std::int32_t* nodeIndex = elements.NodeIndex.constData();
    elements.CentreX.resize(mesh.ElementCount);
    elements.CentreY.resize(mesh.ElementCount);
    nodes.FirstEntry.fill(0, mesh.NodeCount + 1);
    std::int32_t* firstEntry = nodes.FirstEntry.data();
    for (qsizetype i = 0; i < elements.NodeIndex.size(); ++i)
        if (isNodeOf(mesh, nodeIndex[i]))
            ++firstEntry[nodeIndex[i] + 1];
    for (std::int32_t i = 0; i < mesh.NodeCount; ++i)
        firstEntry[i + 1] += firstEntry[i];

    nodes.ElementIndex.resize(firstEntry[mesh.NodeCount]);
    nodes.CornerIndex.resize(firstEntry[mesh.NodeCount]);
    std::vector<std::int32_t> next(firstEntry, firstEntry + mesh.NodeCount);
    std::int32_t* elementIndex = nodes.ElementIndex.data();
    std::int32_t* cornerIndex = nodes.CornerIndex.data();
    float* centreX = elements.CentreX.data();
    float* centreY = elements.CentreY.data();
    for (std::int32_t e = 0; e < mesh.ElementCount; ++e) {
        const std::int32_t first = elements.FirstCorner.at(e);
        const std::int32_t count = elements.NodeCount(e);
        float sumX = 0, sumY = 0;
        for (std::int32_t corner = 0; corner < count; ++corner) {
            const std::int32_t node = nodeIndex[first + corner];
            if (!isNodeOf(mesh, node))
                continue;
            sumX += nodes.X.at(node);
            sumY += nodes.Y.at(node);
            const std::int32_t entry = next[std::size_t(node)]++;
            elementIndex[entry] = e;
            cornerIndex[entry] = corner;
        }
        centreX[e] = count > 0 ? sumX / float(count) : 0;
        centreY[e] = count > 0 ? sumY / float(count) : 0;
    }
}

bool hasLineElementsOnly(const MeshData& mesh) {
    for (std::int32_t e = 0; e < mesh.ElementCount; ++e)
        if (mesh.Elements.NodeCount(e) > 2)
            return false;
    return true;
}

bool readWholeFile(SequentialReader& reader, ResultModel& model, const LoadProgress& progress) {
    if (!readHeaderAndItems(reader, model) || !readMesh(reader, model.Mesh, progress))
        return false;
    if (model.ItemCount < 1 || model.Mesh.NodeCount < 1 || model.Mesh.ElementCount < 1)
        return false;
    // From here on only a few bytes are read between long ways, and a large buffer would read the whole file after all.
    constexpr qint64 scanBufferBytes = 512;
    SequentialReader scan(model.FileHandle, reader.Position(), scanBufferBytes);
    return scanSteps(scan, model, progress);
}

} // namespace

bool CheckFileMagic(const QString& path, const QString& magic) {
    if (magic.isEmpty())
        return true;
    const ReadHandle file = ReadHandle::Open(path);
    QByteArray bytes(magic.size(), Qt::Uninitialized);
    bytes.resize(file.ReadAt(0, bytes.data(), bytes.size()));
    return Codepage::Decode(bytes).toLower() == magic.toLower();
}

bool IsResultFile(const QString& path) {
    return mdApplication::FileExists(path) && CheckFileMagic(path, ResultFileMagic);
}

bool LoadResultFile(const QString& path, ResultModel& model, const LoadProgress& progress) {
    if (!IsResultFile(path))
        return false;
    CloseResultFile(model);
    const ReadHandle file = ReadHandle::Open(path);
    // The earlier file's title is all that a file can take over; the rest goes before the new mesh asks for memory.
    const QString title = model.Title;
    model = {};
    model.Title = title;
    if (!file.IsOpen())
        return false;

    model.FileHandle = file;
    model.Magic = ResultFileMagic;
    SequentialReader reader(file, ResultFileMagic.size());
    if (file.Size() > std::numeric_limits<std::int32_t>::max() || !readWholeFile(reader, model, progress)) {
        model = {};
        model.Title = title;
        return false;
    }
    model.FileName = QFileInfo(path).absoluteFilePath();
    findDisplacementItems(model);
    deriveFromElements(model.Mesh);
    model.LineElementsOnly = hasLineElementsOnly(model.Mesh);
    return true;
}

void CloseResultFile(ResultModel& model) {
    model.FileHandle.Close();
}

bool IsFileClosed(const ResultModel& model) {
    return !model.FileHandle.IsOpen();
}

} // namespace mdVelorinResultModel
