#include "output/pagePreview.h"

#include "platform/base/Literals.h"
#include "platform/raster/PreviewDevice.h"

#include <cmath>

namespace pagePreview {

namespace {
constexpr int mostPixelsAcross = 8192;
/// Each pixel is the mean of so many each way, or of fewer where that would be too many in all.
constexpr int finestParts = 3;
constexpr double mostParts = 32e6;

QSize roundedSize(const PlotPrinter& printer, double pixelsPerMm) {
    return {std::max(1, int(std::lround(printer.PaperWidthMm() * pixelsPerMm))),
            std::max(1, int(std::lround(printer.PaperHeightMm() * pixelsPerMm)))};
}
} // namespace

QSize FittingSize(const PlotPrinter& printer, QSize room) {
    return roundedSize(printer,
                       std::min(room.width() / printer.PaperWidthMm(), room.height() / printer.PaperHeightMm()));
}

QSize RealSize(const PlotPrinter& printer, double pixelsPerInch) {
    const double most = mostPixelsAcross / std::max(printer.PaperWidthMm(), printer.PaperHeightMm());
    return roundedSize(printer, std::min(pixelsPerInch / 25.4, most));
}

QImage Paint(const DocumentPlotter& plotter, const PlotPrinter& printer, QSize pixels,
             const std::function<bool()>& goesOn) {
    const double area = double(pixels.width()) * pixels.height();
    const int parts = std::clamp(int(std::sqrt(mostParts / area)), 1, finestParts);
    QImage sheet(pixels * parts, QImage::Format_RGB32);
    if (sheet.isNull())
        throw std::bad_alloc();
    sheet.fill(Qt::white);
    {
        PreviewDevice device(sheet, printer.Measures());
        device.SetGoesOn(goesOn);
        plotter.DrawPreview(device, printer);
    }
    return parts == 1 ? sheet : sheet.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace pagePreview
