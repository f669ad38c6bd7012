// How long the registry's file is waited for while another program holds it, and whether that was in vain. Opens
// nothing. For `Registry` alone.
#pragma once

#include "platform/registry/Registry.h"

#include <array>
#include <filesystem>

namespace Registry {
/// Programs hold the file for milliseconds, or else hang: it is given up when for a second nothing of it has changed. A
/// program that saves one thing after the other is waited for longer, but not for ever.
class StoreWait {
public:
    /// The file is wanted. It is not waited for at all while it is given up.
    void Begin(const std::filesystem::path& file, Access access);
    /// It is held: waits a little. False when that was long enough.
    bool GoOn();

    /// What has come of it.
    void NoteHeld();
    void NoteRead();
    void NoteWritten() { givenUp = GivenUp::Nothing; }
    /// It could not even be opened.
    void NoteShut();

    bool IsHeld() const { return held; }

private:
    enum class GivenUp { Nothing, Writing, Everything };
    using Changes = std::array<std::filesystem::file_time_type, 2>; ///< the last one of the file, and of its journal

    Changes lastChanges() const;

    std::filesystem::path path;
    Access wanted = Access::Read;
    bool held = false;
    GivenUp givenUp = GivenUp::Nothing;
    int leftMs = 0;    ///< unless something changes
    int longestMs = 0; ///< left whatever changes
    Changes seen;
};
} // namespace Registry
