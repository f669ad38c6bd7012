// One band's polygon out of one element.
#include "view/scene/contour.h"

#include "platform/base/Rounding.h"

#include <cmath>

namespace mdScene {

namespace {

float distanceBetween(DevicePoint a, DevicePoint b) {
    const double dx = double(b.X) - a.X;
    const double dy = double(b.Y) - a.Y;
    return float(std::sqrt(dx * dx + dy * dy));
}

/// The candidates of the edge that ends at `corner`: the crossings of both levels, and the edge's start if in the band.
void recordEdge(ContourElement& element, const ContourBands& bands, float low, float high, std::size_t corner) {
    const std::size_t previous = corner > 0 ? corner - 1 : element.Points.size() - 1;
    const DevicePoint ends[2] = {element.Points[previous], element.Points[corner]};
    const float values[2] = {element.Values[previous], element.Values[corner]};
    for (const float level : {low, high}) {
        DevicePoint crossing;
        if (EdgeLevelPoint(ends, values, level, crossing))
            element.Records.push_back(
                {crossing.X, crossing.Y, std::int32_t(corner), distanceBetween(ends[0], crossing)});
    }
    if (mdView::ValueInBand(values[0], high, low, bands.Tolerance))
        element.Records.push_back({ends[0].X, ends[0].Y, std::int32_t(corner), 0});
}

} // namespace

ContourBands::ContourBands(float lower, float upper, int count)
    : Lower(lower), Upper(upper), Count(count), Step((upper - lower) / float(count)), Tolerance(Step * 0.001f) {}

bool EdgeLevelPoint(const DevicePoint (&points)[2], const float (&values)[2], float level, DevicePoint& point) {
    const double difference = double(values[1]) - double(values[0]);
    if (difference == 0)
        return false;
    const double t = (double(level) - double(values[0])) / difference;
    if (!(t >= 0 && t <= 1))
        return false;
    point.X = Round(points[0].X + (double(points[1].X) - points[0].X) * t);
    point.Y = Round(points[0].Y + (double(points[1].Y) - points[0].Y) * t);
    return true;
}

void SortByDistance(int count, double* distances, int* indexes) {
    for (int place = 0; place < count; ++place) {
        const int smallest = int(std::min_element(distances + place, distances + count) - distances);
        std::swap(distances[place], distances[smallest]);
        std::swap(indexes[place], indexes[smallest]);
    }
}

void SortClipPoints(std::span<const ClipPoint> records, std::vector<DevicePoint>& points) {
    constexpr std::size_t mostOnEdge = 3;
    for (std::size_t first = 0; first < records.size();) {
        std::array<double, mostOnEdge> distances{};
        std::array<int, mostOnEdge> order{0, 1, 2};
        std::size_t count = 0;
        while (count < mostOnEdge && first + count < records.size() &&
               records[first + count].Edge == records[first].Edge) {
            distances[count] = double(records[first + count].Distance);
            ++count;
        }
        if (count > 1)
            SortByDistance(int(count), distances.data(), order.data());
        for (std::size_t i = 0; i < count; ++i) {
            const ClipPoint& record = records[first + std::size_t(order[i])];
            points.push_back({record.X, record.Y});
        }
        first += count;
    }
}

int AppendClipPolygon(ContourElement& element, const ContourBands& bands, int i, std::vector<DevicePoint>& points) {
    const float low = bands.Low(i);
    const float high = low + bands.Step;
    if (element.Points.size() < 2)
        return 0;
    element.Records.clear();
    for (std::size_t corner = 0; corner < element.Points.size(); ++corner)
        recordEdge(element, bands, low, high, corner);
    if (element.Records.size() < 3)
        return 0;
    SortClipPoints(element.Records, points);
    return int(element.Records.size());
}

} // namespace mdScene
