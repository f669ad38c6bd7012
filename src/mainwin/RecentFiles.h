// The files that were opened last: their list, its place in the registry and what a menu shows of it. Opens nothing and
// knows no window.
#pragma once

#include "mainwin/commandFamilies.h"

class RecentFiles {
public:
    /// Appends what the registry has of files that still exist.
    void Load();
    /// Writes the first 10. Values beyond the list's end stay: their files come back when they exist.
    void Save() const;

    /// Puts `path` first, from its old place if it is there already.
    void Add(const QString& path);
    int Count() const { return int(paths.size()); }
    /// The newest is 0; empty for an index that there isn't.
    QString Path(int index) const { return paths.value(index); }

    /// The first 9, numbered.
    std::vector<FamilyEntry> MenuEntries() const;

private:
    QStringList paths;
};
