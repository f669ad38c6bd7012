// Which elements of a mesh may be seen in a paint: found once, for all layers to go by. Whether one that may be seen is
// drawn is the layers' business.
#pragma once

#include "platform/base/Geometry.h"
#include "platform/base/Parallel.h"

#include <cstdint>
#include <optional>
#include <vector>

/// By stretches of elements, as `parallelStretches` has them. All may be seen until `Begin`.
class VisibleElements {
public:
    /// Beyond which nothing can be seen, whatever is drawn with; without it all may be.
    std::optional<DeviceRect> Area;

    /// None of so many stretches.
    void Begin(int stretches) { seen.assign(std::size_t(stretches), {}); }
    /// Those of a stretch, ascending. Each stretch may be written by another thread.
    std::vector<std::int32_t>& Of(int stretch) { return seen[std::size_t(stretch)]; }

    /// Calls `visit(e)` for those of a stretch of the `count` elements.
    template<class Visit>
    void ForEach(int stretch, std::int32_t count, const Visit& visit) const {
        if (seen.empty()) {
            const std::int32_t first = stretch * indexesPerStretch;
            const std::int32_t last = first + std::min(count - first, indexesPerStretch);
            for (std::int32_t e = first; e < last; ++e)
                visit(e);
        } else {
            for (const std::int32_t e : seen[std::size_t(stretch)])
                visit(e);
        }
    }

private:
    std::vector<std::vector<std::int32_t>> seen;
};
