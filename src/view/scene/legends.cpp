#include "view/scene/legends.h"

#include "app/NumberFormat.h"
#include "app/mdTipsDrawing.h"
#include "platform/base/Rounding.h"
#include "view/scene/contour.h"
#include "view/scene/vectors.h"

#include <cmath>

namespace mdScene {

namespace {

/// Corners as they come: the left one may lie right of the right one. Whole numbers stay exact in the reals, and what
/// a huge font makes of them is held within the device's range.
DeviceRect rectOf(double left, double top, double right, double bottom) {
    return {Round(left), Round(top), Round(right), Round(bottom)};
}

DevicePoint pointOf(double x, double y) {
    return {Round(x), Round(y)};
}

void drawAnchored(DeviceContext& device, double x, double y, const QString& text) {
    constexpr int rightMiddle = 6;
    mdTips::DrawAnchoredText(device, Round(x), Round(y), text, rightMiddle);
}

int deviceMillimetres(const PlotConverter& converter, double millimetres) {
    double width = 0, unused = 0;
    converter.PaperLengthToDevice(millimetres, 0, width, unused);
    return std::max(1, Round(width));
}

constexpr double insetMm = 10;
constexpr double gapMm = 1;

/// More bands than any picture or trace can reasonably hold.
constexpr std::int64_t mostBands = 100000;

/// What the parts of a scale legend go by; X and Y are the right end of the bar and the legend's own top.
struct ScaleMeasures {
    double length = 0; ///< of the bar
    double x = 0, y = 0;
    int step = 1; ///< a quarter of a line of text
    int gap = 1;
    QString caption;
};

/// The power of ten that is drawn at most a quarter of `width` long.
int exponentFor(double scale, double width) {
    constexpr double commonLogOfE = 0.434294481903252;
    const double ratio = Round(width * 0.25) / scale;
    const double power = std::floor(std::log(ratio) * commonLogOfE);
    // A ratio without a logarithm (no width, no end of a scale) leaves one unit.
    return std::isfinite(power) ? int(power) : 0;
}

QString powerOfTen(int exponent) {
    if (std::abs(exponent) >= 4)
        return u"1.0e"_s + QString::number(exponent);
    const QString text = NumberFormat::Shortest(std::pow(10.0, exponent));
    return text.contains(u'.') ? text : text + u".0";
}

void drawBar(DeviceContext& device, const ScaleMeasures& at) {
    const Pen oldPen = device.SelectPen(stockPen(Stock::BlackPen));
    const Brush oldBrush = device.SelectBrush(stockBrush(Stock::WhiteBrush));
    device.Rectangle(rectOf(at.x - at.length, at.y + at.step, at.x, at.y + 3.0 * at.step));
    device.SelectBrush(stockBrush(Stock::GreyBrush));
    device.Rectangle(rectOf(at.x - at.length * 0.5, at.y + at.step, at.x, at.y + 3.0 * at.step));
    mdTips::RestoreObject(device, oldBrush);
    mdTips::RestoreObject(device, oldPen);
    drawAnchored(device, at.x - at.length - at.gap, at.y + 2.0 * at.step, at.caption);
}

void drawArrowBar(DeviceContext& device, const PlotConverter& converter, const LineStyle& style,
                  const ScaleMeasures& at) {
    const int most = Round(2.0 * at.step);
    int barbLength = Round(std::cos(BarbAngle) * at.length * 0.25);
    int barbWidth = Round(std::sin(BarbAngle) * at.length * 0.25);
    if (barbWidth > most) {
        const double ratio = double(most) / barbWidth;
        barbWidth = most;
        barbLength = Round(barbLength * ratio);
    }
    const double middle = at.y + 2.0 * at.step;
    const DevicePoint head = pointOf(at.x, middle);
    const Pen old = SelectLineStyle(device, converter, style);
    device.MoveTo(pointOf(at.x - at.length, middle));
    device.LineTo(head);
    device.MoveTo(pointOf(at.x - barbLength, middle - barbWidth));
    device.LineTo(head);
    device.LineTo(pointOf(at.x - barbLength, middle + barbWidth));
    device.MoveTo(pointOf(at.x - at.length * 0.5, at.y + at.step));
    device.LineTo(pointOf(at.x - at.length * 0.5, at.y + 3.0 * at.step));
    mdTips::RestoreObject(device, old);
    drawAnchored(device, at.x - at.length - LineStyleWidth(converter, style), middle, at.caption);
}

void drawBackground(DeviceContext& device, const Brush& brush, const DeviceRect& rect) {
    const Pen oldPen = device.SelectPen(stockPen(Stock::NullPen));
    const Brush oldBrush = device.SelectBrush(brush);
    device.Rectangle(rect);
    mdTips::RestoreObject(device, oldBrush);
    mdTips::RestoreObject(device, oldPen);
}

/// The values between the bands of a contour, and the look of each.
class BandLabels {
public:
    BandLabels(const ContourEnds& ends, int bands, const Scene& scene)
        : count(bands), lowest(ends.Lower), step((ends.Upper - ends.Lower) / float(bands)),
          mask(scene.Settings.Style.RealFormat) {
        if (mask.isEmpty())
            mask = u"0.000"_s;
    }
    QString Text(int i) const { return NumberFormat::Format(float(i) * step + lowest, mask); }

