// What the lines of one pen look like, and how far its dashes have come along a path. Touches no pixel itself.
#pragma once

#include "platform/device/DeviceState.h"
#include "platform/raster/PixelSurface.h"
#include "platform/raster/RoundShapes.h"

#include <span>

/// A place that lines are put on, each in the way that suits it best.
class LineTarget {
public:
    virtual ~LineTarget() = default;
    /// One pixel wide and without gaps, the end left out.
    virtual void Thin(DevicePoint from, DevicePoint to) = 0;
    /// The same with gaps: step i of the line is drawn when bit (`start` + i) % `period` of `dashes` is set.
    virtual void ThinDashed(DevicePoint from, DevicePoint to, int start, int period, std::uint32_t dashes) = 0;
    virtual void Wide(DevicePoint from, DevicePoint to, int width) = 0;
    /// One dash of a wide line.
    virtual void WideDash(RoundShapes::Spot from, RoundShapes::Spot to, int width) = 0;

    /// What of the target can be drawn on.
    const PixelSurface& Area() const { return area; }

protected:
    explicit LineTarget(const PixelSurface& drawn) : area(drawn) {}
    PixelSurface area;
};

class Stroke {
public:
    explicit Stroke(const Pen& pen);

    bool IsVisible() const { return visible; }
    bool IsWide() const { return width > 1; }
    bool IsThinSolid() const { return visible && !IsWide() && dashes.empty(); }
    int Width() const { return width; }

    /// One line, its end left out; a wide line has round ends. `at` moves on to `to`.
    void LineTo(LineTarget& target, PathPosition& at, DevicePoint to) const;

private:
    void dashedWideLine(LineTarget& target, const PathPosition& at, DevicePoint to) const;

    bool visible;
    int width;                   ///< at least 1
    std::span<const int> dashes; ///< thin: device units; wide: pen widths
    int dashPeriod = 0;          ///< sum of `dashes`
    std::uint32_t dashBits = 0;  ///< thin: bit i is set when a dash lies over unit i of the pattern
};
