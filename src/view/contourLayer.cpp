// The contour layer. Painted as by the plain loops, bands outside and elements inside, but each band visits only the
// elements that it can touch: they are found in one pass over the elements before the first band is painted.
#include "view/contour.h"

#include "app/mdTipsDrawing.h"
#include "platform/Parallel.h"
#include "result/mdVelorinResultModel.h"

#include <climits>
#include <cmath>
#include <optional>

namespace mdScene {

namespace {

constexpr int automaticBandCount = 20;
constexpr int elementsPerPiece = 32768;
constexpr int polygonsPerPiece = 8192;

/// A polygon to be painted: one band of one element.
struct BandJob {
    std::int32_t band;
    std::int32_t element;
};

/// What all pieces of a paint read.
struct ContourInput {
    const MeshData& mesh;
    const QList<float>& values;
    const std::vector<DevicePoint>& points;
    const ContourBands& bands;
};

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

void gather(const ContourInput& input, std::int32_t index, ContourElement& element) {
    element.Points.clear();
    element.Values.clear();
    forCorners(input, index, [&element](DevicePoint point, float value) {
        element.Points.push_back(point);
        element.Values.push_back(value);
    });
}

/// What of an element decides where it is painted: the range of its values, and on which sides of the visible area all
/// of its corners lie.
struct Reach {
    float lowest = std::numeric_limits<float>::infinity();
    float highest = -std::numeric_limits<float>::infinity();
    bool left = true, right = true, above = true, below = true;

