// Lines as bits of a stencil. Long straight stretches go into it by the word and short wide lines as ready shapes, so
// that a curve through any number of points costs little more than its pixels.
#pragma once

#include "platform/raster/Stencil.h"
#include "platform/raster/Stroke.h"

/// Sets exactly the pixels that are drawn one by one on a surface. All wide lines must have the same width.
class StencilLines final : public LineTarget {
public:
    explicit StencilLines(Stencil& target) : LineTarget(target.Area()), stencil(target) {}

    void Thin(DevicePoint from, DevicePoint to) override;
    void ThinDashed(DevicePoint from, DevicePoint to, int start, int period, std::uint32_t dashes) override;
    void Wide(DevicePoint from, DevicePoint to, int width) override;
    void WideDash(RoundShapes::Spot from, RoundShapes::Spot to, int width) override;

private:
    /// A row of the shape of a short line, counted from the line's start.
    struct ShapeRow {
        int Y;
        RoundShapes::Columns X;
    };
    using Shape = std::vector<ShapeRow>;

    template<class Pieces>
    bool straightLine(DevicePoint from, DevicePoint to, const Pieces& pieces);
    const Shape& shortLine(int dx, int dy, int width);
    bool simpleWideLine(DevicePoint from, DevicePoint to, int width);

    static constexpr int shortReach = 3; ///< longest short line in either direction
    static constexpr int shortSpan = 2 * shortReach + 1;

    Stencil& stencil;
    std::array<Shape, std::size_t(shortSpan* shortSpan)> shortLines; ///< empty until needed
};
