#include "platform/registry/StoreWait.h"

#include <QThread>
#include <algorithm>
#include <system_error>

namespace Registry {
namespace {
constexpr int patienceMs = 1000, longestPatienceMs = 5000;
constexpr int stepMs = 5;
} // namespace

void StoreWait::Begin(const std::filesystem::path& file, Access access) {
    if (file != path)
        givenUp = GivenUp::Nothing; // another file is another's to hold
    path = file;
    wanted = access;
    const bool inVain = givenUp == GivenUp::Everything || (givenUp == GivenUp::Writing && wanted == Access::Write);
    leftMs = inVain ? 0 : patienceMs;
    longestMs = longestPatienceMs;
    seen = {};
    held = false;
}

StoreWait::Changes StoreWait::lastChanges() const {
    std::error_code none;
    std::filesystem::path journal = path;
    journal += "-journal";
    return {std::filesystem::last_write_time(path, none), std::filesystem::last_write_time(journal, none)};
}

bool StoreWait::GoOn() {
    if (leftMs <= 0)
        return false;
    if (const Changes changes = lastChanges(); changes != seen) {
        seen = changes;
        leftMs = patienceMs;
    }
    QThread::msleep(stepMs);
    longestMs -= stepMs;
    leftMs = std::min(leftMs - stepMs, longestMs);
    return true;
}

void StoreWait::NoteHeld() {
    held = true;
    if (leftMs <= 0 && givenUp != GivenUp::Everything)
        givenUp = wanted == Access::Write ? GivenUp::Writing : GivenUp::Everything;
}

void StoreWait::NoteRead() {
    held = false;
    if (wanted == Access::Read && givenUp == GivenUp::Everything)
        givenUp = GivenUp::Writing;
}

void StoreWait::NoteShut() {
    // Who can't even read need not wait again for writing, nor the other way round.
    if (held && leftMs <= 0)
        givenUp = GivenUp::Everything;
}
} // namespace Registry
