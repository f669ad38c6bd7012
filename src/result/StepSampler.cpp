#include "result/StepSampler.h"

#include "result/stepLayout.h"

#include <algorithm>

using namespace mdVelorinResultModel;

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
            places.push_back({atPlaces[i], std::int32_t(i)});
    std::ranges::sort(places, {}, &Place::position);

    if (referenceStep >= steps.size()) {
        referenceCount = nodeCount;
    } else if (referenceStep >= 0) {
        const Located reference = locate(referenceStep);
        referenceCount = reference.valueCount;
        referenceOffset = reference.valuesOffset;
    }
}

StepSampler::Sampled StepSampler::Read(std::int32_t step) const {
    Sampled result(placeCount);
    if (step < 0 || step >= steps.size() || places.empty())
        return result;
    const Located found = locate(step);
    const std::int32_t valueCount = std::min(found.valueCount, referenceCount);
    if (elementType < 0) {
        const auto beyond = std::ranges::lower_bound(places, valueCount, {}, &Place::position);
        readAt({places.begin(), beyond}, found.valuesOffset, result);
    } else {
        for (const Place& place : places)
            result[std::size_t(place.entry)] = 0.0f;
        readOnElements(found, valueCount, result);
    }
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

/// Near values are read together. All positions lie within the block.
void StepSampler::readAt(std::span<const Place> wanted, qint64 valuesOffset, Sampled& result) const {
    // Up to this distance, reading what lies between two values costs less than another read.
    constexpr std::int32_t near = 256;
    // So many stay in the processor's cache until they are handed on.
    constexpr std::int32_t mostAtOnce = 8192;
    std::vector<float> values, reference;
    for (auto first = wanted.begin(), end = first; first != wanted.end(); first = end) {
        const std::int32_t start = first->position;
        std::int32_t last = start;
        for (; end != wanted.end() && end->position - last <= near && end->position - start < mostAtOnce; ++end)
            last = end->position;
        const qint64 offset = qint64(start) * qint64(sizeof(double));
        values.resize(std::size_t(last - start + 1));
        readValues(file, valuesOffset + offset, values);
        if (referenceOffset) {
            reference.resize(values.size());
            readValues(file, *referenceOffset + offset, reference);
            std::ranges::transform(values, reference, values.begin(), std::minus());
        }
        for (auto place = first; place != end; ++place)
            result[std::size_t(place->entry)].emplace(values[std::size_t(place->position - start)]);
    }
}

/// Fills in the entries of the elements of the type. Their values stand in the order of these elements, so the types of
/// all elements before them have to be known.
void StepSampler::readOnElements(const Located& found, std::int32_t valueCount, Sampled& result) const {
    constexpr qint64 mostTypes = 16384, typeBytes = sizeof(std::int32_t);
    const qint64 elementsEnd = qint64(places.back().position) + 1;
    std::vector<std::int32_t> types(std::size_t(std::min(mostTypes, elementsEnd)));
    Places packed;
    std::int32_t rank = 0;
    auto place = places.begin();
    for (qint64 first = 0; first < elementsEnd && rank < valueCount; first += mostTypes) {
        const qint64 count = std::min(mostTypes, elementsEnd - first);
        const qint64 got = file.ReadAt(found.typesOffset + first * typeBytes, types.data(), count * typeBytes);
        std::fill(types.begin() + got / typeBytes, types.end(), -1);
        packed.clear();
        qint64 counted = 0;
        const auto countTo = [&](qint64 end) {
            std::int32_t ofType = 0;
            for (; counted < end; ++counted)
                ofType += types[std::size_t(counted)] == elementType;
            rank += ofType;
        };
        for (; place != places.end() && place->position < first + count; ++place) {
            countTo(place->position - first);
            if (types[std::size_t(counted)] == elementType && rank < valueCount)
                packed.push_back({rank, place->entry});
        }
        countTo(count);
        readAt(packed, found.valuesOffset, result);
    }
}
