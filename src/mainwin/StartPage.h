// What stands in place of the picture while no file is open: the ways to open one, each a link that keys reach. Opens
// nothing itself.
#pragma once

#include "mainwin/commandFamilies.h"

#include <QWidget>

class QVBoxLayout;

class StartPage : public QWidget {
    Q_OBJECT

public:
    /// Covers `place`, whatever the size of that, and asks it for no room of its own.
    explicit StartPage(QWidget& place);

    /// The recent files, as the menu has them.
    void Show(const std::vector<FamilyEntry>& recent);

signals:
    /// The command that does what the link says.
    void Chosen(const QString& tool);

private:
    void addLink(QVBoxLayout& column, const QString& tool, const QString& text, const QString& description);

    QWidget* recentFiles = nullptr;
};
