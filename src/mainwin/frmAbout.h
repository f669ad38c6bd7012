// The box with the program's name, version and icon.
#pragma once

#include <QDialog>

class frmAbout : public QDialog {
    Q_OBJECT

public:
    explicit frmAbout(QWidget* parent);
};
