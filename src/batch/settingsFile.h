// Settings out of an exported registry file (.reg), into the user's own registry or past it.
#pragma once

#include "app/ApplicationSettings.h"
#include "batch/commandSupport.h"

namespace batch {

/// Adds the file's settings to the registry; stops the command when that can't be done, and nothing is then added.
void ImportSettings(const QString& path);

/// The general settings of the file that `--settings` names, defaults for what it lacks; without the option all are
/// defaults. The user's registry is neither read nor changed. Stops the command when the file can't be used.
ApplicationSettings SettingsFrom(const Options& options);

} // namespace batch
