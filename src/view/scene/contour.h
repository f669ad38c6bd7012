// The contour map: filled bands of the current item's node values, clipped out of each element. The arithmetic of
// bands, clip polygons and colours stands here apart from the layer, for whoever needs a colour or a range.
#pragma once

#include "view/scene/mdScene.h"

namespace mdScene {

/// The bands of a contour map; single precision throughout.
struct ContourBands {
    float Lower = 0, Upper = 0;
    int Count = 0;
    float Step = 0;      ///< (Upper - Lower) / Count
    float Tolerance = 0; ///< of a node's value at a band's border

    ContourBands(float lower, float upper, int count);
    /// Lower end of band `i`; never falls as `i` grows.
    float Low(int i) const { return Step * float(i) + Lower; }
    float High(int i) const { return Low(i) + Step; }
    bool Holds(float value, int i) const { return mdView::ValueInBand(value, High(i), Low(i), Tolerance); }
};

/// A point of a band's polygon before it is sorted along its edge.
struct ClipPoint {
    std::int32_t X = 0;
    std::int32_t Y = 0;
    std::int32_t Edge = 0; ///< the corner at which its edge ends
    float Distance = 0;    ///< from the edge's start
};

/// The values between which a contour runs.
struct ContourEnds {
    float Lower = -1, Upper = 1;
};

/// Range and number of bands of a scene's contour, by its settings.
struct ContourScale {
    ContourEnds Ends;
    int Count = 0;
};

/// The values of a contour on the nodes, differences if the settings say so.
ItemValues ContourValues(const Scene& scene);

/// `values` are those of the contour, `picture` the part of the device that counts as visible.
ContourScale ContourScaleOf(const Scene& scene, const ItemValues& values, const DeviceRect& picture);

/// The contour layer: bands from the lowest up, each over all elements, so that higher bands lie on top. Writes range
/// and number of bands to `context`, and nothing when there are fewer than 2 bands.
void DrawContour(DeviceContext& device, const Scene& scene, PaintContext& context);

/// Colour at `t` from 0 (lowest band) to 1 (highest). Without `Reverse` the ramp runs backwards: the lowest value gets
/// the ramp's upper end. A preset runs the way it was published, low values at its beginning, and `Reverse` turns it
/// round; the diverging one has its middle at the value 0, and the larger of the two ends at its own end.
ColorRef ContourColor(float t, const ContourSettings& settings, ContourEnds ends = {});

/// Where `level` lies between two points with a value each, ends included; false for a level edge and beyond the ends.
bool EdgeLevelPoint(const DevicePoint (&points)[2], const float (&values)[2], float level, DevicePoint& point);

/// Sorts `count` distances ascending by selecting the first smallest of the rest and swapping it in, `indexes` along.
void SortByDistance(int count, double* distances, int* indexes);

/// The points in order around the element, appended to `points`: edge by edge, along each edge by distance. The records
/// come by ascending edge, at most 3 an edge.
void SortClipPoints(std::span<const ClipPoint> records, std::vector<DevicePoint>& points);

/// An element's corners with their values, ready to be clipped.
struct ContourElement {
    std::vector<DevicePoint> Points;
    std::vector<float> Values;
    std::vector<ClipPoint> Records; ///< scratch
};

/// The polygon of band `i` in one element appended to `points`; the number of points, 0 when fewer than 3.
int AppendClipPolygon(ContourElement& element, const ContourBands& bands, int i, std::vector<DevicePoint>& points);

} // namespace mdScene
