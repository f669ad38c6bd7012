// Which band of which element has to be painted, found in one pass over the elements. Paints nothing.
#pragma once

#include "platform/device/RankedLayer.h"
#include "view/scene/contour.h"

#include <optional>

namespace mdScene {

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
    const VisibleElements& visible;
};

struct BandRange {
    int first, last;
};

/// Which jobs are wanted.
struct JobSearch {
    BandRange window;                  ///< bands outside are passed over
    std::optional<DeviceRect> visible; ///< elements outside are passed over
    bool everyBand;                    ///< also bands that a later one of the same element covers completely
    RankedLayer* small = nullptr;      ///< takes the polygons of small elements, band i as rank i + 1: they are no jobs
};

/// All jobs by band, within a band by element. Some may turn out to have no polygon.
std::vector<BandJob> FindBandJobs(const ContourInput& input, const JobSearch& search);

/// The polygons of a stretch of one band's jobs.
struct PolygonBatch {
    std::vector<DevicePoint> points;
    std::vector<int> counts;
};

/// Fills a batch anew with what `jobs` have.
void ClipJobs(const ContourInput& input, std::span<const BandJob> jobs, PolygonBatch& batch);

} // namespace mdScene
