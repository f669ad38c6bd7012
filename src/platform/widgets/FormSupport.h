// What the program's dialogs have in common: names of controls, captions with access keys, boxes that put their text in
// order, equal widths, the place on the screen. No base class: a dialog calls what it needs while it is built.
#pragma once

#include <QSize>
#include <QString>
#include <functional>
#include <initializer_list>

class QGridLayout;
class QHBoxLayout;
class QIcon;
class QLabel;
class QLineEdit;
class QPushButton;
class QWidget;

namespace FormSupport {
/// `control` under its object name, which is "name_index" in an array of controls.
template<class Control>
Control* Named(Control* control, const QString& name, int index = -1) {
    control->setObjectName(index < 0 ? name : QString(name + u'_' + QString::number(index)));
    return control;
}

/// A caption whose access key leads to `control`, and which names it to assistive tools, also where the toolkit does
/// not see to that: lists and boxes with a text of one's own.
QLabel* Caption(const QString& caption, QWidget* control);

/// A row of a form: `caption` in column 0, its access key leading to `control` in column 1.
QLabel* AddRow(QGridLayout& grid, int row, const QString& caption, QWidget* control);

/// A small button "..." that asks for what stands beside it; it never becomes the dialog's default.
QPushButton* BrowseButton(const QString& name, const QString& accessibleName);

/// A picture that stays as it is in a selected row, where the toolkit would tint it with the colour of the row.
QIcon RowIcon(const QString& picture);

/// Shows text to look at and to copy; the Tab key passes it by.
void MakeReadOnly(QLineEdit& box);

/// Where Enter leads in a box whose text is put in order.
enum class OnEnter { Stay, MoveOn };

/// Puts the text through `reformat` when the focus goes to another control. Enter does the same, instead of pressing
/// the dialog's default button, and selects the text or moves on to the next control.
void ReformatOnLeaving(QLineEdit& box, std::function<QString(const QString&)> reformat,
                       OnEnter onEnter = OnEnter::Stay);

/// Selects the whole text whenever the box gets the focus, by mouse as well.
void SelectAllOnFocus(QLineEdit& box);

/// Makes all as wide as the widest of them needs to have some air around its caption.
void ButtonWidths(std::initializer_list<QPushButton*> buttons);

/// The row of buttons at the foot of a form: `left` at its left end, `right` at its right.
QHBoxLayout* ButtonRow(std::initializer_list<QPushButton*> left, std::initializer_list<QPushButton*> right);

/// The order in which the Tab key goes round.
void TabOrder(std::initializer_list<QWidget*> controls);

/// Gives a finished form its size, that of its contents unless told otherwise, and its place: centred across its screen
/// and with a third of the free height above it.
void PlaceOnScreen(QWidget& form, QSize size = {});
} // namespace FormSupport
