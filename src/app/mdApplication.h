// What every floor above takes from the program as a whole: its title, and a few helpers of names and numbers. Not its
// globals, which stand with the main window, and not its message box, which is a window.
#pragma once

#include "platform/base/Literals.h"

namespace mdApplication {
/// Title of every window and box of the program.
inline const QString ApplicationTitle = u"Velorin"_s;

/// `value` with `digits` digits behind the point (0 counts as 1), or with an exponent when it lies outside
/// 10^(1 - digits) <= |value| < 10^(digits + 1). With `extra` up to two more digits show where they count.
QString FormatAutoNumber(double value, int digits, bool extra);

/// True when there is a file, not a folder, of that name.
bool FileExists(const QString& path);

/// What `PathPart` can give.
enum : int { Folder = 0, BaseName = 1, Extension = 2, FileName = 3, PathWithoutExtension = 4 };

/// A part of `path`: 0 the folder with its trailing separator, 1 the base name up to the first ".", 2 the extension
/// behind that ".", 3 the file name, 4 all but the extension and its "."; any other part is empty. Both "/" and "\"
/// end a folder.
QString PathPart(const QString& path, int part);

/// The message for a start-up chain that broke off; `number` 0 when nothing more is known.
QString StartUpFailureText(int number, const QString& description);

/// The folder of the running program, without a trailing separator.
QString ProgramFolder();
} // namespace mdApplication
