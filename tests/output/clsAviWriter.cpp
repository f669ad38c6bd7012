#include "output/clsAviWriter.h"

#include "ConfigurationFolder.h"
#include "FullDisk.h"
#include "Picture.h"
#include "PlayedFilm.h"
#include "TestFolder.h"
#include "platform/registry/Registry.h"

#include <gtest/gtest.h>

namespace {

class AviWriterTest : public testing::Test {
protected:
    void SetUp() override {
        if (FilmFile::Unavailable() || !PlayedFilm::CanPlay())
            GTEST_SKIP() << "no FFmpeg here";
    }
    /// Exports frames that are `frame` pixels of black in the first row; what was asked for goes to `asked`.
    bool exports(int width = 161, int interval = 500, const QString& given = {}) {
        AviWriterEvents events;
        events.GetFileName = [this](QString& name, bool& cancel) {
            asked += 'f';
            name = path;
            cancel = cancelsFile;
        };
        events.ChooseCodec = [this](AviCompressor& choice, const FilmFormat& format) {
            asked += 'c';
            EXPECT_EQ(format.Height, 16);
            offered = choice;
            choice.fccHandler = filmFormat::FindCodec(FilmContainer::Avi, codec)->HandlerCode();
            choice.lQ = 4321;
            return !cancelsCodec;
        };
        events.RenderScene = [](int frame, PlotCanvas& plot) {
            EXPECT_EQ(plot.Window().Right(), 7);
            plot.hDC().MoveTo({0, 0});
            plot.hDC().LineTo({frame, 0});
        };
        events.Work = [this](const auto& makeFrames) {
            makeFrames([this](qint64 done, qint64 total) { return done < stopAt && total == 3; });
        };
        clsAviWriter writer(events);
        const Picture screen(8, 8);
        EXPECT_TRUE(writer.Initialize(screen.Device, width, 16) && writer.IsValid());
        PlotRect window;
        window.SetRect(0, 7, 7, 0);
        writer.Window(window);
        writer.ScaleMode(PlotScaleMode::Automatic);
        writer.FrameCount = 3;
        writer.Interval = interval;
        asked.clear();
        const bool ok = writer.Export(given);
        message = writer.ErrorMessage();
        return ok;
    }
    TestFolder folder;
    const ConfigurationFolder configuration;
    QString path = folder.Path(u"film.avi"_s), codec = u"ffv1"_s, message;
    AviCompressor offered;
    QByteArray asked;
    qint64 stopAt = 9;
    bool cancelsFile = false, cancelsCodec = false;
};

TEST_F(AviWriterTest, AsksForCodecAndFileAndWritesEachFrame) {
    ASSERT_TRUE(exports());
    EXPECT_EQ(asked, "cf");
    EXPECT_EQ(message, u"film.avi\r\nAVIファイルを作成しました。"_s);
    EXPECT_EQ(offered, AviCompressor());
    const PlayedFilm film(path);
    ASSERT_EQ(film.Pictures.size(), 3u);
    EXPECT_EQ(film.Stream[u"r_frame_rate"], u"2/1"_s);
    for (int frame = 0; frame < 3; ++frame)
        for (int x = 0; x < 161; ++x)
            EXPECT_EQ(film.Pictures[std::size_t(frame)].pixel(x, 0), x < frame ? 0xff000000 : 0xffffffff) << frame;
    // The next one offers the choice of the last; a file that is there is not asked for.
    ASSERT_TRUE(exports(161, 30, path));
    EXPECT_EQ(asked, "c");
    EXPECT_EQ(offered, (AviCompressor{.fccHandler = 0x31564646, .lQ = 4321}));
    path = folder.Path(u"film.mp4"_s);
    ASSERT_TRUE(exports());
    EXPECT_EQ(message, u"film.mp4\r\nMP4ファイルを作成しました。"_s);
    EXPECT_EQ(PlayedFilm(path).Stream[u"codec_name"], u"h264"_s) << "ffv1 is nothing for this container";
}

TEST_F(AviWriterTest, WhatFailsIsToldAndLeavesWhatWasThere) {
    clsAviWriter writer;
    EXPECT_FALSE(writer.Export(path));
    EXPECT_EQ(writer.ErrorMessage(), u"バッファが初期化されていません。"_s);
    const Picture screen(8, 8);
    EXPECT_TRUE(writer.Initialize(screen.Device, 16, 16));
    EXPECT_FALSE(writer.Export(path));
    EXPECT_EQ(writer.ErrorMessage(), u"フレーム数が設定されていません。"_s);

    folder.Write("before", u"film.avi"_s);
    const auto expectFailure = [&](const QString& told, int width = 161, int interval = 500) {
        EXPECT_FALSE(exports(width, interval));
        EXPECT_EQ(message, told);
        EXPECT_EQ(TestFolder::Read(folder.Path(u"film.avi"_s)), "before");
    };
    stopAt = 2;
    expectFailure({});
    stopAt = 9;
    cancelsFile = true;
    expectFailure({});
    EXPECT_EQ(asked, "cf");
    EXPECT_EQ(offered.lQ, 4321) << "of the one that was stopped";
    cancelsCodec = true;
    expectFailure({});
    EXPECT_EQ(asked, "c");
    cancelsCodec = cancelsFile = false;
    expectFailure(u"AVIストリームを作成できません。"_s, 161, 30000);
    const QString cannotWrite = u"AVIファイルへ書き込むことができません。"_s;
    codec = u"mpeg4"_s;
    expectFailure(cannotWrite + u"\r\n圧縮設定が不正な場合があります。\r\n他の方法を選択して再度作成してください。"_s,
                  10000);
    {
        codec = u"raw"_s;
        const FullDisk full(12000);
        expectFailure(cannotWrite);
    }
    path = folder.Path(u"none/film.avi"_s);
    expectFailure(u"AVIファイルを作成できません。"_s);
}

} // namespace
