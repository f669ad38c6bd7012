// Which band of which element has to be painted, found in one pass over the elements. Paints nothing.
#pragma once

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
};

/// All jobs by band, within a band by element. Some may turn out to have no polygon.
std::vector<BandJob> FindBandJobs(const ContourInput& input, const JobSearch& search);

/// The polygon of a job whose element has all of its values inside the band, appended to `points`: the element, from
/// its last corner on, as most are in a fine mesh. The number of points; 0 for any other job.
int AppendInside(const ContourInput& input, const BandJob& job, std::vector<DevicePoint>& points);

/// The corners of an element, those without a node left out.
void GatherElement(const ContourInput& input, std::int32_t index, ContourElement& element);

} // namespace mdScene
