#include "platform/Fonts.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QGlyphRun>
#include <QRawFont>
#include <QTextLayout>
#include <gtest/gtest.h>

namespace {
Font fontOf(const QString& face, int height) {
    return {.Height = height, .Face = face};
}

/// In small letters, since Qt folds the names of stand-ins.
QStringList familiesUsed(const QFont& font, const QString& text) {
    QTextLayout layout(text, font);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    QStringList families;
    for (const QGlyphRun& run : layout.glyphRuns())
        families += run.rawFont().familyName().toLower();
    families.sort();
    return families;
}
} // namespace

TEST(Fonts, FacesFindTheirStandIns) {
    Fonts::InstallSubstitutions();
    const std::pair<QString, QString> expected[] = {
        {u"ＭＳ Ｐゴシック"_qs, u"IPAPGothic"_qs}, {u"MS PGothic"_qs, u"IPAPGothic"_qs},
        {u"ＭＳ ゴシック"_qs, u"IPAGothic"_qs},    {u"ms gothic"_qs, u"IPAGothic"_qs},
        {u"ＭＳ 明朝"_qs, u"IPAMincho"_qs},        {u"ＭＳ Ｐ明朝"_qs, u"IPAPMincho"_qs},
        {u"MS UI Gothic"_qs, u"IPAPGothic"_qs},    {u"Arial"_qs, u"Liberation Sans"_qs},
        {u"Courier New"_qs, u"Liberation Mono"_qs}};
    for (const auto& [face, family] : expected) {
        if (!QFontDatabase::hasFamily(family) || QFontDatabase::hasFamily(face))
            GTEST_SKIP() << "the stand-ins of this test are not what the system has";
        EXPECT_EQ(familiesUsed(Fonts::ToQFont(fontOf(face, 20)), u"A"_qs), QStringList{family.toLower()})
            << face.toStdString();
    }
}

TEST(Fonts, LatinFacesBorrowJapaneseCharacters) {
    if (!QFontDatabase::hasFamily(u"IPAPGothic"_qs))
        GTEST_SKIP() << "no IPA fonts";
    for (const QString& face : {u"Arial"_qs, u"Liberation Sans"_qs, u"No Such Face"_qs, QString()})
        EXPECT_EQ(familiesUsed(Fonts::ToQFont(fontOf(face, 20)), u"変A位"_qs),
                  (QStringList{u"ipapgothic"_qs, u"liberation sans"_qs}))
            << face.toStdString();
    EXPECT_EQ(familiesUsed(Fonts::ToQFont(fontOf(u"Courier New"_qs, 20)), u"変"_qs), QStringList{u"ipagothic"_qs});
}

TEST(Fonts, CellHeightIsMetAndStylesAreNotMixed) {
    for (const QString& face : {u"Arial"_qs, u"ＭＳ Ｐゴシック"_qs, u"Courier New"_qs})
        for (const int height : {1, 8, 12, 13, 16, 27, 100, 1200}) {
            const QFontMetrics metrics(Fonts::ToQFont(fontOf(face, height)));
            EXPECT_NEAR(metrics.ascent() + metrics.descent(), height, 1) << face.toStdString() << ' ' << height;
        }
    for (const int height : {0, -5, 1 << 30}) {
        const int size = Fonts::ToQFont(fontOf(u"Arial"_qs, height)).pixelSize();
        EXPECT_TRUE(size >= 1 && size <= Fonts::LargestHeight) << size;
    }
    const Font styled{.Height = 20, .Weight = 700, .Italic = true, .Underline = true, .Face = u"Arial"_qs};
    const QFont full = Fonts::ToQFont(styled), plain = Fonts::ToQFont(fontOf(u"Arial"_qs, 20));
    EXPECT_TRUE(full.bold() && full.italic() && full.underline());
    EXPECT_FALSE(plain.bold() || plain.italic() || plain.underline());
}
