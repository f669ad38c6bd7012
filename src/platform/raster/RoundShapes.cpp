#include "platform/raster/RoundShapes.h"

#include <cmath>

namespace RoundShapes {
namespace {
/// A shape of even pen width has its middle between two pixels.
double middleShift(double penWidth) {
    return std::fmod(std::round(penWidth), 2.0) == 0.0 ? 0.5 : 0.0;
}

/// The spots that a row's columns lie between.
struct Interval {
    double Low = std::numeric_limits<double>::infinity();
    double High = -std::numeric_limits<double>::infinity();

    void Include(double low, double high) {
        Low = std::min(Low, low);
        High = std::max(High, high);
    }
    void IncludeDisc(Spot centre, double radius, double y) {
        const double square = radius * radius - (y - centre.Y) * (y - centre.Y);
        if (square >= 0) {
            const double half = std::sqrt(square);
            Include(centre.X - half, centre.X + half);
        }
    }
};
} // namespace

Capsule::Side::Side(Spot from, Spot to)
    : Top(std::min(from.Y, to.Y)), Bottom(std::max(from.Y, to.Y)), X(from.Y < to.Y ? from.X : to.X),
      Slope(from.Y == to.Y ? 0.0 : (to.X - from.X) / (to.Y - from.Y)) {}

Capsule::Capsule(Spot from, Spot to, double width) : radius(width / 2), one({}, {}), other({}, {}) {
    const double shift = middleShift(width);
    // The same end first in both directions, so that rounding cannot tell them apart.
    if (to.Y < from.Y || (to.Y == from.Y && to.X < from.X))
        std::swap(from, to);
    a = {from.X - shift, from.Y - shift};
    b = {to.X - shift, to.Y - shift};
    const double length = std::hypot(b.X - a.X, b.Y - a.Y);
    const double acrossX = length > 0 ? (b.Y - a.Y) / length * radius : 0.0;
    const double acrossY = length > 0 ? (a.X - b.X) / length * radius : 0.0;
    one = Side({a.X + acrossX, a.Y + acrossY}, {b.X + acrossX, b.Y + acrossY});
    other = Side({a.X - acrossX, a.Y - acrossY}, {b.X - acrossX, b.Y - acrossY});
    leftmost = std::min(a.X, b.X) - radius;
    rightmost = std::max(a.X, b.X) + radius;
    top = std::int64_t(std::ceil(a.Y - radius));
    bottom = std::int64_t(std::ceil(b.Y + radius));
}

Columns Capsule::row(double y) const {
    Interval columns;
    columns.IncludeDisc(a, radius, y);
    columns.IncludeDisc(b, radius, y);
    for (const Side* const side : {&one, &other}) {
        if (y >= side->Top && y < side->Bottom) {
            const double x = side->X + (y - side->Top) * side->Slope;
            columns.Include(x, x);
        }
    }
    if (!(columns.Low < columns.High))
        return {};
    return {std::int64_t(std::ceil(columns.Low)), std::int64_t(std::ceil(columns.High))};
}

Ellipse::Ellipse(std::int64_t width, std::int64_t height, int penWidth) : rim(penWidth) {
    const bool ring = penWidth > 1;
    const double shift = ring ? middleShift(penWidth) : 0.0;
    const double spread = ring ? (penWidth - 1) / 2.0 : 0.0;
    middle = {double(width - 1) / 2 - shift, double(height - 1) / 2 - shift};
    outer = {double(width) / 2 + spread, double(height) / 2 + spread};
    inner = {outer.X - penWidth, outer.Y - penWidth};
    top = std::int64_t(std::ceil(middle.Y - outer.Y));
    bottom = std::int64_t(std::floor(middle.Y + outer.Y)) + 1;
}

Columns Ellipse::row(Radii radii, std::int64_t y) const {
    Columns columns;
    const double part = radii.Y > 0 ? (double(y) - middle.Y) / radii.Y : 2.0;
    if (radii.X > 0 && std::abs(part) < 1.0) {
        const double half = radii.X * std::sqrt(1.0 - part * part);
        columns = {std::int64_t(std::ceil(middle.X - half)), std::int64_t(std::floor(middle.X + half)) + 1};
    }
    return columns;
}

RimmedRow Ellipse::Row(std::int64_t y) const {
    const Columns whole = row(outer, y);
    if (rim == 0 || whole.IsEmpty())
        return {whole, whole};
    if (rim > 1)
        return {whole, row(inner, y)};
    // Without its outermost pixels a row keeps those with all four neighbours in the shape.
    const Columns above = row(outer, y - 1);
    const Columns below = row(outer, y + 1);
    return {
        whole,
        {std::max({whole.First + 1, above.First, below.First}), std::min({whole.Last - 1, above.Last, below.Last})}};
}
} // namespace RoundShapes
