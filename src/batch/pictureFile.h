// Writes what is painted to a file in the format that its name asks for: PNG, SVG, PDF or the trace of the calls. Knows
// nothing of what is painted.
#pragma once

#include "batch/commandSupport.h"
#include "platform/device/DeviceContext.h"

#include <functional>

namespace batch {

/// A file to come and the size of the picture in it.
struct PictureFile {
    QString Output;
    QString Title; ///< told in SVG and PDF
    DeviceSize Size{1280, 1024};
    int DotsPerInch = 96;
};

using Paint = std::function<void(DeviceContext&)>;

/// Paints once and gives the whole content of the file; stops the command when the memory does not hold the picture.
using PictureFormat = QByteArray (*)(const PictureFile&, const Paint&);

/// The format by the ending of a file's name, in large or small letters: png, svg, pdf or trace; null for any other.
PictureFormat PictureFormatFor(const QString& output);

/// Stops the command because of a name with an ending other than `endings`, a list for people.
[[noreturn]] void RefuseEnding(const QString& output, const QString& endings);

/// Declares `--size` and `--dpi`.
void DeclarePictureOptions(Options& options);

/// A picture by `-o`, `--size` and `--dpi` of a command whose result file gives it the title.
PictureFile PictureFileFrom(const Options& options);

/// Replaces a file by `bytes`; stops the command when that can't be done, and the file is then as it was. What is there
/// and no regular file, such as a device, can't be replaced.
void SaveFile(const QString& path, const QByteArray& bytes);

} // namespace batch
