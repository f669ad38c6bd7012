#include "platform/raster/pictureFormats.h"

#include "platform/raster/PngFile.h"
#include "platform/raster/RasterDevice.h"

#include <QFileInfo>

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
    image.setDotsPerMeterX(qRound(file.Resolution() / metresPerInch));
    image.setDotsPerMeterY(qRound(file.Resolution() / metresPerInch));
    {
        RasterDevice device(image, file.Resolution());
        device.GoesOn = file.GoesOn;
        paint(device);
    }
    return [image, note = file.Note] { return PngContent(image, note); };
}
