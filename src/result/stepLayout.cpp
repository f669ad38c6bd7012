#include "result/stepLayout.h"

#include <vector>

namespace mdVelorinResultModel {

StepLayout::StepLayout(const ResultModel& model)
    : steps(model.Steps), valueCounts(model.ValueCounts), itemCount(model.ItemCount),
      elementCount(model.Mesh.ElementCount), mostInMesh(std::max(model.Mesh.NodeCount, model.Mesh.ElementCount)),
      fileSize(model.FileHandle.Size()) {}

std::vector<ItemBlock> StepLayout::Blocks(std::int32_t step, std::int32_t count) const {
    std::vector<ItemBlock> blocks;
    qint64 position = TypesOffset(step) + qint64(elementCount) * qint64(sizeof(std::int32_t));
    for (std::int32_t item = 0; item < count; ++item) {
        const std::int32_t told = valueCounts.at(qsizetype(step) * itemCount + item);
        position += qint64(sizeof(std::int32_t));
        const bool isFalse = told > mostInMesh && told > (fileSize - position) / qint64(sizeof(double));
        blocks.push_back({position, isFalse ? 0 : told});
        position += std::max<qint64>(told, 0) * qint64(sizeof(double));
    }
    return blocks;
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
