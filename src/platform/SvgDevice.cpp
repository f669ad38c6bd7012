#include "platform/SvgDevice.h"

#include "platform/Fonts.h"
#include "platform/Rings.h"
#include "platform/SvgAttributes.h"
#include "platform/VectorRules.h"

#include <QBuffer>
#include <QImage>
#include <utility>

using namespace SvgAttributes;
using namespace VectorRules;

namespace {
/// Viewers take five times as long for a dense curve in paths of twenty times this length.
constexpr int longestPath = 1000;
} // namespace

SvgDevice::SvgDevice(int width, int height, int dotsPerInch, const QString& title)
    : m_measures{std::max(0, width), std::max(0, height), std::max(1, dotsPerInch), std::max(1, dotsPerInch)} {
    SelectPen(stockPen(Stock::BlackPen));
    SelectBrush(stockBrush(Stock::WhiteBrush));
    SelectFont(stockFont(Stock::SystemFont, m_measures.DotsPerInchY));
    constexpr double viewerDotsPerInch = 96;
    const double scale = viewerDotsPerInch / m_measures.DotsPerInchX;
    m_document =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" version=\"1.1\"" +
        Attribute("width", m_measures.Width * scale) + Attribute("height", m_measures.Height * scale) +
        Attribute("viewBox",
                  "-0.5 -0.5 " + QByteArray::number(m_measures.Width) + ' ' + QByteArray::number(m_measures.Height)) +
        " fill=\"none\" fill-rule=\"evenodd\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n";
    if (!title.isEmpty())
        m_document += "<title>" + Escaped(title) + "</title>\n";
}

QByteArray SvgDevice::TakeDocument() {
    m_state.Clip.reset();
    endPath();
    closeGroup();
    enterClip();
    m_document += "</svg>\n";
    return std::exchange(m_document, {});
}

void SvgDevice::RestoreDC() {
    if (m_saved.empty())
        return;
    m_state = m_saved.back();
    m_saved.pop_back();
    forgetLooks();
}

void SvgDevice::forgetLooks() {
    m_figureLook.reset();
    m_textLook.reset();
    m_metrics.reset();
}

Pen SvgDevice::SelectPen(const Pen& pen) {
    m_figureLook.reset();
    return std::exchange(m_state.CurrentPen, pen);
}

Brush SvgDevice::SelectBrush(const Brush& brush) {
    m_figureLook.reset();
    return std::exchange(m_state.CurrentBrush, brush);
}

Font SvgDevice::SelectFont(const Font& font) {
    m_textLook.reset();
    m_metrics.reset();
    return std::exchange(m_state.CurrentFont, font);
}

void SvgDevice::SetTextColor(Colour colour) {
    m_textLook.reset();
    m_state.TextColor = colour;
}

/// The id of an element without its start, `<element id="..."`, and its end; written here when it is not there yet.
QByteArray SvgDevice::define(const char* element, const QByteArray& rest) {
    if (const auto found = m_definitions.constFind(rest); found != m_definitions.constEnd())
        return *found;
    if (m_definitions.size() >= MostDefinitions)
        m_definitions.clear();
    // What is defined would take over the looks of a group about it.
    endPath();
    closeGroup();
    const QByteArray id = 'd' + QByteArray::number(++m_lastDefinition);
    m_document += '<' + QByteArray(element) + Attribute("id", id) + rest + "</" + element + ">\n";
    return *m_definitions.insert(rest, id);
}

QByteArray SvgDevice::fillOf(const Brush& brush) {
    if (brush.Hollow)
        return {};
    const HatchPattern* const hatch = hatchPattern(brush.Hatch);
    if (!hatch)
        return Attribute("fill", ColourOf(brush.Color));
    return Attribute("fill", "url(#" + define("pattern", PatternOf(*hatch, brush.Color)) + ')');
}

/// Empty when neither pen nor brush draws anything.
const QByteArray& SvgDevice::figureLook() {
    if (!m_figureLook)
        m_figureLook = StrokeOf(m_state.CurrentPen) + fillOf(m_state.CurrentBrush);
    return *m_figureLook;
}

const QByteArray& SvgDevice::textLook() {
    if (!m_textLook)
        m_textLook = FontOf(m_state.CurrentFont) + Attribute("fill", ColourOf(m_state.TextColor));
    return *m_textLook;
}

void SvgDevice::enterClip() {
    if (m_openClip == m_state.Clip)
        return;
    closeGroup();
    if (m_openClip)
        m_document += "</g>\n";
    m_openClip = m_state.Clip;
    if (m_openClip)
        m_document +=
            "<g clip-path=\"url(#" + define("clipPath", "><rect" + BoundsOf(AreaOf(*m_openClip)) + "/>") + ")\">\n";
}

/// Has what comes next drawn with these attributes and under the clip, unless it already is.
void SvgDevice::openGroup(const QByteArray& look) {
    endPath();
    enterClip();
    if (m_openLook == look)
        return;
    closeGroup();
    m_openLook = look;
    m_document += "<g" + look + ">\n";
}

void SvgDevice::closeGroup() {
    if (!m_openLook.isEmpty())
        m_document += "</g>\n";
    m_openLook.clear();
}

void SvgDevice::LineTo(DevicePoint point) {
    addLine(std::exchange(m_state.Position, point), point);
}

void SvgDevice::Polyline(std::span<const DevicePoint> points) {
    for (std::size_t i = 1; i < points.size(); ++i)
        addLine(points[i - 1], points[i]);
}

