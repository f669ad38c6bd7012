// Families of commands that are made at run time and stand for the entries of a list: their names are a prefix and a
// number, their ids count from a fixed base. What a click on one does stands with the command table.
#pragma once

#include "platform/widgets/CommandBars.h"

#include <QIcon>
#include <span>

class frmMain;

struct FamilyRow {
    const char16_t* prefix;
    int firstId;
    int firstNumber; ///< of the list's first entry
    const char16_t* band;
    const char16_t* last;         ///< the command that stays behind them in a group of its own, "" for none
    void (frmMain::*act)(int id); ///< told the distance from `firstId`
};

struct FamilyEntry {
    QString Caption;
    QString Description;
    bool Enabled = true;
    QIcon Picture = {};
};

namespace commandFamilies {

/// Puts the list in place of what stands on the family's band. A prefix that is none does nothing.
void Set(CommandBars& bars, const QString& prefix, const std::vector<FamilyEntry>& entries);

} // namespace commandFamilies
