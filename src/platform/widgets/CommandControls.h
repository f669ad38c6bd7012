// Menu and list of a command bar, where they differ from the toolkit's. Which commands they hold is the bars' business.
#pragma once

#include <QComboBox>
#include <QMenu>
#include <QWheelEvent>

/// A menu whose marked row is of a faint colour, on which the tools' pictures show as on the others, and which tells
/// `window` what a disabled entry under the mouse would do as well.
class CommandMenu : public QMenu {
public:
    CommandMenu(const QString& caption, const QString& name, QWidget& window);

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void showHint(const QAction* action);

    QWidget& window;
    bool hintShown = false;
};

/// A list that may be long, of which one line shows. The wheel does not change it while it is closed.
class CommandList : public QComboBox {
public:
    /// `caption` and `description` say what is chosen, to the eye and to assistive tools.
    CommandList(const QString& caption, const QString& description, QWidget& bar);

protected:
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};
