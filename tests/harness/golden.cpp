// The goldens' helper must be seen to fail.
#include "Golden.h"

#include <QTemporaryDir>

namespace {

class GoldenTest : public testing::Test {
protected:
    QTemporaryDir folder;
    QString goldens = folder.filePath(QStringLiteral("golden"));
    QString actuals = folder.filePath(QStringLiteral("actual"));
    Golden writing{goldens, actuals, true};
    Golden comparing{goldens, actuals, false};
};

TEST_F(GoldenTest, TextIsExact) {
    const QString name = QStringLiteral("floor/a.trace");
    ASSERT_TRUE(writing.MatchesText(name, "MoveTo 1 2\nLineTo 3 4\n"));
    EXPECT_TRUE(comparing.MatchesText(name, "MoveTo 1 2\nLineTo 3 4\n"));
    const auto differs = comparing.MatchesText(name, "MoveTo 1 2\nLineTo 3 5\n");
    EXPECT_FALSE(differs);
    EXPECT_NE(std::string(differs.message()).find("line 2\n  golden: \"LineTo 3 4\"\n  actual: \"LineTo 3 5\""),
              std::string::npos)
        << differs.message();
    EXPECT_TRUE(QFileInfo::exists(actuals + QStringLiteral("/floor/a.trace")));
    EXPECT_FALSE(comparing.MatchesText(name, "MoveTo 1 2\nLineTo 3 4"));
    EXPECT_FALSE(comparing.MatchesText(name, ""));
}

TEST_F(GoldenTest, WhatIsMissingFails) {
    EXPECT_FALSE(comparing.MatchesText(QStringLiteral("none.trace"), ""));
    EXPECT_FALSE(comparing.MatchesPicture(QStringLiteral("none.png"), QImage()));
    EXPECT_FALSE(writing.MatchesPicture(QStringLiteral("none.png"), QImage())) << "no picture, no golden";
}

TEST_F(GoldenTest, PicturesAreExactOrWithinTheToleranceEverywhere) {
    const QString name = QStringLiteral("a.png");
    QImage picture(64, 40, QImage::Format_RGB32);
    picture.fill(Qt::white);
    ASSERT_TRUE(writing.MatchesPicture(name, picture));
    EXPECT_TRUE(comparing.MatchesPicture(name, picture.convertToFormat(QImage::Format_ARGB32_Premultiplied)));
    EXPECT_FALSE(comparing.MatchesPicture(name, picture.copy(0, 0, 64, 39), {255, 255}));

    picture.setPixel(63, 39, qRgb(255, 255, 254));
    EXPECT_FALSE(comparing.MatchesPicture(name, picture)) << "one step of one channel of the last pixel";

    // One black pixel: 3 channels of 4 by 255 over a window of 256 pixels or a picture of 2560.
    picture.setPixel(63, 39, qRgb(0, 0, 0));
    const double inWindow = 255 * 0.75 / 256, inPicture = 255 * 0.75 / 2560;
    EXPECT_TRUE(comparing.MatchesPicture(name, picture, {inPicture * 1.01, inWindow * 1.01}));
    EXPECT_FALSE(comparing.MatchesPicture(name, picture, {inPicture * 0.99, inWindow * 1.01}));
    EXPECT_FALSE(comparing.MatchesPicture(name, picture, {inPicture * 1.01, inWindow * 0.99}));

    // Windows lie anywhere, not only at multiples of their side.
    picture.fill(Qt::white);
    for (const int x : {15, 16})
        picture.setPixel(x, 20, qRgb(0, 0, 0));
    EXPECT_FALSE(comparing.MatchesPicture(name, picture, {1, inWindow * 1.5}));
}

} // namespace
