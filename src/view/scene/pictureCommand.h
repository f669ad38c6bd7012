// The command line of `velorin-batch render` that makes the picture of a session again: written of what is shown, and
// read back from pictures that carry theirs. One table says which options there are. Runs and draws nothing.
#pragma once

#include "platform/device/pictureFile.h"
#include "view/scene/Session.h"

#include <span>

namespace pictureCommand {

/// An option of the command.
struct Option {
    const char16_t* Name;
    /// What it needs to say; nothing when the command does the same without it. A flag says one empty text.
    QStringList (*Values)(const Session& shown, const PictureFile& picture);
    /// Only of options that a picture of one step alone has: what help calls the value and says of it, and how it is
    /// taken up by a session with a loaded step. False when the text makes no sense.
    const char16_t* ValueName = nullptr;
    const char16_t* Purpose = nullptr;
    bool (*Take)(const QString& text, const PictureFile& picture, Session& session) = nullptr;
};
std::span<const Option> Options();

/// The whole line for a shell. The picture's size and resolution may differ from those of what is shown.
QString Line(const Session& shown, const PictureFile& picture, const QString& output);

/// What `--like` takes from a line: options of the table and their values, but never a name of a file.
struct Taken {
    QStringList Words;
    QString Problem; ///< empty when the line is such a command
};
Taken Take(const QString& line);

/// Makes `copy` a session that draws what is shown as a picture of its own, while the shown one stays as it is.
void Copy(const Session& shown, const PictureFile& picture, Session& copy);

} // namespace pictureCommand
