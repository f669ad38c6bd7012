// At most 255 colours for a picture that has more, for formats with a table of colours. Pictures that have no more keep
// theirs exactly.
#pragma once

#include "platform/film/FilmFile.h"

#include <array>
#include <unordered_map>

class FilmPalette {
public:
    /// The last one is always the transparent one, which no pixel has.
    using Colors = std::array<std::uint32_t, 256>;

    FilmPalette();

    /// Writes each pixel's number in the table that it returns; rows follow each other in steps of `stride`. From one
    /// picture to the next the table only grows for as long as it can, so that equal parts of them have equal numbers.
    const Colors& Index(const FilmFrame& frame, std::uint8_t* numbers, std::ptrdiff_t stride);

private:
    using Numbers = std::unordered_map<std::uint32_t, std::uint8_t>;

    bool takeAsIs(const FilmFrame& frame);
    void reduce(const FilmFrame& frame);
    void clear();

    Colors colors;
    Numbers numberOf; ///< of each colour that was met
    int count = 0;
    bool reduced = false; ///< several colours may share a number
};
