#include "platform/film/FilmFile.h"

#include "FullDisk.h"
#include "PlayedFilm.h"
#include "TestFolder.h"

#include <QDir>
#include <QtEndian>
#include <gtest/gtest.h>
#include <random>

namespace {

/// Areas of few colours that move from frame to frame, or noise.
QImage pictureAt(int frame, QSize size, bool noisy = false) {
    std::mt19937 dice(unsigned(frame + 1));
    QImage picture(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            picture.setPixel(x, y,
                             noisy ? dice() : unsigned(x + 8 * frame) / 32 * 0x302010 + unsigned(y) / 24 * 0x81828);
    return picture.convertToFormat(QImage::Format_RGB32);
}

/// The mean difference of a channel, 0 to 255. Where `shown` is larger it goes on as at its edge.
double difference(const QImage& picture, const QImage& shown) {
    double sum = 0;
    for (int y = 0; y < shown.height(); ++y)
        for (int x = 0; x < shown.width(); ++x) {
            const QRgb a = picture.pixel(std::min(x, picture.width() - 1), std::min(y, picture.height() - 1));
            const QRgb b = shown.pixel(x, y);
            sum += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b));
        }
    return sum / (3.0 * shown.width() * shown.height());
}

class FilmTest : public testing::Test {
protected:
    static constexpr int frames = 7;

    void SetUp() override {
        if (FilmFile::Unavailable() || !PlayedFilm::CanPlay())
            GTEST_SKIP() << "no FFmpeg here";
    }
    std::optional<FilmFailure> write(const FilmFormat& format, bool noisy = false) {
        FilmFile film(path, format);
        for (int i = 0; i < frames; ++i) {
            const QImage picture = pictureAt(i, {format.Width, format.Height}, noisy);
            film.Add({reinterpret_cast<const std::uint32_t*>(picture.constBits()), format.Width, format.Height,
                      picture.bytesPerLine() / 4});
        }
        return film.Commit();
    }
    static double largestDifference(const PlayedFilm& film, QSize size, bool noisy = false) {
        double largest = film.Pictures.size() == frames ? 0 : 255;
        for (int i = 0; i < int(film.Pictures.size()); ++i)
            largest = std::max(largest, difference(pictureAt(i, size, noisy), film.Pictures[std::size_t(i)]));
        return largest;
    }
    TestFolder folder;
    QString path = folder.Path(u"film"_s);
};

TEST_F(FilmTest, EachCodecGivesThePicturesBackInTime) {
    const std::array<int, 4> intervals{30, 10, 1000, 5000};
    std::size_t turn = 0;
    for (const FilmContainer container :
         {FilmContainer::Avi, FilmContainer::Mp4, FilmContainer::Webm, FilmContainer::Gif})
        for (const FilmCodec* codec : filmFormat::CodecsFor(container))
            for (const QSize size : {QSize(160, 120), QSize(163, 121)}) {
                const int interval = intervals[turn++ % 4];
                const FilmFormat format{container, codec, -1, 0, 0, size.width(), size.height(), interval};
                const std::string told = QString::fromUtf16(codec->Name).toStdString() + ' ' +
                                         std::to_string(unsigned(container)) + ' ' + std::to_string(interval);
                const auto failure = write(format);
                ASSERT_FALSE(failure) << told << ' ' << failure->Reason.toStdString();
                const PlayedFilm film(path);
                const bool even = container == FilmContainer::Mp4 && codec->Name == u"h264"_s;
                const QSize expected = even ? QSize((size.width() + 1) & ~1, (size.height() + 1) & ~1) : size;
                EXPECT_EQ(QSize(film.Stream[u"width"].toInt(), film.Stream[u"height"].toInt()), expected) << told;
                ASSERT_EQ(film.Packets.size(), frames) << told;
                const int waits = container == FilmContainer::Gif ? std::max(interval, 20) : interval;
                EXPECT_NEAR(film.LastTime(), (frames - 1) * waits / 1000.0, 0.002) << told;
                EXPECT_GE(film.KeyFrames(), container == FilmContainer::Avi ? frames : 1) << told;
                EXPECT_LE(largestDifference(film, size), codec->IsLossless() ? 0 : 4) << told;
            }
}

