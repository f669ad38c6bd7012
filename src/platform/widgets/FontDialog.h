// The dialog for a font with its colour, behind `Dialogs::ChooseFont`. A face that the system lacks can stay chosen,
// and shows in its stand-in, and every face can be bold or slanted, which the toolkit's own dialog does not grant.
#pragma once

#include "platform/widgets/Dialogs.h"

#include <QDialog>

class ColorButton;
class QCheckBox;
class QComboBox;
class QLabel;

class FontDialog : public QDialog {
public:
    FontDialog(QWidget* parent, const QString& title, const Dialogs::FontChoice& initial);

    Dialogs::FontChoice Chosen() const;

private:
    void showSample();

    const double firstPoints;
    QComboBox* cmbFamily;
    QComboBox* cmbSize;
    std::array<QCheckBox*, 4> chkEffect{}; ///< bold, italic, underline, strike out
    ColorButton* cmdColor;
    QLabel* lblSample;
};
