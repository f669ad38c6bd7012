// Which commands can be used and which are marked, from the model and the settings; and the recent files' entries.
#pragma once

#include "app/ApplicationSettings.h"
#include "app/clsStringArray.h"
#include "platform/widgets/CommandBars.h"
#include "result/ResultModel.h"

namespace commandState {

/// Ids of the families of commands that are made at run time.
inline constexpr int RecentFileBase = 100000;

/// Fills the combos and sets Enabled and Checked of all commands; `enabled` is whether a file is open. The caller keeps
/// selection events from acting meanwhile.
void UpdateCommandState(CommandBars& bars, bool enabled, const ResultModel& model, const ApplicationSettings& settings);

/// Marks the tool at `index` of a band and no other.
void CheckBandChoice(CommandBars& bars, const QString& band, int index);
void CheckBandChoiceByName(CommandBars& bars, const QString& band, const QString& tool);

/// An entry for each of the first 9 recent files in the file menu, with "miFileQuit" behind them.
void BuildRecentMenu(CommandBars& bars, const clsStringArray& recentFiles);

} // namespace commandState
