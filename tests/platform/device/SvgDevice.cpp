#include "platform/device/SvgDevice.h"

#include "platform/device/Fonts.h"
#include "platform/device/SvgAttributes.h"

#include "Picture.h"

#include <QSet>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

namespace {
using Drawing = std::function<void(DeviceContext&)>;

/// What `draw` adds to a document without title; each document must be well-formed, with an own id for each thing
/// defined, and each id that it uses defined before.
QByteArray bodyOf(const Drawing& draw) {
    SvgDevice device(200, 100, 96), empty(200, 100, 96);
    draw(device);
    const QByteArray document = device.TakeDocument(), frame = empty.TakeDocument(), end = "</svg>\n";
    QXmlStreamReader reader(document);
    QSet<QString> ids;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        for (const QXmlStreamAttribute& attribute : reader.attributes()) {
            const QString value = attribute.value().toString();
            const bool isNew = attribute.name() == u"id" && !ids.contains(value);
            EXPECT_TRUE(attribute.name() != u"id" || isNew) << value.toStdString();
            EXPECT_TRUE(!value.startsWith(u"url(#") || ids.contains(value.chopped(1).mid(5))) << value.toStdString();
            if (isNew)
                ids += value;
        }
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    EXPECT_TRUE(document.startsWith(frame.chopped(end.size())) && document.endsWith(end));
    return document.mid(frame.size() - end.size()).chopped(end.size());
}

const Pen noPen = stockPen(Stock::NullPen);
const DevicePoint square[] = {{10, 10}, {20, 10}, {20, 20}, {10, 20}};
} // namespace

