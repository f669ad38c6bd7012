// Which pixels of a surface have had the one ink of a batch already, so that what would only draw them again is left
// out. Touches no pixel and knows no figures.
#pragma once

#include "platform/raster/PixelSurface.h"

#include <vector>

class InkedPixels {
public:
    /// None yet.
    explicit InkedPixels(const PixelSurface& surface);

    /// Of a row from the column `left` on those whose bits are set, the lowest first; they must be on the surface.
    /// Gives those that did not have the ink yet.
    std::uint64_t Add(int y, int left, std::uint64_t bits) {
        const int column = left - area.Left;
        const int shift = column % bitsPerWord;
        std::uint64_t* const word = words.data() + std::size_t(y - area.Top) * wordsPerRow + column / bitsPerWord;
        std::uint64_t had = word[0] >> shift;
        word[0] |= bits << shift;
        if (shift > 0) {
            had |= word[1] << (bitsPerWord - shift);
            word[1] |= bits >> (bitsPerWord - shift);
        }
        return bits & ~had;
    }

    /// Calls `draw(open)` for parts of `part`, of which no two share a pixel. What lies in none of them has the ink.
    template<class Draw>
    void ForEachOpenPart(const PixelSurface& part, const Draw& draw) const {
        // Rows that have it are drawn along where they are too few to make another part worth its while.
        constexpr int fewRows = 16;
        Columns wide;
        int top = 0, bottom = 0; // of the part that is being found
        for (int y = part.Top; y < part.Bottom; ++y) {
            const Columns open = openColumns(y, part.Left, part.Right);
            if (open.First >= open.Last)
                continue;
            if (y - bottom > fewRows && top < bottom) {
                draw(part.Within(wide.First, top, wide.Last, bottom));
                wide = {};
            }
            top = wide.First < wide.Last ? top : y;
            wide = {std::min(wide.First, open.First), std::max(wide.Last, open.Last)};
            bottom = y + 1;
        }
        if (top < bottom)
            draw(part.Within(wide.First, top, wide.Last, bottom));
    }

private:
    static constexpr int bitsPerWord = 64;
    struct Columns {
        int First = INT32_MAX;
        int Last = INT32_MIN;
    };

    /// The first and behind the last of the columns from `left` up to `right` that have not had the ink.
    Columns openColumns(int y, int left, int right) const;

    PixelSurface area;
    std::size_t wordsPerRow;
    std::vector<std::uint64_t> words;
};
