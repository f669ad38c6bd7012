// Small polygons that hide each other by rank instead of by the order in which they come: so they may come in any
// order and from any number of threads. They are put on the device afterwards, rank by rank. Knows no results.
#pragma once

#include "platform/base/Geometry.h"

#include <span>

class RankedLayer {
public:
    using Rank = std::uint8_t;
    static constexpr int MostRanks = 255;
    /// Columns and rows of the largest polygon, the outline with them.
    static constexpr int LargestSize = 16;

    RankedLayer() = default;
    virtual ~RankedLayer() = default;
    RankedLayer(const RankedLayer&) = delete;
    RankedLayer& operator=(const RankedLayer&) = delete;

    struct Polygon {
        DeviceRect Bounds; ///< of its corners at least, `Right` and `Bottom` left out; none larger than `LargestSize`
        std::int32_t Corners;
        Rank InkRank; ///< from 1
    };
    /// Polygons of 2 corners and more, each of the next of `points`: filled by the alternate rule and outlined one unit
    /// wide, in the ink of its rank. Any thread may call at any time.
    virtual void Add(std::span<const DevicePoint> points, std::span<const Polygon> polygons) = 0;

    /// Puts the pixels whose highest rank is `first` or one of those that follow on the device, `inks` each; the
    /// others stay. Nothing may be added from then on.
    virtual void Put(int first, std::span<const ColorRef> inks) = 0;
};
