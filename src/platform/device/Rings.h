// Walks the rings of a poly-polygon. Header only; knows no device.
#pragma once

#include "platform/base/Geometry.h"

#include <span>

/// The leading counts whose points are really there; a negative count ends them.
inline std::span<const int> completeRings(std::span<const DevicePoint> points, std::span<const int> counts) {
    std::size_t rings = 0, used = 0;
    while (rings < counts.size() && counts[rings] >= 0 && std::size_t(counts[rings]) <= points.size() - used)
        used += std::size_t(counts[rings++]);
    return counts.first(rings);
}

/// Calls `visit(ring)` with the points of each complete ring in turn.
template<class Visit>
void forEachRing(std::span<const DevicePoint> points, std::span<const int> counts, Visit visit) {
    std::size_t first = 0;
    for (const int count : completeRings(points, counts)) {
        visit(points.subspan(first, std::size_t(count)));
        first += std::size_t(count);
    }
}
