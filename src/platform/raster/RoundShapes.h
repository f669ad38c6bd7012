// Wide lines with round ends, and ellipses, as columns row by row; each row depends on the figure alone, so any clip
// gives the same pixels.
#pragma once

#include "platform/raster/PixelSurface.h"

#include <limits>

namespace RoundShapes {
/// A position that need not be on a device unit: where a dash begins and ends.
struct Spot {
    double X = 0;
    double Y = 0;
};

/// The columns of a shape in one row, `Last` left out; empty as made.
struct Columns {
    std::int64_t First = std::numeric_limits<std::int64_t>::max();
    std::int64_t Last = std::numeric_limits<std::int64_t>::min();
    bool IsEmpty() const { return First >= Last; }
};

/// All pixels within half of `width` of the line between two spots; a disc when they are the same. An even width lies
/// half above and left of the line, without a middle row.
///
/// Between whole device units no pixel lies just at half the width, so that rounding decides nothing while coordinates
/// and lengths are those of pictures: the shape then is the same at any place, and the same mirrored or turned over.
class Capsule {
public:
    Capsule(Spot from, Spot to, double width);

    /// Calls `visit(y, columns)` for each row of the surface that has any of the shape.
    template<class Visit>
    void ForEachRow(const PixelSurface& surface, const Visit& visit) const {
        if (leftmost >= surface.Right || rightmost < surface.Left)
            return;
        const std::int64_t end = std::min<std::int64_t>(bottom, surface.Bottom);
        for (std::int64_t y = std::max<std::int64_t>(top, surface.Top); y < end; ++y) {
            if (const Columns columns = row(double(y)); !columns.IsEmpty())
                visit(int(y), columns);
        }
    }

private:
    Columns row(double y) const;

    /// A straight side.
    struct Side {
        double Top;
        double Bottom;
        double X; ///< at `Top`
        double Slope;
        Side(Spot a, Spot b);
    };

    Spot a, b; ///< the middles of the round ends, `a` not below
    double radius;
    Side one, other;
    double leftmost, rightmost;
    std::int64_t top, bottom; ///< `bottom` left out
};

/// One row of a filled figure with a rim: the rim takes what is outside `Inner`.
struct RimmedRow {
    Columns Outer;
    Columns Inner;
};

/// The ellipse that fills the columns 0 up to, without, `width` and the rows 0 up to `height`. Its rim is its outermost
/// pixels or, for a `penWidth` above 1, the ring of that width about them, which reaches beyond those rows and columns;
/// a `penWidth` of 0 is no rim.
class Ellipse {
public:
    Ellipse(std::int64_t width, std::int64_t height, int penWidth);

    std::int64_t Top() const { return top; }
    std::int64_t Bottom() const { return bottom; } ///< left out
    RimmedRow Row(std::int64_t y) const;

private:
    /// An ellipse about the common middle.
    struct Radii {
        double X;
        double Y;
    };
    Columns row(Radii radii, std::int64_t y) const;

    int rim;
    Spot middle;
    Radii outer, inner;
    std::int64_t top, bottom;
};
} // namespace RoundShapes
