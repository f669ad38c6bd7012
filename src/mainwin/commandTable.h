// All commands of the main window and the bars on which they stand, as data: captions, keys, what each needs and what
// it does. How the window does it stands with frmMain.
#pragma once

#include "app/ApplicationSettings.h"
#include "mainwin/commandFamilies.h"

/// What must be there for a command to be of use.
enum class Needs {
    Nothing,
    File,         ///< an open file
    Displacement, ///< one with displacements
    Areas,        ///< one with other elements than lines
    LargerZoom,   ///< an open file that can be zoomed into further; likewise the next two
    SmallerZoom,
    OtherZoom,
    ViewBefore, ///< a view to go back to; likewise the next one
    ViewAfter,
    // These two are looked at when a band with the command opens, and not before.
    Picked,  ///< a selection
    Picture, ///< an open file
    // Of the slide show.
    ShowOff,     ///< an open file, and no show
    ShowOn,      ///< a show
    ShowRunning, ///< a show that moves on
    ShowHalted   ///< no show that moves on
};

struct CommandRow {
    const char16_t* name;
    int id;
    const char16_t* caption;
    const char16_t* description;
    const char16_t* category;
    const char16_t* key; ///< "" for none
    ToolRecord::Kind form;
    const char16_t* popup; ///< band that it opens, "" for none
    Needs needs;
    void (frmMain::*act)();                   ///< what it does; null for a popup, and for a command that is to come
    bool& (*flag)(ApplicationSettings&) = {}; ///< the setting that it inverts before and whose state it shows
};

/// A place on a band; a name of "-" begins a group at the next place.
struct BandRow {
    const char16_t* name;
    CommandBars::BandKind kind;
    const char16_t* caption;
    std::span<const char16_t* const> tools;
    /// The setting for whose values the tools of the band stand, the first one for 0; null for other bands.
    int& (*choice)(ApplicationSettings&) = {};
};

struct commandTable {
    static std::span<const CommandRow> Commands();
    /// Popups before the bars that open them.
    static std::span<const BandRow> Bands();
    static std::span<const FamilyRow> Families();

    /// Null for a name that isn't in the table.
    static const CommandRow* Find(const QString& name);
    /// The band on which a command stands for a value of a setting; null for other commands.
    static const BandRow* ChoiceOf(const QString& name);
    /// The family whose prefix begins `name`.
    static const FamilyRow* FamilyOf(const QString& name);
    /// Whether a command can do its work yet. One that can't stands in its place and is disabled.
    static bool IsBuilt(const CommandRow& row) { return row.act || row.form == ToolRecord::Kind::Popup; }

    /// Makes all tools and bands.
    static void Build(CommandBars& bars);

private:
    static const CommandRow commands[];
    static const FamilyRow families[];
};
