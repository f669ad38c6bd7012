// A small picture that a test draws into and reads back as rows of characters. No tests here.
#pragma once

#include "platform/raster/RasterDevice.h"

#include <random>
#include <string>

constexpr ColorRef white = makeColor(255, 255, 255);
constexpr ColorRef black = 0;
constexpr ColorRef red = makeColor(255, 0, 0);

/// A picture as text, a string a row.
using Rows = std::vector<std::string>;

struct Picture {
    QImage Image;
    RasterDevice Device;

    explicit Picture(int width, int height, int threadLimit = 1)
        : Image(width, height, QImage::Format_RGB32), Device(Image, 96, threadLimit) {
        Image.fill(toPixel(white));
    }

    Picture& With(const Pen& pen) {
        Device.SelectPen(pen);
        return *this;
    }
    Picture& With(const Brush& brush) {
        Device.SelectBrush(brush);
        return *this;
    }
    /// '.' white, '#' black, 'r' red, '?' any other.
    Rows Read() const {
        Rows rows;
        for (int y = 0; y < Image.height(); ++y) {
            std::string row;
            for (int x = 0; x < Image.width(); ++x) {
                const QRgb pixel = Image.pixel(x, y);
                row += pixel == toPixel(white)   ? '.'
                       : pixel == toPixel(black) ? '#'
                       : pixel == toPixel(red)   ? 'r'
                                                 : '?';
            }
            rows.push_back(row);
        }
        return rows;
    }
    bool Shows(char kind) const {
        const Rows rows = Read();
        return std::any_of(rows.begin(), rows.end(),
                           [&](const std::string& row) { return row.find(kind) != row.npos; });
    }
    void Line(DevicePoint from, DevicePoint to) {
        Device.MoveTo(from);
        Device.LineTo(to);
    }
};

/// Every call is drawn by itself: no batches, no threads, and nothing is left out for lying out of sight.
class EveryCall final : public RasterDevice {
public:
    explicit EveryCall(QImage& picture, int dotsPerInch = 96) : RasterDevice(picture, dotsPerInch, 1) {}

    std::optional<DeviceRect> VisibleArea() const override { return {}; }
    bool ShowsEveryCall() const override { return true; }
    void Polyline(std::span<const DevicePoint> points) override {
        SaveDC();
        for (std::size_t i = 0; i < points.size(); ++i)
            i == 0 ? MoveTo(points[i]) : LineTo(points[i]);
        RestoreDC();
    }
    void Lines(std::span<const DevicePoint> points, std::span<const std::int32_t> steps) override {
        DeviceContext::Lines(points, steps);
    }
    void Polygons(std::span<const DevicePoint> points, std::span<const int> counts) override {
        DeviceContext::Polygons(points, counts);
    }
    void Rectangles(std::span<const DeviceRect> rects) override { DeviceContext::Rectangles(rects); }
    void Ellipses(std::span<const DeviceRect> rects) override { DeviceContext::Ellipses(rects); }
};

/// Numbers that differ from run to run of a test never: the same seed gives the same.
class Dice {
public:
    explicit Dice(unsigned seed) : engine(seed) {}
    int Between(int low, int high) { return int(low + std::int64_t(engine() % (std::int64_t(high) - low + 1))); }
    DevicePoint Point(int low, int high) { return {Between(low, high), Between(low, high)}; }
    std::vector<DevicePoint> Points(int count, int low, int high) {
        std::vector<DevicePoint> points;
        while (int(points.size()) < count)
            points.push_back(Point(low, high));
        return points;
    }

private:
    std::mt19937 engine;
};

inline Pen solidPen(ColorRef color, int width = 1) {
    Pen pen;
    pen.Color = color;
    pen.Width = width;
    return pen;
}
inline Brush solidBrush(ColorRef color) {
    Brush brush;
    brush.Color = color;
    return brush;
}