void SvgDevice::addLine(DevicePoint from, DevicePoint to) {
    // A line leaves out its end, so one without length is nothing; a round end would make it a dot.
    if (from == to || m_state.CurrentPen.Style == PenStyle::Null)
        return;
    if (m_pathSteps >= longestPath || m_pathPen != m_state.CurrentPen || m_openClip != m_state.Clip)
        endPath();
    if (m_pathSteps == 0) {
        openGroup(StrokeOf(m_state.CurrentPen));
        m_document += "<path d=\"";
        m_path = {};
        m_pathPen = m_state.CurrentPen;
    }
    if (m_pathSteps == 0 || m_path.At() != from) {
        m_path.Move(m_document, from);
        ++m_pathSteps;
    }
    m_path.Line(m_document, to);
    ++m_pathSteps;
}

void SvgDevice::endPath() {
    if (m_pathSteps > 0)
        m_document += "\"/>\n";
    m_pathSteps = 0;
}

void SvgDevice::addRing(SvgPath& path, std::span<const DevicePoint> ring) {
    path.Move(m_document, ring.front());
    for (const DevicePoint& point : ring)
        if (point != path.At())
            path.Line(m_document, point);
    path.Close(m_document, ring.front());
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
    m_document += "<path d=\"";
    SvgPath path;
    forEachRing(points, complete, [&](std::span<const DevicePoint> ring) {
        if (ring.size() >= 2)
            addRing(path, ring);
    });
    m_document += "\"/>\n";
}

void SvgDevice::Rectangle(const DeviceRect& corners) {
    const std::optional<QRectF> bounds = FigureBounds(corners, m_state.CurrentPen);
    if (!bounds || figureLook().isEmpty())
        return;
    if (m_state.CurrentPen.Style != PenStyle::Null) {
        const DeviceRect rect = normalised(corners);
        const int right = rect.Right - 1, bottom = rect.Bottom - 1;
        Polygon(std::array<DevicePoint, 4>{
            {{rect.Left, rect.Top}, {right, rect.Top}, {right, bottom}, {rect.Left, bottom}}});
        return;
    }
    openGroup(figureLook());
    m_document += "<rect" + BoundsOf(*bounds) + "/>\n";
}

void SvgDevice::Ellipse(const DeviceRect& corners) {
    const std::optional<QRectF> bounds = FigureBounds(corners, m_state.CurrentPen);
    if (!bounds || figureLook().isEmpty())
        return;
    if (bounds->isEmpty()) {
        // Viewers leave out an ellipse without width or height.
        Rectangle(corners);
        return;
    }
    openGroup(figureLook());
    const bool circle = bounds->width() == bounds->height();
    m_document += (circle ? "<circle" : "<ellipse") + Attribute("cx", bounds->center().x()) +
                  Attribute("cy", bounds->center().y()) + Attribute(circle ? "r" : "rx", bounds->width() / 2) +
                  (circle ? QByteArray() : Attribute("ry", bounds->height() / 2)) + "/>\n";
}

void SvgDevice::FillRect(const DeviceRect& rect, const Brush& brush) {
    const QRectF area = AreaOf(rect);
    if (!area.isValid() || brush.Hollow)
        return;
    openGroup(fillOf(brush));
    m_document += "<rect" + BoundsOf(area) + "/>\n";
}

void SvgDevice::DrawPicture(const DeviceRect& target, const QImage& picture) {
    const QRectF area = AreaOf(target);
    QBuffer png;
    png.open(QIODevice::WriteOnly);
    if (!area.isValid() || !picture.save(&png, "PNG"))
        return;
    endPath();
    enterClip();
    m_document += "<image" + BoundsOf(area);
    if (area.size() != QSizeF(picture.size()))
        // The one is the older form, the other the one that browsers know.
        m_document +=
            " preserveAspectRatio=\"none\" image-rendering=\"optimizeSpeed\" style=\"image-rendering:pixelated\"";
    m_document += " xlink:href=\"data:image/png;base64," + png.data().toBase64() + "\"/>\n";
}

void SvgDevice::Text(DevicePoint leftTop, const QString& text) {
    if (text.isEmpty())
        return;
    openGroup(textLook());
    const double x = leftTop.X - 0.5, y = leftTop.Y - 0.5;
    m_document +=
        "<text" + Attribute("x", x) + Attribute("y", y + metrics().ascent()) + DecorationOf(m_state.CurrentFont);
    constexpr int fullTurn = 3600;
    if (const int turn = m_state.CurrentFont.Escapement % fullTurn; turn != 0) {
        const QByteArray about = Number(x) + ' ' + Number(y);
        m_document += Attribute("transform", "rotate(" + Number(-turn / 10.0) + ' ' + about + ')');
    }
    const QString shown = Printable(text);
    const double length = metrics().horizontalAdvance(shown);
    const bool single = shown.size() == (shown.front().isHighSurrogate() ? 2 : 1);
    if (!single && length > 0)
        m_document += Attribute("textLength", length) + " lengthAdjust=\"spacingAndGlyphs\"";
    // Browsers want to be told at the text itself.
    if (shown.simplified() != shown)
        m_document += " xml:space=\"preserve\"";
    m_document += '>' + shown.toHtmlEscaped().toUtf8() + "</text>\n";
}

const QFontMetricsF& SvgDevice::metrics() const {
    if (!m_metrics)
        m_metrics.emplace(Fonts::ToQFont(m_state.CurrentFont));
    return *m_metrics;
}

DeviceSize SvgDevice::MeasureText(const QString& text) const {
    return {qRound(metrics().horizontalAdvance(Printable(text))), qRound(metrics().ascent() + metrics().descent())};
}
