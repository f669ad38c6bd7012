#include "platform/raster/FigureBits.h"

#include "platform/device/Rings.h"
#include "platform/raster/PolygonSide.h"
#include "platform/raster/ThinLine.h"

namespace {
std::size_t wordsFor(const PixelSurface& part) {
    return std::size_t((part.Right - part.Left - 1) / FigureBits::WordSize + 1);
}

/// Turns bits that say where the inside begins or ends into those of the inside.
void fillBetween(std::span<std::uint64_t> row) {
    std::uint64_t inside = 0; // all bits, behind a word that ends inside
    for (std::uint64_t& word : row) {
        if (word != 0)
            for (int shift = 1; shift < FigureBits::WordSize; shift *= 2)
                word ^= word << shift;
        word ^= inside;
        inside = word >> (FigureBits::WordSize - 1) ? ~std::uint64_t(0) : 0;
    }
}
} // namespace

FigureBits::FigureBits(const PixelSurface& surface)
    : words(surface.IsEmpty() ? 0 : wordsFor(surface) * std::size_t(surface.Bottom - surface.Top)) {
    Begin(surface);
}

void FigureBits::Begin(const PixelSurface& part) {
    area = part;
    wordsPerRow = wordsFor(part);
    area.Stride = std::ptrdiff_t(wordsPerRow) * WordSize;
}

/// A side turns one bit in each of its rows.
void FigureBits::turnAlong(DevicePoint from, DevicePoint to) {
    PolygonSide side{};
    if (!side.Make(area.Top, area.Bottom, from, to))
        return;
    std::uint64_t* row = rowOf(side.Top).data();
    for (int y = side.Top; y < side.Bottom; ++y, row += wordsPerRow) {
        const std::int64_t column = std::max<std::int64_t>(side.X - area.Left, 0);
        if (column < area.Right - area.Left)
            row[column / WordSize] ^= std::uint64_t(1) << (column % WordSize);
        if (y + 1 < side.Bottom)
            side.Advance();
    }
}

void FigureBits::Fill(std::span<const DevicePoint> points, std::span<const int> counts) {
    forEachRing(points, counts, [&](std::span<const DevicePoint> corners) {
        for (std::size_t i = 0; i < corners.size(); ++i)
            turnAlong(corners[i > 0 ? i - 1 : corners.size() - 1], corners[i]);
    });
    const int beyond = int(area.Stride) - (area.Right - area.Left);
    for (int y = area.Top; y < area.Bottom; ++y) {
        fillBetween(rowOf(y));
        rowOf(y).back() &= ~std::uint64_t(0) >> beyond;
    }
}

void FigureBits::AddLine(DevicePoint from, DevicePoint to) {
    ThinLine::Draw(area, from, to, [this](std::ptrdiff_t offset, std::int64_t) {
        words[std::size_t(offset / WordSize)] |= std::uint64_t(1) << (offset % WordSize);
    });
}
