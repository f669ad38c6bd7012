// The way from a place on the page back to the points of the series.
#include "plot/clsPlot.h"

#include <cmath>

namespace {

double squareOfDistance(DevicePoint a, DevicePoint b) {
    const double dx = double(a.X) - b.X, dy = double(a.Y) - b.Y;
    return dx * dx + dy * dy;
}

/// From `place` to the line between `a` and `b`, ends included.
double squareOfDistance(DevicePoint place, DevicePoint a, DevicePoint b) {
    const double dx = double(b.X) - a.X, dy = double(b.Y) - a.Y;
    const double length = dx * dx + dy * dy;
    double along = 0;
    if (length > 0)
        along = std::clamp(((double(place.X) - a.X) * dx + (double(place.Y) - a.Y) * dy) / length, 0.0, 1.0);
    const double x = a.X + along * dx - place.X, y = a.Y + along * dy - place.Y;
    return x * x + y * y;
}

/// What is near to a place, the last of equally near ones.
struct Nearest {
    double Square;
    std::optional<PlotPoint> Point;

    void Take(double square, const PlotPoint& point) {
        if (square > Square)
            return;
        Square = square;
        Point = point;
    }
};

} // namespace

std::optional<PlotPoint> clsPlot::NearestPoint(DevicePoint place, int reach) const {
    Nearest point{double(reach) * reach, {}}, line = point;
    const auto beside = [&](DevicePoint a, DevicePoint b) {
        const auto [left, right] = std::minmax(a.X, b.X);
        const auto [top, bottom] = std::minmax(a.Y, b.Y);
        return std::int64_t(place.X) + reach < left || std::int64_t(place.X) - reach > right ||
               std::int64_t(place.Y) + reach < top || std::int64_t(place.Y) - reach > bottom;
    };
    for (std::size_t s = 0; s < seriesList.size(); ++s) {
        const PlotSeries& series = seriesList[s];
        if (series.DataLegendHidden)
            continue;
        PlotPoint before;
        bool joined = false; // a line leads here from the point before
        for (std::size_t i = 0; i < series.BaseValues.size(); ++i) {
            const std::optional<DevicePoint> at = placeOf(series, i);
            if (!at) {
                joined = false;
                continue;
            }
            const PlotPoint here{int(s) + 1, int(i) + 1, *at};
            const PlotPoint from = std::exchange(joined, true) ? before : here;
            before = here;
            if (beside(from.Place, *at))
                continue;
            const double toHere = squareOfDistance(place, *at), toFrom = squareOfDistance(place, from.Place);
            point.Take(toHere, here);
            if (series.DataLineStyle != PenStyle::Null)
                line.Take(squareOfDistance(place, from.Place, *at), toFrom < toHere ? from : here);
        }
    }
    return point.Point ? point.Point : line.Point;
}

std::optional<PlotPoint> clsPlot::PointAt(int series, int point) const {
    if (point < 1 || point > DataCount(series) || DataLegendHidden(series))
        return {};
    const std::optional<DevicePoint> place = placeOf(seriesList[std::size_t(series) - 1], std::size_t(point) - 1);
    return place ? std::optional(PlotPoint{series, point, *place}) : std::nullopt;
}

std::optional<PlotPoint> clsPlot::PointBeside(const std::optional<PlotPoint>& from, int series, int points) const {
    const int seriesStep = series < 0 ? -1 : 1, pointStep = points < 0 ? -1 : 1;
    std::optional<PlotPoint> found = from;
    if (!from || !PointAt(from->Series, from->Point)) {
        found.reset();
        for (int s = 1; s <= DataLegendCount() && !found; ++s)
            for (int p = 1; p <= DataCount(s) && !found; ++p)
                found = PointAt(s, p);
        return found;
    }
    for (int s = from->Series + seriesStep; series != 0 && s >= 1 && s <= DataLegendCount(); s += seriesStep) {
        if (const auto at = PointAt(s, std::min(from->Point, DataCount(s)))) {
            found = at;
            series -= seriesStep;
        }
    }
    for (int p = found->Point + pointStep; points != 0 && p >= 1 && p <= DataCount(found->Series); p += pointStep) {
        if (const auto at = PointAt(found->Series, p)) {
            found = at;
            points -= pointStep;
        }
    }
    return found;
}
