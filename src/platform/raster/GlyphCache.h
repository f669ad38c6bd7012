// Numbers as pixels: keeps the glyphs of digits and signs of one font as masks, so that a picture full of numbers is
// drawn in a fraction of Qt's time. All other text is not its business.
#pragma once

#include "platform/raster/PixelSurface.h"

#include <QFontMetricsF>
#include <QString>
#include <optional>
#include <vector>

/// Draws and measures as Qt does, to the pixel: glyphs on quarters of a pixel, pairs kerned.
class GlyphCache {
public:
    /// For upright text in `font` without underline and strike-out; greater fonts than `LargestSize` pixels are
    /// drawn too, but not as Qt draws them.
    explicit GlyphCache(const QFont& font);

    static constexpr int LargestSize = 60;

    /// Whether `text` is made of nothing but digits, signs, points, commas, blanks and the letter of an exponent.
    static bool Takes(QStringView text);

    /// Width in pixels of a text that it takes.
    int Advance(QStringView text);
    /// A text that it takes, with its left top corner at a point; only the surface's pixels are touched.
    void Draw(const PixelSurface& surface, DevicePoint leftTop, QStringView text, ColorRef color);

private:
    static constexpr std::size_t characterCount = 17;
    static constexpr std::size_t shiftCount = 4; ///< places of a glyph within a pixel

    /// The inked part of a glyph, and where it lies from the pixel of its origin on the base line.
    struct Mask {
        int Left = 0, Top = 0, Width = 0, Height = 0;
        std::vector<std::uint8_t> Cover;
    };

    int advanceOf(std::size_t character);
    int kerning(std::size_t left, std::size_t right);
    const Mask& maskOf(std::size_t character, std::size_t shift);
    Mask makeMask(std::size_t character, std::size_t shift) const;

    QFont glyphFont;
    QFontMetricsF metrics;
    int ascent;
    std::array<std::optional<int>, characterCount> advances;                  ///< in 1/64 pixels
    std::array<std::optional<int>, characterCount * characterCount> kernings; ///< in 1/64 pixels
    std::array<std::optional<Mask>, characterCount * shiftCount> masks;
};
