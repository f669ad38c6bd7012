#include "output/windows/frmFilmCodec.h"

#include "ShownDialog.h"

#include <QLabel>
#include <QSlider>

namespace {

class FilmCodecDialog : public testing::Test {
protected:
    void SetUp() override {
        if (FilmFile::Unavailable())
            GTEST_SKIP() << "no FFmpeg here";
    }
    FilmFormat format{.Width = 161, .Height = 121, .Interval = 500};
    AviCompressor choice;
};

TEST_F(FilmCodecDialog, RowsCarryTheirFields) {
    const std::uint32_t mjpeg = filmFormat::FindCodec(FilmContainer::Avi, u"mjpeg"_s)->HandlerCode();
    const std::uint32_t h264 = filmFormat::FindCodec(FilmContainer::Avi, u"h264"_s)->HandlerCode();
    Shown<frmFilmCodec> form(format, choice);
    expectRoundTrip(form.Bindings(), {mjpeg, 7, 250, 1200}, {h264, 0, 0, -1});
}

TEST_F(FilmCodecDialog, TellsWhatAChoiceTakesAndKeepsItOnOkAlone) {
    QImage picture(322, 242, QImage::Format_RGB32);
    picture.fill(Qt::white);
    for (const bool ok : {false, true}) {
        const AviCompressor before = choice;
        Shown<frmFilmCodec> form(format, choice, picture);
        form.Choose(u"cmbCodec"_s, 1);
        EXPECT_FALSE(form.Find<QSlider>(u"sldQuality"_s).isEnabled()) << "uncompressed";
        EXPECT_EQ(form.Find<QLabel>(u"lblFormat"_s).text(), u"フレーム: 161 x 121、24 ビット、2 フレーム/秒"_s);
        // As the one picture of twice the size takes it, by its share: 120 frames of 322 * 3 + 2 bytes a row.
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return form.Find<QLabel>(u"lblSize"_s).text() == u"1 分あたり 約 7.0 MB"_s; }));
        form.Choose(u"cmbCodec"_s, 2);
        QTest::keyClick(&form.Find<QSlider>(u"sldQuality"_s), Qt::Key_Home);
        form.Type(u"txtKeyFrames"_s, u"12"_s);
        form.Click(ok ? u"Command1_0"_s : u"Command1_1"_s);
        EXPECT_EQ(form.Result, ok);
        EXPECT_EQ(choice, ok ? (AviCompressor{0x47504a4d, 12, 0, 0}) : before);
    }
}

} // namespace
