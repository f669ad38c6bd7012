#include "platform/raster/Stencil.h"

namespace {
int wordsFor(int bits) {
    return bits / 64 + (bits % 64 > 0 ? 1 : 0);
}

/// Turns 64 words about: bit i of word k becomes bit k of word i.
void transpose(std::array<std::uint64_t, 64>& words) {
    // Quarters of ever smaller squares change places.
    std::uint64_t mask = 0xffffffffu;
    for (unsigned size = 32; size > 0; size /= 2, mask ^= mask << size) {
        for (unsigned i = 0; i < 64; i = (i + size + 1) & ~size) {
            const std::uint64_t change = (words[i] >> size ^ words[i + size]) & mask;
            words[i] ^= change << size;
            words[i + size] ^= change;
        }
    }
}
} // namespace

Stencil::Grid::Grid(int lineCount, int length)
    : LineCount(lineCount), Length(length), LineWords(wordsFor(length)),
      Words(std::size_t(lineCount) * std::size_t(LineWords)) {}

void Stencil::Grid::Set(std::int64_t line, std::int64_t first, std::int64_t last) {
    first = std::max<std::int64_t>(first, 0);
    last = std::min<std::int64_t>(last, Length);
    if (std::uint64_t(line) >= std::uint64_t(LineCount) || first >= last)
        return;
    Word* word = Words.data() + line * LineWords + first / wordSize;
    Word* const end = word + ((last - 1) / wordSize - first / wordSize);
    const Word head = ~Word(0) << (first % wordSize);
    const Word tail = ~Word(0) >> (wordSize - 1 - (last - 1) % wordSize);
    if (word == end) {
        *word |= head & tail;
        return;
    }
    *word |= head;
    while (++word != end)
        *word = ~Word(0);
    *word |= tail;
}

Stencil::Stencil(const PixelSurface& part)
    : area(part), rows(part.Bottom - part.Top, part.Right - part.Left),
      columns(part.Right - part.Left, part.Bottom - part.Top) {
    area.Bits = nullptr;
    area.Stride = rows.LineWords * wordSize;
}

std::int64_t Stencil::WordCount(const PixelSurface& part) {
    const int width = part.Right - part.Left;
    const int height = part.Bottom - part.Top;
    return std::int64_t(wordsFor(width)) * height + std::int64_t(wordsFor(height)) * width;
}

void Stencil::columnsToRows() {
    std::array<Word, wordSize> square;
    for (int left = 0; left < columns.LineCount; left += wordSize) {
        const int width = std::min(wordSize, columns.LineCount - left);
        for (int top = 0; top < columns.Length; top += wordSize) {
            const Word* const source = columns.Words.data() + left * columns.LineWords + top / wordSize;
            Word any = 0;
            square.fill(0);
            for (int i = 0; i < width; ++i)
                any |= square[std::size_t(i)] = source[i * columns.LineWords];
            if (any == 0)
                continue;
            transpose(square);
            Word* const target = rows.Words.data() + top * rows.LineWords + left / wordSize;
            const int height = std::min(wordSize, columns.Length - top);
            for (int i = 0; i < height; ++i)
                target[i * rows.LineWords] |= square[std::size_t(i)];
        }
    }
}

void Stencil::PutOn(const PixelSurface& surface, const Ink& ink) {
    columnsToRows();
    for (int y = 0; y < rows.LineCount; ++y) {
        const Word* const words = rows.Words.data() + y * rows.LineWords;
        for (std::ptrdiff_t i = 0; i < rows.LineWords; ++i) {
            const std::ptrdiff_t first = i;
            while (i < rows.LineWords && words[i] == ~Word(0))
                ++i;
            const std::int64_t left = area.Left + first * wordSize;
            fillSpan(surface, ink, area.Top + y, left, area.Left + i * wordSize);
            if (i < rows.LineWords)
                fillBits(surface, ink, area.Top + y, area.Left + i * wordSize, words[i]);
        }
    }
}
