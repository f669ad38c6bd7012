// The looks of a picture that the registry keeps for all files, by names, for the command line: lines, fonts, the
// number format, the header of a slide show.
#pragma once

#include "app/ApplicationSettings.h"

namespace styleElements {

/// Sets what "NAME=VALUE" says: `line-1` to `line-4` is "WIDTH,STYLE,COLOR" (tenths of a millimetre, 0 to 4, 0xBBGGRR),
/// `font-1` to `font-4` a font string, `real-format` a number mask, `header` what the header shows of "step", "time",
/// "contour" and "vector", between commas, "none" for no header. False when there is no such name or value.
bool Set(const QString& assignment, ApplicationSettings& settings);

/// For each that isn't what settings start from, in the form that `Set` takes.
QStringList Assignments(const ApplicationSettings& settings);

} // namespace styleElements
