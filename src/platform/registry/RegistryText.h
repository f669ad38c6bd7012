// The registry tree as the text that the platform's own registry editor exports and imports (.reg files), so that
// settings move between machines. What the values mean is not looked at.
#pragma once

#include <QByteArray>
#include <QString>

class QIODevice;

namespace RegistryText {
/// Writes the whole tree: UTF-16, little-endian with its mark, CR LF, `Windows Registry Editor Version 5.00`. Text that
/// a quoted string can't carry (line ends, a NUL within, none at the end) goes out as bytes of its type. Keys and
/// values whose names the tree can't have, which somebody must have put into its file, are left out.
struct ExportResult {
    bool Done = false; ///< false when the store can't be read or the device not be written
    int LeftOut = 0;   ///< keys, each with all beneath it, and values
};
ExportResult Export(QIODevice& device);

struct ImportResult {
    bool Done = false;
    int Line = 0; ///< where the text is not understood, from 1; 0 when the store itself failed
    QString Problem;
};

/// Adds the text's keys and values to the tree, and takes those with a "-" away, in one transaction: nothing at all
/// when there is a problem. Takes version 5.00 and REGEDIT4, the text by its mark in UTF-16 or UTF-8, without a mark in
/// UTF-8 or, if it isn't that, in code page 932. Text that REGEDIT4 gives as bytes is in code page 932.
/// Anything but `HKEY_CURRENT_USER` is a problem.
ImportResult Import(const QByteArray& file);
} // namespace RegistryText
