#include "platform/device/SvgDevice.h"

#include "platform/device/Fonts.h"
#include "platform/device/PictureNote.h"
#include "platform/device/Rings.h"
#include "platform/device/SvgAttributes.h"
#include "platform/device/VectorRules.h"

#include <QBuffer>
#include <QImage>
#include <utility>

using namespace SvgAttributes;
using namespace VectorRules;

namespace {
/// Viewers take five times as long for a dense curve in paths of twenty times this length.
constexpr int longestPath = 1000;
} // namespace

SvgDevice::SvgDevice(int width, int height, int dotsPerInch, const QString& title, const QString& note)
    : StatefulDevice({std::max(0, width), std::max(0, height), std::max(1, dotsPerInch), std::max(1, dotsPerInch)}) {
    constexpr double viewerDotsPerInch = 96;
    const double scale = viewerDotsPerInch / measures.DotsPerInchX;
    document =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" version=\"1.1\"" +
        Attribute("width", measures.Width * scale) + Attribute("height", measures.Height * scale) +
        Attribute("viewBox",
                  "-0.5 -0.5 " + QByteArray::number(measures.Width) + ' ' + QByteArray::number(measures.Height)) +
        " fill=\"none\" fill-rule=\"evenodd\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n";
    if (!title.isEmpty())
        document += "<title>" + Escaped(title) + "</title>\n";
    if (!note.isEmpty())
        document += "<metadata>" + PictureNote::Element(note) + "</metadata>\n";
}

QByteArray SvgDevice::TakeDocument() {
    state.Clip.reset();
    endPath();
    closeGroup();
    enterClip();
    document += "</svg>\n";
    return std::exchange(document, {});
}

/// The id of an element without its start, `<element id="..."`, and its end; written here when it is not there yet.
QByteArray SvgDevice::define(const char* element, const QByteArray& rest) {
    if (const auto found = definitions.constFind(rest); found != definitions.constEnd())
        return *found;
    if (definitions.size() >= MostDefinitions)
        definitions.clear();
    // What is defined would take over the looks of a group about it.
    endPath();
    closeGroup();
    const QByteArray id = 'd' + QByteArray::number(++lastDefinition);
    document += '<' + QByteArray(element) + Attribute("id", id) + rest + "</" + element + ">\n";
    return *definitions.insert(rest, id);
}

QByteArray SvgDevice::fillOf(const Brush& brush) {
    if (brush.Hollow)
        return {};
    const HatchPattern* const hatch = hatchPattern(brush.Hatch);
    if (!hatch)
        return Attribute("fill", ColorOf(brush.Color));
    return Attribute("fill", "url(#" + define("pattern", PatternOf(*hatch, brush.Color)) + ')');
}

/// Empty when neither pen nor brush draws anything.
const QByteArray& SvgDevice::figureLook() {
    return keptFigureLook.For(std::tie(state.LinePen, state.AreaBrush),
                              [this]() -> QByteArray { return StrokeOf(state.LinePen) + fillOf(state.AreaBrush); });
}

const QByteArray& SvgDevice::textLook() {
    return keptTextLook.For(std::tie(state.TextFont, state.TextColor), [this]() -> QByteArray {
        return FontOf(state.TextFont) + Attribute("fill", ColorOf(state.TextColor));
    });
}

void SvgDevice::enterClip() {
    if (openClip == state.Clip)
        return;
    closeGroup();
    if (openClip)
        document += "</g>\n";
    openClip = state.Clip;
    if (openClip)
        document +=
            "<g clip-path=\"url(#" + define("clipPath", "><rect" + BoundsOf(AreaOf(*openClip)) + "/>") + ")\">\n";
}

/// Has what comes next drawn with these attributes and under the clip, unless it already is.
void SvgDevice::openGroup(const QByteArray& look) {
    stopIfAsked();
    endPath();
    enterClip();
    if (openLook == look)
        return;
    closeGroup();
    openLook = look;
    document += "<g" + look + ">\n";
}

void SvgDevice::closeGroup() {
    if (!openLook.isEmpty())
        document += "</g>\n";
    openLook.clear();
}

void SvgDevice::LineTo(DevicePoint point) {
    addLine(std::exchange(state.Position.Point, point), point);
}

void SvgDevice::Polyline(std::span<const DevicePoint> points) {
    for (std::size_t i = 1; i < points.size(); ++i)
        addLine(points[i - 1], points[i]);
}

void SvgDevice::addLine(DevicePoint from, DevicePoint to) {
    // A line leaves out its end, so one without length is nothing; a round end would make it a dot.
    if (from == to || state.LinePen.Style == PenStyle::Null)
        return;
    if (linePathSteps >= longestPath || linePathPen != state.LinePen || openClip != state.Clip)
        endPath();
    if (linePathSteps == 0) {
        openGroup(StrokeOf(state.LinePen));
        document += "<path d=\"";
        linePath = {};
        linePathPen = state.LinePen;
    }
    if (linePathSteps == 0 || linePath.At() != from) {
        linePath.Move(document, from);
        ++linePathSteps;
    }
    linePath.Line(document, to);
    ++linePathSteps;
}

void SvgDevice::endPath() {
    if (linePathSteps > 0)
        document += "\"/>\n";
    linePathSteps = 0;
}

