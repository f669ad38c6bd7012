#include "result/ShowRange.h"

#include "platform/base/Parallel.h"

#include <cmath>
#include <vector>

namespace {

/// The items that count, and where they do.
struct CountingItems {
    std::vector<std::int32_t> Items;
    std::int32_t Item = -1;
    std::array<std::int32_t, 2> Displacement, Vector;

    CountingItems(std::int32_t item, const ResultModel& model, const VectorSettings& settings)
        : Item(item), Displacement{model.DisplacementItemX, model.DisplacementItemY}, Vector{-1, -1} {
        const int set = settings.DefaultItemSet;
        if (set >= 0 && set < settings.ItemSetCount && set < settings.ItemSets.size())
            Vector = {settings.ItemSets.at(set).Horz, settings.ItemSets.at(set).Vert};
        for (const std::int32_t wanted : {item, Displacement[0], Displacement[1], Vector[0], Vector[1]})
            if (wanted >= 0 && wanted < model.ItemCount && std::ranges::find(Items, wanted) == Items.end())
                Items.push_back(wanted);
    }
};

/// One item's values in one step.
struct Block {
    std::int32_t Step, Item, Count;
};

/// A stretch of a block, so that the cores can share large ones out.
struct Piece {
    std::size_t Block;
    std::int32_t First, Count;
    ValueBounds Bounds = {};
};

std::vector<Piece> piecesOf(std::span<const Block> blocks) {
    // So many stay in the processor's cache from their reading to their bounds.
    constexpr std::int32_t mostValues = 32768;
    std::vector<Piece> pieces;
    for (std::size_t block = 0; block < blocks.size(); ++block)
        for (std::int32_t first = 0; first < blocks[block].Count;) {
            const std::int32_t count = std::min(mostValues, blocks[block].Count - first);
            pieces.push_back({block, first, count});
            first += count;
        }
    return pieces;
}

/// Of each block, those that loading the step gives the item.
std::vector<ValueBounds> boundsOf(std::span<const Block> blocks, const StepSource& source) {
    std::vector<Piece> pieces = piecesOf(blocks);
    parallelFor(int(pieces.size()), [&](int i) {
        thread_local std::vector<float> values;
        Piece& piece = pieces[std::size_t(i)];
        const Block& block = blocks[piece.Block];
        values.resize(std::size_t(piece.Count));
        source.ReadValues(block.Step, block.Item, piece.First, values);
        piece.Bounds = ValueBounds::Of(values);
    });
    std::vector<ValueBounds> bounds(blocks.size());
    for (const Piece& piece : pieces)
        bounds[piece.Block].Take(piece.Bounds);
    for (std::size_t block = 0; block < blocks.size(); ++block)
        if (blocks[block].Count < 1)
            bounds[block] = {0, 0};
    return bounds;
}

void widen(ShowRange& range, const CountingItems& counting, std::int32_t item, const ValueBounds& bounds) {
    if (item == counting.Item) {
        range.Maximum = std::max(range.Maximum, bounds.Max);
        range.Minimum = std::min(range.Minimum, bounds.Min);
    }
    const float largest = std::max(std::abs(bounds.Max), std::abs(bounds.Min));
    if (std::ranges::find(counting.Displacement, item) != counting.Displacement.end())
        range.MaxDisplacement = std::max(range.MaxDisplacement, largest);
    if (std::ranges::find(counting.Vector, item) != counting.Vector.end())
        range.MaxVector = std::max(range.MaxVector, largest);
}

std::optional<ShowRange> rangeFrom(std::int32_t first, std::int32_t item, const ResultModel& model,
                                   const VectorSettings& vector, const LoadProgress& progress) {
    // As many values are read between two looks at the progress; enough for threads to be worth their start.
    constexpr qint64 valuesAtOnce = 1 << 20;
    ShowRange range;
    if (!model.Source)
        return range;
    const CountingItems counting(item, model, vector);
    std::vector<Block> blocks;
    qint64 values = 0;
    const auto takeBlocks = [&] {
        const std::vector<ValueBounds> bounds = boundsOf(blocks, *model.Source);
        for (std::size_t i = 0; i < blocks.size(); ++i)
            widen(range, counting, blocks[i].Item, bounds[i]);
        blocks.clear();
        values = 0;
    };
    for (std::int32_t step = first; step < model.StepCount; ++step) {
        for (const std::int32_t counts : counting.Items) {
            blocks.push_back({step, counts, model.Source->ValueCount(step, counts)});
            values += std::max(blocks.back().Count, 0);
        }
        if (values < valuesAtOnce)
            continue;
        takeBlocks();
        if (progress && !progress(step + 1, model.StepCount))
            return {};
    }
    takeBlocks();
    return range;
}

} // namespace

std::optional<ShowRange> ComputeItemRange(std::int32_t item, const ResultModel& model, const VectorSettings& vector,
                                          const LoadProgress& progress) {
    return rangeFrom(0, item, model, vector, progress);
}

std::optional<ValueBounds> ComputeContourRange(std::int32_t item, const ResultModel& model,
                                               const DifferenceSettings& difference, std::int32_t first,
                                               const LoadProgress& progress) {
    if (difference.StandardStep < 0 || !difference.ApplyContour) {
        const std::optional<ShowRange> range = rangeFrom(first, item, model, {}, progress);
        return range ? std::optional(ValueBounds{range->Maximum, range->Minimum}) : std::nullopt;
    }
    ValueBounds bounds;
    ResultModel step = model;
    for (std::int32_t i = first; i < model.StepCount; ++i) {
        if (!mdVelorinResultModel::LoadStep(i, item, step, true, difference.StandardStep))
            continue;
        const ItemValues values = mdVelorinResultModel::GetNodeValues(true, step.Mesh);
        bounds.Take({values.MaxValue, values.MinValue});
        if (progress && !progress(i + 1, model.StepCount))
            return {};
    }
    return bounds;
}

void FixContour(ContourSettings& contour, float maximum, float minimum, int bands) {
    contour.MaxValue = maximum;
    contour.MinValue = minimum;
    contour.Divide = bands;
    contour.Automatic = false;
    contour.Range = ContourRange::AsStands;
}
