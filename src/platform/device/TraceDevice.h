// A device that writes each call as one line of text instead of drawing it, for tests and for comparing pictures by
// their calls. Its text measures are fixed, so a trace is the same on every system.
#pragma once

#include "platform/base/CollectedBytes.h"
#include "platform/device/DeviceState.h"

/// A line is the call's name and its integers; colours are 0x00BBGGRR in eight small hex digits, texts JSON strings in
/// UTF-8. Pens and brushes that are ready-made ones are written by their number. Select calls are written also when
/// they change nothing.
class TraceDevice final : public StatefulDevice {
public:
    TraceDevice(int width, int height, int dotsPerInch = 96);
    explicit TraceDevice(const DeviceMeasures& given) : StatefulDevice(given) {}

    /// All lines so far, each ended by a line feed. Throws std::bad_alloc when the memory did not hold them.
    const QByteArray& Trace() const { return trace.Whole(); }

    void SaveDC() override;
    void RestoreDC() override;
    Pen SelectPen(const Pen& pen) override;
    Brush SelectBrush(const Brush& brush) override;
    Font SelectFont(const Font& font) override;
    void SetTextColor(ColorRef color) override;
    void SetRop2(int mode) override;
    void ClipRect(const DeviceRect& rect) override;
    void ClipNone() override;

    void MoveTo(DevicePoint point) override;
    void LineTo(DevicePoint point) override;
    void Polyline(std::span<const DevicePoint> points) override;
    void Polygon(std::span<const DevicePoint> points) override;
    /// Rings whose points are not all there are left out.
    void PolyPolygon(std::span<const DevicePoint> points, std::span<const int> counts) override;
    void Rectangle(const DeviceRect& rect) override;
    void Ellipse(const DeviceRect& rect) override;
    void FillRect(const DeviceRect& rect, const Brush& brush) override;
    void DrawPicture(const DeviceRect& target, const QImage& picture) override;

    void Text(DevicePoint leftTop, const QString& text) override;
    /// Height is the font's cell height h; a character takes h / 2 (rounded down) when it is one byte in code page
    /// 932 and h when it is two; what is wider than a number is as wide as the greatest.
    DeviceSize MeasureText(const QString& text) const override;
    std::optional<DeviceRect> VisibleArea() const override { return {}; }
    bool ShowsEveryCall() const override { return true; }

private:
    CollectedBytes trace;
};
