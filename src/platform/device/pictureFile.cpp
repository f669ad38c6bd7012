#include "platform/device/pictureFile.h"

#include "platform/base/WholeFile.h"
#include "platform/device/PainterDevice.h"
#include "platform/device/PictureNote.h"
#include "platform/device/PlotPrinter.h"
#include "platform/device/SvgDevice.h"
#include "platform/device/TraceDevice.h"

#include <QIODevice>
#include <QPainter>
#include <QPdfWriter>

namespace {
PictureEncoding asItIs(const QByteArray& bytes) {
    return [bytes] { return PictureContent{bytes, {}}; };
}

/// Takes a document without ever throwing in the midst of the toolkit's work.
class DocumentOutput final : public QIODevice {
public:
    const QByteArray& Whole() const { return bytes.Whole(); }

private:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 count) override {
        bytes.Append({data, count});
        return count;
    }

    CollectedBytes bytes;
};

/// The units of vector output: lines as thin as a pen may be, and points where they are.
struct Units {
    explicit Units(const PictureFile& file) {
        constexpr int finest = 1200;
        // A whole number of units for each pixel keeps the size of the paper.
        const int parts = file.DotsPerInch ? 1 : (finest + file.Resolution() - 1) / file.Resolution();
        Width = file.Size.Width * parts;
        Height = file.Size.Height * parts;
        PerInch = file.Resolution() * parts;
    }
    int Width, Height, PerInch;
};

constexpr double pointsPerInch = 72;

PictureEncoding pdfOf(QSizeF points, const DeviceMeasures& measures, const QString& title, const Paint& paint,
                      const std::function<bool()>& goesOn = {}, const QString& note = {}) {
    DocumentOutput output;
    output.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    auto writer = std::make_unique<QPdfWriter>(&output);
    writer->setResolution(measures.DotsPerInchX);
    writer->setPageMargins({0, 0, 0, 0});
    writer->setPageSize(QPageSize(points, QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer->setTitle(title);
    writer->setCreator(u"Velorin"_s);
    if (!note.isEmpty())
        writer->setDocumentXmpMetadata(PictureNote::Xmp(note));
    auto painter = std::make_unique<QPainter>(writer.get());
    try {
        PainterDevice device(*painter, measures);
        device.GoesOn = goesOn;
        paint(device);
        device.Finish();
        painter->end();
    } catch (const std::bad_alloc&) {
        // They would write the document's end as they go, and end the program when there is no memory for that either.
        (void)painter.release();
        (void)writer.release();
        throw;
    }
    return asItIs(output.Whole());
}
} // namespace

PictureEncoding SvgPicture(const PictureFile& file, const Paint& paint) {
    const Units units(file);
    SvgDevice device(units.Width, units.Height, units.PerInch, file.Title, file.Note);
    device.GoesOn = file.GoesOn;
    paint(device);
    return asItIs(device.TakeDocument());
}

PictureEncoding PdfPicture(const PictureFile& file, const Paint& paint) {
    const Units units(file);
    const QSizeF points = QSizeF(units.Width, units.Height) * pointsPerInch / units.PerInch;
    return pdfOf(points, {units.Width, units.Height, units.PerInch, units.PerInch}, file.Title, paint, file.GoesOn,
                 file.Note);
}

PictureEncoding PdfPage(const PlotPrinter& printer, const QString& title, const Paint& paint,
                        const std::function<bool()>& goesOn) {
    constexpr double pointsPerMm = pointsPerInch / 25.4;
    const QSizeF points = QSizeF(printer.PaperWidthMm(), printer.PaperHeightMm()) * pointsPerMm;
    return pdfOf(points, printer.Measures(), title, paint, goesOn);
}

PictureEncoding TracePicture(const PictureFile& file, const Paint& paint) {
    TraceDevice device(file.Size.Width, file.Size.Height, file.Resolution());
    paint(device);
    return asItIs(device.Trace());
}

std::optional<QString> SaveContent(const QString& path, const PictureContent& content) {
    return content.Problem ? content.Problem : WholeFile::Write(path, content.Bytes);
}
