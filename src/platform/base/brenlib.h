// Small numeric helpers that picking and graphs share: a point's nearness to a segment, and the extremes of a list.
// Plain functions; no drawing.
#pragma once

namespace brenlib {
/// Version of this set of helpers, in hundredths.
int GetDllVersion();

/// True when the point lies within `tolerance` of the segment from (x[0], y[0]) to (x[1], y[1]), both ends included.
/// A segment without length is its one point. False for a tolerance below 0 and for anything that is no number.
bool NodeOnLine(const double x[2], const double y[2], double px, double py, double tolerance);

/// Positions, counted from 1, of the largest and the smallest value; of equal ones the first. Values that are no
/// numbers are passed over; both positions are 0 when nothing is left.
void GetMaxMin(int count, const double* values, int& maxIndex, int& minIndex);
} // namespace brenlib
