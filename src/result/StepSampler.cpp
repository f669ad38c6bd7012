#include "result/StepSampler.h"

#include <algorithm>

StepSampler::StepSampler(const ResultModel& model, std::int32_t itemIndex, std::span<const std::int32_t> atPlaces,
                         std::int32_t reference)
    : source(model.Source), item(itemIndex), placeCount(atPlaces.size()) {
    if (item < 0 || item >= model.Items.size() || !source)
        return;
    elementType = model.Items.at(item).ElementType;
    // A block per node may hold more values than there are nodes, and they count.
    const std::int32_t end = elementType < 0 ? std::numeric_limits<std::int32_t>::max() : model.Mesh.ElementCount;
    for (std::size_t i = 0; i < placeCount; ++i)
        if (atPlaces[i] >= 0 && atPlaces[i] < end)
            places.push_back({atPlaces[i], std::int32_t(i)});
    std::ranges::sort(places, {}, &Place::position);

    if (reference >= source->StepCount()) {
        referenceCount = model.Mesh.NodeCount;
    } else if (reference >= 0) {
        referenceStep = reference;
        referenceCount = source->ValueCount(reference, item);
    }
}

StepSampler::Sampled StepSampler::Read(std::int32_t step) const {
    Sampled result(placeCount);
    if (places.empty() || step < 0 || step >= source->StepCount())
        return result;
    const std::int32_t valueCount = std::min(source->ValueCount(step, item), referenceCount);
    if (elementType < 0) {
        const auto beyond = std::ranges::lower_bound(places, valueCount, {}, &Place::position);
        readAt({places.begin(), beyond}, step, result);
    } else {
        for (const Place& place : places)
            result[std::size_t(place.entry)] = 0.0f;
        readOnElements(step, valueCount, result);
    }
    return result;
}

/// Near values are read together. All positions lie within the block.
void StepSampler::readAt(std::span<const Place> wanted, std::int32_t step, Sampled& result) const {
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
        values.resize(std::size_t(last - start + 1));
        source->ReadValues(step, item, start, values);
        if (referenceStep >= 0) {
            reference.resize(values.size());
            source->ReadValues(referenceStep, item, start, reference);
            std::ranges::transform(values, reference, values.begin(), std::minus());
        }
        for (auto place = first; place != end; ++place)
            result[std::size_t(place->entry)].emplace(values[std::size_t(place->position - start)]);
    }
}

/// Fills in the entries of the elements of the type. Their values stand in the order of these elements, so the types of
/// all elements before them have to be known.
void StepSampler::readOnElements(std::int32_t step, std::int32_t valueCount, Sampled& result) const {
    constexpr qint64 mostTypes = 16384;
    const qint64 elementsEnd = qint64(places.back().position) + 1;
    std::vector<std::int32_t> types(std::size_t(std::min(mostTypes, elementsEnd)));
    Places packed;
    std::int32_t rank = 0;
    auto place = places.begin();
    for (qint64 first = 0; first < elementsEnd && rank < valueCount; first += mostTypes) {
        const qint64 count = std::min(mostTypes, elementsEnd - first);
        source->ReadTypes(step, first, std::span(types).first(std::size_t(count)));
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
        readAt(packed, step, result);
    }
}
