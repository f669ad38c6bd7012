#include "platform/base/Drives.h"

#include "platform/base/Literals.h"
#include "platform/base/NativePath.h"

#include <algorithm>
#include <memory>
#include <mntent.h>
#include <optional>

namespace {

QString withSeparator(const QString& path) {
    return path.endsWith(u'/') ? path : QString(path + u'/');
}

bool belongsToTheSystem(const QString& path) {
    static const QStringList parts{u"/boot/"_s, u"/dev/"_s, u"/etc/"_s, u"/proc/"_s,
                                   u"/snap/"_s, u"/sys/"_s, u"/usr/"_s, u"/var/"_s};
    return path == u"/" || (path.startsWith(u"/run/") && !path.startsWith(u"/run/media/")) ||
           std::ranges::any_of(parts, [&](const QString& part) { return path.startsWith(part); });
}

/// A volume by what is mounted: a device file, or a folder of a server, as in "//server/a" and "server:/a".
std::optional<Drives::Drive> volumeOf(const mntent& mount) {
    const QString source = NativePath::Text(mount.mnt_fsname), path = withSeparator(NativePath::Text(mount.mnt_dir));
    const bool network = source.startsWith(u"//") || source.contains(u":/");
    if ((!network && !source.startsWith(u"/dev/")) || belongsToTheSystem(path))
        return {};
    return Drives::Drive{network ? Drives::Kind::Network : Drives::Kind::Disk, path,
                         NativePath::Shown(path.section(u'/', -2, -2))};
}

} // namespace

QList<Drives::Drive> Drives::All(const QString& tableOfMounts) {
    QList<Drive> drives{{Kind::Root, u"/"_s, {}}};
    if (const QString home = NativePath::Environment("HOME"); home.startsWith(u'/') && home != u"/")
        drives += {Kind::Home, withSeparator(home), {}};
    const std::unique_ptr<FILE, int (*)(FILE*)> table(::setmntent(NativePath::Of(tableOfMounts).c_str(), "re"),
                                                      ::endmntent);
    while (const mntent* mount = table ? ::getmntent(table.get()) : nullptr) {
        const std::optional<Drive> volume = volumeOf(*mount);
        // What is mounted over another volume hides it.
        if (volume && !std::ranges::any_of(drives, [&](const Drive& drive) { return drive.Path == volume->Path; }))
            drives += *volume;
    }
    return drives;
}