TEST_F(FilmTest, ColorsBeyondTheTableAreNear) {
    const FilmFormat format{
        FilmContainer::Gif, filmFormat::CodecsFor(FilmContainer::Gif).front(), -1, 0, 0, 160, 120, 100};
    ASSERT_FALSE(write(format, true));
    EXPECT_LT(largestDifference(PlayedFilm(path), {160, 120}, true), 12);
}

TEST_F(FilmTest, WishesAreHeard) {
    const FilmCodec* mpeg4 = filmFormat::FindCodec(FilmContainer::Avi, u"mpeg4"_s);
    FilmFormat format{FilmContainer::Avi, mpeg4, 10000, 0, 0, 160, 120, 1000};
    const auto sizeOf = [&](const FilmFormat& wanted) {
        EXPECT_FALSE(write(wanted, wanted.Quality >= 0));
        return double(TestFolder::Read(path).size());
    };
    const double best = sizeOf(format);
    format.Quality = 0;
    EXPECT_LT(sizeOf(format), best / 2);
    format.Quality = -1;
    format.KeyFrames = 3;
    sizeOf(format);
    EXPECT_EQ(PlayedFilm(path).KeyFrames(), 3) << "in seven frames";
    format.KeyFrames = 0;
    format.DataRate = 2;
    EXPECT_NEAR(sizeOf(format) / (frames * 2000.0), 1, 0.6);
}

TEST_F(FilmTest, AviFilesStateTheirNumbers) {
    for (const auto& [interval, rate] : {std::pair(10, 1000u), {30, 333u}, {1000, 10u}, {5000, 2u}}) {
        const FilmCodec* raw = filmFormat::FindCodec(FilmContainer::Avi, u"raw"_s);
        ASSERT_FALSE(write({FilmContainer::Avi, raw, -1, 0, 0, 161, 121, interval}));
        const QByteArray file = TestFolder::Read(path);
        const auto numberAt = [&](qsizetype offset) {
            return qFromLittleEndian<std::uint32_t>(file.constData() + offset);
        };
        EXPECT_EQ(file.mid(100, 16), QByteArray("strh8\0\0\0vidsDIB ", 16));
        EXPECT_EQ(numberAt(128), 10u);
        EXPECT_EQ(numberAt(132), rate);
        EXPECT_EQ(numberAt(140), unsigned(frames));
        EXPECT_EQ(numberAt(148), 1000u);
        EXPECT_EQ(numberAt(160), 121u << 16 | 161u);
        EXPECT_EQ(numberAt(172), 40u);
        EXPECT_EQ(numberAt(192), 484u * 121);
        EXPECT_TRUE(file.contains("VIDEO #0"));
    }
}

TEST_F(FilmTest, AFilmThatFailsLeavesWhatWasThere) {
    folder.Write("before", u"film"_s);
    const auto codec = [](QStringView name) { return filmFormat::FindCodec(FilmContainer::Avi, name); };
    FilmFormat format{FilmContainer::Avi, codec(u"raw"), -1, 0, 0, 160, 120, 100};
    const auto expectStage = [&](FilmFailure::Stage stage) {
        const auto failure = write(format);
        ASSERT_TRUE(failure);
        EXPECT_EQ(failure->At, stage) << failure->Reason.toStdString();
        EXPECT_EQ(TestFolder::Read(folder.Path(u"film"_s)), "before");
    };
    // In the middle of the frames, and at the very end.
    for (const rlim_t bytes : {100000, frames * 160 * 120 * 3 + 5800}) {
        const FullDisk full(bytes);
        expectStage(FilmFailure::Stage::Writing);
    }
    format.Interval = 30000;
    expectStage(FilmFailure::Stage::Stream);
    format = {FilmContainer::Avi, codec(u"mpeg4"), -1, 0, 0, 10000, 16, 100};
    expectStage(FilmFailure::Stage::Codec);
    for (const QString& name : {u"."_s, u"none/film"_s}) {
        path = folder.Path(name);
        expectStage(FilmFailure::Stage::File);
    }
    EXPECT_EQ(QDir(folder.Path({})).entryList(QDir::Files), QStringList(u"film"_s));
}

} // namespace
