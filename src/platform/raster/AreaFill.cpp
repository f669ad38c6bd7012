#include "platform/raster/AreaFill.h"

#include "platform/device/Rings.h"

#include <vector>

namespace {
__extension__ using Wide = __int128;

/// One side of a polygon, walked down from row `Top`. `X` is the first column at or right of the side, `Rest` /
/// `Height` how far right of it.
/// Without initial values: most polygons are small, and clearing room for all their sides would cost more than filling
/// them.
struct Edge {
    int Top;
    int Bottom;
    std::int64_t X;
    std::int64_t Rest;
    std::int64_t Height;
    std::int64_t Slope; ///< whole columns a row
    std::int64_t SlopeRest;

    void Advance() {
        X += Slope;
        Rest -= SlopeRest;
        if (Rest < 0) {
            ++X;
            Rest += Height;
        }
    }
};

std::int64_t floorQuotient(std::int64_t dividend, std::int64_t divisor) {
    // Sides of a fine mesh are steep or short: most need no division, or a narrow one.
    if (std::abs(dividend) < divisor)
        return dividend < 0 ? -1 : 0;
    if (std::abs(dividend) <= INT32_MAX && divisor <= INT32_MAX) {
        const auto narrow = std::int32_t(dividend) / std::int32_t(divisor);
        return narrow - (std::int64_t(narrow) * divisor > dividend ? 1 : 0);
    }
    const std::int64_t quotient = dividend / divisor;
    return quotient - (dividend % divisor < 0 ? 1 : 0);
}

/// False when the side crosses none of the rows, `lastRow` left out.
bool makeEdge(int firstRow, int lastRow, DevicePoint from, DevicePoint to, Edge& edge) {
    if (from.Y > to.Y)
        std::swap(from, to);
    edge.Top = std::max(from.Y, firstRow);
    edge.Bottom = std::min(to.Y, lastRow);
    if (edge.Top >= edge.Bottom)
        return false;
    const std::int64_t width = std::int64_t(to.X) - from.X;
    edge.X = from.X;
    edge.Rest = 0;
    edge.Height = std::int64_t(to.Y) - from.Y;
    if (edge.Height == 1)
        return true;
    edge.Slope = floorQuotient(width, edge.Height);
    edge.SlopeRest = width - edge.Slope * edge.Height;
    if (edge.Top != from.Y) {
        const Wide across = Wide(std::int64_t(edge.Top) - from.Y) * width;
        Wide columns = across / edge.Height;
        columns += across % edge.Height > 0 ? 1 : 0;
        edge.X += std::int64_t(columns);
        edge.Rest = std::int64_t(columns * edge.Height - across);
    }
    return true;
}

void sortByColumn(Edge** edges, std::size_t count) {
    // Few edges, or edges nearly in order, are quickest put in place one by one.
    for (std::size_t i = 1; i < count; ++i) {
        Edge* const moved = edges[i];
        std::size_t place = i;
        for (; place > 0 && edges[place - 1]->X > moved->X; --place)
            edges[place] = edges[place - 1];
        edges[place] = moved;
    }
}

/// `active` has room for all edges.
void fillEdges(const PixelSurface& surface, const Ink& ink, std::span<Edge> edges, Edge** active) {
    std::sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) { return a.Top < b.Top; });
    std::size_t next = 0;
    std::size_t count = 0;
    for (int y = edges.empty() ? 0 : edges[0].Top; count > 0 || next < edges.size(); ++y) {
        if (count == 0)
            y = edges[next].Top;
        while (next < edges.size() && edges[next].Top == y)
            active[count++] = &edges[next++];
        sortByColumn(active, count);
        for (std::size_t i = 0; i + 1 < count; i += 2)
            fillSpan(surface, ink, y, active[i]->X, active[i + 1]->X);
        std::size_t kept = 0;
        for (std::size_t i = 0; i < count; ++i) {
            if (active[i]->Bottom <= y + 1)
                continue;
            active[i]->Advance();
            active[kept++] = active[i];
        }
        count = kept;
    }
}

std::size_t collectEdges(const PixelSurface& surface, std::span<const DevicePoint> points, std::span<const int> counts,
                         Edge* edges) {
    std::size_t edgeCount = 0;
    forEachRing(points, counts, [&](std::span<const DevicePoint> corners) {
        if (corners.empty())
            return;
        DevicePoint previous = corners.back();
        for (const DevicePoint point : corners) {
            edgeCount += makeEdge(surface.Top, surface.Bottom, previous, point, edges[edgeCount]) ? 1 : 0;
            previous = point;
        }
    });
    return edgeCount;
}

/// Columns of a row as bits, the lowest of the first word at the left.
using BitRow = std::span<std::uint64_t>;
constexpr int bitsPerWord = 64;

