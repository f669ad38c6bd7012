#include "platform/raster/SmallFigure.h"

#include "platform/raster/ThinLine.h"

#include <cstring>

namespace {
/// Sides by how far they go down, and to the right or left by at most `Reach`; one that goes up is the one from its
/// other end, with the same pixels.
template<class Side, int Reach>
class SideTable {
public:
    /// Of the side itself, from its left top on: `line(row, column)` for its pixels with both ends, `crossing(row,
    /// column)` for where it crosses rows.
    template<class Fill>
    explicit SideTable(const Fill& fill) {
        for (int down = 0; down <= Reach; ++down)
            for (int across = -Reach; across <= Reach; ++across) {
                const DevicePoint from{std::max(-across, 0), 0}, to{from.X + across, down};
                fill(sides[indexOf(down, across)], from, to);
            }
    }
    const Side& At(DevicePoint from, DevicePoint to) const {
        const int down = to.Y - from.Y, turned = down >> 31;
        return sides[indexOf((down ^ turned) - turned, ((to.X - from.X) ^ turned) - turned)];
    }

private:
    static constexpr std::size_t perRow = 2 * Reach + 1;
    static std::size_t indexOf(int down, int across) {
        return std::size_t(down) * perRow + std::size_t(across + Reach);
    }

    std::array<Side, (Reach + 1) * perRow> sides{};
};

template<class Plot>
void plotWholeLine(int size, DevicePoint from, DevicePoint to, const Plot& plot) {
    const PixelSurface area{nullptr, size, 0, 0, size, size};
    ThinLine::Draw(area, from, to,
                   [&](std::ptrdiff_t offset, std::int64_t) { plot(int(offset) / size, int(offset) % size); });
    plot(to.Y, to.X);
}

/// The sides of a figure with what their tables have, and where they lie in it.
template<class Sides, class Take>
void forEachSide(const Sides& sides, std::span<const DevicePoint> points, DevicePoint leftTop, const Take& take) {
    DevicePoint previous = points.back();
    for (const DevicePoint point : points) {
        take(sides.At(previous, point), std::min(point.Y, previous.Y) - leftTop.Y,
             std::min(point.X, previous.X) - leftTop.X);
        previous = point;
    }
}

struct TinySide {
    std::uint64_t Line = 0, Crossings = 0;
};
using TinySides = SideTable<TinySide, TinyFigure::Size - 1>;

const TinySides& tinySides() {
    static const TinySides sides([](TinySide& side, DevicePoint from, DevicePoint to) {
        const auto bit = [](int row, int column) { return std::uint64_t(1) << (row * TinyFigure::Size + column); };
        plotWholeLine(TinyFigure::Size, from, to, [&](int row, int column) { side.Line |= bit(row, column); });
        forEachCrossing(from, to, 0, 0, [&](int row, int column) { side.Crossings |= bit(row, column); });
    });
    return sides;
}

/// As many rows of a small figure as a vector register holds.
using Rows = std::uint16_t __attribute__((vector_size(16)));
constexpr int rowsAtOnce = sizeof(Rows) / sizeof(std::uint16_t), parts = SmallFigure::Size / rowsAtOnce;

/// With empty rows above, so that the side can be read as if it lay lower.
struct SmallSide {
    std::array<std::uint16_t, 2 * SmallFigure::Size> Line{}, Crossings{};
};
using SmallSides = SideTable<SmallSide, SmallFigure::Size - 1>;

const SmallSides& smallSides() {
    static const SmallSides sides([](SmallSide& side, DevicePoint from, DevicePoint to) {
        const auto put = [](std::array<std::uint16_t, 2 * SmallFigure::Size>& rows, int row, int column) {
            rows[std::size_t(SmallFigure::Size + row)] |= std::uint16_t(1 << column);
        };
        plotWholeLine(SmallFigure::Size, from, to, [&](int row, int column) { put(side.Line, row, column); });
        forEachCrossing(from, to, 0, 0, [&](int row, int column) { put(side.Crossings, row, column); });
    });
    return sides;
}

/// Each of the bits turns all that stand higher than it.
Rows turnedInside(Rows rows) {
    rows ^= rows << 1;
    rows ^= rows << 2;
    rows ^= rows << 4;
    return rows ^ rows << 8;
}
} // namespace

TinyFigure::TinyFigure(std::span<const DevicePoint> points, DevicePoint leftTop) {
    static const TinySides& sides = tinySides();
    forEachSide(sides, points, leftTop, [&](const TinySide& side, int row, int column) {
        const int place = row * Size + column;
        Outline |= side.Line << place;
        Inside ^= side.Crossings << place;
    });
    Inside ^= Inside << 1 & 0xfefefefefefefefe;
    Inside ^= Inside << 2 & 0xfcfcfcfcfcfcfcfc;
    Inside ^= Inside << 4 & 0xf0f0f0f0f0f0f0f0;
}

SmallFigure::SmallFigure(std::span<const DevicePoint> points, DevicePoint leftTop) {
    static const SmallSides& sides = smallSides();
    Rows line[parts] = {}, inside[parts] = {};
    forEachSide(sides, points, leftTop, [&](const SmallSide& side, int row, int column) {
        for (int part = 0; part < parts; ++part) {
            const auto first = std::size_t(Size - row + part * rowsAtOnce);
            Rows lineRows, crossings;
            std::memcpy(&lineRows, &side.Line[first], sizeof(Rows));
            std::memcpy(&crossings, &side.Crossings[first], sizeof(Rows));
            line[part] |= lineRows << column;
            inside[part] ^= crossings << column;
        }
    });
    for (int part = 0; part < parts; ++part) {
        inside[part] = turnedInside(inside[part]);
        std::memcpy(&Outline[std::size_t(part * rowsAtOnce)], &line[part], sizeof(Rows));
        std::memcpy(&Inside[std::size_t(part * rowsAtOnce)], &inside[part], sizeof(Rows));
    }
}
