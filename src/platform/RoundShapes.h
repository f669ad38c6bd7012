// Wide lines with round ends, and ellipses, row by row; each row depends on the figure alone, so any clip gives the
// same pixels.
#pragma once

#include "platform/PixelSurface.h"

namespace RoundShapes {
/// A position that need not be on a device unit: where a dash begins and ends.
struct Spot {
    double X = 0;
    double Y = 0;
};

/// All pixels within half of `width` of the line between two spots; a disc when they are the same. An even width lies
/// half above and left of the line, without a middle row.
void Capsule(const PixelSurface& surface, const Ink& ink, Spot from, Spot to, double width);

/// The ellipse that fills the columns `left` up to, without, `right` and the rows `top` up to `bottom`. The outermost
/// pixels are drawn with `pen`, or, for a `penWidth` above 1, the ring of that width about them; the rest
/// with `brush`. No pixel is drawn twice. A null pointer leaves its part out: without a pen the brush takes all.
void Ellipse(const PixelSurface& surface, const Ink* pen, const Ink* brush, const DeviceRect& rect, int penWidth);
} // namespace RoundShapes
