#include "platform/raster/PngFile.h"

#include "platform/device/PictureNote.h"

#include <QImage>
#include <QtEndian>
#include <libdeflate.h>
#include <memory>
#include <new>

namespace {
/// The fastest: pictures of a few colours are no smaller for ten times the work.
constexpr int compression = 1;
constexpr std::size_t channels = 3;
constexpr quint32 longestChunk = 1u << 30;

class File {
public:
    void Chunk(const char* type, QByteArrayView data) {
        number(quint32(data.size()));
        const qsizetype start = Bytes.size();
        Bytes.append(type, 4);
        Bytes.append(data);
        number(libdeflate_crc32(0, Bytes.constData() + start, std::size_t(Bytes.size() - start)));
    }

    QByteArray Bytes = "\x89PNG\r\n\x1a\n";

private:
    void number(quint32 value) {
        const quint32 bigEndian = qToBigEndian(value);
        Bytes.append(reinterpret_cast<const char*>(&bigEndian), sizeof bigEndian);
    }
};

QByteArray numbers(quint32 first, quint32 second, QByteArrayView rest) {
    QByteArray data(8, Qt::Uninitialized);
    qToBigEndian(first, data.data());
    qToBigEndian(second, data.data() + 4);
    return data.append(rest);
}

/// Rows from the top, each with the number of its filter before it: none, since flat colours and fine lines shrink
/// better as they are.
QByteArray rowsOf(const QImage& picture) {
    const std::size_t width = std::size_t(picture.width());
    QByteArray rows(qsizetype((1 + channels * width) * std::size_t(picture.height())), Qt::Uninitialized);
    char* at = rows.data();
    for (int y = 0; y < picture.height(); ++y) {
        *at++ = 0;
        const QRgb* const pixels = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (std::size_t x = 0; x < width; ++x, at += channels) {
            at[0] = char(qRed(pixels[x]));
            at[1] = char(qGreen(pixels[x]));
            at[2] = char(qBlue(pixels[x]));
        }
    }
    return rows;
}

QByteArray compressed(const QByteArray& bytes) {
    const std::unique_ptr<libdeflate_compressor, void (*)(libdeflate_compressor*)> compressor(
        libdeflate_alloc_compressor(compression), libdeflate_free_compressor);
    if (!compressor)
        throw std::bad_alloc();
    const std::size_t size = std::size_t(bytes.size());
    QByteArray out(qsizetype(libdeflate_zlib_compress_bound(compressor.get(), size)), Qt::Uninitialized);
    out.truncate(qsizetype(
        libdeflate_zlib_compress(compressor.get(), bytes.constData(), size, out.data(), std::size_t(out.size()))));
    return out;
}
} // namespace

PictureContent PngContent(const QImage& picture, const QString& note) {
    if (picture.format() != QImage::Format_RGB32)
        return {{}, u"a picture of another kind cannot be written"_s};
    const QByteArray data = compressed(rowsOf(picture));
    if (data.isEmpty())
        return {{}, u"the picture cannot be compressed"_s};
    File file;
    file.Bytes.reserve(data.size() + 128);
    // Bits of a channel, colours without alpha; the rest has one value each.
    constexpr QByteArrayView trueColor("\x08\x02\0\0\0", 5), perMetre("\x01", 1);
    file.Chunk("IHDR", numbers(quint32(picture.width()), quint32(picture.height()), trueColor));
    file.Chunk("pHYs", numbers(quint32(picture.dotsPerMeterX()), quint32(picture.dotsPerMeterY()), perMetre));
    if (!note.isEmpty())
        file.Chunk("iTXt", PictureNote::PngText(note));
    for (qsizetype first = 0; first < data.size(); first += longestChunk)
        file.Chunk("IDAT", QByteArrayView(data).sliced(first, std::min<qsizetype>(longestChunk, data.size() - first)));
    file.Chunk("IEND", {});
    return {file.Bytes, {}};
}
