#include "platform/raster/StencilLines.h"

#include "platform/raster/ThinLine.h"

#include <bit>

using RoundShapes::Capsule;
using RoundShapes::Columns;

/// A line that moves at most one unit across keeps to one row, or column, up to a step and to the next one from there
/// on. Calls `pieces(first, last, set)` for either stretch of steps, to have `set(first, last)` called for those drawn.
/// False, and nothing done, for any other line and for one that is drawn sooner pixel by pixel.
template<class Pieces>
bool StencilLines::straightLine(DevicePoint from, DevicePoint to, const Pieces& pieces) {
    constexpr std::int64_t worthwhile = 8;
    const std::int64_t dx = std::int64_t(to.X) - from.X;
    const std::int64_t dy = std::int64_t(to.Y) - from.Y;
    const bool alongX = std::abs(dx) >= std::abs(dy);
    const std::int64_t along = alongX ? dx : dy;
    const std::int64_t across = alongX ? dy : dx;
    const std::int64_t length = std::abs(along);
    if (length < worthwhile || std::abs(across) > 1)
        return false;

    const std::int64_t start = alongX ? from.X : from.Y;
    const std::int64_t low = alongX ? area.Left : area.Top;
    const std::int64_t high = alongX ? area.Right : area.Bottom;
    const std::int64_t visibleFirst = std::max<std::int64_t>(0, along > 0 ? low - start : start - high + 1);
    const std::int64_t visibleLast = std::min(length, along > 0 ? high - start : start - low + 1);
    const auto stretch = [&](std::int64_t line, std::int64_t first, std::int64_t last) {
        first = std::max(first, visibleFirst);
        last = std::min(last, visibleLast);
        const bool seen = alongX ? line >= area.Top && line < area.Bottom : line >= area.Left && line < area.Right;
        if (!seen || first >= last)
            return;
        pieces(first, last, [&](std::int64_t begin, std::int64_t end) {
            const std::int64_t least = along > 0 ? start + begin : start - end + 1;
            if (alongX)
                stencil.Row(line, least, least + end - begin);
            else
                stencil.Column(line, least, least + end - begin);
        });
    };
    const std::int64_t line = alongX ? from.Y : from.X;
    // Of two equally near pixels the smaller coordinate's is taken: upwards the step across comes later.
    const std::int64_t turn = across == 0 ? length : (length + (across > 0 ? 2 : 1)) / 2;
    stretch(line, 0, turn);
    stretch(line + across, turn, length);
    return true;
}

void StencilLines::Thin(DevicePoint from, DevicePoint to) {
    const bool done =
        straightLine(from, to, [](std::int64_t first, std::int64_t last, const auto& set) { set(first, last); });
    if (!done)
        ThinLine::Draw(area, from, to, [this](std::ptrdiff_t offset, std::int64_t) { stencil.Dot(offset); });
}

void StencilLines::ThinDashed(DevicePoint from, DevicePoint to, int start, int period, std::uint32_t dashes) {
    const auto pieces = [&](std::int64_t first, std::int64_t last, const auto& set) {
        for (int phase = int((start + first) % period); first < last;) {
            const std::uint32_t rest = dashes >> phase;
            const bool dash = (rest & 1u) != 0;
            const int length = std::min(dash ? std::countr_one(rest) : std::countr_zero(rest), period - phase);
            if (dash)
                set(first, std::min(last, first + length));
            first += length;
            phase = phase + length == period ? 0 : phase + length;
        }
    };
    if (straightLine(from, to, pieces))
        return;
    ThinLine::Draw(area, from, to, [&](std::ptrdiff_t offset, std::int64_t step) {
        if (dashes >> ((start + step) % period) & 1u)
            stencil.Dot(offset);
    });
}

const StencilLines::Shape& StencilLines::shortLine(int dx, int dy, int width) {
    Shape& shape = shortLines[std::size_t((dy + shortReach) * shortSpan + dx + shortReach)];
    if (shape.empty()) {
        const int reach = width + shortReach;
        const PixelSurface around{nullptr, 0, -reach, -reach, reach + 1, reach + 1};
        Capsule({0, 0}, {double(dx), double(dy)}, width).ForEachRow(around, [&](int y, Columns columns) {
            shape.push_back({y, columns});
        });
    }
    return shape;
}

/// The ways that use what a wide line has in common with others; only for sizes at which they are the same pixels.
bool StencilLines::simpleWideLine(DevicePoint from, DevicePoint to, int width) {
    constexpr int widest = 32, farthest = 32767, longest = 8191;
    const auto far = [](int coordinate) { return coordinate < -farthest || coordinate > farthest; };
    if (width > widest || far(from.X) || far(from.Y) || far(to.X) || far(to.Y))
        return false;
    const auto beyond = [&](int one, int other, int low, int high) {
        return std::max(one, other) + width < low || std::min(one, other) - width >= high;
    };
    if (beyond(from.X, to.X, area.Left, area.Right) || beyond(from.Y, to.Y, area.Top, area.Bottom))
        return true;

    const int dx = to.X - from.X;
    const int dy = to.Y - from.Y;
    if (std::abs(dx) <= shortReach && std::abs(dy) <= shortReach) {
        for (const ShapeRow& row : shortLine(dx, dy, width))
            stencil.Row(from.Y + row.Y, from.X + row.X.First, from.X + row.X.Last);
    } else if (dy == 0) {
        for (const ShapeRow& row : shortLine(0, 0, width))
            stencil.Row(from.Y + row.Y, std::min(from.X, to.X) + row.X.First, std::max(from.X, to.X) + row.X.Last);
    } else if (dx == 0) {
        // A disc's columns are as its rows.
        for (const ShapeRow& row : shortLine(0, 0, width))
            stencil.Column(from.X + row.Y, std::min(from.Y, to.Y) + row.X.First, std::max(from.Y, to.Y) + row.X.Last);
    } else if (std::abs(dy) > std::abs(dx) && std::abs(dy) <= longest) {
        // A steep line has fewer columns than rows.
        const PixelSurface turned{nullptr, 0, area.Top, area.Left, area.Bottom, area.Right};
        Capsule({double(from.Y), double(from.X)}, {double(to.Y), double(to.X)}, width)
            .ForEachRow(turned, [this](int x, Columns rows) { stencil.Column(x, rows.First, rows.Last); });
    } else {
        return false;
    }
    return true;
}

void StencilLines::Wide(DevicePoint from, DevicePoint to, int width) {
    if (!simpleWideLine(from, to, width))
        WideDash({double(from.X), double(from.Y)}, {double(to.X), double(to.Y)}, width);
}

void StencilLines::WideDash(RoundShapes::Spot from, RoundShapes::Spot to, int width) {
    Capsule(from, to, width).ForEachRow(area, [this](int y, Columns columns) {
        stencil.Row(y, columns.First, columns.Last);
    });
}
