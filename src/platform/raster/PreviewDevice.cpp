#include "platform/raster/PreviewDevice.h"

#include "platform/base/Rounding.h"

namespace {
double ratio(int pixels, int units) {
    return units > 0 ? double(pixels) / units : 1;
}
} // namespace

PreviewDevice::PreviewDevice(QImage& sheet, const DeviceMeasures& printer)
    : StatefulDevice(printer), picture(sheet), target(sheet, printer.DotsPerInchX),
      scaleX(ratio(sheet.width(), printer.SheetWidth)), scaleY(ratio(sheet.height(), printer.SheetHeight)) {
    target.SelectPen(state.LinePen);
    target.SelectBrush(state.AreaBrush);
}

/// Where figures are drawn; texts before them must have been.
RasterDevice& PreviewDevice::figures() {
    if (textPainter.isActive())
        textPainter.end();
    return target;
}

DevicePoint PreviewDevice::pixelAt(DevicePoint point) const {
    return {Round((double(point.X) + measures.OffsetX) * scaleX), Round((double(point.Y) + measures.OffsetY) * scaleY)};
}

DeviceRect PreviewDevice::pixelsOf(const DeviceRect& rect) const {
    const DevicePoint leftTop = pixelAt({rect.Left, rect.Top}), rightBottom = pixelAt({rect.Right, rect.Bottom});
    return {leftTop.X, leftTop.Y, rightBottom.X, rightBottom.Y};
}

std::span<const DevicePoint> PreviewDevice::pixelsOf(std::span<const DevicePoint> points) {
    mapped.clear();
    for (const DevicePoint& point : points)
        mapped.push_back(pixelAt(point));
    return mapped;
}

void PreviewDevice::SaveDC() {
    StatefulDevice::SaveDC();
    target.SaveDC();
}

void PreviewDevice::RestoreDC() {
    StatefulDevice::RestoreDC();
    target.RestoreDC();
}

Pen PreviewDevice::SelectPen(const Pen& pen) {
    Pen scaled = pen;
    scaled.Width = std::max(1, Round(pen.Width * scaleX));
    target.SelectPen(scaled);
    return StatefulDevice::SelectPen(pen);
}

Brush PreviewDevice::SelectBrush(const Brush& brush) {
    target.SelectBrush(brush);
    return StatefulDevice::SelectBrush(brush);
}

void PreviewDevice::SetRop2(int mode) {
    target.SetRop2(mode);
    StatefulDevice::SetRop2(mode);
}

void PreviewDevice::ClipRect(const DeviceRect& rect) {
    figures().ClipRect(pixelsOf(rect));
    StatefulDevice::ClipRect(rect);
}

void PreviewDevice::ClipNone() {
    figures().ClipNone();
    StatefulDevice::ClipNone();
}

void PreviewDevice::MoveTo(DevicePoint point) {
    target.MoveTo(pixelAt(point));
    StatefulDevice::MoveTo(point);
}

void PreviewDevice::LineTo(DevicePoint point) {
    figures().LineTo(pixelAt(point));
}

void PreviewDevice::Polyline(std::span<const DevicePoint> points) {
    figures().Polyline(pixelsOf(points));
}

void PreviewDevice::Polygon(std::span<const DevicePoint> points) {
    figures().Polygon(pixelsOf(points));
}

void PreviewDevice::PolyPolygon(std::span<const DevicePoint> points, std::span<const int> counts) {
    figures().PolyPolygon(pixelsOf(points), counts);
}

void PreviewDevice::Rectangle(const DeviceRect& rect) {
    figures().Rectangle(pixelsOf(rect));
}

void PreviewDevice::Ellipse(const DeviceRect& rect) {
    figures().Ellipse(pixelsOf(rect));
}

void PreviewDevice::FillRect(const DeviceRect& rect, const Brush& brush) {
    figures().FillRect(pixelsOf(rect), brush);
}

void PreviewDevice::DrawPicture(const DeviceRect& area, const QImage& shown) {
    figures().DrawPicture(pixelsOf(area), shown);
}

void PreviewDevice::Lines(std::span<const DevicePoint> points, std::span<const std::int32_t> steps) {
    figures().Lines(pixelsOf(points), steps);
}

void PreviewDevice::Polygons(std::span<const DevicePoint> points, std::span<const int> counts) {
    figures().Polygons(pixelsOf(points), counts);
}

const VectorText& PreviewDevice::font() const {
    return keptText.For(state.TextFont, [this] { return VectorText(state.TextFont, nullptr); });
}

void PreviewDevice::Text(DevicePoint leftTop, const QString& text) {
    if (text.isEmpty() || (target.GoesOn && !target.GoesOn()))
        return;
    if (!textPainter.isActive()) {
        if (!textPainter.begin(&picture))
            return;
        textPainter.scale(scaleX, scaleY);
        textPainter.translate(measures.OffsetX, measures.OffsetY);
    }
    if (state.Clip)
        textPainter.setClipRect(state.Clip->Left, state.Clip->Top, state.Clip->Width(), state.Clip->Height());
    else
        textPainter.setClipping(false);
    const QPointF corner(leftTop.X, leftTop.Y);
    font().DrawAsPrinted(textPainter, corner, state.TextFont.Escapement, state.TextColor, text);
}

DeviceSize PreviewDevice::MeasureText(const QString& text) const {
    return font().Measure(text);
}
