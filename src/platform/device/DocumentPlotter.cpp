#include "platform/device/DocumentPlotter.h"

#include "platform/device/Printers.h"

#include <cmath>

namespace {
constexpr double mmPerInch = 25.4;

/// With which all of `window` has room in `document`.
double fittingScale(const PlotRect& window, const PlotDocument& document) {
    const double width = std::abs(double(window.Width()));
    const double height = std::abs(double(window.Height()));
    const double acrossScale = width > 0 ? document.DeviceWidth() / width : 0;
    const double downScale = height > 0 ? document.DeviceHeight() / height : 0;
    // A world without extent in one direction is fitted by the other; without any it is drawn at one to one.
    const double scale =
        acrossScale > 0 && downScale > 0 ? std::min(acrossScale, downScale) : std::max(acrossScale, downScale);
    return scale > 0 && std::isfinite(scale) ? scale : 1;
}
} // namespace

void PlotRect::MoveTo(float newLeft, float newTop) {
    left = newLeft;
    top = newTop;
}

void PlotRect::OffsetBy(float dx, float dy) {
    left += dx;
    top += dy;
}

void PlotRect::SetRect(float newLeft, float newTop, float newRight, float newBottom) {
    left = newLeft;
    top = newTop;
    width = newRight - newLeft;
    height = newBottom - newTop;
}

void PlotDocument::SetWindow(DeviceSize pixels) {
    Left = Top = 0;
    Right = pixels.Width;
    Bottom = pixels.Height;
}

PlotConverter::PlotConverter(const PlotRect& window, const PlotDocument& document, double scale)
    : scaleX(window.Width() < 0 ? -scale : scale), scaleY(window.Height() > 0 ? scale : -scale),
      originX((double(document.Left) + document.Right) * 0.5 - double(window.CentreX()) * scaleX),
      originY((double(document.Top) + document.Bottom) * 0.5 - double(window.CentreY()) * scaleY) {}

PlotConverter::PlotConverter(const PlotRect& window, const PlotDocument& document, double scale,
                             const DeviceContext& device)
    : PlotConverter(window, document, scale) {
    unitsPerMmX = device.GetDeviceCaps(DeviceCaps::LogPixelsX) / mmPerInch;
    unitsPerMmY = device.GetDeviceCaps(DeviceCaps::LogPixelsY) / mmPerInch;
}

PlotConverter::PlotConverter(const PlotRect& window, const PlotDocument& document, double scale,
                             const PlotConverter& device)
    : PlotConverter(window, document, scale) {
    unitsPerMmX = device.unitsPerMmX;
    unitsPerMmY = device.unitsPerMmY;
}

void PlotConverter::WorldLengthToDevice(double lx, double ly, double& dx, double& dy) const {
    dx = lx * std::abs(scaleX);
    dy = ly * std::abs(scaleY);
}

void PlotConverter::DeviceToWorld(int px, int py, float& x, float& y) const {
    x = float((px - originX) / scaleX);
    y = float((py - originY) / scaleY);
}

void PlotConverter::DeviceWayToWorld(double across, double down, double& x, double& y) const {
    x = across / scaleX;
    y = down / scaleY;
}

PictureShift PlotConverter::ShiftFrom(const PlotConverter& before) const {
    const double scale = scaleX / before.scaleX;
    return {scale, originX - scale * before.originX, originY - scale * before.originY};
}

void PlotConverter::PaperLengthToDevice(double lx, double ly, double& dx, double& dy) const {
    dx = lx * unitsPerMmX;
    dy = ly * unitsPerMmY;
}

void PlotConverter::WorldArrayToDevice(int count, const float* xs, const float* ys, int* outX, int* outY) const {
    for (int i = 0; i < count; ++i)
        WorldToDevice(xs[i], ys[i], outX[i], outY[i]);
}

PlotCanvas::PlotCanvas(DeviceContext& onDevice, const DeviceContext& attributeDevice, const PlotRect& shown,
                       const PlotDocument& place, const PlotConverter& conversion)
    : device(onDevice), attributes(attributeDevice), window(shown), document(place), converter(conversion) {}

Brush PlotCanvas::CreateBrush(ColorRef color, bool hollow) const {
    Brush brush;
    brush.Color = color;
    brush.Hollow = hollow;
    return brush;
}

Pen PlotCanvas::CreatePen(int style, int width, ColorRef color) const {
    Pen pen;
    pen.Style = style;
    pen.Width = width;
    pen.Color = color;
    return pen;
}

void DocumentPlotter::HoldScale(double scale, int width) {
    held = scale;
    heldWidth = width;
}

double DocumentPlotter::FittingScale(const PlotRect& bounds, DeviceSize size) {
    PlotDocument document;
    document.SetWindow(size);
    return fittingScale(bounds, document);
}

double DocumentPlotter::scaleFor(const PlotDocument& document) {
    // Whole multiples, as of vector formats, leave the held scale's digits alone.
    if (held > 0)
        return held * (double(document.DeviceWidth()) / heldWidth);
    const bool refit = events.Update && events.Update();
    const bool sameView = window.Width() == keptWidth && window.Height() == keptHeight;
    if (scaleMode == PlotScaleMode::Fixed && !refit && sameView && keptScale > 0)
        return keptScale;
    keptScale = fittingScale(window, document);
    keptWidth = window.Width();
    keptHeight = window.Height();
    return keptScale;
}

void DocumentPlotter::Draw(DeviceContext& device) {
    PlotDocument document = viewport;
    if (headless)
        document.SetWindow({device.GetDeviceCaps(DeviceCaps::HorzRes), device.GetDeviceCaps(DeviceCaps::VertRes)});
    if (events.Bounds)
        window = events.Bounds();
    if (document.DeviceWidth() <= 0 || document.DeviceHeight() <= 0 || !events.Painting)
        return;
    PlotCanvas canvas(device, device, window, document, PlotConverter(window, document, scaleFor(document), device));
    events.Painting(canvas);
}

PlotConverter DocumentPlotter::ConverterNow(const PlotConverter& painted) {
    if (events.Bounds)
        window = events.Bounds();
    return {window, viewport, scaleFor(viewport), painted};
}

std::optional<PlotPrinter> DocumentPlotter::OpenPrinter(const QString& name, int orientation, int paperSize) const {
    return printers ? printers->Open(name, orientation, paperSize) : std::nullopt;
}

void DocumentPlotter::DrawPage(DeviceContext& device, const PlotPrinter& printer) const {
    if (!events.Printing)
        return;
    const auto [left, top, right, bottom] = printer.DocumentRect();
    const PlotDocument document{left, top, right, bottom};
    const PlotRect bounds = events.Bounds ? events.Bounds() : window;
    const double trueScale = paperScale * printer.DotsPerInch() / mmPerInch;
    const double scale = trueScale > 0 && std::isfinite(trueScale) ? trueScale : fittingScale(bounds, document);
    PlotCanvas canvas(device, device, bounds, document, PlotConverter(bounds, document, scale, device));
    events.Printing(canvas);
}

PrintResult DocumentPlotter::PrintDocument(const PlotPrinter& printer, const QString& title) const {
    if (!printers)
        return {PrintResult::Refused, printer.DeviceName()};
    return printers->Print(printer, title, [&](DeviceContext& device) { DrawPage(device, printer); });
}