    /// Width of the widest label; of a great many, a sample evenly spread from the first to the last is measured.
    int Widest(const DeviceContext& device) const {
        const std::int64_t measured = std::min<std::int64_t>(count, mostBands);
        int widest = 0;
        for (std::int64_t k = 0; k <= measured; ++k)
            widest = std::max(widest, mdTips::MeasureText(device, Text(int(k * count / measured))).Width);
        return widest;
    }

private:
    int count;
    float lowest;
    float step;
    QString mask;
};

/// Where the boxes of a colour bar stand.
struct BarMeasures {
    double x = 0, y = 0; ///< left top of the highest box
    int width = 0;
    double boxHeight = 0; ///< a line of text
    int gap = 1;
};

/// Which boxes are worth drawing, counted from the highest: those that show on the device, and no more than
/// `mostBands`.
struct BoxRange {
    std::int64_t first = 0, last = 0;
};

BoxRange boxesToDraw(const DeviceContext& device, const BarMeasures& bar, int count) {
    BoxRange range = {0, count - std::int64_t(1)};
    if (const std::optional<DeviceRect> area = device.VisibleArea(); area && bar.boxHeight > 0) {
        // A label stands half its height above its box, and the lowest one half below.
        const double above = std::floor((area->Top - bar.y) / bar.boxHeight) - 1;
        const double below = std::ceil((area->Bottom - bar.y) / bar.boxHeight) + 1;
        range.first = std::int64_t(std::clamp<double>(above, 0, count));
        range.last = std::int64_t(std::clamp<double>(below, -1, double(range.last)));
    }
    range.last = std::min(range.last, range.first + mostBands - 1);
    return range;
}

void drawBoxes(DeviceContext& device, const BarMeasures& bar, const BandLabels& labels, const PaintContext& context,
               const ContourSettings& settings) {
    const int count = context.ContourDivide;
    const ContourEnds ends = {context.ContourMin, context.ContourMax};
    const float colorStep = count > 1 ? 1 / float(count - 1) : 0;
    const BoxRange range = boxesToDraw(device, bar, count);
    const Pen old = device.SelectPen(stockPen(Stock::BlackPen));
    for (std::int64_t box = range.first; box <= range.last; ++box) {
        const int i = int(count - box);
        const double y = bar.y + double(box) * bar.boxHeight;
        const ColorRef color = ContourColor(float(i - 1) * colorStep, settings, ends);
        const Brush oldBrush = mdTips::SelectBrush(device, color, -1);
        device.Rectangle(rectOf(bar.x, y, bar.x + bar.width, y + bar.boxHeight));
        mdTips::RestoreObject(device, oldBrush);
        drawAnchored(device, bar.x - bar.gap, y, labels.Text(i));
        if (i == 1)
            drawAnchored(device, bar.x - bar.gap, y + bar.boxHeight, labels.Text(0));
    }
    mdTips::RestoreObject(device, old);
}

/// What stands above the bar, by the settings: the item, and whose range it shows.
QStringList legendHeadings(const Scene& scene) {
    const ContourSettings& contour = scene.Settings.Contour;
    const ResultModel& model = scene.Model;
    QStringList lines;
    if (contour.LegendName && model.CurrentItem >= 0 && model.CurrentItem < model.Items.size())
        lines.append(model.Items.at(model.CurrentItem).Name);
    const bool ofAllSteps = contour.Range == ContourRange::AllSteps || scene.SlideShow.RangeOfAllSteps;
    if (contour.LegendRange)
        lines.append(u"範囲: "_s + (ofAllSteps                               ? u"全ステップ"_s
                                    : contour.Range == ContourRange::Visible ? u"表示部分"_s
                                    : contour.Automatic                      ? u"このステップ"_s
                                                                             : u"固定"_s));
    return lines;
}

} // namespace

Font SelectFontString(DeviceContext& device, const DeviceContext& ref, const QString& fontString) {
    ColorRef unused = 0;
    return mdTips::SelectFontFor(device, ref, mdTips::ParseFontString(fontString, unused), 0);
}

void DrawScaleLegend(DeviceContext& device, const DeviceContext& ref, double scale, LegendRect& rect,
                     const PlotConverter& converter, const Scene& scene, const PaintContext& context, bool isVector) {
    if (scale == 0)
        return;
    const StyleSettings& style = scene.Settings.Style;
    const Font oldFont = SelectFontString(device, ref, style.FontStrings[isVector ? 1 : 0]);
    const int exponent = exponentFor(scale, double(rect.Right) - rect.Left);
    const int lineHeight = mdTips::MeasureText(device, u"1"_s).Height;
    ScaleMeasures at;
    at.length = std::pow(10.0, exponent) * scale;
    at.caption = powerOfTen(exponent);
    const int captionWidth = mdTips::MeasureText(device, at.caption).Width;
    at.gap = deviceMillimetres(converter, gapMm);
    at.step = std::max(1, lineHeight / 4);
    rect.Top = Round(double(rect.Top) + lineHeight);
    at.x = double(rect.Right) - deviceMillimetres(converter, insetMm);
    at.y = rect.Top;
    drawBackground(
        device, context.BackBrush,
        rectOf(at.x + at.gap, at.y - at.step, at.x - at.length - 3.0 * at.gap - captionWidth, at.y + 5.0 * at.step));
    if (isVector) {
        drawArrowBar(device, converter, style.LineStyles[2], at);
    } else {
        drawBar(device, at);
        rect.Top = Round(double(rect.Top) + lineHeight);
    }
    mdTips::RestoreObject(device, oldFont);
}

void DrawContourLegend(DeviceContext& device, const DeviceContext& ref, const PaintContext& context, LegendRect& rect,
                       const PlotConverter& converter, const Scene& scene) {
    const int count = context.ContourDivide;
    if (count < 1 || !(context.ContourMax > context.ContourMin))
        return;
    const Font oldFont = SelectFontString(device, ref, scene.Settings.Style.FontStrings[2]);
    const BandLabels labels({context.ContourMin, context.ContourMax}, count, scene);
    const int lineHeight = mdTips::MeasureText(device, u"1"_s).Height;
    const int half = Round(lineHeight * 0.5);
    BarMeasures bar;
    bar.width = labels.Widest(device);
    bar.gap = deviceMillimetres(converter, gapMm);
    bar.boxHeight = 2.0 * half;
    bar.x = double(rect.Right) - deviceMillimetres(converter, insetMm) - bar.width;
    const QStringList headings = legendHeadings(scene);
    int widest = 0;
    for (const QString& heading : headings)
        widest = std::max(widest, mdTips::MeasureText(device, heading).Width);
    const double top = rect.Top + 2.0 * lineHeight + half;
    bar.y = top + half + double(headings.size()) * lineHeight;
    drawBackground(device, context.BackBrush,
                   rectOf(bar.x + std::min(-bar.width - 3.0 * bar.gap, bar.width - widest - bar.gap * 1.0), top - half,
                          bar.x + bar.width + 2.0 * bar.gap, bar.y + bar.boxHeight * (count + 1.0)));
    drawBoxes(device, bar, labels, context, scene.Settings.Contour);
    for (qsizetype line = 0; line < headings.size(); ++line)
        drawAnchored(device, bar.x + bar.width, bar.y + (double(line - headings.size()) - 0.25) * lineHeight,
                     headings[line]);
    rect.Top = Round(bar.y + bar.boxHeight * (count + 1.0));
    mdTips::RestoreObject(device, oldFont);
}

bool AreBandsWrittenAlike(const Scene& scene) {
    const DifferenceSettings& difference = scene.Settings.Difference;
    if (scene.Settings.Contour.Range == ContourRange::Visible ||
        (difference.ApplyContour && difference.StandardStep >= 0))
        return false;
    const ContourScale scale = ContourScaleOf(scene, ContourValues(scene), {});
    if (scale.Count < 2 || !(scale.Ends.Upper > scale.Ends.Lower))
        return false;
    const BandLabels labels(scale.Ends, scale.Count, scene);
    return labels.Text(0) == labels.Text(1);
}

void DrawLegends(DeviceContext& device, const DeviceContext& ref, const PlotConverter& converter,
                 const DeviceRect& document, const Scene& scene, const PaintContext& context) {
    const ApplicationSettings& settings = scene.Settings;
    LegendRect rect = document;
    if (settings.Displacement.Legend && settings.Displacement.Fiducial != 3 && !scene.Model.NoDisplacement)
        DrawScaleLegend(device, ref, context.DisplacementScale, rect, converter, scene, context, false);
    if (settings.Vector.Legend)
        DrawScaleLegend(device, ref, context.VectorScale, rect, converter, scene, context, true);
    if (settings.Contour.Legend && context.ContourDivide >= 2 && context.ContourMax > context.ContourMin &&
        !scene.Model.LineElementsOnly)
        DrawContourLegend(device, ref, context, rect, converter, scene);
}

} // namespace mdScene
