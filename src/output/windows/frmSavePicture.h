// Asks how large and how fine a picture is to be saved. Its name and its format are asked for elsewhere. frmSavePicture
// form(this, picture); form.exec(); if (form.Result) ...
#pragma once

#include "platform/device/pictureFile.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QPushButton;
class QSpinBox;

class frmSavePicture : public QDialog {
    Q_OBJECT

public:
    /// `picture` has the size and the resolution that the dialog begins with, and after OK those that were chosen.
    frmSavePicture(QWidget* parent, PictureFile& picture);

    /// True after OK.
    bool Result = false;

private:
    void buildControls();
    void follow(QSpinBox* changed);
    void showPaper();

    PictureFile& target;
    double ratio;          ///< height to width
    int dotsPerInch;       ///< that the size in pixels goes with
    bool Updating = false; ///< true while the form changes its own controls
    QSpinBox* txtWidth = nullptr;
    QSpinBox* txtHeight = nullptr;
    QSpinBox* txtDpi = nullptr;
    QCheckBox* chkRatio = nullptr;
    QLabel* lblPaper = nullptr;
    std::array<QPushButton*, 2> Command1{}; ///< OK, cancel
};
