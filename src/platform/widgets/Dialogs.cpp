#include "platform/widgets/Dialogs.h"

#include "platform/base/NativePath.h"
#include "platform/base/OneLine.h"
#include "platform/widgets/FileDialog.h"
#include "platform/widgets/FontDialog.h"

#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <cstdio>
#include <variant>

namespace Dialogs {
namespace {
using FileAnswer = std::optional<QString>;
using ColorAnswer = std::optional<ColorRef>;
using FontAnswer = std::optional<FontChoice>;

struct Script {
    bool Running = false;
    QList<std::variant<int, FileAnswer, ColorAnswer, FontAnswer>> Answers;
    QList<Testing::Question> Asked;
    int Unexpected = 0;
};

Script& script() {
    static Script instance;
    return instance;
}

/// The next scripted answer when it is of the asked form, else `otherwise`.
template<class Form>
Form scriptedAnswer(Testing::Question question, Form otherwise) {
    Script& current = script();
    current.Asked += std::move(question);
    if (current.Answers.isEmpty() || !std::holds_alternative<Form>(current.Answers.first())) {
        ++current.Unexpected;
        return otherwise;
    }
    return std::get<Form>(current.Answers.takeFirst());
}

bool hasWidgets() {
    return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
}

struct BoxButton {
    int Answer;
    QString Caption;
    QMessageBox::ButtonRole Role;
};

/// In their order; the last is the one that Esc presses.
QList<BoxButton> buttonsOf(int flags) {
    if (flags & MessageStyle::YesNo)
        return {{MessageAnswer::Yes, u"はい(&Y)"_s, QMessageBox::YesRole},
                {MessageAnswer::No, u"いいえ(&N)"_s, QMessageBox::NoRole}};
    const BoxButton ok{MessageAnswer::Ok, u"OK"_s, QMessageBox::AcceptRole};
    if (flags & MessageStyle::OkCancel)
        return {ok, {MessageAnswer::Cancel, u"キャンセル"_s, QMessageBox::RejectRole}};
    return {ok};
}

QMessageBox::Icon iconOf(int flags) {
    switch (flags & 0xf0) {
    case MessageStyle::Stop:
        return QMessageBox::Critical;
    case MessageStyle::Question:
        return QMessageBox::Question;
    case MessageStyle::Stop | MessageStyle::Question:
        return QMessageBox::Warning;
    case MessageStyle::Information:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

int showBox(QWidget* parent, const QString& text, const QString& title, int flags, qsizetype defaultButton) {
    QMessageBox box(iconOf(flags), title, text, QMessageBox::NoButton, parent);
    box.setObjectName(u"messageBox"_s);
    // A file name may look like markup.
    box.setTextFormat(Qt::PlainText);
    const QList<BoxButton> buttons = buttonsOf(flags);
    QList<QAbstractButton*> made;
    for (const BoxButton& button : buttons)
        made += box.addButton(button.Caption, button.Role);
    box.setDefaultButton(qobject_cast<QPushButton*>(made[defaultButton]));
    box.setEscapeButton(made.last());
    box.exec();
    const qsizetype pressed = made.indexOf(box.clickedButton());
    return pressed < 0 ? buttons.last().Answer : buttons[pressed].Answer;
}

FileAnswer askFile(QWidget* parent, const QString& title, const QString& start, const QString& filter, bool save,
                   FileSwitch* choice = nullptr) {
    if (script().Running)
        return scriptedAnswer<FileAnswer>({save ? Testing::Kind::SaveFile : Testing::Kind::OpenFile, start, title, 0},
                                          std::nullopt);
    if (!hasWidgets())
        return std::nullopt;
    FileDialog dialog(parent, title, filter, save);
    dialog.StartAt(start);
    const QCheckBox* box = choice ? dialog.AddSwitch(choice->Caption, choice->On) : nullptr;
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    if (box)
        choice->On = box->isChecked();
    return dialog.Chosen();
}
} // namespace

QWidget* FrontWindow() {
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    if (QWidget* active = QApplication::activeWindow())
        return active;
    for (QWidget* window : hasWidgets() ? QApplication::topLevelWidgets() : QWidgetList())
        if (qobject_cast<QMainWindow*>(window) && window->isVisible())
            return window;
    return nullptr;
}

int MessageBox(QWidget* parent, const QString& text, const QString& title, int flags) {
    const QList<BoxButton> buttons = buttonsOf(flags);
    if (script().Running)
        return scriptedAnswer<int>({Testing::Kind::MessageBox, text, title, flags}, buttons.last().Answer);
    const qsizetype defaultButton = flags & MessageStyle::SecondDefault ? buttons.size() - 1 : 0;
    if (hasWidgets())
        return showBox(parent, NativePath::Shown(text), title, flags, defaultButton);
    // The line ends are the program's own; what a name holds must not become one.
    std::fprintf(stderr, "%s\n", OneLine(QString(text).replace(u"\r\n"_s, u": "_s)).toUtf8().constData());
    return buttons[defaultButton].Answer;
}

std::optional<QString> OpenFileName(QWidget* parent, const QString& title, const QString& start, const QString& filter,
                                    FileSwitch* choice) {
    return askFile(parent, title, start, filter, false, choice);
}

std::optional<QString> SaveFileName(QWidget* parent, const QString& title, const QString& start,
                                    const QString& filter) {
    return askFile(parent, title, start, filter, true);
}

std::optional<ColorRef> ChooseColor(QWidget* parent, const QString& title, ColorRef initial) {
    const QColor first(redOf(initial), greenOf(initial), blueOf(initial));
    if (script().Running)
        return scriptedAnswer<ColorAnswer>({Testing::Kind::Color, first.name(), title, 0}, std::nullopt);
    if (!hasWidgets())
        return std::nullopt;
    QColorDialog dialog(first, parent);
    dialog.setObjectName(u"colorDialog"_s);
    dialog.setWindowTitle(title);
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    const QColor chosen = dialog.selectedColor();
    return makeColor(chosen.red(), chosen.green(), chosen.blue());
}

std::optional<FontChoice> ChooseFont(QWidget* parent, const QString& title, const FontChoice& initial) {
    if (script().Running)
        return scriptedAnswer<FontAnswer>({Testing::Kind::Font, initial.Family, title, 0}, std::nullopt);
    if (!hasWidgets())
        return std::nullopt;
    FontDialog dialog(parent, title, initial);
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.Chosen()) : std::nullopt;
}

namespace Testing {
void Start() {
    script() = {};
    script().Running = true;
}

void Stop() {
    script().Running = false;
}

void QueueAnswer(int answer) {
    script().Answers += answer;
}

void QueueFile(const std::optional<QString>& path) {
    script().Answers += path;
}

void QueueColor(std::optional<ColorRef> color) {
    script().Answers += color;
}

void QueueFont(const std::optional<FontChoice>& font) {
    script().Answers += font;
}

QList<Question> Asked() {
    return script().Asked;
}

int UnexpectedCount() {
    return script().Unexpected;
}

int UnusedCount() {
    return int(script().Answers.size());
}
} // namespace Testing
} // namespace Dialogs
