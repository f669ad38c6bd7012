// The places that a tree of folders begins with. Asks none of them whether it is there, since a server that has gone
// would be waited for.
#pragma once

#include <QList>
#include <QString>

namespace Drives {

enum class Kind { Root, Home, Disk, Network };

struct Drive {
    Drives::Kind Kind = Kind::Root;
    QString Path; ///< with a separator at its end
    QString Name; ///< of a mounted volume, for the eye
    bool operator==(const Drive&) const = default;
};

/// The root, the user's own folder, and the disks and folders of servers that the table of mounts names, but for those
/// that are parts of the system.
QList<Drive> All(const QString& tableOfMounts = QStringLiteral("/proc/self/mounts"));

} // namespace Drives
