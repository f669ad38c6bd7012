// Puts a world rectangle onto a device: asks its owner for the rectangle, works out the scale, and hands the owner a
// canvas to draw on. Knows nothing of what is drawn.
#pragma once

#include "platform/base/Rounding.h"
#include "platform/device/DeviceContext.h"

#include <functional>
#include <optional>

/// A rectangle of the world, single precision, X to the right and Y up: `Top` stands above `Bottom`, so `Height` is
/// negative.
class PlotRect {
public:
    float Left() const { return left; }
    float Top() const { return top; }
    float Right() const { return left + width; }
    float Bottom() const { return top + height; }
    float Width() const { return width; }
    float Height() const { return height; }
    float CentreX() const { return left + width * 0.5f; }
    float CentreY() const { return top + height * 0.5f; }
    void SetLeft(float value) { left = value; }
    void SetTop(float value) { top = value; }
    void SetWidth(float value) { width = value; }   ///< keeps `Left`
    void SetHeight(float value) { height = value; } ///< keeps `Top`
    void MoveTo(float newLeft, float newTop);
    void OffsetBy(float dx, float dy);
    void SetRect(float newLeft, float newTop, float newRight, float newBottom);
    bool operator==(const PlotRect&) const = default;

private:
    float left = 0, top = 0, width = 0, height = 0;
};

/// Where a picture lies on its device, in device units.
struct PlotDocument {
    int Left = 0;
    int Top = 0;
    int Right = 0;
    int Bottom = 0;

    int DeviceWidth() const { return Right - Left; }
    int DeviceHeight() const { return Bottom - Top; }
    /// The size of the window's drawing area in its own pixels; call at every change of size.
    void SetWindow(DeviceSize pixels);
    operator DeviceRect() const { return {Left, Top, Right, Bottom}; }
};

/// World to device and back, for one paint; may be kept beyond it. Aspect ratio is kept: one scale for both directions.
/// Device points are rounded to the nearest integer, a half to the even neighbour, and held within 32 bits.
class PlotConverter {
public:
    /// The centre of `window` falls on the centre of `document`; `scale` is in device units per world unit, above 0.
    PlotConverter(const PlotRect& window, const PlotDocument& document, double scale, const DeviceContext& device);
    /// The same on the device of another converter.
    PlotConverter(const PlotRect& window, const PlotDocument& document, double scale, const PlotConverter& device);

    /// Lengths only, always as positive as they came.
    void WorldLengthToDevice(double lx, double ly, double& dx, double& dy) const;
    DevicePoint WorldToDevice(float x, float y) const {
        return RoundPair(RealPair{double(x), double(y)} * RealPair{scaleX, scaleY} + RealPair{originX, originY});
    }
    void WorldToDevice(float x, float y, int& px, int& py) const {
        const DevicePoint point = WorldToDevice(x, y);
        px = point.X;
        py = point.Y;
    }
    void DeviceToWorld(int px, int py, float& x, float& y) const;
    /// What the way from one device point to another is in the world.
    void DeviceWayToWorld(double across, double down, double& x, double& y) const;
    /// How a picture painted with `before` lies under this one.
    PictureShift ShiftFrom(const PlotConverter& before) const;
    /// Millimetres on paper; depends on the device's resolution, not on the view.
    void PaperLengthToDevice(double lx, double ly, double& dx, double& dy) const;
    void WorldArrayToDevice(int count, const float* xs, const float* ys, int* outX, int* outY) const;

private:
    PlotConverter(const PlotRect& window, const PlotDocument& document, double scale);

    /// Device units per world unit; `scaleY` is negative while world Y runs up, as it does in a window without height.
    double scaleX, scaleY;
    double originX, originY;
    double unitsPerMmX = 0, unitsPerMmY = 0;
};

/// What the owner of a plotter gets to draw on.
class PlotCanvas {
public:
    PlotCanvas(DeviceContext& device, const DeviceContext& attributes, const PlotRect& window,
               const PlotDocument& document, const PlotConverter& converter);

