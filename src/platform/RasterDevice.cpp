#include "platform/RasterDevice.h"

#include "platform/Fonts.h"
#include "platform/Parallel.h"

#include <cmath>

namespace {
/// Right not left of left, bottom not above top.
DeviceRect normalised(const DeviceRect& rect) {
    return {std::min(rect.Left, rect.Right), std::min(rect.Top, rect.Bottom), std::max(rect.Left, rect.Right),
            std::max(rect.Top, rect.Bottom)};
}

/// Fewer steps or points than this are drawn sooner than a thread is started.
constexpr std::size_t smallestSharedWork = 4000;
} // namespace

RasterDevice::RasterDevice(QImage& picture, int dotsPerInch, int threadLimit)
    : image(picture), resolution(dotsPerInch > 0 ? dotsPerInch : 96),
      threads(threadLimit > 0 ? threadLimit : coreCount()) {
    state.LinePen = stockPen(Stock::BlackPen);
    state.AreaBrush = stockBrush(Stock::WhiteBrush);
    state.TextFont = stockFont(Stock::SystemFont, resolution);
}

void RasterDevice::SaveDC() {
    savedStates.push_back(state);
}

void RasterDevice::RestoreDC() {
    if (savedStates.empty())
        return;
    closeText();
    state = std::move(savedStates.back());
    savedStates.pop_back();
    forgetFont();
}

Pen RasterDevice::SelectPen(const Pen& pen) {
    return std::exchange(state.LinePen, pen);
}

Brush RasterDevice::SelectBrush(const Brush& brush) {
    return std::exchange(state.AreaBrush, brush);
}

Font RasterDevice::SelectFont(const Font& font) {
    forgetFont();
    return std::exchange(state.TextFont, font);
}

void RasterDevice::SetTextColor(Colour colour) {
    state.TextColour = colour;
}

void RasterDevice::SetRop2(int mode) {
    state.RasterMode = mode;
}

void RasterDevice::ClipRect(const DeviceRect& rect) {
    closeText();
    state.Clip = normalised(rect);
}

void RasterDevice::ClipNone() {
    closeText();
    state.Clip.reset();
}

/// What of the picture the clip leaves; empty, and at the origin, when it leaves nothing.
DeviceRect RasterDevice::visibleRect() const {
    DeviceRect rect{0, 0, image.width(), image.height()};
    if (state.Clip) {
        rect = {std::max(rect.Left, state.Clip->Left), std::max(rect.Top, state.Clip->Top),
                std::min(rect.Right, state.Clip->Right), std::min(rect.Bottom, state.Clip->Bottom)};
    }
    return rect.Left < rect.Right && rect.Top < rect.Bottom ? rect : DeviceRect{};
}

std::optional<DeviceRect> RasterDevice::VisibleArea() const {
    DeviceRect rect = visibleRect();
    // No device is so large that a wider pen than this could matter.
    const int reach = std::clamp(state.LinePen.Width, 1, 1 << 20);
    rect.Left -= reach;
    rect.Top -= reach;
    rect.Right += reach;
    rect.Bottom += reach;
    return rect;
}

/// Asks the image each time: a copy that someone took of it since must not be drawn into.
PixelSurface RasterDevice::surface() {
    closeText();
    if (image.format() != QImage::Format_RGB32 && image.format() != QImage::Format_ARGB32_Premultiplied)
        return {};
    PixelSurface whole;
    whole.Bits = reinterpret_cast<std::uint32_t*>(image.bits());
    whole.Stride = image.bytesPerLine() / 4;
    whole.Right = image.width();
    whole.Bottom = image.height();
    const DeviceRect rect = visibleRect();
    return whole.Within(rect.Left, rect.Top, rect.Right, rect.Bottom);
}

FigurePainter RasterDevice::figuresOn(const PixelSurface& part) const {
    return {part, state.LinePen, state.AreaBrush, state.RasterMode};
}

void RasterDevice::MoveTo(DevicePoint point) {
    state.Position = {point, 0};
}

void RasterDevice::LineTo(DevicePoint point) {
    figures().LineTo(state.Position, point);
}

void RasterDevice::Polyline(std::span<const DevicePoint> points) {
    figures().Polyline(points);
}

void RasterDevice::Polygon(std::span<const DevicePoint> points) {
    const int count = int(points.size());
    figures().Polygons(points, {&count, 1});
}

void RasterDevice::PolyPolygon(std::span<const DevicePoint> points, std::span<const int> counts) {
    figures().PolyPolygon(points, counts);
}

void RasterDevice::Rectangle(const DeviceRect& rect) {
    figures().Rectangle(normalised(rect));
}

