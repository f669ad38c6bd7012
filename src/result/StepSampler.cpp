#include "result/StepSampler.h"

#include "result/stepLayout.h"

#include <algorithm>

using namespace mdVelorinResultModel;

namespace {

/// Below this distance between two values, reading what lies between costs less than another read.
constexpr std::int32_t nearPositions = 256;

} // namespace

StepSampler::StepSampler(const ResultModel& model, std::int32_t itemIndex, std::span<const std::int32_t> atPlaces,
                         std::int32_t referenceStep)
    : file(model.FileHandle), steps(model.Steps), item(itemIndex), nodeCount(model.Mesh.NodeCount),
      elementCount(model.Mesh.ElementCount), placeCount(atPlaces.size()) {
    if (item < 0 || item >= model.Items.size() || !file.IsOpen())
        return;
    elementType = model.Items.at(item).ElementType;
    // A block per node may hold more values than there are nodes, and they count.
    const std::int32_t end = elementType < 0 ? std::numeric_limits<std::int32_t>::max() : elementCount;
    for (std::size_t i = 0; i < placeCount; ++i)
        if (atPlaces[i] >= 0 && atPlaces[i] < end)
            places.entries.push_back(i);
    std::ranges::stable_sort(places.entries, {}, [&](std::size_t entry) { return atPlaces[entry]; });
    for (const std::size_t entry : places.entries)
        places.positions.push_back(atPlaces[entry]);

    if (referenceStep >= steps.size()) {
        referenceCount = nodeCount;
    } else if (referenceStep >= 0) {
        const Located reference = locate(referenceStep);
        referenceCount = reference.valueCount;
        referenceOffset = reference.valuesOffset;
    }
}

std::vector<std::optional<float>> StepSampler::Read(std::int32_t step) const {
    std::vector<std::optional<float>> result(placeCount);
    if (step < 0 || step >= steps.size() || places.positions.empty())
        return result;
    const Located found = locate(step);
    const std::int32_t valueCount = std::min(found.valueCount, referenceCount);

    std::span<const std::int32_t> positions = places.positions;
    std::span<const std::size_t> entries = places.entries;
    Wanted packed;
    if (elementType < 0) {
        const auto beyond = std::ranges::lower_bound(positions, valueCount);
        positions = {positions.begin(), beyond};
    } else {
        for (const std::size_t entry : entries)
            result[entry] = 0.0f;
        packed = amongPacked(found.typesOffset, valueCount);
        positions = packed.positions;
        entries = packed.entries;
    }

    std::vector<float> values = valuesAt(found.valuesOffset, positions);
    if (referenceOffset) {
        const std::vector<float> reference = valuesAt(*referenceOffset, positions);
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] -= reference[i];
    }
    for (std::size_t i = 0; i < values.size(); ++i)
        result[entries[i]] = values[i];
    return result;
}

StepSampler::Located StepSampler::locate(std::int32_t step) const {
    // Little is read between long ways, and a larger buffer would fetch values that nobody wants.
    constexpr qint64 bufferBytes = 256;
    SequentialReader reader(file, steps.at(step).FileOffset, bufferBytes);
    skipStepHead(reader);
    const qint64 typesOffset = reader.Position();
    // A step that breaks off within its types leaves the reader at the file's end, where all blocks are empty.
    reader.Skip(qint64(elementCount) * qint64(sizeof(std::int32_t)));
    ItemBlock block;
    for (std::int32_t i = 0; i <= item; ++i)
        block = nextItemBlock(reader, std::max(nodeCount, elementCount));
    return {typesOffset, block.FileOffset, block.Count};
}

/// Where the places' values stand among those of the step's elements of the type; leaves out the places of other
/// elements and those whose values would come behind `valueCount`.
StepSampler::Wanted StepSampler::amongPacked(qint64 typesOffset, std::int32_t valueCount) const {
    constexpr qint64 mostTypes = 16384;
    Wanted packed;
    const qint64 end = qint64(places.positions.back()) + 1;
    std::vector<std::int32_t> types(std::size_t(std::min(mostTypes, end)));
    std::int32_t rank = 0;
    std::size_t place = 0;
    for (qint64 first = 0; first < end && rank < valueCount; first += mostTypes) {
        const qint64 count = std::min(mostTypes, end - first);
        constexpr qint64 typeBytes = sizeof(std::int32_t);
        const qint64 got = file.ReadAt(typesOffset + first * typeBytes, types.data(), count * typeBytes) / typeBytes;
        std::fill(types.begin() + got, types.end(), -1);
        auto counted = types.cbegin();
        for (; place < places.positions.size() && places.positions[place] < first + count; ++place) {
            const auto own = types.cbegin() + (places.positions[place] - first);
            rank += std::int32_t(std::count(counted, own, elementType));
            counted = own;
            if (*own == elementType && rank < valueCount) {
                packed.positions.push_back(rank);
                packed.entries.push_back(places.entries[place]);
            }
        }
        rank += std::int32_t(std::count(counted, types.cbegin() + count, elementType));
    }
    return packed;
}

/// The values of a block at ascending positions, near ones read together.
std::vector<float> StepSampler::valuesAt(qint64 valuesOffset, std::span<const std::int32_t> positions) const {
    std::vector<float> values(positions.size());
    std::vector<float> group;
    for (std::size_t first = 0, end; first < positions.size(); first = end) {
        for (end = first + 1; end < positions.size(); ++end)
            if (positions[end] - positions[end - 1] > nearPositions ||
                positions[end] - positions[first] >= valuesPerPiece)
                break;
        group.resize(std::size_t(positions[end - 1] - positions[first] + 1));
        readValues(file, valuesOffset + qint64(positions[first]) * qint64(sizeof(double)), group);
        for (std::size_t i = first; i < end; ++i)
            values[i] = group[std::size_t(positions[i] - positions[first])];
    }
    return values;
}
