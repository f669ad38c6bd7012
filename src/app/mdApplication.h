// What every floor above takes from the program as a whole: the settings in force, the message box and a few helpers of
// names and numbers. Not the start-up chain, which builds the main window and stands with it.
#pragma once

#include "app/ApplicationSettings.h"

#include <QString>
#include <functional>

class frmMain;
struct ResultModel;

namespace mdApplication {
/// Title of every window and box of the program.
inline const QString ApplicationTitle = u"Velorin"_qs;

/// The settings in force. Only windows and the start-up reach for them; all else takes settings as a parameter.
extern ApplicationSettings Settings;

/// The open result file, for windows alone as well. Stands with the main window.
extern ResultModel Model;

/// The main window; null before the entry procedure has made it and after it has gone. Stands with the main window.
frmMain* MainWindow();

/// Called with true before `ShowMessage` shows its box and with false after, when set. The graph windows, which stay
/// above all others, make way for the box this way.
extern std::function<void(bool lower)> MessageBoxHook;

/// The program's message box; `flags` and the result are those of `Dialogs::MessageBox`.
int ShowMessage(const QString& text, int flags);

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
