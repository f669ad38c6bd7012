// A device that writes its calls as an SVG 1.1 document: a picture of vectors for browsers, office programs and drawing
// programs. It draws nothing itself.
#pragma once

#include "platform/device/DeviceState.h"
#include "platform/device/SvgPath.h"

#include <QFontMetricsF>
#include <QHash>
#include <optional>
#include <tuple>

/// The picture is the one that `PainterDevice` makes in a PDF: figures lie by the same rules, runs of lines in one pen
/// are one path, and raster modes do not exist. Hatches are the pixels of the raster device as squares. One unit of the
/// document is one device unit; the view box begins half a unit before (0, 0), so that most numbers are whole ones.
///
/// Texts name the families that stand in here, then the asked-for face, then one that every viewer has. Each text tells
/// how long it was measured, so that a viewer with other fonts keeps it in its place; not all of them heed that.
///
/// Besides the document it holds the looks in use, and no more clips and hatches than `MostDefinitions`.
class SvgDevice final : public StatefulDevice {
public:
    static constexpr int MostDefinitions = 512;

    /// A viewer shows the picture in its real size; without a title the document has none, nor without a note.
    SvgDevice(int width, int height, int dotsPerInch, const QString& title = {}, const QString& note = {});

    /// Ends the document and hands it over, in UTF-8. The device must not be drawn on any more.
    QByteArray TakeDocument();

    void LineTo(DevicePoint point) override;
    void Polyline(std::span<const DevicePoint> points) override;
    void Polygon(std::span<const DevicePoint> points) override;
    void PolyPolygon(std::span<const DevicePoint> points, std::span<const int> counts) override;
    void Rectangle(const DeviceRect& rect) override;
    void Ellipse(const DeviceRect& rect) override;
    void FillRect(const DeviceRect& rect, const Brush& brush) override;
    /// As a PNG within the document.
    void DrawPicture(const DeviceRect& target, const QImage& picture) override;

    /// Control characters are written as blanks.
    void Text(DevicePoint leftTop, const QString& text) override;
    DeviceSize MeasureText(const QString& text) const override;

private:
    const QByteArray& figureLook();
    const QByteArray& textLook();
    QByteArray fillOf(const Brush& brush);
    QByteArray define(const char* element, const QByteArray& rest);

    void addLine(DevicePoint from, DevicePoint to);
    void addRing(SvgPath& path, std::span<const DevicePoint> ring);
    void endPath();
    void openGroup(const QByteArray& look);
    void closeGroup();
    void enterClip();
    const QFontMetricsF& metrics() const;

    QByteArray document;
    QHash<QByteArray, QByteArray> definitions; ///< the ids of what is defined
    int lastDefinition = 0;

    std::optional<DeviceRect> openClip; ///< of the clip group that is open
    QByteArray openLook;                ///< of the group within it that is open; empty when none is
    int linePathSteps = 0;              ///< in the path of lines that is open; 0 when none is
    SvgPath linePath;
    Pen linePathPen;

    Kept<std::tuple<Pen, Brush>, QByteArray> keptFigureLook;
    Kept<std::tuple<Font, ColorRef>, QByteArray> keptTextLook;
    mutable Kept<Font, QFontMetricsF> keptMetrics;
};
