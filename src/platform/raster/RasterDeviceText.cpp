// The text of RasterDevice.
#include "platform/device/Fonts.h"
#include "platform/raster/RasterDevice.h"

void RasterDevice::closeText() {
    if (textPainter.isActive())
        textPainter.end();
}

void RasterDevice::forgetFont() {
    currentFont.reset();
    currentMetrics.reset();
    currentGlyphs.reset();
}

const QFont& RasterDevice::textFont() const {
    if (!currentFont) {
        currentFont = Fonts::ToQFont(state.TextFont);
        // A picture may be shown anywhere; coloured fringes would fit one kind of screen only.
        currentFont->setStyleStrategy(QFont::NoSubpixelAntialias);
    }
    return *currentFont;
}

const QFontMetrics& RasterDevice::textMetrics() const {
    if (!currentMetrics)
        currentMetrics = QFontMetrics(textFont());
    return *currentMetrics;
}

/// The glyphs to draw and measure `text` with; none when that is left to Qt.
GlyphCache* RasterDevice::glyphsFor(const QString& text) const {
    const Font& font = state.TextFont;
    if (font.Underline || font.StrikeOut || font.Height > GlyphCache::LargestSize || !GlyphCache::Takes(text))
        return nullptr;
    if (!currentGlyphs)
        currentGlyphs.emplace(textFont());
    return &*currentGlyphs;
}

/// Whether the picture could hold any of a text, by a generous guess at its size: most texts of an enlarged view lie
/// outside, and measuring each would cost as much as drawing it.
bool RasterDevice::mayShow(DevicePoint leftTop, const QString& text) const {
    const DeviceRect visible = measures().Visible(state.Clip);
    const std::int64_t drawn =
        std::min<std::int64_t>(std::abs(std::int64_t(state.TextFont.Height)), Fonts::LargestHeight);
    const std::int64_t height = 2 * drawn + 2;
    const std::int64_t reach = height * (text.size() + 1);
    const std::int64_t reachY = state.TextFont.Escapement == 0 ? height : reach;
    return leftTop.X + reach >= visible.Left && leftTop.X - reach < visible.Right &&
           leftTop.Y + reachY >= visible.Top && leftTop.Y - reachY < visible.Bottom;
}

void RasterDevice::Text(DevicePoint leftTop, const QString& text) {
    if (text.isEmpty() || image.isNull() || !mayShow(leftTop, text))
        return;
    const bool upright = state.TextFont.Escapement % 3600 == 0;
    if (GlyphCache* const glyphs = upright ? glyphsFor(text) : nullptr) {
        glyphs->Draw(surface(), leftTop, text, state.TextColor);
        return;
    }
    if (!textPainter.isActive()) {
        if (!textPainter.begin(&image))
            return;
        const DeviceRect visible = measures().Visible(state.Clip);
        textPainter.setClipRect(visible.Left, visible.Top, visible.Width(), visible.Height());
    }
    textPainter.setPen(QColor(redOf(state.TextColor), greenOf(state.TextColor), blueOf(state.TextColor)));
    textPainter.setFont(textFont());
    const int ascent = textMetrics().ascent();
    if (upright) {
        textPainter.drawText(QPointF(leftTop.X, double(leftTop.Y) + ascent), text);
        return;
    }
    textPainter.translate(leftTop.X, leftTop.Y);
    textPainter.rotate(-state.TextFont.Escapement / 10.0);
    textPainter.drawText(QPointF(0, ascent), text);
    textPainter.resetTransform();
}

DeviceSize RasterDevice::MeasureText(const QString& text) const {
    GlyphCache* const glyphs = glyphsFor(text);
    return {glyphs ? glyphs->Advance(text) : textMetrics().horizontalAdvance(text), textMetrics().height()};
}
