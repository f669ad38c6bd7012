#include "platform/device/Fonts.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QGlyphRun>
#include <QRawFont>
#include <QTextLayout>
#include <gtest/gtest.h>

namespace {
QFont fontOf(const QString& face, int height) {
    return Fonts::ToQFont({.Height = height, .Face = face});
}

/// In small letters, since Qt folds the names of stand-ins.
QString familiesUsed(const QString& face, const QString& text) {
    QTextLayout layout(text, fontOf(face, 20));
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    QStringList families;
    for (const QGlyphRun& run : layout.glyphRuns())
        families += run.rawFont().familyName().toLower();
    families.sort();
    return families.join(u' ');
}
} // namespace

TEST(Fonts, FacesFindTheirStandIns) {
    Fonts::InstallSubstitutions();
    const std::tuple<QStringList, QString, QString> expected[] = {
        {{u"ＭＳ Ｐゴシック"_s, u"MS PGothic"_s, u"MS UI Gothic"_s}, u"A"_s, u"ipapgothic"_s},
        {{u"ＭＳ ゴシック"_s, u"ms gothic"_s}, u"A"_s, u"ipagothic"_s},
        {{u"ＭＳ 明朝"_s}, u"A"_s, u"ipamincho"_s},
        {{u"ＭＳ Ｐ明朝"_s}, u"A"_s, u"ipapmincho"_s},
        {{u"Courier New"_s}, u"変A"_s, u"ipagothic liberation mono"_s},
        {{u"Arial"_s, u"Liberation Sans"_s, u"No Such Face"_s, {}}, u"変A位"_s, u"ipapgothic liberation sans"_s}};
    if (!QFontDatabase::hasFamily(u"IPAPGothic"_s) || !QFontDatabase::hasFamily(u"Liberation Sans"_s))
        GTEST_SKIP() << "the stand-ins of this test are not what the system has";
    for (const auto& [faces, text, families] : expected)
        for (const QString& face : faces)
            EXPECT_EQ(familiesUsed(face, text), families) << face.toStdString();
}

TEST(Fonts, CellHeightIsMetAndStylesAreNotMixed) {
    for (const QString& face : {u"Arial"_s, u"ＭＳ Ｐゴシック"_s, u"Courier New"_s})
        for (const int height : {1, 8, 12, 13, 16, 27, 100, 1200}) {
            const QFontMetrics metrics(fontOf(face, height));
            EXPECT_NEAR(metrics.ascent() + metrics.descent(), height, 1) << face.toStdString() << ' ' << height;
        }
    for (const int height : {0, -5, 1 << 30}) {
        const int size = fontOf(u"Arial"_s, height).pixelSize();
        EXPECT_TRUE(size >= 1 && size <= Fonts::LargestHeight) << size;
    }
    const Font styled{.Height = 20, .Weight = 700, .Italic = true, .Underline = true, .Face = u"Arial"_s};
    const QFont full = Fonts::ToQFont(styled), plain = fontOf(u"Arial"_s, 20);
    EXPECT_TRUE(full.bold() && full.italic() && full.underline());
    EXPECT_FALSE(plain.bold() || plain.italic() || plain.underline());
}
