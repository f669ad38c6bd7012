// Numbers out of the glyph cache against Qt's own text.
#include "Picture.h"

#include "platform/device/Fonts.h"

#include <gtest/gtest.h>

namespace {
Font fontOf(const QString& face, int height, bool slanted = false) {
    return {.Height = height, .Weight = slanted ? 700 : 400, .Italic = slanted, .Face = face};
}

QString someNumber(Dice& dice) {
    static constexpr QStringView characters = u"0123456789+-.,eE 1117aN"; // the last two are not the cache's
    QString text;
    for (int length = dice.Between(1, 14); length > 0; --length)
        text += characters[dice.Between(0, int(characters.size()) - 1)];
    return text;
}

QFont qtFont(const Font& font) {
    QFont result = Fonts::ToQFont(font);
    result.setStyleStrategy(QFont::NoSubpixelAntialias);
    return result;
}
} // namespace

TEST(GlyphCache, NumbersAreThePixelsAndTheWidthsOfQtsText) {
    Dice dice(7);
    const Font fonts[] = {fontOf(u"Arial"_s, 15),           fontOf(u"Arial"_s, 9, true),
                          fontOf(u"Times New Roman"_s, 22), fontOf(u"ＭＳ Ｐゴシック"_s, 12),
                          fontOf(u"Courier New"_s, 33),     fontOf(u"Arial"_s, GlyphCache::LargestSize)};
    for (const Font& font : fonts) {
        Picture picture(200, 150);
        for (int y = 0; y < 150; ++y)
            for (int x = 0; x < 200; ++x)
                picture.Image.setPixel(x, y, toPixel(makeColor(x, y, 255 - x)));
        QImage expected = picture.Image.copy();
        picture.Device.SelectFont(font);
        picture.Device.ClipRect({10, 8, 190, 140});
        const QFontMetrics metrics(qtFont(font));
        for (int i = 0; i < 40; ++i) {
            const QString text = someNumber(dice);
            const DevicePoint at = dice.Point(-60, 190);
            const ColorRef color = ColorRef(dice.Between(0, 0xffffff));
            picture.Device.SetTextColor(color);
            picture.Device.Text(at, text);
            QPainter painter(&expected);
            painter.setClipRect(10, 8, 180, 132);
            painter.setFont(qtFont(font));
            painter.setPen(QColor::fromRgb(toPixel(color)));
            painter.drawText(QPointF(at.X, at.Y + metrics.ascent()), text);
            EXPECT_EQ(picture.Device.MeasureText(text), (DeviceSize{metrics.horizontalAdvance(text), metrics.height()}))
                << text.toStdString();
        }
        for (const int far : {-2147483647, -400, 2147483647})
            picture.Device.Text({far, far}, u"8"_s);
        EXPECT_EQ(picture.Image, expected) << font.Face.toStdString() << font.Height;
    }
}
