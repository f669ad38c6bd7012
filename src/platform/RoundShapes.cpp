#include "platform/RoundShapes.h"

#include <cmath>
#include <limits>

namespace {
/// The columns of a shape in one row, `Last` left out; empty as made.
struct Columns {
    std::int64_t First = std::numeric_limits<std::int64_t>::max();
    std::int64_t Last = std::numeric_limits<std::int64_t>::min();
    bool IsEmpty() const { return First >= Last; }
};

/// A shape of even pen width has its middle between two pixels.
double middleShift(double penWidth) {
    return std::fmod(std::round(penWidth), 2.0) == 0.0 ? 0.5 : 0.0;
}

/// The straight side of a capsule.
struct Side {
    double Top;
    double Bottom;
    double X; ///< at `Top`
    double Slope;

    Side(RoundShapes::Spot a, RoundShapes::Spot b)
        : Top(std::min(a.Y, b.Y)), Bottom(std::max(a.Y, b.Y)), X(a.Y < b.Y ? a.X : b.X),
          Slope(a.Y == b.Y ? 0.0 : (b.X - a.X) / (b.Y - a.Y)) {}
};

struct Interval {
    double Low = std::numeric_limits<double>::infinity();
    double High = -std::numeric_limits<double>::infinity();
    void Include(double low, double high) {
        Low = std::min(Low, low);
        High = std::max(High, high);
    }
    void IncludeDisc(RoundShapes::Spot centre, double radius, double y) {
        const double square = radius * radius - (y - centre.Y) * (y - centre.Y);
        if (square >= 0) {
            const double half = std::sqrt(square);
            Include(centre.X - half, centre.X + half);
        }
    }
    void IncludeSide(const Side& side, double y) {
        if (y >= side.Top && y < side.Bottom) {
            const double x = side.X + (y - side.Top) * side.Slope;
            Include(x, x);
        }
    }
};

/// An ellipse about a middle, to be asked for its rows.
struct EllipseShape {
    double CentreX;
    double CentreY;
    double RadiusX;
    double RadiusY;

    Columns Row(std::int64_t y) const {
        Columns columns;
        const double part = RadiusY > 0 ? (double(y) - CentreY) / RadiusY : 2.0;
        if (RadiusX > 0 && std::abs(part) < 1.0) {
            const double half = RadiusX * std::sqrt(1.0 - part * part);
            columns.First = std::int64_t(std::ceil(CentreX - half));
            columns.Last = std::int64_t(std::floor(CentreX + half)) + 1;
        }
        return columns;
    }
};

void drawRow(const PixelSurface& surface, const Ink* pen, const Ink* brush, int y, Columns outer, Columns inner) {
    if (inner.IsEmpty())
        inner = {outer.Last, outer.Last};
    if (pen) {
        fillSpan(surface, *pen, y, outer.First, inner.First);
        fillSpan(surface, *pen, y, inner.Last, outer.Last);
    }
    if (brush)
        fillSpan(surface, *brush, y, inner.First, inner.Last);
}

/// What a row of a shape keeps when its outermost pixels are taken away: those with all four neighbours in the shape.
Columns withoutRim(const EllipseShape& shape, std::int64_t y, Columns row) {
    const Columns above = shape.Row(y - 1);
    const Columns below = shape.Row(y + 1);
    return {std::max({row.First + 1, above.First, below.First}), std::min({row.Last - 1, above.Last, below.Last})};
}
} // namespace

void RoundShapes::Capsule(const PixelSurface& surface, const Ink& ink, Spot from, Spot to, double width) {
    const double radius = width / 2;
    const double shift = middleShift(width);
    // The same end first in both directions, so that rounding cannot tell them apart.
    if (to.Y < from.Y || (to.Y == from.Y && to.X < from.X))
        std::swap(from, to);
    const Spot a{from.X - shift, from.Y - shift};
    const Spot b{to.X - shift, to.Y - shift};
    const double top = std::max(std::ceil(a.Y - radius), double(surface.Top));
    const double bottom = std::min(std::ceil(b.Y + radius), double(surface.Bottom));
    if (surface.IsEmpty() || top >= bottom || std::min(a.X, b.X) - radius >= surface.Right ||
        std::max(a.X, b.X) + radius < surface.Left)
        return;

    const double length = std::hypot(b.X - a.X, b.Y - a.Y);
    const double acrossX = length > 0 ? (b.Y - a.Y) / length * radius : 0.0;
    const double acrossY = length > 0 ? (a.X - b.X) / length * radius : 0.0;
    const Side one({a.X + acrossX, a.Y + acrossY}, {b.X + acrossX, b.Y + acrossY});
    const Side other({a.X - acrossX, a.Y - acrossY}, {b.X - acrossX, b.Y - acrossY});
    for (int y = int(top); y < int(bottom); ++y) {
        Interval columns;
        columns.IncludeDisc(a, radius, y);
        columns.IncludeDisc(b, radius, y);
        columns.IncludeSide(one, y);
        columns.IncludeSide(other, y);
        if (columns.Low < columns.High)
            fillSpan(surface, ink, y, std::int64_t(std::ceil(columns.Low)), std::int64_t(std::ceil(columns.High)));
    }
}

void RoundShapes::Ellipse(const PixelSurface& surface, const Ink* pen, const Ink* brush, const DeviceRect& rect,
                          int penWidth) {
    const bool ring = pen && penWidth > 1;
    const double shift = ring ? middleShift(penWidth) : 0.0;
    const double spread = ring ? (penWidth - 1) / 2.0 : 0.0;
    const double radiusX = (double(rect.Right) - rect.Left) / 2;
    const double radiusY = (double(rect.Bottom) - rect.Top) / 2;
    const EllipseShape outer{(double(rect.Left) + rect.Right - 1) / 2 - shift,
                             (double(rect.Top) + rect.Bottom - 1) / 2 - shift, radiusX + spread, radiusY + spread};
    const EllipseShape inner{outer.CentreX, outer.CentreY, outer.RadiusX - penWidth, outer.RadiusY - penWidth};
    const double top = std::max(std::ceil(outer.CentreY - outer.RadiusY), double(surface.Top));
    const double bottom = std::min(outer.CentreY + outer.RadiusY, double(surface.Bottom) - 1);
    if (surface.IsEmpty() || radiusX <= 0 || radiusY <= 0)
        return;
    for (auto y = std::int64_t(top); double(y) <= bottom; ++y) {
        const Columns row = outer.Row(y);
        if (row.IsEmpty())
            continue;
        const Columns kept = !pen ? row : ring ? inner.Row(y) : withoutRim(outer, y, row);
        drawRow(surface, pen, brush, int(y), row, kept);
    }
}
