// External programs that the user has entered into the registry: the table, the macros of their arguments, the start.
// Their pictures and the page to edit them are windows' business.
#pragma once

#include "app/mdTips.h"

#include <optional>
#include <vector>

/// A row of the table.
struct ToolEntry {
    QString Name; ///< on the menu
    QString Description;
    QString Module; ///< path of the program; may stand in quotation marks
    int Icon = 0;   ///< which of the program's pictures; below 0 none
    QString Args;
    bool Wait = false;    ///< stored only
    bool Missing = false; ///< there is no such file

    bool operator==(const ToolEntry&) const = default;
};

namespace toolTable {
/// In the registry's order. A key that can't be read is passed over.
std::vector<ToolEntry> LoadTools();
/// Puts the table in the place of the one there; false, and nothing is changed, when it can't be kept.
bool SaveTools(const std::vector<ToolEntry>& tools);

/// The path without the quotation marks around it, if any.
QString ProgramOf(const ToolEntry& tool);

/// "%f", "%p", "%a", "%r" and "%t", in this order, for the open file (empty when none is open) and the program's
/// folder.
LabelMacros BuildToolMacros(const QString& fileName, const QString& programFolder);

/// The arguments of a command line: blanks separate, except within "..." or '...', which go; a backslash takes the next
/// character as it stands, but within '...', and within "..." only a quotation mark or a backslash. Quotation marks
/// that aren't closed end with the text.
QStringList SplitArguments(const QString& text);

/// Starts a tool with the macros of its arguments expanded, each within its own argument, and does not wait for it.
/// What the user is to be told, with the style of a stop, when it can't be started.
std::optional<QString> RunTool(const ToolEntry& tool, const LabelMacros& macros);
} // namespace toolTable
