#include "result/readers/VrfSteps.h"

#include "app/mdApplication.h"
#include "platform/base/Codepage.h"

#include <limits>

namespace {

constexpr qint64 typeBytes = sizeof(std::int32_t), valueBytes = sizeof(double);

} // namespace

VrfSteps::VrfSteps(const ReadHandle& openFile, const Sizes& stepSizes, qint64 nodeCount, qint64 begin)
    : VrfSteps(openFile, stepSizes, std::max<qint64>(nodeCount, stepSizes.Elements), begin, {}) {}

VrfSteps::VrfSteps(const ReadHandle& openFile, const Sizes& stepSizes, qint64 most, qint64 begin,
                   Directory stepDirectory)
    : StepSource(stepSizes), file(openFile), itemCount(std::size_t(stepSizes.Items)), elementCount(stepSizes.Elements),
      mostInMesh(most), firstStep(begin), directory(std::move(stepDirectory)) {}

bool VrfSteps::ReadText(SequentialReader& reader, QString& text) {
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

/// The count of an item's values, and the way past them. A count above both the number of nodes and that of elements
/// which the rest of the file doesn't hold counts as none.
VrfSteps::Block VrfSteps::scanBlock(SequentialReader& reader, qint64 mostInMesh) {
    Block block;
    reader.ReadInt32(block.Count);
    block.Offset = std::int32_t(reader.Position());
    const qint64 told = block.Count;
    if (told > mostInMesh && told > reader.Remaining() / valueBytes)
        block.Count = 0;
    reader.Skip(told * valueBytes);
    return block;
}

std::shared_ptr<const StepSource> VrfSteps::Extended(const ReadHandle& longer, QList<StepInfo>& steps,
                                                     const LoadProgress& progress) const {
    // Their places in the file are kept as numbers of this size.
    if (longer.Size() > std::numeric_limits<std::int32_t>::max())
        return {};
    // The steps that count already; one that was cut short is none of them.
    Directory found = directory;
    found.TypeOffsets.resize(std::size_t(steps.size()));
    found.Blocks.resize(std::size_t(steps.size()) * itemCount);
    const qint64 begin = steps.isEmpty() ? firstStep : endOf(std::int32_t(steps.size()) - 1);
    // Only a few bytes are read between long ways, and a large buffer would read the whole file after all.
    constexpr qint64 scanBufferBytes = 512;
    SequentialReader reader(longer, begin, scanBufferBytes);
    while (reader.Remaining() > 0) {
        if (progress && !progress(reader.Position(), longer.Size()))
            return {};
        StepInfo step;
        step.FileOffset = std::int32_t(reader.Position());
        double time = 0;
        reader.ReadDouble(time);
        step.Time = float(time);
        if (!ReadText(reader, step.Name))
            reader.Skip(reader.Remaining() + 1);
        if (step.Name.isEmpty())
            step.Name = u"Time : "_s + mdApplication::FormatAutoNumber(time, 3, false);
        steps.append(step);
        found.TypeOffsets.push_back(std::int32_t(reader.Position()));
        reader.Skip(elementCount * typeBytes);
        for (std::size_t i = 0; i < itemCount; ++i)
            found.Blocks.push_back(scanBlock(reader, mostInMesh));
    }
    found.End = reader.Position() + reader.Missed();
    const Sizes all{std::int32_t(steps.size()), std::int32_t(itemCount), std::int32_t(elementCount)};
    return std::shared_ptr<const StepSource>(new VrfSteps(longer, all, mostInMesh, firstStep, std::move(found)));
}

qint64 VrfSteps::typesAt(std::int32_t step, qint64 first, std::span<std::int32_t> types) const {
    const qint64 offset = directory.TypeOffsets[std::size_t(step)] + first * typeBytes;
    const qint64 bytes = qint64(types.size()) * typeBytes;
    return file.ReadAt(offset, types.data(), bytes) / typeBytes;
}

qint64 VrfSteps::endOf(std::int32_t step) const {
    if (std::size_t(step) + 1 == directory.TypeOffsets.size())
        return directory.End;
    const Block& last = blockOf(step, std::int32_t(itemCount) - 1);
    return last.Offset + std::max(last.Count, 0) * valueBytes;
}

qint64 VrfSteps::valuesAt(std::int32_t step, std::int32_t item, qint64 first, std::span<float> values) const {
    // So many stay in the processor's cache until they are narrowed.
    constexpr qint64 mostAtOnce = 32768;
    thread_local std::vector<double> wide;
    const qint64 offset = blockOf(step, item).Offset + first * valueBytes;
    for (qint64 done = 0; done < qint64(values.size());) {
        const qint64 wanted = std::min(mostAtOnce, qint64(values.size()) - done);
        if (qint64(wide.size()) < wanted)
            wide.resize(std::size_t(wanted));
        const qint64 got = file.ReadAt(offset + done * valueBytes, wide.data(), wanted * valueBytes) / valueBytes;
        for (qint64 i = 0; i < got; ++i)
            values[std::size_t(done + i)] = float(wide[std::size_t(i)]);
        done += got;
        if (got < wanted)
            return done;
    }
    return qint64(values.size());
}
