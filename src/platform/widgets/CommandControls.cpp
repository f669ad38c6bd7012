#include "platform/widgets/CommandControls.h"

#include <QCoreApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QStatusTipEvent>

namespace {

QColor between(const QColor& one, const QColor& other, double shareOfOther) {
    const auto mixed = [=](int a, int b) { return int(std::lround(a + (b - a) * shareOfOther)); };
    return {mixed(one.red(), other.red()), mixed(one.green(), other.green()), mixed(one.blue(), other.blue())};
}

} // namespace

CommandMenu::CommandMenu(const QString& caption, const QString& name, QWidget& ownWindow)
    : QMenu(caption, &ownWindow), window(ownWindow) {
    setObjectName(name);
    constexpr double faintness = 0.75;
    QPalette faint = palette();
    faint.setColor(QPalette::Highlight,
                   between(faint.color(QPalette::Highlight), faint.color(QPalette::Base), faintness));
    faint.setColor(QPalette::HighlightedText, faint.color(QPalette::Text));
    setPalette(faint);
}

void CommandMenu::mouseMoveEvent(QMouseEvent* event) {
    QMenu::mouseMoveEvent(event);
    showHint(actionAt(event->position().toPoint()));
}

void CommandMenu::leaveEvent(QEvent* event) {
    QMenu::leaveEvent(event);
    showHint(nullptr);
}

void CommandMenu::hideEvent(QHideEvent* event) {
    QMenu::hideEvent(event);
    showHint(nullptr);
}

/// Of an enabled entry the menu has told already.
void CommandMenu::showHint(const QAction* action) {
    const bool disabled = action && !action->isEnabled();
    if (disabled || (std::exchange(hintShown, false) && !action)) {
        QStatusTipEvent tip(disabled ? action->statusTip() : QString());
        QCoreApplication::sendEvent(&window, &tip);
    }
    hintShown = disabled;
}

CommandList::CommandList(const QString& caption, const QString& description, QWidget& bar) : QComboBox(&bar) {
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(14);
    setFocusPolicy(Qt::StrongFocus);
    // Its own accessible name is the line that it shows.
    auto* label = new QLabel(caption, &bar);
    label->setBuddy(this);
    label->hide();
    setToolTip(caption + u'\n' + description);
    setStatusTip(description);
}
