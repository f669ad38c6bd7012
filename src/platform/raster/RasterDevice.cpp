#include "platform/raster/RasterDevice.h"

#include "platform/base/Parallel.h"
#include "platform/device/Rings.h"
#include "platform/raster/PictureStretch.h"
#include "platform/raster/RankedSheets.h"

#include <numeric>

namespace {
/// Fewer steps or points than this are drawn sooner than a thread is started.
constexpr std::size_t smallestSharedWork = 4000;
/// So many are drawn before the next question whether to go on.
constexpr std::size_t figuresAtOnce = 256, stepsAtOnce = 2048;

auto rowsOf(std::span<const DevicePoint> points) {
    return [points](std::size_t i) { return points[i].Y; };
}
auto rowsOf(std::span<const DeviceRect> rects) {
    return [rects](std::size_t i) { return rects[i].Top; };
}

/// The last point that the steps name.
std::optional<DevicePoint> lastNamed(std::span<const DevicePoint> points, std::span<const std::int32_t> steps) {
    for (std::size_t i = steps.size(); i-- > 0;)
        if (const auto index = std::size_t(steps[i] < 0 ? ~steps[i] : steps[i]); index < points.size())
            return points[index];
    return {};
}
} // namespace

RasterDevice::RasterDevice(QImage& picture, int dotsPerInch, int threadLimit)
    : StatefulDevice(
          {picture.width(), picture.height(), dotsPerInch > 0 ? dotsPerInch : 96, dotsPerInch > 0 ? dotsPerInch : 96}),
      image(picture), threads(threadLimit > 0 ? threadLimit : coreCount()) {}

/// Asks the image each time: a copy that someone took of it since must not be drawn into.
PixelSurface RasterDevice::surface() {
    stopIfAsked();
    closeText();
    if (image.format() != QImage::Format_RGB32 && image.format() != QImage::Format_ARGB32_Premultiplied)
        return {};
    PixelSurface whole;
    whole.Bits = reinterpret_cast<std::uint32_t*>(image.bits());
    whole.Stride = image.bytesPerLine() / 4;
    whole.Right = image.width();
    whole.Bottom = image.height();
    const DeviceRect rect = measures.Visible(state.Clip);
    return whole.Within(rect.Left, rect.Top, rect.Right, rect.Bottom);
}

FigurePainter RasterDevice::figuresOn(const PixelSurface& part) const {
    return {part, state.LinePen, state.AreaBrush, state.RasterMode};
}

void RasterDevice::LineTo(DevicePoint point) {
    figures().LineTo(state.Position, point);
}

void RasterDevice::Polygon(std::span<const DevicePoint> points) {
    const int count = int(points.size());
    figures().Polygons(points, {&count, 1});
}

void RasterDevice::PolyPolygon(std::span<const DevicePoint> points, std::span<const int> counts) {
    figures().PolyPolygon(points, counts);
}

void RasterDevice::Rectangle(const DeviceRect& rect) {
    figures().Rectangles({&rect, 1});
}

void RasterDevice::Ellipse(const DeviceRect& rect) {
    figures().Ellipses({&rect, 1});
}

void RasterDevice::FillRect(const DeviceRect& rect, const Brush& brush) {
    FigurePainter(surface(), {}, brush, RasterMode::CopyPen).FillRect(normalised(rect));
}

/// Parts of the surface, one above the other, that hold about the same share of `count` figures each, of which number i
/// lies about row `rowOf(i)`: a thread for each draws the whole batch, in its order, into its own part. So no two
/// threads share a pixel and none sees another order.
template<class RowOf>
std::vector<PixelSurface> RasterDevice::bands(std::size_t count, std::size_t workSize, const RowOf& rowOf) {
    const PixelSurface whole = surface();
    if (threads == 1 || workSize < smallestSharedWork || whole.IsEmpty())
        return {whole};
    constexpr std::size_t sampleSize = 512;
    std::vector<int> rows;
    for (std::size_t i = 0; i < count; i += std::max<std::size_t>(1, count / sampleSize)) {
        const int row = rowOf(i);
        if (row >= whole.Top && row < whole.Bottom)
            rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end());
    std::vector<PixelSurface> parts;
    int top = whole.Top;
    for (int i = 1; i <= threads; ++i) {
        const std::size_t sample = rows.size() * std::size_t(i) / std::size_t(threads);
        const int bottom = i == threads || sample >= rows.size() ? whole.Bottom : rows[sample];
        if (bottom > top)
            parts.push_back(whole.Within(whole.Left, top, whole.Right, bottom));
        top = bottom;
    }
    return parts;
}

