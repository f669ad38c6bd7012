// The pixels of one figure as bits: gathered from any number of pieces that may lie over each other, then put on a
// surface in one go, each pixel once. It knows no pens and no figures.
#pragma once

#include "platform/raster/PixelSurface.h"

#include <vector>

class Stencil {
public:
    /// For the pixels of `part`, in memory of a quarter of a byte for each.
    explicit Stencil(const PixelSurface& part);

    /// Number of machine words that a stencil for `part` goes through, which is what its making and putting cost.
    static std::int64_t WordCount(const PixelSurface& part);

    /// The stencil's pixels as a surface without bits, to walk over with offsets for `Dot`.
    const PixelSurface& Area() const { return area; }
    void Dot(std::ptrdiff_t offset) { rows.Words[std::size_t(offset) / wordSize] |= Word(1) << (offset % wordSize); }
    /// Part of a row or of a column, its end left out; what lies beyond the area is cut off.
    void Row(std::int64_t y, std::int64_t left, std::int64_t right) {
        rows.Set(y - area.Top, left - area.Left, right - area.Left);
    }
    void Column(std::int64_t x, std::int64_t top, std::int64_t bottom) {
        columns.Set(x - area.Left, top - area.Top, bottom - area.Top);
    }

    /// On the surface that the part was taken from.
    void PutOn(const PixelSurface& surface, const Ink& ink);

private:
    using Word = std::uint64_t;
    static constexpr int wordSize = 64;

    /// Lines of bits. Columns have a grid of their own, in which they run along the words as rows do in theirs.
    struct Grid {
        int LineCount;
        int Length;
        std::ptrdiff_t LineWords;
        std::vector<Word> Words;

        Grid(int lineCount, int length);
        void Set(std::int64_t line, std::int64_t first, std::int64_t last);
    };
    void columnsToRows();

    PixelSurface area;
    Grid rows, columns;
};
