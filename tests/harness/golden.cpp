// The goldens' helper must be seen to fail.
#include "Golden.h"

#include <QTemporaryDir>

namespace {

struct GoldenTest : testing::Test {
    QTemporaryDir folder;
    Golden writing{folder.filePath(QStringLiteral("golden")), folder.filePath(QStringLiteral("actual")), true};
    Golden comparing{writing.Folder, writing.ActualFolder, false};
};

TEST_F(GoldenTest, TextIsExactAndThere) {
    const QString name = QStringLiteral("floor/a.trace");
    EXPECT_FALSE(comparing.MatchesText(name, ""));
    ASSERT_TRUE(writing.MatchesText(name, "MoveTo 1 2\nLineTo 3 4\n"));
    EXPECT_TRUE(comparing.MatchesText(name, "MoveTo 1 2\nLineTo 3 4\n"));
    EXPECT_FALSE(comparing.MatchesText(name, "MoveTo 1 2\nLineTo 3 4"));
    const std::string differs = comparing.MatchesText(name, "MoveTo 1 2\nLineTo 3 5\n").message();
    EXPECT_NE(differs.find("line 2\n  golden: \"LineTo 3 4\"\n  actual: \"LineTo 3 5\""), differs.npos) << differs;
    EXPECT_TRUE(QFileInfo::exists(comparing.ActualFolder + QStringLiteral("/floor/a.trace")));
}

TEST_F(GoldenTest, PicturesAreExactOrWithinTheToleranceEverywhere) {
    const QString name = QStringLiteral("a.png");
    QImage picture(64, 40, QImage::Format_RGB32);
    picture.fill(Qt::white);
    EXPECT_FALSE(comparing.MatchesPicture(name, picture));
    EXPECT_FALSE(writing.MatchesPicture(name, QImage())) << "no picture, no golden";
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
}

} // namespace
