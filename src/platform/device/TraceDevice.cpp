#include "platform/device/TraceDevice.h"

#include "platform/base/Codepage.h"
#include "platform/device/Rings.h"

#include <QImage>
#include <charconv>

namespace {
/// Puts one line together at the end of a trace. A mesh gives millions of lines, hence no streams and no formats.
class Line {
public:
    Line(CollectedBytes& lines, QByteArrayView name) : trace(lines) { trace.Append(name); }
    ~Line() { trace.Append("\n"); }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    Line& Int(int value) {
        char digits[16];
        digits[0] = ' ';
        const auto end = std::to_chars(digits + 1, digits + sizeof digits, value).ptr;
        trace.Append({digits, end});
        return *this;
    }
    Line& Color(ColorRef color) {
        char digits[] = " 0x00000000";
        for (int i = 10; i > 2; --i, color >>= 4)
            digits[i] = "0123456789abcdef"[color & 15];
        trace.Append({digits, sizeof digits - 1});
        return *this;
    }
    Line& Points(std::span<const DevicePoint> points) {
        for (const DevicePoint& point : points)
            Int(point.X).Int(point.Y);
        return *this;
    }
    Line& Rect(const DeviceRect& rect) { return Int(rect.Left).Int(rect.Top).Int(rect.Right).Int(rect.Bottom); }
    Line& Quoted(const QString& text);

private:
    CollectedBytes& trace;
};

Line& Line::Quoted(const QString& text) {
    QByteArray quoted = " \"";
    for (const char c : text.toUtf8()) {
        constexpr QByteArrayView plain = "\"\\\b\f\n\r\t", escaped = "\"\\bfnrt";
        if (const qsizetype at = plain.indexOf(c); at >= 0) {
            quoted += '\\';
            quoted += escaped[at];
        } else if (static_cast<unsigned char>(c) < 0x20) {
            quoted += "\\u00";
            quoted += "0123456789abcdef"[c >> 4];
            quoted += "0123456789abcdef"[c & 15];
        } else {
            quoted += c;
        }
    }
    quoted += '"';
    trace.Append(quoted);
    return *this;
}
} // namespace

TraceDevice::TraceDevice(int width, int height, int dotsPerInch)
    : StatefulDevice({width, height, std::max(1, dotsPerInch), std::max(1, dotsPerInch)}) {}

void TraceDevice::SaveDC() {
    Line(trace, "SaveDC");
    StatefulDevice::SaveDC();
}

void TraceDevice::RestoreDC() {
    Line(trace, "RestoreDC");
    StatefulDevice::RestoreDC();
}

Pen TraceDevice::SelectPen(const Pen& pen) {
    if (pen.Stock >= 0)
        Line(trace, "StockPen").Int(pen.Stock);
    else
        Line(trace, pen.Geometric ? "GeometricPen" : "Pen").Int(pen.Style).Int(pen.Width).Color(pen.Color);
    return StatefulDevice::SelectPen(pen);
}

Brush TraceDevice::SelectBrush(const Brush& brush) {
    if (brush.Stock >= 0 || brush.Hollow)
        Line(trace, "StockBrush").Int(brush.Hollow ? int(Stock::NullBrush) : brush.Stock);
    else
        Line(trace, "Brush").Color(brush.Color).Int(brush.Hatch);
    return StatefulDevice::SelectBrush(brush);
}

Font TraceDevice::SelectFont(const Font& font) {
    Line(trace, "Font")
        .Int(font.Height)
        .Int(font.Weight)
        .Int(font.Italic)
        .Int(font.Underline)
        .Int(font.StrikeOut)
        .Int(font.Escapement)
        .Quoted(font.Face);
    return StatefulDevice::SelectFont(font);
}

void TraceDevice::SetTextColor(ColorRef color) {
    Line(trace, "TextColor").Color(color);
    StatefulDevice::SetTextColor(color);
}

void TraceDevice::SetRop2(int mode) {
    Line(trace, "Rop2").Int(mode);
    StatefulDevice::SetRop2(mode);
}

void TraceDevice::ClipRect(const DeviceRect& rect) {
    Line(trace, "ClipRect").Rect(rect);
    StatefulDevice::ClipRect(rect);
}

void TraceDevice::ClipNone() {
    Line(trace, "ClipNone");
    StatefulDevice::ClipNone();
}

void TraceDevice::MoveTo(DevicePoint point) {
    Line(trace, "MoveTo").Int(point.X).Int(point.Y);
    StatefulDevice::MoveTo(point);
}

void TraceDevice::LineTo(DevicePoint point) {
    Line(trace, "LineTo").Int(point.X).Int(point.Y);
}

void TraceDevice::Polyline(std::span<const DevicePoint> points) {
    Line(trace, "Polyline").Int(int(points.size())).Points(points);
}

void TraceDevice::Polygon(std::span<const DevicePoint> points) {
    Line(trace, "Polygon").Int(int(points.size())).Points(points);
}

void TraceDevice::PolyPolygon(std::span<const DevicePoint> points, std::span<const int> counts) {
    const std::span<const int> complete = completeRings(points, counts);
    Line line(trace, "PolyPolygon");
    line.Int(int(complete.size()));
    for (const int count : complete)
        line.Int(count);
    forEachRing(points, complete, [&](std::span<const DevicePoint> ring) { line.Points(ring); });
}

void TraceDevice::Rectangle(const DeviceRect& rect) {
    Line(trace, "Rectangle").Rect(rect);
}

void TraceDevice::Ellipse(const DeviceRect& rect) {
    Line(trace, "Ellipse").Rect(rect);
}

void TraceDevice::FillRect(const DeviceRect& rect, const Brush&) {
    Line(trace, "FillRect").Rect(rect);
}

void TraceDevice::DrawPicture(const DeviceRect& target, const QImage& picture) {
    Line(trace, "Picture").Rect(target).Int(picture.width()).Int(picture.height());
}

void TraceDevice::Text(DevicePoint leftTop, const QString& text) {
    Line(trace, "Text").Int(leftTop.X).Int(leftTop.Y).Quoted(text);
}

DeviceSize TraceDevice::MeasureText(const QString& text) const {
    std::int64_t characters = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool pair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        i += pair;
        ++characters;
    }
    const std::int64_t doubleBytes = Codepage::ByteLength(text) - characters;
    const int height = state.TextFont.Height;
    const std::int64_t width = (characters - doubleBytes) * (height / 2) + doubleBytes * height;
    return {int(std::clamp<std::int64_t>(width, INT32_MIN, INT32_MAX)), height};
}
