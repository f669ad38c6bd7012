// The text of RasterDevice.
#include "platform/device/Fonts.h"
#include "platform/raster/RasterDevice.h"

void RasterDevice::closeText() {
    if (textPainter.isActive())
        textPainter.end();
}

RasterDevice::TextTools& RasterDevice::textTools() const {
    return keptText.For(state.TextFont, [this] {
        QFont face = Fonts::ToQFont(state.TextFont);
        // A picture may be shown anywhere; coloured fringes would fit one kind of screen only.
        face.setStyleStrategy(QFont::NoSubpixelAntialias);
        return TextTools{face, QFontMetrics(face), {}};
    });
}

/// The glyphs to draw and measure `text` with; none when that is left to Qt.
GlyphCache* RasterDevice::glyphsFor(const QString& text) const {
    const Font& font = state.TextFont;
    if (font.Underline || font.StrikeOut || font.Height > GlyphCache::LargestSize || !GlyphCache::Takes(text))
        return nullptr;
    TextTools& tools = textTools();
    if (!tools.Glyphs)
        tools.Glyphs.emplace(tools.Face);
    return &*tools.Glyphs;
}

/// Whether the picture could hold any of a text, by a generous guess at its size: most texts of an enlarged view lie
/// outside, and measuring each would cost as much as drawing it.
bool RasterDevice::mayShow(DevicePoint leftTop, const QString& text) const {
    const DeviceRect visible = measures.Visible(state.Clip);
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
    Fonts::LeaveRoomFor(text);
    const DeviceRect visible = measures.Visible(state.Clip);
    const bool wasOpen = textPainter.isActive();
    if (!wasOpen && !textPainter.begin(&image))
        return;
    if (!wasOpen || textPainterClip != visible)
        textPainter.setClipRect(visible.Left, visible.Top, visible.Width(), visible.Height());
    textPainterClip = visible;
    textPainter.setPen(QColor(redOf(state.TextColor), greenOf(state.TextColor), blueOf(state.TextColor)));
    textPainter.setFont(textTools().Face);
    const int ascent = textTools().Metrics.ascent();
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
    Fonts::LeaveRoomFor(text);
    GlyphCache* const glyphs = glyphsFor(text);
    const QFontMetrics& metrics = textTools().Metrics;
    return {glyphs ? glyphs->Advance(text) : metrics.horizontalAdvance(text), metrics.height()};
}
