#include "platform/raster/pictureFormats.h"

#include "platform/raster/RasterDevice.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageWriter>

namespace {
constexpr double metresPerInch = 0.0254;

struct Row {
    const char16_t* ending;
    PictureFormat format;
};

constexpr Row formats[] = {
    {u"png", PngPicture},
    {u"svg", SvgPicture},
    {u"pdf", PdfPicture},
    {u"trace", TracePicture},
};

PictureContent pngOf(const QImage& image) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "PNG");
    if (!writer.write(image))
        return {{}, writer.errorString()};
    return {buffer.data(), {}};
}
} // namespace

PictureFormat PictureFormatFor(const QString& fileName) {
    const QString ending = QFileInfo(fileName).suffix().toLower();
    for (const Row& row : formats)
        if (ending == QStringView(row.ending))
            return row.format;
    return nullptr;
}

PictureEncoding PngPicture(const PictureFile& file, const Paint& paint) {
    QImage image(file.Size.Width, file.Size.Height, QImage::Format_RGB32);
    if (image.isNull())
        return [] { return PictureContent{{}, u"the picture is too large for the memory"_s}; };
    image.fill(Qt::white);
    image.setDotsPerMeterX(qRound(file.DotsPerInch / metresPerInch));
    image.setDotsPerMeterY(qRound(file.DotsPerInch / metresPerInch));
    {
        RasterDevice device(image, file.DotsPerInch);
        paint(device);
    }
    return [image] { return pngOf(image); };
}
