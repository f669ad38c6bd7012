#include "platform/widgets/FormSupport.h"

#include "platform/base/Literals.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCoreApplication>
#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>

namespace FormSupport {
namespace {
/// True when the focus moves between controls, and not because a window or a menu came in between.
bool movesFocus(const QFocusEvent& event) {
    return event.reason() != Qt::ActiveWindowFocusReason && event.reason() != Qt::PopupFocusReason;
}

class Reformatter : public QObject {
public:
    Reformatter(QLineEdit& watched, std::function<QString(const QString&)> rule, OnEnter end)
        : QObject(&watched), box(watched), reformat(std::move(rule)), onEnter(end) {
        box.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::FocusOut && movesFocus(static_cast<QFocusEvent&>(*event)))
            box.setText(reformat(box.text()));
        if (event->type() != QEvent::KeyPress)
            return false;
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key != Qt::Key_Return && key != Qt::Key_Enter)
            return false;
        box.setText(reformat(box.text()));
        box.selectAll();
        if (onEnter == OnEnter::MoveOn) {
            QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
            QCoreApplication::sendEvent(&box, &tab);
        }
        return true;
    }

private:
    QLineEdit& box;
    std::function<QString(const QString&)> reformat;
    OnEnter onEnter;
};

class Selector : public QObject {
public:
    explicit Selector(QLineEdit& box) : QObject(&box) { box.installEventFilter(this); }

protected:
    bool eventFilter(QObject* box, QEvent* event) override {
        // The press that brings the focus would unselect again, so the selection has to come after it.
        if (event->type() == QEvent::FocusIn && movesFocus(static_cast<QFocusEvent&>(*event)))
            QMetaObject::invokeMethod(static_cast<QLineEdit*>(box), &QLineEdit::selectAll, Qt::QueuedConnection);
        return false;
    }
};
} // namespace

QLabel* Caption(const QString& caption, QWidget* control) {
    auto* label = new QLabel(caption);
    label->setBuddy(control);
    QWidget* nameless = qobject_cast<QAbstractItemView*>(control);
    if (const auto* combo = qobject_cast<QComboBox*>(control))
        nameless = combo->lineEdit();
    if (nameless)
        nameless->setAccessibleName(QString(caption).remove(QRegularExpression(u"\\(&.\\)|:$"_s)));
    return label;
}

QLabel* AddRow(QGridLayout& grid, int row, const QString& caption, QWidget* control) {
    QLabel* label = Caption(caption, control);
    grid.addWidget(label, row, 0);
    grid.addWidget(control, row, 1);
    return label;
}

QPushButton* BrowseButton(const QString& name, const QString& accessibleName) {
    auto* button = Named(new QPushButton(u"..."_s), name);
    button->setAccessibleName(accessibleName);
    button->setAutoDefault(false);
    button->setFixedWidth(button->sizeHint().height() * 2);
    return button;
}

QIcon RowIcon(const QString& picture) {
    QIcon icon(picture);
    icon.addFile(picture, {}, QIcon::Selected);
    return icon;
}

void MakeReadOnly(QLineEdit& box) {
    box.setReadOnly(true);
    box.setFocusPolicy(Qt::ClickFocus);
    QPalette palette = box.palette();
    palette.setColor(QPalette::Base, palette.color(QPalette::Window));
    box.setPalette(palette);
}

void ReformatOnLeaving(QLineEdit& box, std::function<QString(const QString&)> reformat, OnEnter onEnter) {
    new Reformatter(box, std::move(reformat), onEnter);
}

void SelectAllOnFocus(QLineEdit& box) {
    new Selector(box);
}

void ButtonWidths(std::initializer_list<QPushButton*> buttons) {
    constexpr int airInCharacters = 4;
    int width = 0;
    for (const QPushButton* button : buttons)
        width = std::max(width, button->fontMetrics().horizontalAdvance(button->text()) +
                                    airInCharacters * button->fontMetrics().averageCharWidth());
    for (QPushButton* button : buttons)
        button->setMinimumWidth(std::max(width, button->sizeHint().width()));
}

QHBoxLayout* ButtonRow(std::initializer_list<QPushButton*> left, std::initializer_list<QPushButton*> right) {
    auto* row = new QHBoxLayout;
    for (QPushButton* button : left)
        row->addWidget(button);
    row->addStretch();
    for (QPushButton* button : right)
        row->addWidget(button);
    row->setContentsMargins(0, (*right.begin())->sizeHint().height() / 3, 0, 0);
    return row;
}

void TabOrder(std::initializer_list<QWidget*> controls) {
    for (auto next = controls.begin() + 1; next < controls.end(); ++next)
        QWidget::setTabOrder(next[-1], next[0]);
}

void PlaceOnScreen(QWidget& form, QSize size) {
    form.ensurePolished();
    const QRect screen = form.screen()->geometry();
    form.resize((size.isValid() ? size : form.sizeHint()).boundedTo(screen.size()));
    form.move(screen.left() + (screen.width() - form.width()) / 2,
              screen.top() + (screen.height() - form.height()) / 3);
}
} // namespace FormSupport
