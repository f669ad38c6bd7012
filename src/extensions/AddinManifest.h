// What stands beside an add-in module and tells what it is: a JSON file NAME.addin.json. Reading it runs nothing of the
// module.
#pragma once

#include <QString>
#include <QStringList>

/// A module as its manifest and its file tell of it.
struct AddinModule {
    QString Name;
    QString Vendor; ///< may be empty
    QString Version;
    QString Description; ///< of one that can't be installed: why not
    QString Manifest;    ///< the manifest's path
    QString FileName;    ///< the library's path; empty when the manifest names none
    QString Picture;     ///< path of a picture; empty for none
    bool Installable = false;
    bool Changed = false; ///< was installed, and is not the same since
};

namespace AddinManifest {
inline constexpr QStringView Ending = u".addin.json";
/// A larger file is no manifest, and a larger picture none.
inline constexpr qint64 MaxBytes = 1 << 20, MaxPictureBytes = 4 << 20;

/// The paths of the manifests in a folder, by name; none when there is no such folder.
QStringList In(const QString& folder);

/// The module of a manifest. One with a fault is not installable, says so in `Description`, and is named after the
/// manifest if need be. Library and picture are names of files in the manifest's own folder.
AddinModule Read(const QString& path);
} // namespace AddinManifest
