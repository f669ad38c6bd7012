#include "platform/TraceDevice.h"

#include "platform/Codepage.h"
#include "platform/Rings.h"
#include "platform/Rounding.h"

#include <QImage>
#include <charconv>
#include <utility>

namespace {
/// Puts one line together at the end of a trace. A mesh gives millions of lines, hence no streams and no formats.
class Line {
public:
    Line(QByteArray& trace, QByteArrayView name) : m_trace(trace) { m_trace += name; }
    ~Line() { m_trace += '\n'; }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    Line& Int(int value) {
        char digits[16];
        digits[0] = ' ';
        const auto end = std::to_chars(digits + 1, digits + sizeof digits, value).ptr;
        m_trace.append(digits, end - digits);
        return *this;
    }
    Line& Color(Colour colour) {
        char digits[] = " 0x00000000";
        for (int i = 10; i > 2; --i, colour >>= 4)
            digits[i] = "0123456789abcdef"[colour & 15];
        m_trace.append(digits, sizeof digits - 1);
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
    QByteArray& m_trace;
};

Line& Line::Quoted(const QString& text) {
    m_trace += " \"";
    for (const char c : text.toUtf8()) {
        constexpr QByteArrayView plain = "\"\\\b\f\n\r\t", escaped = "\"\\bfnrt";
        if (const qsizetype at = plain.indexOf(c); at >= 0) {
            m_trace += '\\';
            m_trace += escaped[at];
        } else if (static_cast<unsigned char>(c) < 0x20) {
            m_trace += "\\u00";
            m_trace += "0123456789abcdef"[c >> 4];
            m_trace += "0123456789abcdef"[c & 15];
        } else {
            m_trace += c;
        }
    }
    m_trace += '"';
    return *this;
}
} // namespace

TraceDevice::TraceDevice(int width, int height, int dotsPerInch)
    : m_measures{width, height, std::max(1, dotsPerInch), std::max(1, dotsPerInch)},
      m_state{stockPen(Stock::BlackPen), stockBrush(Stock::WhiteBrush),
              stockFont(Stock::SystemFont, m_measures.DotsPerInchY)} {}

void TraceDevice::SaveDC() {
    Line(m_trace, "SaveDC");
    m_saved.push_back(m_state);
}

void TraceDevice::RestoreDC() {
    Line(m_trace, "RestoreDC");
    if (m_saved.empty())
        return;
    m_state = m_saved.back();
    m_saved.pop_back();
}

Pen TraceDevice::SelectPen(const Pen& pen) {
    if (pen.Stock >= 0)
        Line(m_trace, "StockPen").Int(pen.Stock);
    else
        Line(m_trace, pen.Geometric ? "GeometricPen" : "Pen").Int(pen.Style).Int(pen.Width).Color(pen.Color);
    return std::exchange(m_state.CurrentPen, pen);
}

Brush TraceDevice::SelectBrush(const Brush& brush) {
    if (brush.Stock >= 0 || brush.Hollow)
        Line(m_trace, "StockBrush").Int(brush.Hollow ? int(Stock::NullBrush) : brush.Stock);
    else
        Line(m_trace, "Brush").Color(brush.Color).Int(brush.Hatch);
    return std::exchange(m_state.CurrentBrush, brush);
}

Font TraceDevice::SelectFont(const Font& font) {
    Line(m_trace, "Font")
        .Int(font.Height)
        .Int(font.Weight)
        .Int(font.Italic)
        .Int(font.Underline)
        .Int(font.StrikeOut)
        .Int(font.Escapement)
        .Quoted(font.Face);
    return std::exchange(m_state.CurrentFont, font);
}

void TraceDevice::SetTextColor(Colour colour) {
    Line(m_trace, "TextColor").Color(colour);
}

void TraceDevice::SetRop2(int mode) {
    Line(m_trace, "Rop2").Int(mode);
}

void TraceDevice::ClipRect(const DeviceRect& rect) {
    Line(m_trace, "ClipRect").Rect(rect);
}

void TraceDevice::ClipNone() {
    Line(m_trace, "ClipNone");
}

void TraceDevice::MoveTo(DevicePoint point) {
    Line(m_trace, "MoveTo").Int(point.X).Int(point.Y);
}

void TraceDevice::LineTo(DevicePoint point) {
    Line(m_trace, "LineTo").Int(point.X).Int(point.Y);
}

void TraceDevice::Polyline(std::span<const DevicePoint> points) {
    Line(m_trace, "Polyline").Int(int(points.size())).Points(points);
}

void TraceDevice::Polygon(std::span<const DevicePoint> points) {
    Line(m_trace, "Polygon").Int(int(points.size())).Points(points);
}

void TraceDevice::PolyPolygon(std::span<const DevicePoint> points, std::span<const int> counts) {
    const std::span<const int> complete = completeRings(points, counts);
    Line line(m_trace, "PolyPolygon");
    line.Int(int(complete.size()));
    for (const int count : complete)
        line.Int(count);
    forEachRing(points, complete, [&](std::span<const DevicePoint> ring) { line.Points(ring); });
}

void TraceDevice::Rectangle(const DeviceRect& rect) {
    Line(m_trace, "Rectangle").Rect(rect);
}

void TraceDevice::Ellipse(const DeviceRect& rect) {
    Line(m_trace, "Ellipse").Rect(rect);
}

void TraceDevice::FillRect(const DeviceRect& rect, const Brush&) {
    Line(m_trace, "FillRect").Rect(rect);
}

void TraceDevice::DrawPicture(const DeviceRect& target, const QImage& picture) {
    Line(m_trace, "Picture").Rect(target).Int(picture.width()).Int(picture.height());
}

void TraceDevice::Text(DevicePoint leftTop, const QString& text) {
    Line(m_trace, "Text").Int(leftTop.X).Int(leftTop.Y).Quoted(text);
}

DeviceSize TraceDevice::MeasureText(const QString& text) const {
    int characters = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool pair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        i += pair;
        ++characters;
    }
    const int doubleBytes = Codepage::ByteLength(text) - characters;
    const int height = m_state.CurrentFont.Height;
    // By way of reals: a huge font makes a text wider than a device can name.
    return {Round(double(characters - doubleBytes) * (height / 2) + double(doubleBytes) * height), height};
}
