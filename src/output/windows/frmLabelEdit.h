// The dialog for one label of a page: its text with macros, its place and its font. It changes nothing but itself.
// frmLabelEdit form(this); form.LabelString(...); form.exec(); if (form.Result) ...
#pragma once

#include "output/pageLabels.h"
#include "platform/widgets/FormBinding.h"

#include <QDialog>

class PictureBox;
class QGridLayout;
class QLabel;
class QPlainTextEdit;

class frmLabelEdit : public QDialog {
    Q_OBJECT

public:
    explicit frmLabelEdit(QWidget* parent);

    const QString& FontString() const { return fontString; }
    void FontString(const QString& text);
    QString LabelString() const;
    void LabelString(const QString& text);
    /// One that there isn't is taken for the first.
    int Position() const;
    void Position(int index);

    /// True after OK.
    bool Result = false;

private:
    QLayout* textRows();
    QWidget* placeFrame();
    void paintPaper();
    void showMacros(bool shown);
    void chooseFont();
    void apply();

    QString fontString;
    int cell = 0; ///< side of a place's cell, in pixels of the desktop
    QLineEdit* txtLabel;
    QLineEdit* txtFont;
    QPushButton* cmdFont;
    PictureBox* picPaper;
    std::array<QRadioButton*, pageLabels::PositionCount> optPosition{};
    QLabel* lblPosition;
    QCheckBox* chkMacro;
    QPlainTextEdit* txtMacro;
    std::array<QPushButton*, 2> Command1{}; ///< OK, cancel
};