TEST(SvgDevice, HasItsSizeInTheUnitsOfViewers) {
    EXPECT_EQ(SvgDevice(200, 100, 144, u"a<b\n"_s).TakeDocument(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" version=\"1.1\""
              " width=\"133.33\" height=\"66.67\" viewBox=\"-0.5 -0.5 200 100\" fill=\"none\" fill-rule=\"evenodd\""
              " stroke-linecap=\"round\" stroke-linejoin=\"round\">\n<title>a&lt;b </title>\n</svg>\n");
}

TEST(SvgDevice, LinesOfOnePenAreOnePath) {
    const QByteArray body = bodyOf([](DeviceContext& device) {
        const std::int32_t steps[] = {~0, 1, 2, ~3, 3, 0};
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
        device.LineTo({-1, INT32_MAX});
        device.LineTo({INT32_MIN, 4});
        device.LineTo({7, 4});
        device.LineTo({8, 4});
    });
    EXPECT_EQ(body, "<g stroke=\"#00f\">\n<path d=\"M10 10h10v10m-10 0v-10m-5-5l-11 3\"/>\n</g>\n"
                    "<g stroke=\"#563412\" stroke-width=\"4\" stroke-linejoin=\"bevel\" stroke-dasharray=\"8 8\">\n"
                    "<path d=\"M10 10h10v10h-10\"/>\n</g>\n"
                    "<g stroke=\"#000\" stroke-dasharray=\"3 3\" stroke-linecap=\"butt\">\n"
                    "<path d=\"M-6 8L-1 2147483647-2147483648 4 7 4h1\"/>\n</g>\n");
    const QByteArray many = bodyOf([](DeviceContext& device) {
        for (int i = 0; i < 1250; ++i)
            device.LineTo({i % 7 + 1, i % 5});
    });
    EXPECT_EQ(many.count("<path"), 2);
}

TEST(SvgDevice, FiguresOfOneLookAreOneGroup) {
    const QByteArray body = bodyOf([](DeviceContext& device) {
        device.SelectBrush(solidBrush(red));
        device.Rectangle({5, 4, 1, 1});
        device.Rectangle({5, 4, 6, 5});
        device.Rectangle({5, 4, 6, 9});
        device.Ellipse({0, 0, 11, 11});
        device.Ellipse({0, 0, 11, 6});
        device.Ellipse({3, 3, 4, 7});
        device.Ellipse({3, 3, 3, 7});
        device.Polygon(std::span(square).first(1));
        device.SelectPen(stockPen(Stock::BlackPen));
        device.Polygon(std::span(square).first(3));
        device.SelectPen(noPen);
        device.Rectangle({1, 1, 6, 5});
        device.FillRect({5, 4, 1, 1}, solidBrush(red));
        device.FillRect({5, 4, 5, 1}, solidBrush(red));
        const DevicePoint rings[] = {{1, 1}, {6, 1}, {6, 5}, {2, 2}, {3, 3}, {2, 3}, {9, 9}};
        const int counts[] = {3, 3, 7};
        device.PolyPolygon(rings, counts);
        device.SelectBrush(stockBrush(Stock::NullBrush));
        device.Polygon(square);
        device.Ellipse({0, 0, 9, 9});
    });
    EXPECT_EQ(body, "<g stroke=\"#000\" fill=\"#f00\">\n<path d=\"M1 1h3v2h-3z\"/>\n<path d=\"M5 4z\"/>\n"
                    "<path d=\"M5 4v4z\"/>\n<circle cx=\"5\" cy=\"5\" r=\"5\"/>\n"
                    "<ellipse cx=\"5\" cy=\"2.5\" rx=\"5\" ry=\"2.5\"/>\n<path d=\"M3 3v3z\"/>\n"
                    "<path d=\"M10 10h10v10z\"/>\n</g>\n"
                    "<g fill=\"#f00\">\n<rect x=\"0.5\" y=\"0.5\" width=\"4\" height=\"3\"/>\n"
                    "<rect x=\"0.5\" y=\"0.5\" width=\"4\" height=\"3\"/>\n"
                    "<path d=\"M1 1h5v4zm1 1l1 1h-1z\"/>\n</g>\n");
}

TEST(SvgDevice, ClipsAndHatchesAreDefinedOnce) {
    const QByteArray body = bodyOf([](DeviceContext& device) {
        const DeviceRect all{0, 0, 9, 9};
        device.SelectPen(noPen);
        device.RestoreDC();
        device.SaveDC();
        device.ClipRect({30, 40, 10, 20});
        device.FillRect(all, {0});
        device.SaveDC();
        device.ClipRect({1, 2, 3, 4});
        device.RestoreDC();
        device.FillRect(all, {0, 3});
        device.ClipNone();
        device.FillRect(all, {0, 3});
        device.RestoreDC();
        device.ClipRect({10, 20, 30, 40});
        device.FillRect(all, {0, 8});
    });
    const QByteArray clipped = "<g clip-path=\"url(#d1)\">\n",
                     rect = "<rect x=\"-0.5\" y=\"-0.5\" width=\"9\" height=\"9\"/>\n";
    EXPECT_EQ(body, "<clipPath id=\"d1\"><rect x=\"9.5\" y=\"19.5\" width=\"20\" height=\"20\"/></clipPath>\n" +
                        clipped + "<g fill=\"#000\">\n" + rect +
                        "</g>\n<pattern id=\"d2\" width=\"8\" height=\"8\""
                        " patternUnits=\"userSpaceOnUse\" patternTransform=\"translate(-0.5 -0.5)\">"
                        "<path fill=\"#000\" d=\"M7 0h1v1h-1zM6 1h1v1h-1zM5 2h1v1h-1zM4 3h1v1h-1zM3 4h1v1h-1z"
                        "M2 5h1v1h-1zM1 6h1v1h-1zM0 7h1v1h-1z\"/></pattern>\n"
                        "<g fill=\"url(#d2)\">\n" +
                        rect + "</g>\n</g>\n<g fill=\"url(#d2)\">\n" + rect + "</g>\n" + clipped +
                        "<g fill=\"#000\">\n" + rect + "</g>\n</g>\n");
    const QByteArray many = bodyOf([](DeviceContext& device) {
        for (int i = 0; i < 2 * SvgDevice::MostDefinitions; ++i) {
            device.ClipRect({0, 0, i, 1});
            device.LineTo({i % 2, 0});
            device.SelectBrush({ColorRef(i), 0});
            device.Rectangle({0, 0, 5, 5});
        }
    });
    EXPECT_EQ(many.count(" id="), 4 * SvgDevice::MostDefinitions);
}

TEST(SvgDevice, TextsKeepTheirPlaceAndCharacters) {
    Font font{40, 700, true, true, true, 300, u"ＭＳ 'Ｐ<明朝"_s};
    const QFontMetricsF metrics(Fonts::ToQFont(font));
    QString damaged = u" a<&\">\t変"_s;
    damaged += QChar(0xd800);
    damaged += QChar(0xffff);
    const QString shown = u" a<&\"> 変\xfffd\xfffd"_s;
    const QByteArray body = bodyOf([&](DeviceContext& device) {
        device.SelectFont(font);
        device.SetTextColor(makeColor(1, 2, 3));
        device.Text({10, 20}, damaged);
        device.Text({1, 2}, QString());
        EXPECT_EQ(device.MeasureText(damaged).Width, qRound(metrics.horizontalAdvance(shown)));
        font.Escapement = -3600;
        font.Underline = font.StrikeOut = false;
        device.SelectFont(font);
        device.Text({10, 20}, u"\U0002000b"_s);
    });
    const std::string y = SvgAttributes::Number(19.5 + metrics.ascent()).toStdString();
    EXPECT_EQ(body.toStdString(),
              "<g font-family=\"'Liberation Sans','IPAPGothic','ＭＳ Ｐ&lt;明朝',sans-serif\" font-size=\"" +
                  std::to_string(Fonts::ToQFont(font).pixelSize()) +
                  "\" font-weight=\"700\" font-style=\"italic\" fill=\"#010203\">\n<text x=\"9.5\" y=\"" + y +
                  "\" text-decoration=\"underline line-through\" transform=\"rotate(-30 9.5 19.5)\" textLength=\"" +
                  SvgAttributes::Number(metrics.horizontalAdvance(shown)).toStdString() +
                  "\" lengthAdjust=\"spacingAndGlyphs\" xml:space=\"preserve\"> a&lt;&amp;&quot;&gt; "
                  "変\xef\xbf\xbd\xef\xbf\xbd</text>\n<text x=\"9.5\" y=\"" +
                  y + "\">\xf0\xa0\x80\x8b</text>\n</g>\n");
}

/// Qt's own reader knows no clips and no hatches; all else is compared pixel by pixel, dark or light.
TEST(SvgDevice, AnotherReaderSeesThePictureOfTheRasterDevice) {
    const auto draw = [](DeviceContext& device) {
        QImage marks(2, 1, QImage::Format_RGB32);
        marks.fill(Qt::white);
        marks.setPixel(0, 0, qRgb(0, 0, 0));
        device.DrawPicture({0, 9, 4, 11}, marks);
        device.DrawPicture({0, 0, 1, 1}, QImage());
        device.Rectangle({8, 1, 11, 4});
        device.SelectBrush({0});
        const DevicePoint rings[] = {{1, 0}, {7, 0}, {7, 7}, {1, 7}, {2, 3}, {6, 3}, {6, 6}, {2, 6}};
        const int counts[] = {4, 4};
        device.PolyPolygon(rings, counts);
        const DevicePoint far[] = {{12, 5}, {INT32_MAX, 5}, {INT32_MAX, 8}, {12, 8}};
        device.Polygon(far);
        device.SelectPen(noPen);
        device.Rectangle({8, 5, 11, 8});
        device.FillRect({12, 1, 15, 3}, {0});
    };
    Picture raster(16, 12);
    draw(raster.Device);
    SvgDevice device(16, 12, 96);
    draw(device);
    Picture read(16, 12);
    {
        QPainter painter(&read.Image);
        painter.drawImage(0, 0, QImage::fromData(device.TakeDocument(), "svg"));
    }
    read.Image =
        read.Image.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither).convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(read.Read(), raster.Read());
    EXPECT_TRUE(raster.Shows('#'));
}
