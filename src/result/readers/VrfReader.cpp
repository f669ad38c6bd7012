#include "result/readers/VrfReader.h"

#include "app/mdApplication.h"
#include "platform/base/Codepage.h"
#include "platform/base/Lists.h"
#include "result/readers/VrfSteps.h"

#include <limits>

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

bool readHeaderAndItems(SequentialReader& reader, ResultContent& content) {
    QString title;
    std::int32_t itemCount = 0;
    if (!reader.ReadInt32(content.Version) || !readText(reader, title) || !reader.ReadInt32(itemCount) ||
        howMany(itemCount) * fewestBytesPerItem > reader.Remaining())
        return false;
    if (!title.isEmpty())
        content.Title = title;
    content.Items.reserve(howMany(itemCount));
    for (std::int32_t i = 0; i < itemCount; ++i) {
        ItemInfo item;
        item.Name = u"Item - "_s + QString::number(i + 1);
        if (!readText(reader, item.Name) || !reader.ReadInt32(item.ElementType) || !reader.ReadInt32(item.Flags))
            return false;
        content.Items.append(item);
    }
    return true;
}

bool goesOn(const LoadProgress& progress, const SequentialReader& reader) {
    return !progress || progress(reader.Position(), reader.Position() + reader.Remaining());
}

bool readNodes(SequentialReader& reader, qint64 count, ResultContent& content, const LoadProgress& progress) {
    constexpr qint64 mostAtOnce = 4096;
    std::vector<double> positions(2 * std::size_t(std::min(count, mostAtOnce)));
    content.NodeX = listOf<float>(count);
    content.NodeY = listOf<float>(count);
    float* x = content.NodeX.data();
    float* y = content.NodeY.data();
    for (qint64 first = 0; first < count; first += mostAtOnce) {
        const qint64 here = std::min(mostAtOnce, count - first);
        if (!goesOn(progress, reader) || !reader.ReadBytes(positions.data(), here * bytesPerNode))
            return false;
        for (qint64 i = 0; i < here; ++i) {
            x[first + i] = float(positions[std::size_t(2 * i)]);
            y[first + i] = float(positions[std::size_t(2 * i + 1)]);
        }
    }
    return true;
}

bool readElements(SequentialReader& reader, qint64 count, ResultContent& content, const LoadProgress& progress) {
    // Between two calls of the progress lie this many elements.
    constexpr qint64 progressStride = 65536;
    content.FirstCorner = listOf<std::int32_t>(count + 1);
    std::int32_t* first = content.FirstCorner.data();
    // The room asked for never exceeds what the file can hold, and grows with what was really read.
    QList<std::int32_t>& nodes = content.NodeIndex;
    nodes = listOf<std::int32_t>(std::min(count * 4, reader.Remaining() / 4));
    qint64 used = 0;
    for (qint64 e = 0; e < count; ++e) {
        std::int32_t nodeCount = 0;
        if (e % progressStride == 0 && !goesOn(progress, reader))
            return false;
        if (!reader.ReadInt32(nodeCount) || howMany(nodeCount) * 4 > reader.Remaining())
            return false;
        const qint64 end = used + howMany(nodeCount);
        if (end > nodes.size())
            nodes.resize(std::max(end, std::min(2 * used, used + reader.Remaining() / 4)));
        for (std::int32_t* target = nodes.data(); used < end; ++used) {
            std::int32_t number = 0;
            reader.ReadInt32(number);
            target[used] = number == std::numeric_limits<std::int32_t>::min() ? number : number - 1;
        }
        first[e + 1] = std::int32_t(used);
    }
    nodes.resize(used);
    return true;
}

/// A mesh without nodes or elements is refused as well.
bool readMesh(SequentialReader& reader, ResultContent& content, const LoadProgress& progress) {
    std::int32_t nodeCount = 0, elementCount = 0;
    if (!reader.ReadInt32(nodeCount) || !reader.ReadInt32(elementCount) || nodeCount < 1 || elementCount < 1)
        return false;
    if (nodeCount * bytesPerNode + elementCount * fewestBytesPerElement > reader.Remaining())
        return false;
    if (!readNodes(reader, nodeCount, content, progress) || !readElements(reader, elementCount, content, progress))
        return false;
    constexpr qint64 reservedBytes = 16;
    reader.Skip(reservedBytes);
    return true;
}

/// The count of an item's values, and the way past them. A count above both the number of nodes and that of elements
/// which the rest of the file doesn't hold counts as none.
VrfSteps::Block scanBlock(SequentialReader& reader, qint64 mostInMesh) {
    VrfSteps::Block block;
    reader.ReadInt32(block.Count);
    block.Offset = std::int32_t(reader.Position());
    const qint64 told = block.Count;
    if (told > mostInMesh && told > reader.Remaining() / bytesPerValue)
        block.Count = 0;
    reader.Skip(told * bytesPerValue);
    return block;
}

bool scanSteps(SequentialReader& reader, ResultContent& content, const LoadProgress& progress) {
    const qint64 elementCount = content.FirstCorner.size() - 1;
    const qint64 mostInMesh = std::max(qint64(content.NodeX.size()), elementCount);
    VrfSteps::Directory directory;
    content.FirstStepOffset = std::int32_t(reader.Position());
    while (reader.Remaining() > 0) {
        if (!goesOn(progress, reader))
            return false;
        StepInfo step;
        step.FileOffset = std::int32_t(reader.Position());
        double time = 0;
        reader.ReadDouble(time);
        step.Time = float(time);
        if (!readText(reader, step.Name))
            reader.Skip(reader.Remaining() + 1);
        if (step.Name.isEmpty())
            step.Name = u"Time : "_s + mdApplication::FormatAutoNumber(time, 3, false);
        content.Steps.append(step);
        directory.TypeOffsets.push_back(std::int32_t(reader.Position()));
        reader.Skip(elementCount * qint64(sizeof(std::int32_t)));
        for (qsizetype i = 0; i < content.Items.size(); ++i)
            directory.Blocks.push_back(scanBlock(reader, mostInMesh));
    }
    directory.End = reader.Position() + reader.Missed();
    const StepSource::Sizes sizes{std::int32_t(content.Steps.size()), std::int32_t(content.Items.size()),
                                  std::int32_t(elementCount)};
    content.Source = std::make_shared<const VrfSteps>(content.FileHandle, sizes, std::move(directory));
    return true;
}

} // namespace

bool VrfReader::HasMagic(QByteArrayView start, const QString& magic) {
    return Codepage::Decode(start.first(std::min(start.size(), magic.size()))).toLower() == magic.toLower();
}

bool VrfReader::Recognises(QByteArrayView start, const QString&) {
    return HasMagic(start, Magic);
}

bool VrfReader::Open(const QString& path, ResultContent& content, const LoadProgress& progress) {
    content.FileHandle = ReadHandle::Open(path);
    content.Magic = Magic;
    const qint64 size = content.FileHandle.Size();
    SequentialReader reader(content.FileHandle, Magic.size());
    if (size > std::numeric_limits<std::int32_t>::max() || !readHeaderAndItems(reader, content) ||
        !readMesh(reader, content, progress) || content.Items.isEmpty())
        return false;
    // From here on only a few bytes are read between long ways, and a large buffer would read the whole file after all.
    constexpr qint64 scanBufferBytes = 512;
    SequentialReader scan(content.FileHandle, reader.Position(), scanBufferBytes);
    return scanSteps(scan, content, progress);
}
