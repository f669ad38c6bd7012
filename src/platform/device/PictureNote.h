// A text that goes with a picture, in the files of all formats that have a place for one: PNG, SVG and PDF. What it
// says is its owner's business; whoever reads one must not trust it.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace PictureNote {
/// The content of a PNG chunk iTXt.
QByteArray PngText(const QString& note);
/// An element for the `metadata` of an SVG.
QByteArray Element(const QString& note);
/// The metadata of a PDF, as XMP.
QByteArray Xmp(const QString& note);

/// A note stands before the picture itself, so this much of a file is enough.
inline constexpr qint64 WithinBytes = 1 << 20;
/// The note in the first bytes of a file; nothing when there is none.
std::optional<QString> In(const QByteArray& bytes);
} // namespace PictureNote
