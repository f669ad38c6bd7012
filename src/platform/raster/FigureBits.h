// The pixels of one figure as rows of bits, put together before any pixel is touched: for figures of many sides, of
// which then none has to be sorted among others. Knows no ink.
#pragma once

#include "platform/raster/PixelSurface.h"

#include <span>
#include <utility>
#include <vector>

class FigureBits {
public:
    static constexpr int WordSize = 64;

    /// With room for figures on any part of `surface`.
    explicit FigureBits(const PixelSurface& surface);

    /// Begins a figure, of which nothing beyond `part` is wanted.
    void Begin(const PixelSurface& part);
    /// The inside of rings, as `AreaFill::Polygons` has it; nothing else may be in the figure yet.
    void Fill(std::span<const DevicePoint> points, std::span<const int> counts);
    /// A line one pixel wide, its end left out.
    void AddLine(DevicePoint from, DevicePoint to);
    /// Calls `put(y, column, bits)` for the figure's pixels of a row from `column` on, the lowest bit first, and ends
    /// it.
    template<class Put>
    void Take(const Put& put) {
        std::uint64_t* word = words.data();
        for (int y = area.Top; y < area.Bottom; ++y)
            for (int column = area.Left; column < area.Right; column += WordSize, ++word)
                if (*word != 0)
                    put(y, column, std::exchange(*word, 0));
    }

private:
    std::span<std::uint64_t> rowOf(int y) {
        return std::span(words).subspan(std::size_t(y - area.Top) * wordsPerRow, wordsPerRow);
    }
    void turnAlong(DevicePoint from, DevicePoint to);

    PixelSurface area; ///< of the figure, its stride in bits
    std::size_t wordsPerRow = 0;
    std::vector<std::uint64_t> words; ///< 0 between figures
};