/// Calls `draw(figures)` with a painter for each of the parts that a batch of points or rectangles is shared out into.
template<class Item, class Draw>
void RasterDevice::drawShared(std::span<const Item> items, const Draw& draw) {
    if (threads == 1 || items.size() < smallestSharedWork) {
        FigurePainter whole = figures();
        draw(whole);
        return;
    }
    const std::vector<PixelSurface> parts = bands(items.size(), items.size(), rowsOf(items));
    parallelFor(int(parts.size()), [&](int i) {
        FigurePainter part = figuresOn(parts[std::size_t(i)]);
        draw(part);
    });
}

void RasterDevice::Polyline(std::span<const DevicePoint> points) {
    drawShared(points, [&](const FigurePainter& part) { part.Polyline(points); });
}

void RasterDevice::Lines(std::span<const DevicePoint> points, std::span<const std::int32_t> steps) {
    const FigurePainter whole = figures();
    if (whole.MayShareLines()) {
        const DevicePoint start = state.Position.Point;
        const std::size_t pieces = (steps.size() + stepsAtOnce - 1) / stepsAtOnce;
        parallelFor(
            int(pieces),
            [&](int piece) {
                stopIfAsked();
                const std::size_t first = std::size_t(piece) * stepsAtOnce;
                PathPosition at{lastNamed(points, steps.first(first)).value_or(start)};
                whole.Lines(at, points, steps.subspan(first, std::min(stepsAtOnce, steps.size() - first)));
            },
            steps.size() < smallestSharedWork ? 1 : threads);
        state.Position.Point = lastNamed(points, steps).value_or(start);
        return;
    }
    // A batch may name few of the points, such as those of a strip of a mesh.
    const auto rowOf = [&](std::size_t i) {
        const auto index = std::size_t(steps[i] < 0 ? ~steps[i] : steps[i]);
        return index < points.size() ? points[index].Y : 0;
    };
    const std::vector<PixelSurface> parts = bands(steps.size(), steps.size(), rowOf);
    PathPosition end = state.Position;
    parallelFor(int(parts.size()), [&](int i) {
        PathPosition at = state.Position;
        for (auto rest = steps; !rest.empty(); rest = rest.subspan(std::min(stepsAtOnce, rest.size()))) {
            stopIfAsked();
            figuresOn(parts[std::size_t(i)]).Lines(at, points, rest.first(std::min(stepsAtOnce, rest.size())));
        }
        if (i == 0)
            end = at;
    });
    state.Position = end;
}

void RasterDevice::LinePieces(std::span<const DevicePoint> points, int pieces, const CollectLines& collect) {
    const FigurePainter painter = figures();
    if (!painter.MayShareLines()) {
        StatefulDevice::LinePieces(points, pieces, collect);
        return;
    }
    // Each thread draws what it has collected.
    std::vector<std::optional<DevicePoint>> ends(std::size_t(std::max(pieces, 0)));
    parallelFor(
        pieces,
        [&](int piece) {
            stopIfAsked();
            std::vector<std::int32_t> steps;
            collect(piece, steps);
            PathPosition at = state.Position;
            painter.Lines(at, points, steps);
            ends[std::size_t(piece)] = lastNamed(points, steps);
        },
        threads);
    for (const std::optional<DevicePoint>& end : ends)
        if (end)
            state.Position = {*end, 0};
}

void RasterDevice::Polygons(std::span<const DevicePoint> points, std::span<const int> counts) {
    drawShared(points, [&](FigurePainter& part) {
        auto corners = points;
        for (auto rest = completeRings(points, counts); !rest.empty();) {
            stopIfAsked();
            const auto some = rest.first(std::min(figuresAtOnce, rest.size()));
            const auto size = std::size_t(std::reduce(some.begin(), some.end()));
            part.Polygons(corners.first(size), some);
            corners = corners.subspan(size);
            rest = rest.subspan(some.size());
        }
    });
}

void RasterDevice::Rectangles(std::span<const DeviceRect> rects) {
    drawShared(rects, [&](const FigurePainter& part) { part.Rectangles(rects); });
}

void RasterDevice::Ellipses(std::span<const DeviceRect> rects) {
    drawShared(rects, [&](const FigurePainter& part) { part.Ellipses(rects); });
}

std::unique_ptr<RankedLayer> RasterDevice::Ranked() {
    if (state.RasterMode != RasterMode::CopyPen)
        return {};
    return std::make_unique<RankedSheets>(surface(), threads, [this] { stopIfAsked(); });
}

void RasterDevice::DrawPicture(const DeviceRect& target, const QImage& picture) {
    stretchPicture(surface(), target, picture);
}