/// Turns bits that say where the inside begins or ends into those of the inside.
void fillBetween(BitRow row) {
    std::uint64_t inside = 0; // all bits, behind a word that ends inside
    for (std::uint64_t& word : row) {
        for (int shift = 1; shift < bitsPerWord; shift *= 2)
            word ^= word << shift;
        word ^= inside;
        inside = word >> (bitsPerWord - 1) ? ~std::uint64_t(0) : 0;
    }
}

/// For many sides: each is walked on its own and turns a bit in its rows, so that none has to be sorted among others.
void fillCrowded(const PixelSurface& surface, const Ink& ink, std::span<const DevicePoint> points,
                 std::span<const int> counts) {
    const auto [left, right] = std::ranges::minmax(points, {}, &DevicePoint::X);
    const auto [top, bottom] = std::ranges::minmax(points, {}, &DevicePoint::Y);
    const PixelSurface part = surface.Within(left.X, top.Y, right.X, bottom.Y);
    if (part.IsEmpty())
        return;
    const auto words = std::size_t((part.Right - part.Left - 1) / bitsPerWord + 1);
    std::vector<std::uint64_t> bits(words * std::size_t(part.Bottom - part.Top));
    Edge edge;
    const auto walk = [&](DevicePoint from, DevicePoint to) {
        if (!makeEdge(part.Top, part.Bottom, from, to, edge))
            return;
        std::uint64_t* row = bits.data() + std::size_t(edge.Top - part.Top) * words;
        for (int y = edge.Top; y < edge.Bottom; ++y, row += words) {
            const std::int64_t column = std::max<std::int64_t>(edge.X - part.Left, 0);
            if (column < part.Right - part.Left)
                row[column / bitsPerWord] ^= std::uint64_t(1) << (column % bitsPerWord);
            // A side of one row has no slope.
            if (y + 1 < edge.Bottom)
                edge.Advance();
        }
    };
    forEachRing(points, counts, [&](std::span<const DevicePoint> corners) {
        for (std::size_t i = 0; i < corners.size(); ++i)
            walk(corners[i > 0 ? i - 1 : corners.size() - 1], corners[i]);
    });
    for (int y = part.Top; y < part.Bottom; ++y) {
        const BitRow row(bits.data() + std::size_t(y - part.Top) * words, words);
        fillBetween(row);
        for (std::size_t i = 0; i < words; ++i)
            fillBits(part, ink, y, part.Left + std::int64_t(i) * bitsPerWord, row[i]);
    }
}
} // namespace

void AreaFill::Polygons(const PixelSurface& surface, const Ink& ink, std::span<const DevicePoint> points,
                        std::span<const int> counts) {
    if (surface.IsEmpty())
        return;
    constexpr std::size_t crowd = 32;
    if (points.size() > crowd) {
        fillCrowded(surface, ink, points, counts);
        return;
    }
    std::array<Edge, crowd> edges;
    std::array<Edge*, crowd> active;
    const std::size_t edgeCount = collectEdges(surface, points, counts, edges.data());
    fillEdges(surface, ink, std::span(edges).first(edgeCount), active.data());
}

void AreaFill::Bits(std::span<std::uint32_t> rows, int left, int top, std::span<const DevicePoint> points) {
    // Division by a height of 1 to 31 as multiplication, which is exact for the small dividends here.
    static constexpr auto reciprocals = [] {
        std::array<unsigned, 32> values{};
        for (unsigned height = 1; height < values.size(); ++height)
            values[height] = (65536 + height - 1) / height;
        return values;
    }();
    DevicePoint previous = points.back();
    for (const DevicePoint point : points) {
        const bool down = previous.Y < point.Y;
        const DevicePoint from = down ? previous : point;
        const DevicePoint to = down ? point : previous;
        const int height = to.Y - from.Y;
        const int width = to.X - from.X;
        const unsigned reciprocal = reciprocals[std::size_t(height)];
        std::uint32_t* const first = rows.data() + (from.Y - top);
        // Each side turns all that is right of it, so what two sides turn is as it was. The quotient is kept positive
        // and rounded up by the 33 heights, less one unit, that are added to it.
        for (int row = 0; row < height; ++row) {
            const auto dividend = unsigned(row * width + 33 * height - 1);
            first[row] ^= ~0u << (from.X - left - 32 + int(dividend * reciprocal >> 16));
        }
        previous = point;
    }
}

void AreaFill::Rectangle(const PixelSurface& surface, const Ink& ink, std::int64_t left, std::int64_t top,
                         std::int64_t right, std::int64_t bottom) {
    const int last = int(std::min<std::int64_t>(bottom, surface.Bottom));
    for (int y = int(std::max<std::int64_t>(top, surface.Top)); y < last; ++y)
        fillSpan(surface, ink, y, left, right);
}
