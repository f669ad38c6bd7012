// Writes what an open result file gives, whatever format it came in, as one of our own format. Draws nothing and knows
// no drawing settings.
#pragma once

#include "result/ResultModel.h"

namespace VrfWriter {

/// Writes mesh, items and all steps to `path`, wholly or not at all; no step need be loaded. Reading the file gives the
/// same, but for characters of names and title that code page 932 lacks. Nothing when it is done, else why not.
std::optional<QString> Write(const ResultModel& model, const QString& path);

} // namespace VrfWriter
