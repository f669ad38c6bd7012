// Message boxes, file and colour dialogs; the one way to ask the user something and wait. A test can give the answers
// beforehand. No texts of the program's own stand here but those of the buttons.
#pragma once

#include "platform/base/Geometry.h"
#include "platform/base/MessageStyle.h"

#include <QList>
#include <QString>
#include <optional>

class QWidget;

namespace Dialogs {
/// The window that a dialog is to stand over: the one that the user works in, else the program's main one, if it is
/// to be seen.
QWidget* FrontWindow();

/// Shows `text` as it stands and gives the answer; `flags` are of `MessageStyle`, the answer of `MessageAnswer`. Esc
/// answers Cancel or No, or OK when there is nothing else. In a program without widgets the text goes to standard error
/// and the default button is the answer.
int MessageBox(QWidget* parent, const QString& text, const QString& title, int flags);

/// A choice beside the name of a file.
struct FileSwitch {
    QString Caption;
    bool On = false;
};

/// The chosen path, none after Cancel (and in a program without widgets). `start` is a folder or a file to begin with.
/// `filter` is pairs of description and patterns, all separated by "|"; patterns of one pair by ";".
/// `choice`, when given, is offered beneath and holds what was chosen, unless the dialog is the desktop's own.
std::optional<QString> OpenFileName(QWidget* parent, const QString& title, const QString& start, const QString& filter,
                                    FileSwitch* choice = nullptr);
/// Likewise; asks before an existing file is chosen, and adds the suffix of the selected patterns to a bare name.
std::optional<QString> SaveFileName(QWidget* parent, const QString& title, const QString& start, const QString& filter);

/// The chosen colour, none after Cancel (and in a program without widgets). The dialog starts from `initial`.
std::optional<ColorRef> ChooseColor(QWidget* parent, const QString& title, ColorRef initial);

/// A font as a dialog offers it, with its colour.
struct FontChoice {
    QString Family;
    double Points = 9;
    bool Bold = false, Italic = false, Underline = false, StrikeOut = false;
    ColorRef Color = 0;
    bool operator==(const FontChoice&) const = default;
};

/// The chosen font, none after Cancel (and in a program without widgets). Only faces of any size are offered,
/// and the first one, which the system may lack.
std::optional<FontChoice> ChooseFont(QWidget* parent, const QString& title, const FontChoice& initial);

/// Scripted answers. Between `Start` and `Stop` nothing is shown: each question takes the next answer of its kind's
/// form from the queue; without one it is counted as unexpected and answered as Esc would.
namespace Testing {
enum class Kind { MessageBox, OpenFile, SaveFile, Color, Font };

struct Question {
    Dialogs::Testing::Kind Kind;
    QString Text; ///< of a file dialog: the starting place; of a colour dialog: the first colour as "#rrggbb"; of a
                  ///< font dialog: the first family
    QString Title;
    int Flags = 0;
};

void Start();
void Stop();
void QueueAnswer(int answer);
void QueueFile(const std::optional<QString>& path); ///< none: Cancel
void QueueColor(std::optional<ColorRef> color);     ///< likewise
void QueueFont(const std::optional<FontChoice>& font);
/// Everything asked since `Start`, expected or not.
QList<Question> Asked();
int UnexpectedCount();
/// Answers that nothing has asked for yet.
int UnusedCount();
} // namespace Testing
} // namespace Dialogs
