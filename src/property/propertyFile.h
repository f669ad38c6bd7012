// The drawing property file: beside a result file and named after it with ".property" added, it remembers how that file
// was last drawn. Not the program's own settings, which the settings store keeps along with the defaults under these.
#pragma once

#include "app/ApplicationSettings.h"
#include "result/ResultModel.h"

namespace propertyFile {

/// The name of the file beside a result file.
QString PathFor(const QString& resultFile);

/// Sets what a property file holds to its start: no step, no item, no difference, no item sets, values off; the rest
/// from the stored drawing defaults.
void ResetDrawingSettings(ApplicationSettings& settings, ResultModel& model);

/// Resets, then reads the file beside `model.FileName`; elements may stand in any order and any may be missing. False
/// when one of the two files isn't there or the property file holds nothing to read; true, with all as reset, when its
/// root has another name. A bad number reads as 0; a bad word, or a number that its field can't hold, leaves the start
/// value. The step, the item and the items of the sets are not compared with what the model has.
bool LoadPropertyFile(ApplicationSettings& settings, ResultModel& model);

/// Writes the file beside `model.FileName`, if that exists. The old file is replaced in one step, so that there is
/// always a whole one, and keeps its permissions. A link there is followed when it leads to a property file or to
/// nothing yet; any other file is left alone. The line that tells the user why nothing was written, and the old file is
/// as it was; empty when all went well or there is no result file.
QString SavePropertyFile(const ApplicationSettings& settings, const ResultModel& model);

} // namespace propertyFile
