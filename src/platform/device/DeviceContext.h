// The narrow drawing device of the whole system: the picture on the screen, a page, a film frame and a text trace are
// all drawn through these calls. It knows no worlds and no results; its units are integer device units.
#pragma once

#include "platform/base/Geometry.h"
#include "platform/device/RankedLayer.h"

#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

class QImage;

/// Line styles of a pen, numbered as the settings store them.
namespace PenStyle {
enum : int { Solid = 0, Dash = 1, Dot = 2, DashDot = 3, DashDotDot = 4, Null = 5 };
}

/// Ready-made objects by their fixed numbers.
namespace Stock {
enum : int {
    WhiteBrush = 0,
    GreyBrush = 2,
    NullBrush = 5,
    BlackPen = 7,
    NullPen = 8,
    SmallFont = 12,
    SystemFont = 13,
    GuiFont = 17
};
}

/// What a line is drawn with. A width of 0 or 1 is one device unit; a geometric pen keeps its dash style at any width
/// and has round ends and joins, any other pen wider than 1 is solid.
struct Pen {
    int Style = PenStyle::Solid;
    int Width = 1;
    ColorRef Color = 0;
    bool Geometric = false;
    bool BevelJoin = false; ///< geometric: corners are cut off; vector output alone shows it
    int Stock = -1;         ///< number of the ready-made pen that this is, -1 for a made one
    bool operator==(const Pen&) const = default;
};

/// What an area is filled with.
struct Brush {
    ColorRef Color = 0;
    int Hatch = -1;      ///< 0 to 5 a hatch pattern; -1 or 8 solid
    bool Hollow = false; ///< fills nothing
    int Stock = -1;
    bool operator==(const Brush&) const = default;
};

/// What text is drawn with. `Height` is the cell height in device units, ascent plus descent.
struct Font {
    int Height = 16;
    int Weight = 400; ///< 400 normal, 700 bold
    bool Italic = false;
    bool Underline = false;
    bool StrikeOut = false;
    int Escapement = 0; ///< tenths of a degree, counter-clockwise from the X axis
    QString Face;
    bool operator==(const Font&) const = default;
};

Pen stockPen(int number);
Brush stockBrush(int number);
/// Fonts 12 (small), 13 (system) and 17 (user interface) for a device of `dotsPerInch`.
Font stockFont(int number, int dotsPerInch);

/// Which measure `GetDeviceCaps` gives.
enum class DeviceCaps : int {
    HorzSize = 4,    ///< width in millimetres
    VertSize = 6,    ///< height in millimetres
    HorzRes = 8,     ///< width in device units
    VertRes = 10,    ///< height in device units
    LogPixelsX = 88, ///< dots per inch across
    LogPixelsY = 90, ///< dots per inch down
    // Of the sheet in a printer; 0 on what has none.
    PhysicalWidth = 110,
    PhysicalHeight = 111,
    PhysicalOffsetX = 112, ///< where on the sheet the device's origin lies
    PhysicalOffsetY = 113
};

/// Raster modes for `SetRop2`.
namespace RasterMode {
enum : int { MergePenNot = 14, XorPen = 7, Not = 6, CopyPen = 13 };
}

/// One device. Drawing rules: `LineTo` leaves out its end point; `Rectangle`, `Ellipse` and `FillRect` leave out the
/// right and the bottom edge (a null pen takes one more unit off `Rectangle` and `Ellipse`); polygons are filled by the
/// alternate rule and outlined with the pen; text has a transparent background and its left top corner at the given
/// point. Select calls give back what was selected before. Nothing fails: what cannot be drawn is left out.
class DeviceContext {
public:
    virtual ~DeviceContext() = default;

    virtual void SaveDC() = 0;
    virtual void RestoreDC() = 0; ///< back to the latest `SaveDC`; nothing when there is none

    virtual Pen SelectPen(const Pen& pen) = 0;
    virtual Brush SelectBrush(const Brush& brush) = 0;
    virtual Font SelectFont(const Font& font) = 0;
    virtual void SetTextColor(ColorRef color) = 0;
    virtual void SetRop2(int mode) = 0;
    virtual void ClipRect(const DeviceRect& rect) = 0;
    virtual void ClipNone() = 0;

    virtual void MoveTo(DevicePoint point) = 0;
    virtual void LineTo(DevicePoint point) = 0;
    virtual void Polyline(std::span<const DevicePoint> points) = 0;
    virtual void Polygon(std::span<const DevicePoint> points) = 0;
    /// Several rings filled together by the alternate rule; `counts` gives the number of points of each.
    virtual void PolyPolygon(std::span<const DevicePoint> points, std::span<const int> counts) = 0;
    virtual void Rectangle(const DeviceRect& rect) = 0;
    virtual void Ellipse(const DeviceRect& rect) = 0;
    virtual void FillRect(const DeviceRect& rect, const Brush& brush) = 0;

    /// The picture onto the rectangle, stretched when its size is another one, each pixel as a whole: nothing is mixed.
    /// It stands upright however the rectangle's corners are given. Raster modes don't hold.
    virtual void DrawPicture(const DeviceRect& target, const QImage& picture) = 0;

    virtual void Text(DevicePoint leftTop, const QString& text) = 0;
    virtual DeviceSize MeasureText(const QString& text) const = 0;
    virtual int GetDeviceCaps(DeviceCaps caps) const = 0;

    /// Where points must lie to matter: a line or an area, in the selected pen, whose points all lie beyond the same
    /// side of this rectangle leaves no mark and need not be drawn. Nothing for a device that wants every call.
    virtual std::optional<DeviceRect> VisibleArea() const { return {}; }
    /// True for a device on which every single call counts, also one that later calls cover completely.
    virtual bool ShowsEveryCall() const { return false; }

    /// A batch of lines in the selected pen: each step names a point by its index, n as `LineTo(points[n])`, ~n as
    /// `MoveTo(points[n])`. The same picture as the single calls, which is what this default makes; a device that can
    /// do better does. Steps outside `points` are passed over.
    virtual void Lines(std::span<const DevicePoint> points, std::span<const std::int32_t> steps);
    /// The same in pieces, of which `collect(piece, steps)` appends one; each piece begins with a `MoveTo`. It is
    /// called from several threads at once, for a few pieces at a time, so that a large drawing never stands in memory
    /// as steps.
    using CollectLines = std::function<void(int piece, std::vector<std::int32_t>& steps)>;
    virtual void LinePieces(std::span<const DevicePoint> points, int pieces, const CollectLines& collect);
    /// A batch of polygons in the selected pen and brush, `counts` points each; the same picture as single calls.
    virtual void Polygons(std::span<const DevicePoint> points, std::span<const int> counts);
    /// Batches of single figures in the selected pen and brush; the same picture as single calls.
    virtual void Rectangles(std::span<const DeviceRect> rects);
    virtual void Ellipses(std::span<const DeviceRect> rects);

    /// A layer for small polygons, of what the clip leaves of the device; it is of use for as long as the clip stays.
    /// Null for a device that has no pixels to rank, and while a raster mode mixes.
    virtual std::unique_ptr<RankedLayer> Ranked() { return {}; }
};
