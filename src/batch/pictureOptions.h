// The options of the commands that write pictures, and their output files.
#pragma once

#include "batch/commandSupport.h"
#include "platform/raster/pictureFormats.h"

namespace batch {

/// Stops the command because of a name with an ending other than `endings`, a list for people.
[[noreturn]] void RefuseEnding(const QString& output, const QString& endings);

/// Declares `--size`, `--dpi` and `--settings`.
void DeclarePictureOptions(Options& options);

/// `--dpi`, if it is given.
std::optional<int> DotsPerInchFrom(const Options& options);

/// Stops the command when no picture may be as large.
void RequirePictureSize(DeviceSize pixels);

/// A picture by `--size` and `--dpi` of a command whose result file gives it the title.
PictureFile PictureFileFrom(const Options& options);

} // namespace batch
