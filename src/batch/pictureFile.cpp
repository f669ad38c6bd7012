#include "batch/pictureFile.h"

#include "platform/device/PainterDevice.h"
#include "platform/device/SvgDevice.h"
#include "platform/device/TraceDevice.h"
#include "platform/raster/RasterDevice.h"

#include <QBuffer>
#include <QFileInfo>
#include <QPdfWriter>
#include <QSaveFile>

namespace batch {

namespace {

constexpr double mmPerInch = 25.4;
constexpr int mostPixelsAcross = 32767;
constexpr int mostDotsPerInch = 9600;
constexpr ColorRef paper = makeColor(255, 255, 255);

QByteArray pngOf(const PictureFile& file, const Paint& paint) {
    QImage image(file.Size.Width, file.Size.Height, QImage::Format_RGB32);
    if (image.isNull())
        RefuseInput(file.Output, u"the picture is too large for the memory"_s);
    image.fill(qRgb(redOf(paper), greenOf(paper), blueOf(paper)));
    image.setDotsPerMeterX(qRound(file.DotsPerInch * 1000 / mmPerInch));
    image.setDotsPerMeterY(qRound(file.DotsPerInch * 1000 / mmPerInch));
    {
        RasterDevice device(image, file.DotsPerInch);
        paint(device);
    }
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

QByteArray svgOf(const PictureFile& file, const Paint& paint) {
    SvgDevice device(file.Size.Width, file.Size.Height, file.DotsPerInch, file.Title);
    paint(device);
    return device.TakeDocument();
}

QByteArray pdfOf(const PictureFile& file, const Paint& paint) {
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
    return buffer.data();
}

QByteArray traceOf(const PictureFile& file, const Paint& paint) {
    TraceDevice device(file.Size.Width, file.Size.Height, file.DotsPerInch);
    paint(device);
    return device.Trace();
}

DeviceSize parseSize(const QString& text) {
    const QStringList sides = text.toLower().split(u'x');
    bool wideOk = false, highOk = false;
    const int wide = sides.value(0).toInt(&wideOk);
    const int high = sides.value(1).toInt(&highOk);
    if (sides.size() != 2 || !wideOk || !highOk || wide < 1 || high < 1 || std::max(wide, high) > mostPixelsAcross)
        throw Stop{WrongUsage, u"--size wants WIDTHxHEIGHT of 1 to %1, not \"%2\""_s.arg(mostPixelsAcross).arg(text)};
    return {wide, high};
}

} // namespace

PictureFormat PictureFormatFor(const QString& output) {
    const QString ending = QFileInfo(output).suffix().toLower();
    if (ending == u"png")
        return pngOf;
    if (ending == u"svg")
        return svgOf;
    if (ending == u"pdf")
        return pdfOf;
    return ending == u"trace" ? traceOf : nullptr;
}

void RefuseEnding(const QString& output, const QString& endings) {
    throw Stop{WrongUsage, u"-o wants a name that ends in %1, not \"%2\""_s.arg(endings, output)};
}

void DeclarePictureOptions(Options& options) {
    options.Value(u"size"_s, u"WxH"_s, u"Size in pixels, 1280x1024 by default."_s);
    options.Value(u"dpi"_s, u"D"_s, u"Pixels an inch, 96 by default."_s);
}

PictureFile PictureFileFrom(const Options& options) {
    PictureFile file{.Output = options.Text(u"o"_s), .Title = QFileInfo(options.Operand()).fileName()};
    file.DotsPerInch = options.Integer(u"dpi"_s, 1, mostDotsPerInch).value_or(file.DotsPerInch);
    if (options.IsSet(u"size"_s))
        file.Size = parseSize(options.Text(u"size"_s));
    return file;
}

void SaveFile(const QString& path, const QByteArray& bytes) {
    // A new file takes the place of the old one, and who may do anything would lose a device or a pipe to it.
    if (const QFileInfo there(path); there.exists() && !there.isFile() && !there.isDir())
        RefuseInput(path, u"not a regular file"_s);
    QSaveFile file(path);
    // With a buffer in between, a disk that is full would show in the commit alone, which does not look for it.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file.write(bytes) != bytes.size() || !file.commit())
        RefuseInput(path, file.errorString());
}

} // namespace batch