void SvgDevice::addRing(SvgPath& path, std::span<const DevicePoint> ring) {
    path.Move(document, ring.front());
    for (const DevicePoint& point : ring)
        if (point != path.At())
            path.Line(document, point);
    path.Close(document, ring.front());
}

void SvgDevice::Polygon(std::span<const DevicePoint> points) {
    const int count = int(points.size());
    PolyPolygon(points, {&count, 1});
}

void SvgDevice::PolyPolygon(std::span<const DevicePoint> points, std::span<const int> counts) {
    const std::span<const int> complete = completeRings(points, counts);
    const auto isRing = [](int count) { return count >= 2; };
    if (figureLook().isEmpty() || std::none_of(complete.begin(), complete.end(), isRing))
        return;
    openGroup(figureLook());
    document += "<path d=\"";
    SvgPath path;
    forEachRing(points, complete, [&](std::span<const DevicePoint> ring) {
        if (ring.size() >= 2)
            addRing(path, ring);
    });
    document += "\"/>\n";
}

void SvgDevice::Rectangle(const DeviceRect& corners) {
    const std::optional<QRectF> bounds = FigureBounds(corners, state.LinePen);
    if (!bounds || figureLook().isEmpty())
        return;
    if (state.LinePen.Style != PenStyle::Null) {
        const DeviceRect rect = normalised(corners);
        const int right = rect.Right - 1, bottom = rect.Bottom - 1;
        Polygon(std::array<DevicePoint, 4>{
            {{rect.Left, rect.Top}, {right, rect.Top}, {right, bottom}, {rect.Left, bottom}}});
        return;
    }
    openGroup(figureLook());
    document += "<rect" + BoundsOf(*bounds) + "/>\n";
}

void SvgDevice::Ellipse(const DeviceRect& corners) {
    const std::optional<QRectF> bounds = FigureBounds(corners, state.LinePen);
    if (!bounds || figureLook().isEmpty())
        return;
    if (bounds->isEmpty()) {
        // Viewers leave out an ellipse without width or height.
        Rectangle(corners);
        return;
    }
    openGroup(figureLook());
    const bool circle = bounds->width() == bounds->height();
    document += (circle ? "<circle" : "<ellipse") + Attribute("cx", bounds->center().x()) +
                Attribute("cy", bounds->center().y()) + Attribute(circle ? "r" : "rx", bounds->width() / 2) +
                (circle ? QByteArray() : Attribute("ry", bounds->height() / 2)) + "/>\n";
}

void SvgDevice::FillRect(const DeviceRect& rect, const Brush& brush) {
    const QRectF area = AreaOf(rect);
    if (!area.isValid() || brush.Hollow)
        return;
    openGroup(fillOf(brush));
    document += "<rect" + BoundsOf(area) + "/>\n";
}

void SvgDevice::DrawPicture(const DeviceRect& target, const QImage& picture) {
    const QRectF area = AreaOf(target);
    QBuffer png;
    png.open(QIODevice::WriteOnly);
    if (!area.isValid() || !picture.save(&png, "PNG"))
        return;
    endPath();
    enterClip();
    document += "<image" + BoundsOf(area);
    if (area.size() != QSizeF(picture.size()))
        // The one is the older form, the other the one that browsers know.
        document +=
            " preserveAspectRatio=\"none\" image-rendering=\"optimizeSpeed\" style=\"image-rendering:pixelated\"";
    document += " xlink:href=\"data:image/png;base64," + png.data().toBase64() + "\"/>\n";
}

void SvgDevice::Text(DevicePoint leftTop, const QString& text) {
    if (text.isEmpty())
        return;
    Fonts::LeaveRoomFor(text);
    openGroup(textLook());
    const double x = leftTop.X - 0.5, y = leftTop.Y - 0.5;
    document += "<text" + Attribute("x", x) + Attribute("y", y + metrics().ascent()) + DecorationOf(state.TextFont);
    constexpr int fullTurn = 3600;
    if (const int turn = state.TextFont.Escapement % fullTurn; turn != 0) {
        const QByteArray about = Number(x) + ' ' + Number(y);
        document += Attribute("transform", "rotate(" + Number(-turn / 10.0) + ' ' + about + ')');
    }
    const QString shown = Printable(text);
    const double length = metrics().horizontalAdvance(shown);
    const bool single = shown.size() == (shown.front().isHighSurrogate() ? 2 : 1);
    if (!single && length > 0)
        document += Attribute("textLength", length) + " lengthAdjust=\"spacingAndGlyphs\"";
    // Browsers want to be told at the text itself.
    if (shown.simplified() != shown)
        document += " xml:space=\"preserve\"";
    document += '>' + shown.toHtmlEscaped().toUtf8() + "</text>\n";
}

const QFontMetricsF& SvgDevice::metrics() const {
    return keptMetrics.For(state.TextFont, [this] { return QFontMetricsF(Fonts::ToQFont(state.TextFont)); });
}

DeviceSize SvgDevice::MeasureText(const QString& text) const {
    Fonts::LeaveRoomFor(text);
    return {qRound(metrics().horizontalAdvance(Printable(text))), qRound(metrics().ascent() + metrics().descent())};
}
