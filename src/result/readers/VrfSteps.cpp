#include "result/readers/VrfSteps.h"

VrfSteps::VrfSteps(const ReadHandle& openFile, const Sizes& stepSizes, Directory stepDirectory)
    : StepSource(stepSizes), file(openFile), itemCount(std::size_t(stepSizes.Items)),
      directory(std::move(stepDirectory)) {}

qint64 VrfSteps::typesAt(std::int32_t step, qint64 first, std::span<std::int32_t> types) const {
    constexpr qint64 typeBytes = sizeof(std::int32_t);
    const qint64 offset = directory.TypeOffsets[std::size_t(step)] + first * typeBytes;
    const qint64 bytes = qint64(types.size()) * typeBytes;
    return file.ReadAt(offset, types.data(), bytes) / typeBytes;
}

qint64 VrfSteps::endOf(std::int32_t step) const {
    if (std::size_t(step) + 1 == directory.TypeOffsets.size())
        return directory.End;
    const Block& last = blockOf(step, std::int32_t(itemCount) - 1);
    return last.Offset + std::max(last.Count, 0) * qint64(sizeof(double));
}

qint64 VrfSteps::valuesAt(std::int32_t step, std::int32_t item, qint64 first, std::span<float> values) const {
    constexpr qint64 valueBytes = sizeof(double);
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
