// Finds add-in modules, keeps which of them are installed, and runs them. No foreign code runs before `Run`; no window
// stands here.
#pragma once

#include "extensions/AddinManifest.h"
#include <velorin_addin.h>

#include <vector>

/// Installed modules stand in the registry, each with its library's path and fingerprint; a module whose library is
/// gone or not the same any more is not installed. For one thread, but for `Run`.
class AddinHost {
public:
    /// Why the latest call failed.
    struct Error {
        QString Module;
        QString Text; ///< empty: it did not
    };

    /// The modules in a folder that are not installed. Those that can't be come along only with `all`.
    std::vector<AddinModule> Search(const QString& folder, bool all) const;
    /// The installed ones, in the order in which they were installed.
    std::vector<AddinModule> ModuleList() const;

    /// False when the module can't be installed, the registry can't keep it, or the host is locked.
    bool Install(const AddinModule& module);
    /// Takes the module of an index of `ModuleList` out of it; its files stay. False as above, or when there is none.
    bool Uninstall(int index);

    /// A locked host neither installs nor removes. Locks count.
    void Lock() { ++locks; }
    void Unlock() { --locks; }

    /// Runs a module of `ModuleList` with the seven entries of `call`; the rest of it is filled in here. Any thread may
    /// do this while the host is locked. What went wrong is the last error.
    void Run(const AddinModule& module, const velorin_addin_call& call);
    const Error& LastError() const { return lastError; }

private:
    int locks = 0;
    Error lastError;
};
