#include "platform/device/pictureFile.h"

#include "platform/device/PainterDevice.h"
#include "platform/device/SvgDevice.h"
#include "platform/device/TraceDevice.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

namespace {
PictureEncoding asItIs(const QByteArray& bytes) {
    return [bytes] { return PictureContent{bytes, {}}; };
}
} // namespace

PictureEncoding SvgPicture(const PictureFile& file, const Paint& paint) {
    SvgDevice device(file.Size.Width, file.Size.Height, file.DotsPerInch, file.Title);
    paint(device);
    return asItIs(device.TakeDocument());
}

PictureEncoding PdfPicture(const PictureFile& file, const Paint& paint) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setResolution(file.DotsPerInch);
        writer.setPageMargins({0, 0, 0, 0});
        constexpr double pointsPerInch = 72;
        writer.setPageSize(QPageSize(QSizeF(file.Size.Width, file.Size.Height) * pointsPerInch / file.DotsPerInch,
                                     QPageSize::Point, QString(), QPageSize::ExactMatch));
        writer.setTitle(file.Title);
        writer.setCreator(u"Velorin"_s);
        QPainter painter(&writer);
        PainterDevice device(painter, file.Size.Width, file.Size.Height, file.DotsPerInch, file.DotsPerInch);
        paint(device);
    }
    return asItIs(buffer.data());
}

PictureEncoding TracePicture(const PictureFile& file, const Paint& paint) {
    TraceDevice device(file.Size.Width, file.Size.Height, file.DotsPerInch);
    paint(device);
    return asItIs(device.Trace());
}
