// Films of the companion: their frames against the pictures that it renders.
#include "BatchTest.h"

#include "PlayedFilm.h"
#include "platform/film/FilmFile.h"

namespace {

class BatchFilmTest : public BatchTest {
protected:
    void SetUp() override {
        if (FilmFile::Unavailable() || !PlayedFilm::CanPlay())
            GTEST_SKIP() << "no FFmpeg here";
    }
    PlayedFilm film(const QString& options, const QString& ending = u".avi"_s) {
        out = folder.Path(u"film"_s) + ending;
        EXPECT_EQ(run(u"film FILE --size 201x100 -o "_s + out + u' ' + options), 0) << errors.constData();
        return PlayedFilm(out);
    }
    QImage rendered(const QString& options) {
        const QString png = folder.Path(u"step.png"_s);
        EXPECT_EQ(run(u"render FILE --size 201x100 -o "_s + png + u' ' + options), 0) << errors.constData();
        return QImage(png).convertToFormat(QImage::Format_RGB32);
    }
    QString out, settings = folder.Path(u"s.reg"_s);
};

TEST_F(BatchFilmTest, AFrameIsThePictureOfItsStep) {
    const QString fixed = u" --set contour/values/automatic=False --set contour/values/max=%1 "
                          "--set contour/values/min=%2 --set contour/values/div=20"_s;
    // The displacement's scale is that of the step with the largest, which is the second.
    const struct {
        QString Film, Both, Render;
        int Step;
    } cases[] = {
        {u"--codec ffv1 --range 2,9.5"_s, u"--set displacement/fid=0"_s, fixed.arg(9.5).arg(2), 1},
        {u"--codec raw --range 2,9.5"_s, u"--item 2"_s, fixed.arg(9.5).arg(2), 2},
        {u"--codec utvideo"_s, u"--item 変位"_s, fixed.arg(12).arg(1), 2},
        {u"--codec utvideo --range step"_s, u"--mesh off"_s, {}, 2},
        {u"--codec ffv1 --range step --set contour/values/automatic=False --set contour/values/div=5"_s,
         {},
         fixed.arg(12).arg(2) + u" --set contour/values/div=5"_s,
         2},
    };
    for (const auto& c : cases) {
        const PlayedFilm played = film(u"--no-header "_s + c.Both + u' ' + c.Film);
        ASSERT_EQ(played.Pictures.size(), 2u) << c.Film.toStdString();
        EXPECT_EQ(played.Pictures[std::size_t(c.Step - 1)], rendered(c.Both + c.Render + u" --step %1"_s.arg(c.Step)))
            << c.Film.toStdString();
    }
    EXPECT_NE(film(u"--codec raw --range step --steps 2:2"_s).Pictures.at(0), rendered(u"--step 2"_s)) << "a header";
}

TEST_F(BatchFilmTest, FollowsItsOptions) {
    folder.Write("REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Ordvane\\Velorin\\1.0\\Settings]\r\n"
                 "\"SS Interval\"=dword:000000fa\r\n",
                 u"s.reg"_s);
    EXPECT_EQ(film({}).LastTime(), 0.5);
    EXPECT_EQ(film(u"--settings "_s + settings).LastTime(), 0.25);
    EXPECT_EQ(film(u"--interval 1000 --key-frames 9 --data-rate 9"_s).KeyFrames(), 1);
    EXPECT_EQ(film(u"--steps 1:2:2"_s, u".gif"_s).Packets.size(), 1);
    EXPECT_EQ(film({}, u".mp4"_s).Stream[u"width"].toInt(), 202);
    EXPECT_EQ(errors, out.toUtf8() + ": 202x100, since the codec wants even sizes\n");
    for (const QString& wrong : u"o.mov|o.avi --codec vp9|o.gif --quality 1|o.avi --codec raw --data-rate 1|"
                                "o.gif --key-frames 1|o.avi --interval 0|o.avi --range 2,1|o.avi --range 1|"
                                "o.avi --range nan,1|o.avi --quality 101"_s.split(u'|'))
        EXPECT_EQ(run(u"film FILE -o "_s + wrong), 2) << wrong.toStdString();
}

TEST_F(BatchFilmTest, WhatCannotBeFilmedIsTold) {
    out = folder.Write("before", u"o.avi"_s);
    const QString start = u"film FILE -o "_s + out;
    expectUnusable(start + u" --size 10000x16"_s, out, "the codec refuses this film: ");
    expectUnusable(start + u" --steps 1:3"_s, path, "無効なパラメータです。 (--steps: no step 3 among 2)");
    path = folder.Write(withoutSteps().Bytes());
    expectUnusable(start, path, "フレーム数が設定されていません。");
    EXPECT_EQ(TestFolder::Read(out), "before");
}

} // namespace