    const PlotRect& Window() const { return window; }
    Brush CreateBrush(ColorRef color, bool hollow) const;
    Pen CreatePen(int style, int width, ColorRef color) const;
    DeviceContext& hDC() const { return device; }
    /// Reference for font sizes and text measures; the device itself except in a preview.
    const DeviceContext& AttributeDC() const { return attributes; }
    void Rectangle(const PlotDocument& rect) { device.Rectangle(rect); }
    void SetBrush(const Brush& brush) { device.SelectBrush(brush); }
    void SetPen(const Pen& pen) { device.SelectPen(pen); }
    const PlotConverter& Converter() const { return converter; }
    const PlotDocument& Document() const { return document; }

private:
    DeviceContext& device;
    const DeviceContext& attributes;
    PlotRect window;
    PlotDocument document;
    PlotConverter converter;
};

class PlotPrinter;
class Printers;
struct PrintResult;

/// What a plotter asks of its owner; a call that is not set is not made.
struct PlotEvents {
    std::function<PlotRect()> Bounds; ///< the world rectangle to show
    std::function<void(PlotCanvas&)> Painting;
    std::function<bool()> Update; ///< true once when something new is to be shown, which is then fitted anew
    std::function<void(PlotCanvas&)> Printing = {}; ///< on a canvas whose document is the one inside the margins
};

/// How the scale follows the size of the device.
enum class PlotScaleMode : int {
    Fixed = 0,    ///< kept while only the device's size changes
    Automatic = 1 ///< the window is fitted into the device at every paint
};

class DocumentPlotter {
public:
    void SetClientName(const QString& name) { clientName = name; }
    const QString& ClientName() const { return clientName; }
    /// A headless plotter has no window: each device is filled from its own corner to its own size.
    void SetHeadless(bool value) { headless = value; }
    void SetEventSink(PlotEvents sink) { events = std::move(sink); }
    PlotScaleMode ScaleMode() const { return scaleMode; }
    void SetScaleMode(PlotScaleMode mode) { scaleMode = mode; }
    /// Device units a unit of the world in the latest picture.
    double Scale() const { return keptScale; }
    /// In place of what the scale mode says: so much on a device `width` units wide, and on others as they are wider.
    void HoldScale(double scale, int width);
    /// The scale with which all of `bounds` has room in a picture.
    static double FittingScale(const PlotRect& bounds, DeviceSize size);
    PlotDocument& Viewport() { return viewport; }
    const PlotDocument& Viewport() const { return viewport; }
    /// The world rectangle in use: the latest answer of `Bounds`, or the one set here when nobody answers.
    const PlotRect& Window() const { return window; }
    void SetWindow(const PlotRect& rect) { window = rect; }

    /// Asks for the bounds and has the picture painted on `device`.
    void Draw(DeviceContext& device);
    /// The converter that `Draw` would use now on the window, whose device is that of `painted`. Takes up the bounds
    /// and the scale as `Draw` does.
    PlotConverter ConverterNow(const PlotConverter& painted);

    /// What `OpenPrinter` and `PrintDocument` go by, without which there is no printer; must outlive the plotter.
    void SetPrinters(Printers* list) { printers = list; }
    /// The printer with such a sheet in it, the default one for an empty name; nothing when it can't be had.
    std::optional<PlotPrinter> OpenPrinter(const QString& name, int orientation, int paperSize) const;
    /// Millimetres on paper for a unit of the world, by which pages are drawn. With 0 the bounds are fitted into the
    /// document.
    void SetPaperScale(double millimetres) { paperScale = millimetres; }
    /// Has the page of a printer painted on `device`, which has the printer's measures: that of a job, a preview or a
    /// file. Nothing that the pictures of `Draw` go by changes.
    void DrawPage(DeviceContext& device, const PlotPrinter& printer) const;
    /// The same on a preview of the sheet.
    void DrawPreview(DeviceContext& preview, const PlotPrinter& printer) const { DrawPage(preview, printer); }
    /// Prints a page; `title` is what the job and its document are called.
    PrintResult PrintDocument(const PlotPrinter& printer, const QString& title) const;

private:
    double scaleFor(const PlotDocument& document);

    QString clientName;
    PlotEvents events;
    PlotDocument viewport;
    PlotRect window;
    Printers* printers = nullptr;
    double paperScale = 0;
    PlotScaleMode scaleMode = PlotScaleMode::Fixed;
    bool headless = false;
    double keptScale = 0; ///< of the latest fit; 0 before the first
    double held = 0;      ///< the scale on a device `heldWidth` wide; 0 when none is held
    int heldWidth = 1;
    float keptWidth = 0, keptHeight = 0;
};
