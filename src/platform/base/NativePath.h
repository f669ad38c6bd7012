// Names of files, which are bytes on this platform, as texts and back, and what can be done with a name alone. Who only
// takes a name apart needs none of this.
#pragma once

#include <QString>
#include <filesystem>
#include <optional>

class QFile;

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

/// Opens what can be read, be it a file, a pipe or a device. Nothing when it is open, else why not, in the system's
/// words.
std::optional<QString> OpenToRead(const QString& path, QFile& file);
} // namespace NativePath
