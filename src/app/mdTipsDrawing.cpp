#include "app/mdTipsDrawing.h"

#include <cstdlib>
#include <limits>

namespace {
constexpr int pointsPerInch = 72;
constexpr int boldWeight = 700;
constexpr int faceBytes = 32;
constexpr int solidHatch = 8;

/// One unit of an edge; light falls from the left top.
struct EdgeRing {
    ColorRef LeftTop, RightBottom;
};
constexpr ColorRef light = 0xe3e3e3, highlight = 0xffffff, shadow = 0xa0a0a0, darkShadow = 0x696969;
constexpr EdgeRing raisedRings[] = {{light, darkShadow}, {highlight, shadow}};
constexpr EdgeRing sunkenRings[] = {{shadow, highlight}, {darkShadow, light}};
} // namespace

Pen mdTips::SelectSolidPen(DeviceContext& device, ColorRef color, int width, int style) {
    return device.SelectPen({.Style = style, .Width = width, .Color = color});
}

Pen mdTips::SelectGeometricPen(DeviceContext& device, int style, int width, ColorRef color) {
    return device.SelectPen({.Style = style, .Width = width, .Color = color, .Geometric = true});
}

Brush mdTips::SelectBrush(DeviceContext& device, ColorRef color, int hatch) {
    return device.SelectBrush({.Color = color, .Hatch = hatch == solidHatch || hatch < 0 ? -1 : hatch});
}

Font mdTips::SelectFontFor(DeviceContext& device, const DeviceContext& ref, const FontObject& font, int escapement) {
    Font request;
    request.Height = PointsToDevice(ref, font.Size);
    if (font.Bold)
        request.Weight = boldWeight;
    request.Italic = font.Italic;
    request.Underline = font.Underline;
    request.StrikeOut = font.StrikeThrough;
    request.Escapement = escapement;
    // No character takes less than one byte, so a face of any length is soon cut.
    request.Face = font.Name.left(faceBytes);
    while (AnsiLength(request.Face) > faceBytes)
        request.Face.chop(1);
    return device.SelectFont(request);
}

void mdTips::RestoreObject(DeviceContext& device, const Pen& old) {
    device.SelectPen(old);
}

void mdTips::RestoreObject(DeviceContext& device, const Brush& old) {
    device.SelectBrush(old);
}

void mdTips::RestoreObject(DeviceContext& device, const Font& old) {
    device.SelectFont(old);
}

int mdTips::PointsToDevice(const DeviceContext& device, double points) {
    return MulDiv(Round(points), device.GetDeviceCaps(DeviceCaps::LogPixelsY), pointsPerInch);
}

DeviceSize mdTips::MeasureText(const DeviceContext& device, const QString& text) {
    return device.MeasureText(text);
}

void mdTips::DrawAnchoredText(DeviceContext& device, int x, int y, const QString& text, int anchor) {
    const int place = anchor >= 1 && anchor <= 9 ? anchor - 1 : 0;
    const DeviceSize size = MeasureText(device, text);
    const int left[] = {0, size.Width / 2, size.Width};
    const int top[] = {0, size.Height / 2, size.Height};
    // By way of reals: a corner may come to lie beyond what a device can name.
    device.Text({Round(double(x) - left[place % 3]), Round(double(y) - top[place / 3])}, text);
}

float mdTips::UnitsPerMillimetre(const DeviceContext& device, bool across) {
    const int units = device.GetDeviceCaps(across ? DeviceCaps::HorzRes : DeviceCaps::VertRes);
    const int millimetres = device.GetDeviceCaps(across ? DeviceCaps::HorzSize : DeviceCaps::VertSize);
    return millimetres > 0 ? float(units) / float(millimetres) : 0.0f;
}

void mdTips::DrawEdge(DeviceContext& device, const DeviceRect& rect, bool raised) {
    DeviceRect left = rect;
    for (const EdgeRing& ring : raised ? raisedRings : sunkenRings) {
        const auto& [l, t, r, b] = left;
        if (l >= r || t >= b)
            return;
        const Brush leftTop{.Color = ring.LeftTop}, rightBottom{.Color = ring.RightBottom};
        device.FillRect({l, t, l + 1, b}, leftTop);
        device.FillRect({l, t, r, t + 1}, leftTop);
        // The darker sides of a raised edge take both corners that they share.
        device.FillRect({r - 1, t, r, b}, rightBottom);
        device.FillRect({l, b - 1, r, b}, rightBottom);
        left = {l + 1, t + 1, r - 1, b - 1};
    }
}

int mdTips::MulDiv(int number, int numerator, int denominator) {
    if (denominator == 0)
        return -1;
    const std::int64_t product = std::int64_t(number) * numerator;
    const std::int64_t divisor = std::abs(std::int64_t(denominator));
    const std::int64_t size = (std::abs(product) + divisor / 2) / divisor;
    const std::int64_t result = (product < 0) != (denominator < 0) ? -size : size;
    return result == std::int32_t(result) ? int(result) : -1;
}
