// The page as a picture: the whole sheet as it comes out of the printer, for a screen.
#pragma once

#include "platform/device/DocumentPlotter.h"
#include "platform/device/PlotPrinter.h"

#include <QImage>

namespace pagePreview {
/// Pixels across and down for a sheet that is to have room in `room`; at least one each way.
QSize FittingSize(const PlotPrinter& printer, QSize room);
/// Pixels of the sheet in its real size, or less when that would be more than a picture should have.
QSize RealSize(const PlotPrinter& printer, double pixelsPerInch);

/// Has the plotter paint the page. Lines thinner than a pixel are fainter instead, as they look on paper from afar.
/// Throws `DrawingStopped` when `goesOn` says no.
QImage Paint(const DocumentPlotter& plotter, const PlotPrinter& printer, QSize pixels,
             const std::function<bool()>& goesOn = {});
} // namespace pagePreview
