// Painted pictures as the content of files: SVG, PDF and the trace of the calls. Knows nothing of what is painted.
#pragma once

#include "platform/device/DeviceContext.h"

#include <QByteArray>
#include <functional>

class PlotPrinter;

/// The picture in a file and what stands there about it.
struct PictureFile {
    QString Title = {}; ///< told in SVG and PDF
    DeviceSize Size{1280, 1024};
    /// As wished. Without a wish it is 96, and vector formats divide the same paper by at least 1200 an inch.
    std::optional<int> DotsPerInch = {};
    QString Note = {}; ///< goes with the picture in PNG, SVG and PDF
    /// When set the painting ends with `DrawingStopped` soon after it says no, but for a trace.
    std::function<bool()> GoesOn = {};

    int Resolution() const { return DotsPerInch.value_or(96); }
};

/// The whole content of a file, or why there is none.
struct PictureContent {
    QByteArray Bytes;
    std::optional<QString> Problem;
};

/// Writes a file wholly; else gives the reason, and the file is as it was.
std::optional<QString> SaveContent(const QString& path, const PictureContent& content);

using Paint = std::function<void(DeviceContext&)>;

/// What is left to do with a painted picture; once, on any thread.
using PictureEncoding = std::function<PictureContent()>;

/// Paints, once or not at all; what comes of it is told by the encoding.
using PictureFormat = PictureEncoding (*)(const PictureFile&, const Paint&);

PictureEncoding SvgPicture(const PictureFile& file, const Paint& paint);
PictureEncoding PdfPicture(const PictureFile& file, const Paint& paint);
/// The sheet of a printer, painted on a device of its measures. Throws `DrawingStopped` soon after `goesOn` says no.
PictureEncoding PdfPage(const PlotPrinter& printer, const QString& title, const Paint& paint,
                        const std::function<bool()>& goesOn = {});
PictureEncoding TracePicture(const PictureFile& file, const Paint& paint);
