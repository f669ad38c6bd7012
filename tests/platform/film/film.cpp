#include "platform/film/FilmFile.h"

#include "FullDisk.h"
#include "TestFolder.h"
#include "platform/base/Literals.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QtEndian>
#include <gtest/gtest.h>
#include <random>

namespace {

/// Pictures of moving areas of few colours, under noise if it is asked for.
std::vector<std::uint32_t> pictureAt(int frame, int width, int height, bool noisy) {
    std::mt19937 dice(unsigned(frame + 1));
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const std::uint32_t area =
                (std::uint32_t(x + 8 * frame) / 32 * 0x302010 + std::uint32_t(y) / 24 * 0x081828);
            pixels.push_back(0xff000000 | ((noisy ? std::uint32_t(dice()) : area) & 0xffffff));
        }
    return pixels;
}

class FilmTest : public testing::Test {
protected:
    static constexpr int frames = 7;

    void SetUp() override {
        if (FilmFile::Unavailable() || QStandardPaths::findExecutable(u"ffprobe"_s).isEmpty())
            GTEST_SKIP() << "no FFmpeg here";
    }
    std::optional<FilmFailure> write(const FilmFormat& format, int count = frames) {
        FilmFile film(path, format);
        for (int i = 0; i < count; ++i)
            film.Add(
                {pictureAt(i, format.Width, format.Height, noisy).data(), format.Width, format.Height, format.Width});
        return film.Commit();
    }
    static QByteArray outputOf(const QString& program, const QStringList& arguments) {
        QProcess process;
        process.start(program, arguments);
        process.waitForFinished(-1);
        return process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
    }
    QJsonObject probed() const {
        return QJsonDocument::fromJson(outputOf(u"ffprobe"_s, {u"-v"_s, u"error"_s, u"-show_streams"_s,
                                                               u"-show_packets"_s, u"-of"_s, u"json"_s, path}))
            .object();
    }
    /// The pictures as a player shows them.
    QByteArray decoded() const {
        return outputOf(u"ffmpeg"_s,
                        {u"-v"_s, u"error"_s, u"-i"_s, path, u"-vsync"_s, u"0"_s, u"-f"_s, u"rawvideo"_s, u"-pix_fmt"_s,
                         u"bgra"_s, u"-sws_flags"_s, u"accurate_rnd+full_chroma_int"_s, u"-"_s});
    }
    /// The mean difference of a channel, in steps of 255.
    double difference(const FilmFormat& format) const {
        const QByteArray bytes = decoded();
        const int wide = filmFormat::WidthOf(format), high = filmFormat::HeightOf(format);
        EXPECT_EQ(bytes.size(), qsizetype(4) * wide * high * frames);
        if (bytes.size() != qsizetype(4) * wide * high * frames)
            return 255;
        const auto* shown = reinterpret_cast<const unsigned char*>(bytes.constData());
        double sum = 0;
        for (int i = 0; i < frames; ++i) {
            const auto pixels = pictureAt(i, format.Width, format.Height, noisy);
            for (int y = 0; y < high; ++y)
                for (int x = 0; x < wide; ++x, shown += 4) {
                    const std::uint32_t pixel = pixels[std::size_t(std::min(y, format.Height - 1) * format.Width +
                                                                   std::min(x, format.Width - 1))];
                    const double before = sum;
                    for (int c = 0; c < 3; ++c)
                        sum += std::abs(int(shown[c]) - int(pixel >> 8 * c & 0xff));
if(codecx && sum>before){printf("frame %d x %d y %d %02x%02x%02x not %06x\n",i,x,y,shown[2],shown[1],shown[0],pixel);return 1;}
                }
        }
        return sum / (3.0 * frames * wide * high);
    }
    std::uint32_t numberAt(qsizetype offset) const {
        return qFromLittleEndian<std::uint32_t>(TestFolder::Read(path).constData() + offset);
    }
    TestFolder folder;
    QString path = folder.Path(u"film"_s);
    bool noisy = false; static inline bool codecx=false;
};

TEST_F(FilmTest, EachCodecGivesThePicturesBack) {
    const std::pair<FilmContainer, QString> containers[] = {{FilmContainer::Avi, u"avi"_s},
                                                            {FilmContainer::Mp4, u"mov,mp4"_s},
                                                            {FilmContainer::Webm, u"webm"_s},
                                                            {FilmContainer::Gif, u"gif"_s}};
    for (const auto& [container, ending] : containers)
        for (const FilmCodec* codec : filmFormat::CodecsFor(container))
            for (const auto& [width, height, interval] :
                 {std::array{160, 120, 30}, {161, 121, 10}, {162, 122, 1000}, {163, 122, 5000}}) {
                const FilmFormat format{container, codec, -1, 0, 0, width, height, interval};
                const std::string told = QString(ending + u' ' + QString::fromUtf16(codec->Name)).toStdString() + ' ' +
                                         std::to_string(width);
                const auto failure = write(format);
                ASSERT_FALSE(failure) << told << ' ' << failure->Reason.toStdString();
                const QJsonObject film = probed(), stream = film[u"streams"][0].toObject();
                EXPECT_EQ(stream[u"width"], filmFormat::WidthOf(format)) << told;
                EXPECT_EQ(stream[u"height"], filmFormat::HeightOf(format)) << told;
                const QJsonArray packets = film[u"packets"].toArray();
                EXPECT_EQ(packets.size(), frames) << told;
                const int waits = container == FilmContainer::Gif ? std::max(interval, 20) : interval;
                const double last = packets.last()[u"dts_time"].toString().toDouble();
                EXPECT_NEAR(last, (frames - 1) * waits / 1000.0, container == FilmContainer::Avi ? 0.002 : 0.001)
                    << told;
                int keys = 0;
                for (const auto& packet : packets)
                    keys += packet[u"flags"].toString().startsWith(u'K');
                EXPECT_GE(keys, container == FilmContainer::Avi ? frames : 1) << told;
codecx=codec->IsLossless();                if (codec->IsLossless())
                    EXPECT_EQ(difference(format), 0) << told;
                else
                    EXPECT_LT(difference(format), 6) << told;
            }
}

} // namespace
