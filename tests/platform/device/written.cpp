// What the devices that write text make of each call.
#include "Golden.h"
#include "Picture.h"

#include "platform/device/Fonts.h"
#include "platform/device/SvgAttributes.h"
#include "platform/device/SvgDevice.h"
#include "platform/device/TraceDevice.h"

#include <QSet>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

namespace {
const Pen noPen = stockPen(Stock::NullPen);
const DevicePoint square[] = {{10, 10}, {20, 10}, {20, 20}, {10, 20}};

/// Each document must be well-formed, with an own id for each thing defined, and each id that it uses defined before.
QByteArray svgOf(const std::function<void(DeviceContext&)>& draw) {
    SvgDevice device(200, 100, 144, u"a<b\n"_s);
    draw(device);
    const QByteArray document = device.TakeDocument();
    QXmlStreamReader reader(document);
    QSet<QString> ids;
    while (!reader.atEnd())
        if (reader.readNext() == QXmlStreamReader::StartElement)
            for (const QXmlStreamAttribute& attribute : reader.attributes()) {
                const QString value = attribute.value().toString();
                const bool isId = attribute.name() == u"id", isUse = value.startsWith(u"url(#");
                EXPECT_TRUE(!isId || !ids.contains(value)) << value.toStdString();
                EXPECT_TRUE(!isUse || ids.contains(value.chopped(1).mid(5))) << value.toStdString();
                if (isId)
                    ids += value;
            }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return document;
}

void drawLines(DeviceContext& device) {
    const std::int32_t steps[] = {~0, 1, 2, 99, ~3, 3, 0, INT32_MIN};
    device.SelectPen({PenStyle::Solid, 0, makeColor(0, 0, 255)});
    device.Lines(square, steps);
    const Pen blue = device.SelectPen(noPen);
    device.LineTo({99, 99});
    device.SelectPen(blue);
    device.SetRop2(RasterMode::XorPen);
    device.MoveTo({5, 5});
    device.LineTo({-6, 8});
    device.SelectPen({PenStyle::Dash, 4, 0x123456, true, true});
    device.Polyline(square);
    device.SelectPen({PenStyle::Dot, 1, 0});
    for (const DevicePoint point : {DevicePoint{-1, INT32_MAX}, {INT32_MIN, 4}, {7, 4}, {8, 4}})
        device.LineTo(point);
}

void drawFigures(DeviceContext& device) {
    const DevicePoint rings[] = {{1, 1}, {6, 1}, {6, 5}, {2, 2}, {3, 3}, {2, 3}, {9, 9}};
    const int counts[] = {3, 3, 7};
    const DeviceRect rects[] = {{5, 4, 1, 1}, {5, 4, 6, 5}, {5, 4, 6, 9}, {3, 3, 3, 7}};
    const DeviceRect rounds[] = {{0, 0, 11, 11}, {0, 0, 11, 6}, {3, 3, 4, 7}, {3, 3, 3, 7}};
    device.SelectPen(stockPen(Stock::BlackPen));
    device.SelectBrush(solidBrush(red));
    device.Rectangles(rects);
    device.Ellipses(rounds);
    device.Polygon(std::span(square).first(1));
    device.Polygons(square, std::span(counts).first(2));
    device.SelectPen(noPen);
    device.Rectangle({1, 1, 6, 5});
    device.FillRect({5, 4, 1, 1}, solidBrush(red));
    device.FillRect({5, 4, 5, 1}, solidBrush(red));
    device.PolyPolygon(rings, counts);
    device.SelectBrush(stockBrush(Stock::NullBrush));
    device.Polygon(square);
    device.Ellipse({0, 0, 9, 9});
}

void drawClipped(DeviceContext& device) {
    const DeviceRect all{0, 0, 9, 9};
    device.RestoreDC();
    device.SaveDC();
    device.ClipRect({30, 40, 10, 20});
    device.FillRect(all, {0});
    device.SaveDC();
    device.ClipRect({1, 2, 3, 4});
    device.RestoreDC();
    device.SelectBrush({0x030201, 3});
    device.Rectangle(all);
    device.ClipNone();
    device.Rectangle(all);
    device.RestoreDC();
    device.ClipRect({10, 20, 30, 40});
    device.FillRect(all, {0, 8});
}
} // namespace

