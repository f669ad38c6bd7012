// The contour layer. Painted as by the plain loops, bands outside and elements inside, but each band visits only the
// elements that it can touch: they are found in one pass over the elements before the first band is painted.
#include "view/scene/contourJobs.h"

#include "app/mdTipsDrawing.h"
#include "platform/base/Parallel.h"

namespace mdScene {

namespace {

constexpr std::size_t fewestPolygonsPerPiece = 4096, mostPolygonsPerPiece = 65536;

ColorRef colorOf(const ContourBands& bands, int band, const ContourSettings& settings) {
    const float step = 1 / float(bands.Count - 1);
    return ContourColor(step * float(band), settings, {bands.Lower, bands.Upper});
}

/// Pen and brush of one band for as long as it lives.
class BandColor {
public:
    BandColor(DeviceContext& onDevice, const ContourBands& bands, int band, const ContourSettings& settings)
        : device(onDevice) {
        const ColorRef color = colorOf(bands, band, settings);
        oldPen = mdTips::SelectSolidPen(device, color, 1, PenStyle::Solid);
        oldBrush = mdTips::SelectBrush(device, color, -1);
    }
    ~BandColor() {
        mdTips::RestoreObject(device, oldBrush);
        mdTips::RestoreObject(device, oldPen);
    }
    BandColor(const BandColor&) = delete;
    BandColor& operator=(const BandColor&) = delete;

private:
    DeviceContext& device;
    Pen oldPen;
    Brush oldBrush;
};

void paintBand(DeviceContext& device, const ContourInput& input, std::span<const BandJob> jobs,
               std::vector<PolygonBatch>& batches) {
    const std::size_t perPiece =
        std::clamp(jobs.size() / batches.size() + 1, fewestPolygonsPerPiece, mostPolygonsPerPiece);
    for (auto rest = jobs; !rest.empty();) {
        const std::size_t pieces = std::min(batches.size(), (rest.size() + perPiece - 1) / perPiece);
        parallelFor(int(pieces), [&](int piece) {
            const std::size_t start = std::size_t(piece) * perPiece;
            ClipJobs(input, rest.subspan(start, std::min(perPiece, rest.size() - start)), batches[std::size_t(piece)]);
        });
        for (std::size_t piece = 0; piece < pieces; ++piece)
            device.Polygons(batches[piece].points, batches[piece].counts);
        rest = rest.subspan(std::min(pieces * perPiece, rest.size()));
    }
}

/// The small elements' bands, which lie on a layer of their own until the large ones' that they cover are painted.
class SmallBands {
public:
    SmallBands(DeviceContext& device, const ContourInput& painted, const ContourSettings& contour)
        : input(painted), settings(contour) {
        if (input.bands.Count <= RankedLayer::MostRanks)
            layer = device.Ranked();
    }
    RankedLayer* Layer() const { return layer.get(); }
    /// Those below `end` that are not on the device yet.
    void PaintUpTo(int end) {
        if (!layer || next == end)
            return;
        std::vector<ColorRef> inks;
        for (int band = next; band < end; ++band)
            inks.push_back(colorOf(input.bands, band, settings));
        layer->Put(next + 1, inks);
        next = end;
    }

private:
    const ContourInput& input;
    const ContourSettings& settings;
    std::unique_ptr<RankedLayer> layer;
    int next = 0;
};

/// Only bands that are seen, and of those in one element only the ones that stay to be seen.
void drawTouchedBands(DeviceContext& device, const ContourInput& input, const ContourSettings& settings) {
    SmallBands small(device, input, settings);
    const std::vector<BandJob> jobs =
        FindBandJobs(input, {{0, input.bands.Count - 1}, device.VisibleArea(), false, small.Layer()});
    const auto pieces = std::size_t(coreCount());
    std::vector<PolygonBatch> batches(pieces);
    for (std::size_t first = 0; first < jobs.size();) {
        std::size_t last = first;
        while (last < jobs.size() && jobs[last].band == jobs[first].band)
            ++last;
        small.PaintUpTo(jobs[first].band);
        const BandColor color(device, input.bands, jobs[first].band, settings);
        paintBand(device, input, std::span(jobs).subspan(first, last - first), batches);
        first = last;
    }
    small.PaintUpTo(input.bands.Count);
}

/// All bands with all their polygons, a stretch of bands at a time so that the jobs never outgrow the memory.
void drawEveryBand(DeviceContext& device, const ContourInput& input, const ContourSettings& settings) {
    constexpr int bandsAtOnce = 64;
    std::vector<PolygonBatch> batches(1);
    for (qint64 start = 0; start < input.bands.Count; start += bandsAtOnce) {
        const BandRange window = {int(start), int(std::min<qint64>(start + bandsAtOnce, input.bands.Count)) - 1};
        const std::vector<BandJob> jobs = FindBandJobs(input, {window, std::nullopt, true});
        auto job = jobs.begin();
        for (int band = window.first; band <= window.last; ++band) {
            const auto end = std::find_if(job, jobs.end(), [band](const BandJob& other) { return other.band != band; });
            const BandColor color(device, input.bands, band, settings);
            paintBand(device, input, std::span(job, end), batches);
            job = end;
        }
    }
}

} // namespace

void DrawContour(DeviceContext& device, const Scene& scene, PaintContext& context) {
    const ContourSettings& settings = scene.Settings.Contour;
    const ItemValues values = ContourValues(scene);
    const auto [ends, count] = ContourScaleOf(scene, values, context.Picture);
    const auto [lower, upper] = ends;
    if (count < 2)
        return;
    context.ContourMax = upper;
    context.ContourMin = lower;
    context.ContourDivide = count;
    if (!(upper > lower))
        return;
    const ContourBands bands(lower, upper, count);
    const ContourInput input = {scene.Model.Mesh, values.Values, scene.View.NodePoints, bands, context.Visible};
    // Beyond this nobody reads the calls one by one, and they would outgrow any memory.
    constexpr int mostBandsInFull = 1000000;
    if (device.ShowsEveryCall() && count <= mostBandsInFull)
        drawEveryBand(device, input, settings);
    else
        drawTouchedBands(device, input, settings);
}

} // namespace mdScene
