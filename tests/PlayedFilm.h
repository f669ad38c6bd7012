// A film as other programs see it: what ffprobe tells of it, and its pictures as ffmpeg shows them.
#pragma once

#include "platform/base/Literals.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>

class PlayedFilm {
public:
    static bool CanPlay() { return !QStandardPaths::findExecutable(u"ffprobe"_s).isEmpty(); }

    explicit PlayedFilm(const QString& path) {
        const QJsonObject film =
            QJsonDocument::fromJson(
                outputOf(u"ffprobe -v error -show_streams -show_packets -of json"_s.split(u' ') << path))
                .object();
        Stream = film[u"streams"][0].toObject();
        Packets = film[u"packets"].toArray();
        const int width = Stream[u"width"].toInt(), height = Stream[u"height"].toInt();
        bytes = outputOf(
            u"ffmpeg -v error -i"_s.split(u' ')
            << path << u"-vsync 0 -f rawvideo -pix_fmt bgra -sws_flags accurate_rnd+full_chroma_int -"_s.split(u' '));
        const qsizetype size = qsizetype(4) * width * height;
        for (qsizetype at = 0; size > 0 && at + size <= bytes.size(); at += size)
            Pictures.emplace_back(reinterpret_cast<const uchar*>(bytes.constData()) + at, width, height, 4 * width,
                                  QImage::Format_RGB32);
    }

    QJsonObject Stream;
    QJsonArray Packets;
    std::vector<QImage> Pictures;

    int KeyFrames() const {
        int count = 0;
        for (const auto& packet : Packets)
            count += packet[u"flags"].toString().startsWith(u'K');
        return count;
    }
    /// Seconds at which the last frame is shown.
    double LastTime() const { return Packets.last()[u"dts_time"].toString().toDouble(); }

private:
    static QByteArray outputOf(QStringList words) {
        QProcess process;
        process.start(words.takeFirst(), words);
        process.waitForFinished(-1);
        return process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
    }

    QByteArray bytes; ///< of the pictures
};
