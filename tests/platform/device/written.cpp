// Texts and bounds of the devices that write; their calls are compared with those of all devices.
#include "platform/device/Fonts.h"
#include "platform/device/SvgAttributes.h"
#include "platform/device/SvgDevice.h"
#include "platform/device/TraceDevice.h"

#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

namespace {
/// Each document must be well-formed, with an own id for each thing defined, and each id that it uses defined before.
QByteArray svgOf(const std::function<void(DeviceContext&)>& draw) {
    SvgDevice device(200, 100, 144);
    draw(device);
    const QByteArray document = device.TakeDocument();
    QXmlStreamReader reader(document);
    while (!reader.atEnd())
        reader.readNext();
    static const QRegularExpression names(u" id=\"(\\w+)|url\\(#(\\w+)"_s);
    QSet<QString> ids;
    for (const auto& match : names.globalMatch(QString::fromUtf8(document))) {
        const bool isUse = match.hasCaptured(2);
        EXPECT_EQ(ids.contains(match.captured(isUse ? 2 : 1)), isUse) << match.captured().toStdString();
        ids += match.captured(1);
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return document;
}
} // namespace

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
