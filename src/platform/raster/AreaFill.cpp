#include "platform/raster/AreaFill.h"

#include "platform/device/Rings.h"
#include "platform/raster/FigureBits.h"
#include "platform/raster/PolygonSide.h"

namespace {
void sortByColumn(PolygonSide** sides, std::size_t count) {
    // Few sides, or sides nearly in order, are quickest put in place one by one.
    for (std::size_t i = 1; i < count; ++i) {
        PolygonSide* const moved = sides[i];
        std::size_t place = i;
        for (; place > 0 && sides[place - 1]->X > moved->X; --place)
            sides[place] = sides[place - 1];
        sides[place] = moved;
    }
}

/// `active` has room for all sides.
void fillSides(const PixelSurface& surface, const Ink& ink, std::span<PolygonSide> sides, PolygonSide** active) {
    std::sort(sides.begin(), sides.end(), [](const PolygonSide& a, const PolygonSide& b) { return a.Top < b.Top; });
    std::size_t next = 0;
    std::size_t count = 0;
    for (int y = sides.empty() ? 0 : sides[0].Top; count > 0 || next < sides.size(); ++y) {
        if (count == 0)
            y = sides[next].Top;
        while (next < sides.size() && sides[next].Top == y)
            active[count++] = &sides[next++];
        sortByColumn(active, count);
        for (std::size_t i = 0; i + 1 < count; i += 2)
            fillSpan(surface, ink, y, active[i]->X, active[i + 1]->X);
        std::size_t kept = 0;
        for (std::size_t i = 0; i < count; ++i) {
            if (active[i]->Bottom <= y + 1)
                continue;
            active[i]->Advance();
            active[kept++] = active[i];
        }
        count = kept;
    }
}

std::size_t collectSides(const PixelSurface& surface, std::span<const DevicePoint> points, std::span<const int> counts,
                         PolygonSide* sides) {
    std::size_t sideCount = 0;
    forEachRing(points, counts, [&](std::span<const DevicePoint> corners) {
        if (corners.empty())
            return;
        DevicePoint previous = corners.back();
        for (const DevicePoint point : corners) {
            sideCount += sides[sideCount].Make(surface.Top, surface.Bottom, previous, point) ? 1 : 0;
            previous = point;
        }
    });
    return sideCount;
}

void fillCrowded(const PixelSurface& surface, const Ink& ink, std::span<const DevicePoint> points,
                 std::span<const int> counts) {
    const auto [left, right] = std::ranges::minmax(points, {}, &DevicePoint::X);
    const auto [top, bottom] = std::ranges::minmax(points, {}, &DevicePoint::Y);
    const PixelSurface part = surface.Within(left.X, top.Y, right.X, bottom.Y);
    if (part.IsEmpty())
        return;
    FigureBits figure(part);
    figure.Fill(points, counts);
    figure.Take([&](int y, int column, std::uint64_t bits) { fillBits(part, ink, y, column, bits); });
}
} // namespace

void AreaFill::Polygons(const PixelSurface& surface, const Ink& ink, std::span<const DevicePoint> points,
                        std::span<const int> counts) {
    if (surface.IsEmpty())
        return;
    constexpr std::size_t crowd = 32;
    if (points.size() > crowd) {
        fillCrowded(surface, ink, points, counts);
        return;
    }
    std::array<PolygonSide, crowd> sides;
    std::array<PolygonSide*, crowd> active;
    const std::size_t sideCount = collectSides(surface, points, counts, sides.data());
    fillSides(surface, ink, std::span(sides).first(sideCount), active.data());
}

void AreaFill::Rectangle(const PixelSurface& surface, const Ink& ink, std::int64_t left, std::int64_t top,
                         std::int64_t right, std::int64_t bottom) {
    const int last = int(std::min<std::int64_t>(bottom, surface.Bottom));
    for (int y = int(std::max<std::int64_t>(top, surface.Top)); y < last; ++y)
        fillSpan(surface, ink, y, left, right);
}
