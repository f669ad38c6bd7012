// Names of files, which are bytes on this platform, as texts and back, and what can be done with a name alone. Who only
// takes a name apart needs none of this.
#pragma once

#include <QString>
#include <filesystem>
#include <optional>

class QFile;
class QUrl;

namespace NativePath {
/// A name that the system gave, from UTF-8. A byte that is none becomes a low surrogate of its own, U+DC80 to U+DCFF,
/// so that `Of` gives the same bytes back.
QString Text(QByteArrayView bytes);

/// The name for the system. Empty, which names nothing, for a text with a NUL.
std::filesystem::path Of(const QString& path);

/// For the eye and for other programs: each surrogate without its other half as U+FFFD. Positions stay.
QString Shown(const QString& text);

/// From the root on, with "." and ".." worked out by name.
QString Absolute(const QString& path);

/// What the environment says of `name`; empty when it says nothing.
QString Environment(const char* name);

/// Folders without a trailing separator: that of the running program, and the one that names without a root start from.
QString ProgramFolder();
QString CurrentFolder();

/// The names of what stands in a folder and fits any of the patterns with * and ?, in their order; none where there is
/// no folder.
QStringList Files(const QString& folder, const QStringList& patterns);
/// The names of the folders in a folder, and of the links to folders; in their order without regard to case. None where
/// there is no folder or it can't be read.
QStringList Folders(const QString& folder);
bool HasFolders(const QString& folder);
bool IsFolder(const QString& path);

/// Where the user's programs keep their settings, and where all keep what is soon to go; neither need be there.
QString ConfigurationFolder();
QString TemporaryFolder();

/// An address of the file for other programs.
QUrl Url(const QString& path);
/// The file of an address, from an address of a file.
QString OfUrl(const QUrl& local);

/// Opens what can be read, be it a file, a pipe or a device. Nothing when it is open, else why not, in the system's
/// words.
std::optional<QString> OpenToRead(const QString& path, QFile& file);
} // namespace NativePath
