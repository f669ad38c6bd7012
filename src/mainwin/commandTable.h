// All commands of the main window and the bars on which they stand, as data. What a command does stands with frmMain.
#pragma once

#include "platform/widgets/CommandBars.h"

#include <span>

/// Whether a command can do its work yet. One that can't stands in its place and is disabled.
enum class CommandStage { Built, ToCome };

struct CommandRow {
    const char16_t* name;
    int id;
    const char16_t* caption;
    const char16_t* description;
    const char16_t* category;
    const char16_t* key; ///< "" for none
    ToolRecord::Kind form;
    const char16_t* popup; ///< band that it opens, "" for none
    CommandStage stage;
};

/// A place on a band; a name of "-" begins a group at the next place.
struct BandRow {
    const char16_t* name;
    CommandBars::BandKind kind;
    const char16_t* caption;
    std::span<const char16_t* const> tools;
};

namespace commandTable {

std::span<const CommandRow> Commands();
/// Popups before the bars that open them.
std::span<const BandRow> Bands();

bool IsBuilt(const QString& name);

/// Makes all tools and bands.
void Build(CommandBars& bars);

} // namespace commandTable
