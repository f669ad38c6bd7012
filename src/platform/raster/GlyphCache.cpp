#include "platform/raster/GlyphCache.h"

#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <cmath>

namespace {
constexpr QStringView characters = u"0123456789+-.,eE ";
constexpr int unitsPerPixel = 64; // Qt's own fixed point, so that every advance is a whole number of them

constexpr std::int8_t notTaken = -1;

constexpr std::array<std::int8_t, 128> makeIndexes() {
    std::array<std::int8_t, 128> indexes{};
    indexes.fill(notTaken);
    for (qsizetype i = 0; i < characters.size(); ++i)
        indexes[characters[i].unicode()] = std::int8_t(i);
    return indexes;
}
constexpr std::array<std::int8_t, 128> indexes = makeIndexes();

std::size_t indexOf(QChar c) {
    return std::size_t(indexes[c.unicode()]);
}

QString textOf(std::size_t character) {
    return QString(characters[qsizetype(character)]);
}

constexpr std::uint32_t mix(std::uint32_t over, std::uint32_t under, unsigned cover) {
    return scalePixel(over, cover) + scalePixel(under, 255 - cover);
}
} // namespace

GlyphCache::GlyphCache(const QFont& font) : glyphFont(font), metrics(font), ascent(QFontMetrics(font).ascent()) {
    static_assert(characters.size() == characterCount);
}

bool GlyphCache::Takes(QStringView text) {
    return std::all_of(text.begin(), text.end(),
                       [](QChar c) { return c.unicode() < indexes.size() && indexes[c.unicode()] != notTaken; });
}

int GlyphCache::advanceOf(std::size_t character) {
    std::optional<int>& advance = advances[character];
    if (!advance)
        advance = int(std::lround(metrics.horizontalAdvance(textOf(character)) * unitsPerPixel));
    return *advance;
}

int GlyphCache::kerning(std::size_t left, std::size_t right) {
    std::optional<int>& kern = kernings[left * characterCount + right];
    if (!kern) {
        const double together = metrics.horizontalAdvance(textOf(left) + textOf(right));
        kern = int(std::lround(together * unitsPerPixel)) - advanceOf(left) - advanceOf(right);
    }
    return *kern;
}

int GlyphCache::Advance(QStringView text) {
    std::int64_t units = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        units += advanceOf(indexOf(text[i]));
        if (i > 0)
            units += kerning(indexOf(text[i - 1]), indexOf(text[i]));
    }
    return int((units + unitsPerPixel / 2) / unitsPerPixel);
}

GlyphCache::Mask GlyphCache::makeMask(std::size_t character, std::size_t shift) const {
    // Room enough for what a slanted glyph puts outside its own advance.
    const int margin = int(std::ceil(metrics.height())) + 1;
    const int width = int(std::ceil(metrics.horizontalAdvance(textOf(character)))) + 2 * margin;
    const int height = 3 * margin;
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(glyphFont);
    painter.setPen(Qt::black);
    painter.drawText(QPointF(margin + double(shift) / shiftCount, 2 * margin), textOf(character));
    painter.end();
    int left = width, top = height, right = 0, bottom = 0;
    const auto cover = [bits = image.constBits(), stride = image.bytesPerLine()](int x, int y) {
        return std::uint8_t(255 - qGreen(reinterpret_cast<const QRgb*>(bits + y * stride)[x]));
    };
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            if (cover(x, y) != 0) {
                left = std::min(left, x);
                right = std::max(right, x + 1);
                top = std::min(top, y);
                bottom = y + 1;
            }
    if (left >= right)
        return {};
    Mask mask{left - margin, top - 2 * margin, right - left, bottom - top, {}};
    for (int y = top; y < bottom; ++y)
        for (int x = left; x < right; ++x)
            mask.Cover.push_back(cover(x, y));
    return mask;
}

const GlyphCache::Mask& GlyphCache::maskOf(std::size_t character, std::size_t shift) {
    std::optional<Mask>& mask = masks[character * shiftCount + shift];
    if (!mask)
        mask = makeMask(character, shift);
    return *mask;
}

void GlyphCache::Draw(const PixelSurface& surface, DevicePoint leftTop, QStringView text, ColorRef color) {
    const std::uint32_t ink = toPixel(color);
    const std::int64_t baseLine = std::int64_t(leftTop.Y) + ascent;
    std::int64_t units = std::int64_t(leftTop.X) * unitsPerPixel;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const std::size_t character = indexOf(text[i]);
        if (i > 0)
            units += kerning(indexOf(text[i - 1]), character);
        // Qt takes the quarter at or left of the glyph's place, and forgives a 64th.
        const std::int64_t shifts = (units + 1) >> 4;
        const Mask& mask = maskOf(character, std::size_t(shifts & (shiftCount - 1)));
        const std::int64_t left = (shifts >> 2) + mask.Left;
        const std::int64_t top = baseLine + mask.Top;
        const PixelSurface part = surface.Within(left, top, left + mask.Width, top + mask.Height);
        for (int y = part.Top; y < part.Bottom; ++y) {
            const std::uint8_t* cover = mask.Cover.data() + (y - top) * mask.Width + (part.Left - left);
            std::uint32_t* const row = part.Pixel(part.Left, y);
            for (int x = 0; x < part.Right - part.Left; ++x)
                if (cover[x] != 0)
                    row[x] = mix(ink, row[x], cover[x]);
        }
        units += advanceOf(character);
    }
}
