#include "view/scene/contourJobs.h"

#include "platform/base/Parallel.h"

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

/// The corners of an element.
void gatherElement(const ContourInput& input, std::int32_t index, ContourElement& element) {
    element.Points.clear();
    element.Values.clear();
    forCorners(input, index, [&element](DevicePoint point, float value) {
        element.Points.push_back(point);
        element.Values.push_back(value);
    });
}

/// What the corners of an element have in common.
struct CornerRanges {
    float Lowest = std::numeric_limits<float>::infinity(), Highest = -Lowest; ///< what is no number left out
    std::int32_t Left = INT32_MAX, Top = INT32_MAX, Right = INT32_MIN, Bottom = INT32_MIN;
    bool Whole = true; ///< an area whose corners all have a node and a value that is a number

    /// Whether all lie beyond one side of an area; true when there are none.
    bool LieBeyond(const DeviceRect& area) const {
        return Right < area.Left || Left >= area.Right || Bottom < area.Top || Top >= area.Bottom;
    }
    /// Whether all values lie inside a band, so that its polygon is the element itself, as most are in a fine mesh.
    bool LieInside(const ContourBands& bands, int i) const {
        return Whole && Lowest > bands.Low(i) && Highest < bands.High(i);
    }
};

CornerRanges rangesOf(const ContourInput& input, std::int32_t index) {
    CornerRanges ranges;
    std::int32_t count = 0;
    bool areNumbers = true;
    forCorners(input, index, [&](DevicePoint point, float value) {
        ++count;
        ranges.Left = std::min(ranges.Left, point.X);
        ranges.Top = std::min(ranges.Top, point.Y);
        ranges.Right = std::max(ranges.Right, point.X);
        ranges.Bottom = std::max(ranges.Bottom, point.Y);
        ranges.Lowest = value < ranges.Lowest ? value : ranges.Lowest;
        ranges.Highest = value > ranges.Highest ? value : ranges.Highest;
        areNumbers &= value == value;
    });
    ranges.Whole = areNumbers && count > 2 && count == input.mesh.Elements.NodeCount(index);
    return ranges;
}

/// The polygon of a job whose element has these ranges appended to `points`; the number of points, 0 when it has none.
int appendBand(const ContourInput& input, const BandJob& job, const CornerRanges& ranges, ContourElement& scratch,
               std::vector<DevicePoint>& points) {
    if (!ranges.LieInside(input.bands, job.band)) {
        gatherElement(input, job.element, scratch);
        return AppendClipPolygon(scratch, input.bands, job.band, points);
    }
    // As the clip has it: from the last corner on.
    const std::int32_t* corners = input.mesh.Elements.FirstCorner.constData() + job.element;
    const std::int32_t* nodes = input.mesh.Elements.NodeIndex.constData() + corners[0];
    const std::int32_t count = corners[1] - corners[0];
    const std::size_t start = points.size();
    points.resize(start + std::size_t(count));
    DevicePoint* target = points.data() + start;
    *target++ = input.points[std::size_t(nodes[count - 1])];
    for (std::int32_t k = 0; k + 1 < count; ++k)
        *target++ = input.points[std::size_t(nodes[k])];
    return count;
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
    const float perBand = 1 / bands.Step;
    const auto guess = [&](float value) {
        const float place = (value - bands.Lower) * perBand;
        return place >= float(top) ? top : place > 0 ? int(place) : 0;
    };
    BandRange range = {guess(lowest), 0};
    // Mostly that is all.
    if (const int i = range.first; i > 0 && i < top && !reachesUp(i - 1) && startsAbove(i + 1))
        return {i, i};
    range.last = guess(highest);
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

/// Polygons of small elements on their way to the layer, so few at a time that they stay in the processor's cache.
class SmallPolygons {
public:
    explicit SmallPolygons(RankedLayer* taker) : layer(taker) {}
    bool Take(const CornerRanges& ranges) const {
        constexpr std::int64_t size = RankedLayer::LargestSize;
        return layer && std::int64_t(ranges.Right) - ranges.Left < size &&
               std::int64_t(ranges.Bottom) - ranges.Top < size;
    }
    void Add(const ContourInput& input, const BandJob& job, const CornerRanges& ranges) {
        const int count = appendBand(input, job, ranges, scratch, points);
        if (count == 0)
            return;
        polygons.push_back(
            {{ranges.Left, ranges.Top, ranges.Right + 1, ranges.Bottom + 1}, count, RankedLayer::Rank(job.band + 1)});
        constexpr std::size_t mostAtOnce = 512;
        if (polygons.size() >= mostAtOnce)
            Flush();
    }
    void Flush() {
        if (!polygons.empty())
            layer->Add(points, polygons);
        points.clear();
        polygons.clear();
    }

private:
    RankedLayer* layer;
    ContourElement scratch;
    std::vector<DevicePoint> points;
    std::vector<RankedLayer::Polygon> polygons;
};

void findJobs(const ContourInput& input, const JobSearch& search, int stretch, std::vector<BandJob>& jobs) {
    constexpr int manyBands = 16;
    ContourElement element;
    SmallPolygons small(search.small);
    input.visible.ForEach(stretch, input.mesh.ElementCount, [&](std::int32_t e) {
        if (input.mesh.Elements.ElementType.at(e) < 0)
            return;
        const CornerRanges corners = rangesOf(input, e);
        if (search.visible && corners.LieBeyond(*search.visible))
            return;
        // An infinite value crosses every level at its finite neighbour.
        const bool crossesAll = std::isinf(corners.Highest) || std::isinf(corners.Lowest);
        const BandRange touched = crossesAll ? BandRange{0, input.bands.Count - 1}
                                             : bandsBetween(input.bands, corners.Lowest, corners.Highest);
        const BandRange range = {std::max(touched.first, search.window.first),
                                 std::min(touched.last, search.window.last)};
        const bool thinOut = !search.everyBand && range.last - range.first > manyBands;
        const bool isSmall = small.Take(corners);
        if (thinOut)
            gatherElement(input, e, element);
        for (int i = range.first; i <= range.last; ++i) {
            if (thinOut)
                i = lastAlike(element, input.bands, i, range.last);
            if (isSmall)
                small.Add(input, {i, e}, corners);
            else
                jobs.push_back({i, e});
        }
    });
    small.Flush();
}

} // namespace

void ClipJobs(const ContourInput& input, std::span<const BandJob> jobs, PolygonBatch& batch) {
    batch.points.clear();
    batch.counts.clear();
    ContourElement element;
    for (const BandJob& job : jobs)
        if (const int count = appendBand(input, job, rangesOf(input, job.element), element, batch.points); count > 0)
            batch.counts.push_back(count);
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
