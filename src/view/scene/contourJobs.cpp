#include "view/scene/contourJobs.h"

#include "platform/base/Parallel.h"
#include "view/scene/CommonSides.h"

#include <cmath>

namespace mdScene {

namespace {

/// Calls `take(point, value)` for each corner of an element; a corner without a node is left out.
template<typename Take>
void forCorners(const ContourInput& input, std::int32_t index, Take take) {
    const ElementTable& elements = input.mesh.Elements;
    const std::int32_t* nodes = elements.NodeIndex.constData();
    const float* values = input.values.constData();
    const std::size_t nodeCount = std::min(input.points.size(), std::size_t(input.values.size()));
    for (std::int32_t k = elements.FirstCorner.at(index); k < elements.FirstCorner.at(index + 1); ++k)
        if (std::size_t(nodes[k]) < nodeCount)
            take(input.points[std::size_t(nodes[k])], values[nodes[k]]);
}

/// The range of an element's values.
struct ValueRange {
    float lowest = std::numeric_limits<float>::infinity();
    float highest = -std::numeric_limits<float>::infinity();
};

ValueRange rangeOf(const ContourInput& input, std::int32_t index) {
    ValueRange range;
    forCorners(input, index, [&range](DevicePoint, float value) {
        range.lowest = value < range.lowest ? value : range.lowest;
        range.highest = value > range.highest ? value : range.highest;
    });
    return range;
}

/// Whether all corners of an element lie beyond one side of an area; mostly the first one tells that they don't.
bool isBeyond(const ContourInput& input, std::int32_t index, const DeviceRect& area) {
    const ElementTable& elements = input.mesh.Elements;
    const std::size_t nodeCount = std::min(input.points.size(), std::size_t(input.values.size()));
    CommonSides sides(area);
    for (std::int32_t k = elements.FirstCorner.at(index); k < elements.FirstCorner.at(index + 1) && sides.Any(); ++k)
        if (const auto node = std::size_t(elements.NodeIndex.at(k)); node < nodeCount)
            sides.Take(input.points[node]);
    return sides.Any();
}

/// First i of `first` to `last` for which `holds(i)`, which stays true from there on; `last` + 1 if none.
template<typename Holds>
int firstThat(int first, int last, Holds holds) {
    int end = last;
    while (first <= end) {
        const int middle = first + (end - first) / 2;
        if (holds(middle))
            end = middle - 1;
        else
            first = middle + 1;
    }
    return first;
}

/// All bands that can have a point in an element whose values lie from `lowest` to `highest`; perhaps one too many.
BandRange bandsBetween(const ContourBands& bands, float lowest, float highest) {
    const auto reachesUp = [&](int i) { return bands.High(i) + bands.Tolerance >= lowest; };
    const auto startsAbove = [&](int i) { return bands.Low(i) - bands.Tolerance > highest; };
    const int top = bands.Count - 1;
    const auto guess = [&](float value) {
        const float place = (value - bands.Lower) / bands.Step;
        return place >= float(top) ? top : place > 0 ? int(place) : 0;
    };
    BandRange range = {guess(lowest), guess(highest)};
    // The guess is right but for rounding, so that it is tried before the search over all bands.
    if (!(reachesUp(range.first) && (range.first == 0 || !reachesUp(range.first - 1))))
        range.first = firstThat(0, top, reachesUp);
    if (!(!startsAbove(range.last) && (range.last == top || startsAbove(range.last + 1))))
        range.last = firstThat(0, top, startsAbove) - 1;
    return range;
}

/// The last band from `i` to `last` whose polygon is the one of band `i`, so that this one would be painted over by it.
/// No corner's value may lie in the bands between, and then every crossing only moves along its edge.
int lastAlike(ContourElement& element, const ContourBands& bands, int i, int last) {
    // Levels closer together than a single tells apart are one band to the eye.
    i = firstThat(i, last, [&, low = bands.Low(i)](int k) { return bands.Low(k) > low; }) - 1;
    float nextCorner = std::numeric_limits<float>::infinity();
    for (const float value : element.Values) {
        if (bands.Holds(value, i))
            return i;
        if (value > bands.High(i))
            nextCorner = std::min(nextCorner, value);
    }
    last = firstThat(i, last, [&](int k) { return bands.High(k) + bands.Tolerance >= nextCorner; }) - 1;
    std::vector<DevicePoint> first, other;
    AppendClipPolygon(element, bands, i, first);
    return std::max(i, firstThat(i, last, [&](int k) {
                           other.clear();
                           AppendClipPolygon(element, bands, k, other);
                           return other != first;
                       }) - 1);
}

void findJobs(const ContourInput& input, const JobSearch& search, int stretch, std::vector<BandJob>& jobs) {
    constexpr int manyBands = 16;
    ContourElement element;
    const std::int32_t first = stretch * indexesPerStretch;
    const std::int32_t last = std::min(input.mesh.ElementCount - first, indexesPerStretch) + first;
    input.visible.ForEach(stretch, first, last, [&](std::int32_t e) {
        if (input.mesh.Elements.ElementType.at(e) < 0)
            return;
        if (search.visible && isBeyond(input, e, *search.visible))
            return;
        const ValueRange values = rangeOf(input, e);
        // An infinite value crosses every level at its finite neighbour.
        const bool crossesAll = std::isinf(values.highest) || std::isinf(values.lowest);
        const BandRange touched =
            crossesAll ? BandRange{0, input.bands.Count - 1} : bandsBetween(input.bands, values.lowest, values.highest);
        const BandRange range = {std::max(touched.first, search.window.first),
                                 std::min(touched.last, search.window.last)};
        const bool thinOut = !search.everyBand && range.last - range.first > manyBands;
        if (thinOut)
            GatherElement(input, e, element);
        for (int i = range.first; i <= range.last; ++i) {
            if (thinOut)
                i = lastAlike(element, input.bands, i, range.last);
            jobs.push_back({i, e});
        }
    });
}

} // namespace

int AppendInside(const ContourInput& input, const BandJob& job, std::vector<DevicePoint>& points) {
    const std::int32_t* corners = input.mesh.Elements.FirstCorner.constData() + job.element;
    const std::int32_t* nodes = input.mesh.Elements.NodeIndex.constData() + corners[0];
    const std::int32_t count = corners[1] - corners[0];
    const float* values = input.values.constData();
    const std::size_t nodeCount = std::min(input.points.size(), std::size_t(input.values.size()));
    const float low = input.bands.Low(job.band);
    const float high = low + input.bands.Step;
    for (std::int32_t k = 0; k < count; ++k)
        if (std::size_t(nodes[k]) >= nodeCount || !(values[nodes[k]] > low && values[nodes[k]] < high))
            return 0;
    if (count < 3)
        return 0;
    const std::size_t start = points.size();
    points.resize(start + std::size_t(count));
    DevicePoint* target = points.data() + start;
    *target++ = input.points[std::size_t(nodes[count - 1])];
    for (std::int32_t k = 0; k + 1 < count; ++k)
        *target++ = input.points[std::size_t(nodes[k])];
    return count;
}

void GatherElement(const ContourInput& input, std::int32_t index, ContourElement& element) {
    element.Points.clear();
    element.Values.clear();
    forCorners(input, index, [&element](DevicePoint point, float value) {
        element.Points.push_back(point);
        element.Values.push_back(value);
    });
}

std::vector<BandJob> FindBandJobs(const ContourInput& input, const JobSearch& search) {
    std::vector<std::vector<BandJob>> pieces(std::size_t(stretchCount(input.mesh.ElementCount)));
    parallelFor(int(pieces.size()), [&](int piece) { findJobs(input, search, piece, pieces[std::size_t(piece)]); });
    std::size_t total = 0;
    for (const auto& piece : pieces)
        total += piece.size();
    std::vector<BandJob> jobs(total);
    constexpr int fewBands = 4096;
    if (input.bands.Count > fewBands) {
        auto end = jobs.begin();
        for (const auto& piece : pieces)
            end = std::copy(piece.begin(), piece.end(), end);
        std::stable_sort(jobs.begin(), jobs.end(), [](const BandJob& a, const BandJob& b) { return a.band < b.band; });
        return jobs;
    }
    // Where the jobs of a piece go, by band: behind those of all bands before, and of the same band in pieces before.
    std::vector<std::vector<std::size_t>> next(pieces.size());
    parallelFor(int(pieces.size()), [&](int piece) {
        auto& counts = next[std::size_t(piece)];
        counts.resize(std::size_t(input.bands.Count));
        for (const BandJob& job : pieces[std::size_t(piece)])
            ++counts[std::size_t(job.band)];
    });
    std::size_t place = 0;
    for (std::size_t band = 0; band < std::size_t(input.bands.Count); ++band)
        for (auto& counts : next)
            place += std::exchange(counts[band], place);
    parallelFor(int(pieces.size()), [&](int piece) {
        for (const BandJob& job : pieces[std::size_t(piece)])
            jobs[next[std::size_t(piece)][std::size_t(job.band)]++] = job;
    });
    return jobs;
}

} // namespace mdScene