void RasterDevice::Ellipse(const DeviceRect& rect) {
    figures().Ellipse(normalised(rect));
}

void RasterDevice::FillRect(const DeviceRect& rect, const Brush& brush) {
    FigurePainter(surface(), {}, brush, RasterMode::CopyPen).FillRect(normalised(rect));
}

/// Parts of the surface, one above the other, that hold about the same share of a batch each: a thread for each draws
/// the whole batch, in its order, into its own part. So no two threads share a pixel and none sees another order.
std::vector<PixelSurface> RasterDevice::bands(std::span<const DevicePoint> points, std::size_t workSize) {
    const PixelSurface whole = surface();
    if (threads == 1 || workSize < smallestSharedWork || whole.IsEmpty())
        return {whole};
    constexpr std::size_t sampleSize = 512;
    std::vector<int> rows;
    const std::size_t distance = std::max<std::size_t>(1, points.size() / sampleSize);
    for (std::size_t i = 0; i < points.size(); i += distance) {
        if (points[i].Y >= whole.Top && points[i].Y < whole.Bottom)
            rows.push_back(points[i].Y);
    }
    std::sort(rows.begin(), rows.end());
    std::vector<PixelSurface> parts;
    int top = whole.Top;
    for (int i = 1; i <= threads; ++i) {
        const std::size_t sample = rows.size() * std::size_t(i) / std::size_t(threads);
        const int bottom = i == threads || sample >= rows.size() ? whole.Bottom : rows[sample];
        if (bottom > top)
            parts.push_back(whole.Within(whole.Left, top, whole.Right, bottom));
        top = bottom;
    }
    return parts;
}

void RasterDevice::Lines(std::span<const DevicePoint> points, std::span<const std::int32_t> steps) {
    const std::vector<PixelSurface> parts = bands(points, steps.size());
    PathPosition end = state.Position;
    parallelFor(int(parts.size()), [&](int i) {
        PathPosition at = state.Position;
        figuresOn(parts[std::size_t(i)]).Lines(at, points, steps);
        if (i == 0)
            end = at;
    });
    state.Position = end;
}

void RasterDevice::Polygons(std::span<const DevicePoint> points, std::span<const int> counts) {
    const std::vector<PixelSurface> parts = bands(points, points.size());
    parallelFor(int(parts.size()), [&](int i) { figuresOn(parts[std::size_t(i)]).Polygons(points, counts); });
}

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
    const DeviceRect visible = visibleRect();
    const std::int64_t height = 2 * std::int64_t(std::abs(state.TextFont.Height)) + 2;
    const std::int64_t reach = height * (text.size() + 1);
    const std::int64_t reachY = state.TextFont.Escapement == 0 ? height : reach;
    return leftTop.X + reach >= visible.Left && leftTop.X - reach < visible.Right &&
           leftTop.Y + reachY >= visible.Top && leftTop.Y - reachY < visible.Bottom;
}

void RasterDevice::DrawPicture(const DeviceRect& target, const QImage& picture) {
    closeText();
    QPainter painter(&image);
    const DeviceRect visible = visibleRect();
    painter.setClipRect(visible.Left, visible.Top, visible.Width(), visible.Height());
    painter.drawImage(QRect(target.Left, target.Top, target.Width(), target.Height()), picture);
}

void RasterDevice::Text(DevicePoint leftTop, const QString& text) {
    if (text.isEmpty() || image.isNull() || !mayShow(leftTop, text))
        return;
    const bool upright = state.TextFont.Escapement % 3600 == 0;
    if (GlyphCache* const glyphs = upright ? glyphsFor(text) : nullptr) {
        glyphs->Draw(surface(), leftTop, text, state.TextColour);
        return;
    }
    if (!textPainter.isActive()) {
        if (!textPainter.begin(&image))
            return;
        const DeviceRect visible = visibleRect();
        textPainter.setClipRect(visible.Left, visible.Top, visible.Width(), visible.Height());
    }
    textPainter.setPen(QColor(redOf(state.TextColour), greenOf(state.TextColour), blueOf(state.TextColour)));
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

int RasterDevice::GetDeviceCaps(DeviceCaps caps) const {
    const auto millimetres = [this](int units) { return int(std::lround(units * 25.4 / resolution)); };
    switch (caps) {
    case DeviceCaps::HorzSize:
        return millimetres(image.width());
    case DeviceCaps::VertSize:
        return millimetres(image.height());
    case DeviceCaps::HorzRes:
        return image.width();
    case DeviceCaps::VertRes:
        return image.height();
    case DeviceCaps::LogPixelsX:
    case DeviceCaps::LogPixelsY:
        return resolution;
    }
    return 0;
}
