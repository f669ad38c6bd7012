#include "platform/raster/InkedPixels.h"

InkedPixels::InkedPixels(const PixelSurface& surface)
    : area(surface), wordsPerRow(std::size_t((surface.Right - surface.Left) / bitsPerWord + 2)),
      words(wordsPerRow * std::size_t(surface.Bottom - surface.Top)) {}

InkedPixels::Columns InkedPixels::openColumns(int y, int left, int right) const {
    const int first = left - area.Left, last = right - 1 - area.Left;
    const std::uint64_t* const row = words.data() + std::size_t(y - area.Top) * wordsPerRow;
    const std::uint64_t* word = row + first / bitsPerWord;
    const std::uint64_t* const lastWord = row + last / bitsPerWord;
    const std::uint64_t head = ~std::uint64_t(0) << (first % bitsPerWord);
    const std::uint64_t tail = ~std::uint64_t(0) >> (bitsPerWord - 1 - last % bitsPerWord);
    std::uint64_t open = ~*word & head & (word == lastWord ? tail : ~std::uint64_t(0));
    while (open == 0 && word != lastWord) {
        ++word;
        open = ~*word & (word == lastWord ? tail : ~std::uint64_t(0));
    }
    if (open == 0)
        return {};
    Columns columns;
    columns.First = area.Left + int(word - row) * bitsPerWord + std::countr_zero(open);
    const std::uint64_t* end = lastWord;
    open = ~*end & tail & (end == word ? open : ~std::uint64_t(0));
    while (open == 0) {
        --end;
        open = ~*end;
    }
    columns.Last = area.Left + int(end - row) * bitsPerWord + bitsPerWord - std::countl_zero(open);
    return columns;
}
