// The walk through one step of a result file.
#include "result/stepLayout.h"

#include <vector>

namespace mdVelorinResultModel {

void skipStepHead(SequentialReader& reader) {
    std::int32_t nameLength = 0;
    reader.Skip(sizeof(double));
    reader.ReadInt32(nameLength);
    reader.Skip(nameLength);
}

ItemBlock nextItemBlock(SequentialReader& reader, qint64 mostInMesh) {
    std::int32_t told = 0;
    reader.ReadInt32(told);
    const bool isFalse = told > mostInMesh && told > reader.Remaining() / qint64(sizeof(double));
    const ItemBlock block{reader.Position(), isFalse ? 0 : told};
    reader.Skip(std::max<qint64>(told, 0) * qint64(sizeof(double)));
    return block;
}

void readValues(const ReadHandle& file, qint64 fileOffset, std::span<float> target) {
    thread_local std::vector<double> wide;
    if (wide.size() < target.size())
        wide.resize(target.size());
    const qint64 got =
        file.ReadAt(fileOffset, wide.data(), qint64(target.size() * sizeof(double))) / qint64(sizeof(double));
    std::fill(wide.begin() + got, wide.begin() + std::ptrdiff_t(target.size()), 0.0);
    for (std::size_t i = 0; i < target.size(); ++i)
        target[i] = float(wide[i]);
}

} // namespace mdVelorinResultModel
