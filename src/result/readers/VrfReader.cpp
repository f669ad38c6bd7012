#include "result/readers/VrfReader.h"

#include "platform/base/Codepage.h"
#include "platform/base/Lists.h"
#include "result/readers/VrfSteps.h"

#include <limits>

namespace {

constexpr qint64 fewestBytesPerItem = 12;
constexpr qint64 bytesPerNode = 16;
constexpr qint64 fewestBytesPerElement = 4;

bool readHeaderAndItems(SequentialReader& reader, ResultContent& content) {
    QString title;
    std::int32_t itemCount = 0;
    if (!reader.ReadInt32(content.Version) || !VrfSteps::ReadText(reader, title) || !reader.ReadInt32(itemCount) ||
        std::max<qint64>(itemCount, 0) * fewestBytesPerItem > reader.Remaining())
        return false;
    if (!title.isEmpty())
        content.Title = title;
    content.Items.reserve(std::max(itemCount, 0));
    for (std::int32_t i = 0; i < itemCount; ++i) {
        ItemInfo item;
        item.Name = u"Item - "_s + QString::number(i + 1);
        if (!VrfSteps::ReadText(reader, item.Name) || !reader.ReadInt32(item.ElementType) ||
            !reader.ReadInt32(item.Flags))
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
        if (!reader.ReadInt32(nodeCount) || std::max<qint64>(nodeCount, 0) * 4 > reader.Remaining())
            return false;
        const qint64 end = used + std::max(nodeCount, 0);
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
    content.FirstStepOffset = std::int32_t(reader.Position());
    const StepSource::Sizes sizes{0, std::int32_t(content.Items.size()), std::int32_t(content.FirstCorner.size()) - 1};
    const VrfSteps none(content.FileHandle, sizes, qint64(content.NodeX.size()), reader.Position());
    content.Source = none.Extended(content.FileHandle, content.Steps, progress);
    return content.Source != nullptr;
}