TEST(WrittenDevices, EachCall) {
    const auto draw = [](DeviceContext& device) {
        drawLines(device);
        drawFigures(device);
        drawClipped(device);
    };
    TraceDevice trace(200, 100);
    draw(trace);
    EXPECT_TRUE(Golden().MatchesText(u"devices/calls.trace"_s, trace.Trace()));
    EXPECT_TRUE(Golden().MatchesText(u"devices/calls.svg"_s, svgOf(draw)));
}

TEST(TraceDevice, TextsAndTheirMeasures) {
    TraceDevice device(10, 10);
    device.SelectFont({12, 700, true, false, true, 900, u"ＭＳ \"明朝\""_s});
    device.SetTextColor(0x00ff00ab);
    device.Text({10, -20}, u"a\"b\\c/\n\u0001変\u007f"_s);
    device.DrawPicture({9, 8, 7, -6}, QImage(3, 2, QImage::Format_Mono));
    EXPECT_EQ(device.Trace(), "Font 12 700 1 0 1 900 \"ＭＳ \\\"明朝\\\"\"\nTextColor 0x00ff00ab\n"
                              "Text 10 -20 \"a\\\"b\\\\c/\\n\\u0001変\x7f\"\nPicture 9 8 7 -6 3 2\n");
    device.SelectFont({.Height = 15, .Face = {}});
    EXPECT_EQ(device.MeasureText(u"aｱ変位😀"_s), (DeviceSize{7 + 7 + 15 + 15 + 7, 15}));
    device.SelectFont({.Height = 2000000000, .Face = {}});
    EXPECT_EQ(device.MeasureText(u"変位"_s).Width, INT32_MAX);
}

TEST(SvgDevice, PathsAndDefinitionsAreBounded) {
    const QByteArray many = svgOf([](DeviceContext& device) {
        for (int i = 1; i <= 2 * SvgDevice::MostDefinitions + 1; ++i) {
            device.ClipRect({0, 0, i % (2 * SvgDevice::MostDefinitions), 1});
            device.LineTo({i % 2, 0});
            device.SelectBrush({ColorRef(i % (2 * SvgDevice::MostDefinitions)), 0});
            device.Rectangle({0, 0, 5, 5});
        }
        for (int i = 0; i < 1250; ++i)
            device.LineTo({i % 7 + 1, i % 5});
    });
    EXPECT_EQ(many.count(" id="), 4 * SvgDevice::MostDefinitions + 2) << "the first ones are forgotten";
    EXPECT_EQ(many.count("<path d"), 4 * SvgDevice::MostDefinitions + 4);
}

TEST(SvgDevice, TextsKeepTheirPlaceAndCharacters) {
    Font font{40, 700, true, true, true, 300, u"ＭＳ 'Ｐ<明朝"_s};
    const QFontMetricsF metrics(Fonts::ToQFont(font));
    QString damaged = u" a<&\">\t変"_s;
    damaged += QChar(0xd800);
    damaged += QChar(0xffff);
    const double width = metrics.horizontalAdvance(u" a<&\"> 変\xfffd\xfffd"_s);
    const QByteArray document = svgOf([&](DeviceContext& device) {
        device.SelectFont(font);
        device.SetTextColor(makeColor(1, 2, 3));
        device.Text({10, 20}, damaged);
        device.Text({1, 2}, QString());
        EXPECT_EQ(device.MeasureText(damaged).Width, qRound(width));
        font.Escapement = -3600;
        font.Underline = font.StrikeOut = false;
        device.SelectFont(font);
        device.Text({10, 20}, u"\U0002000b"_s);
    });
    const QByteArray y = SvgAttributes::Number(19.5 + metrics.ascent());
    const QByteArray expected =
        "<g font-family=\"'Liberation Sans','IPAPGothic','ＭＳ Ｐ&lt;明朝',sans-serif\" font-size=\"" +
        QByteArray::number(Fonts::ToQFont(font).pixelSize()) +
        "\" font-weight=\"700\" font-style=\"italic\" fill=\"#010203\">\n<text x=\"9.5\" y=\"" + y +
        "\" text-decoration=\"underline line-through\" transform=\"rotate(-30 9.5 19.5)\" textLength=\"" +
        SvgAttributes::Number(width) +
        "\" lengthAdjust=\"spacingAndGlyphs\" xml:space=\"preserve\"> a&lt;&amp;&quot;&gt; "
        "変\xef\xbf\xbd\xef\xbf\xbd</text>\n<text x=\"9.5\" y=\"" +
        y + "\">\xf0\xa0\x80\x8b</text>\n</g>\n";
    EXPECT_TRUE(document.contains(expected)) << document.toStdString();
}