    bool IsOutside() const { return left || right || above || below; }
};

Reach reachOf(const ContourInput& input, std::int32_t index, const DeviceRect& area) {
    Reach reach;
    forCorners(input, index, [&reach, &area](DevicePoint point, float value) {
        reach.lowest = value < reach.lowest ? value : reach.lowest;
        reach.highest = value > reach.highest ? value : reach.highest;
        reach.left &= point.X < area.Left;
        reach.right &= point.X >= area.Right;
        reach.above &= point.Y < area.Top;
        reach.below &= point.Y >= area.Bottom;
    });
    return reach;
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

struct BandRange {
    int first, last;
};

/// Which jobs are wanted.
struct JobSearch {
    BandRange window;                  ///< bands outside are passed over
    std::optional<DeviceRect> visible; ///< elements outside are passed over
    bool everyBand;                    ///< also bands that a later one of the same element covers completely
};

/// All bands that can have a point in an element whose values lie from `lowest` to `highest`; perhaps one too many.
BandRange bandsBetween(const ContourBands& bands, float lowest, float highest) {
    const auto reachesUp = [&](int i) { return bands.High(i) + bands.Tolerance >= lowest; };
    const auto startsAbove = [&](int i) { return bands.Low(i) - bands.Tolerance > highest; };
    const int top = bands.Count - 1;
    const auto guess = [&](float value) {
        const float place = (value - bands.Lower) / bands.Step;
        return place > 0 ? int(std::min(place, float(top))) : 0;
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

void findJobs(const ContourInput& input, const JobSearch& search, std::int32_t first, std::int32_t last,
              std::vector<BandJob>& jobs) {
    constexpr int manyBands = 16;
    constexpr DeviceRect everywhere = {INT_MIN, INT_MIN, INT_MAX, INT_MAX};
    const DeviceRect area = search.visible.value_or(everywhere);
    ContourElement element;
    for (std::int32_t e = first; e < last; ++e) {
        if (input.mesh.Elements.ElementType.at(e) < 0)
            continue;
        const Reach reach = reachOf(input, e, area);
        if (search.visible && reach.IsOutside())
            continue;
        // An infinite value crosses every level at its finite neighbour.
        const bool crossesAll = std::isinf(reach.highest) || std::isinf(reach.lowest);
        const BandRange touched =
            crossesAll ? BandRange{0, input.bands.Count - 1} : bandsBetween(input.bands, reach.lowest, reach.highest);
        const BandRange range = {std::max(touched.first, search.window.first),
                                 std::min(touched.last, search.window.last)};
        const bool thinOut = !search.everyBand && range.last - range.first > manyBands;
        if (thinOut)
            gather(input, e, element);
        for (int i = range.first; i <= range.last; ++i) {
            if (thinOut)
                i = lastAlike(element, input.bands, i, range.last);
            jobs.push_back({i, e});
        }
    }
}

/// All jobs by band, within a band by element.
std::vector<BandJob> sortedJobs(const ContourInput& input, const JobSearch& search) {
    const std::int32_t count = input.mesh.ElementCount;
    std::vector<std::vector<BandJob>> pieces(std::size_t((count + elementsPerPiece - 1) / elementsPerPiece));
    parallelFor(int(pieces.size()), [&](int piece) {
        const std::int32_t first = piece * elementsPerPiece;
        findJobs(input, search, first, std::min(count, first + elementsPerPiece), pieces[std::size_t(piece)]);
    });
    std::size_t total = 0;
    for (const auto& piece : pieces)
        total += piece.size();
    std::vector<BandJob> jobs(total);
    constexpr int fewBands = 65536;
    if (input.bands.Count > fewBands) {
        auto end = jobs.begin();
        for (const auto& piece : pieces)
            end = std::copy(piece.begin(), piece.end(), end);
        std::stable_sort(jobs.begin(), jobs.end(), [](const BandJob& a, const BandJob& b) { return a.band < b.band; });
        return jobs;
    }
    std::vector<std::size_t> next(std::size_t(input.bands.Count) + 1);
    for (const auto& piece : pieces)
        for (const BandJob& job : piece)
            ++next[std::size_t(job.band) + 1];
    for (std::size_t i = 1; i < next.size(); ++i)
        next[i] += next[i - 1];
    for (const auto& piece : pieces)
        for (const BandJob& job : piece)
            jobs[next[std::size_t(job.band)]++] = job;
    return jobs;
}

/// The polygons of a stretch of one band's jobs.
struct PolygonBatch {
    std::vector<DevicePoint> points;
    std::vector<int> counts;
};

void clipJobs(const ContourInput& input, std::span<const BandJob> jobs, PolygonBatch& batch) {
    batch.points.clear();
    batch.counts.clear();
    ContourElement element;
    for (const BandJob& job : jobs) {
        gather(input, job.element, element);
        if (const int count = AppendClipPolygon(element, input.bands, job.band, batch.points))
            batch.counts.push_back(count);
    }
}

/// Pen and brush of one band for as long as it lives.
class BandColour {
public:
    BandColour(DeviceContext& onDevice, const ContourBands& bands, int band, const ContourSettings& settings)
        : device(onDevice) {
        const float step = 1 / float(bands.Count - 1);
        const Colour colour = ContourColor(step * float(band), settings);
        oldPen = mdTips::SelectSolidPen(device, colour, 1, PenStyle::Solid);
        oldBrush = mdTips::SelectBrush(device, colour, -1);
    }
    ~BandColour() {
        mdTips::RestoreObject(device, oldBrush);
        mdTips::RestoreObject(device, oldPen);
    }
    BandColour(const BandColour&) = delete;
    BandColour& operator=(const BandColour&) = delete;

private:
    DeviceContext& device;
    Pen oldPen;
    Brush oldBrush;
};

void paintBand(DeviceContext& device, const ContourInput& input, std::span<const BandJob> jobs,
               std::vector<PolygonBatch>& batches) {
    for (std::size_t first = 0; first < jobs.size(); first += batches.size() * polygonsPerPiece) {
        const auto rest = jobs.subspan(first);
        const std::size_t pieces = std::min(batches.size(), (rest.size() + polygonsPerPiece - 1) / polygonsPerPiece);
        parallelFor(int(pieces), [&](int piece) {
            const std::size_t start = std::size_t(piece) * polygonsPerPiece;
            clipJobs(input, rest.subspan(start, std::min<std::size_t>(polygonsPerPiece, rest.size() - start)),
                     batches[std::size_t(piece)]);
        });
        for (std::size_t piece = 0; piece < pieces; ++piece)
            device.Polygons(batches[piece].points, batches[piece].counts);
    }
}

/// Only bands that are seen, and of those in one element only the ones that stay to be seen.
void drawTouchedBands(DeviceContext& device, const ContourInput& input, const ContourSettings& settings) {
    const std::vector<BandJob> jobs = sortedJobs(input, {{0, input.bands.Count - 1}, device.VisibleArea(), false});
    std::vector<PolygonBatch> batches(std::size_t(coreCount()) * 4);
    for (std::size_t first = 0; first < jobs.size();) {
        std::size_t last = first;
        while (last < jobs.size() && jobs[last].band == jobs[first].band)
            ++last;
        const BandColour colour(device, input.bands, jobs[first].band, settings);
        paintBand(device, input, std::span(jobs).subspan(first, last - first), batches);
        first = last;
    }
}

/// All bands with all their polygons, a stretch of bands at a time so that the jobs never outgrow the memory.
void drawEveryBand(DeviceContext& device, const ContourInput& input, const ContourSettings& settings) {
    constexpr int bandsAtOnce = 64;
    std::vector<PolygonBatch> batches(1);
    for (qint64 start = 0; start < input.bands.Count; start += bandsAtOnce) {
        const BandRange window = {int(start), int(std::min<qint64>(start + bandsAtOnce, input.bands.Count)) - 1};
        const std::vector<BandJob> jobs = sortedJobs(input, {window, std::nullopt, true});
        auto job = jobs.begin();
        for (int band = window.first; band <= window.last; ++band) {
            const auto end = std::find_if(job, jobs.end(), [band](const BandJob& other) { return other.band != band; });
            const BandColour colour(device, input.bands, band, settings);
            paintBand(device, input, std::span(job, end), batches);
            job = end;
        }
    }
}

} // namespace

void DrawContour(DeviceContext& device, const Scene& scene, PaintContext& context) {
    const ContourSettings& settings = scene.Settings.Contour;
    const DifferenceSettings& difference = scene.Settings.Difference;
    const ItemValues values =
        mdVelorinResultModel::GetNodeValues(difference.StandardStep >= 0 && difference.ApplyContour, scene.Model.Mesh);
    const float upper = settings.Automatic ? values.MaxValue : settings.MaxValue;
    const float lower = settings.Automatic ? values.MinValue : settings.MinValue;
    const int count = settings.Automatic ? automaticBandCount : settings.Divide;
    if (count < 2)
        return;
    context.ContourMax = upper;
    context.ContourMin = lower;
    context.ContourDivide = count;
    if (!(upper > lower))
        return;
    const ContourBands bands(lower, upper, count);
    const ContourInput input = {scene.Model.Mesh, values.Values, scene.View.NodePoints, bands};
    if (device.ShowsEveryCall())
        drawEveryBand(device, input, settings);
    else
        drawTouchedBands(device, input, settings);
}

} // namespace mdScene
