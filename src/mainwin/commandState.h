// What is enabled and marked, and what the lists show, from the command table and the state of the program.
#pragma once

#include "app/ApplicationSettings.h"
#include "platform/widgets/CommandBars.h"
#include "result/ResultModel.h"

/// What the commands depend on.
struct CommandFacts {
    const ResultModel& Model;
    const ApplicationSettings& Settings;
    bool FileOpen = false;
    int Zoom = 0;
    bool HasViewBefore = false, HasViewAfter = false; ///< among the views seen
    int PickedCount = 0;
    bool ShowOn = false;    ///< a slide show is going on
    bool ShowMoves = false; ///< its timer runs
};

namespace commandState {

/// Fills the combos and sets Enabled and Checked of all commands. The caller keeps selection events from acting
/// meanwhile. Without a file the marks stay, and the list of vectors, which says what the settings hold.
void UpdateCommandState(CommandBars& bars, const CommandFacts& facts);

/// Selects in the lists what the model and the settings have chosen.
void ShowChosen(CommandBars& bars, const CommandFacts& facts);

/// Enabled alone, but for the commands that are looked at when their band opens.
void EnableCommands(CommandBars& bars, const CommandFacts& facts);
/// Those, on a band that is about to open.
void EnableOnOpening(CommandBars& bars, const QString& band, const CommandFacts& facts);

/// Marks the tool at `index` of a band and no other.
void CheckBandChoice(CommandBars& bars, const QString& band, int index);
void CheckBandChoiceByName(CommandBars& bars, const QString& band, const QString& tool);

} // namespace commandState
