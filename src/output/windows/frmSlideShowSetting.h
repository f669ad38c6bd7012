// The dialog for the settings of the slide show, on OK written to the record given to it. What a show that is on makes
// of them is its owner's business.
#pragma once

#include "app/ApplicationSettings.h"
#include "platform/widgets/FormBinding.h"

#include <QDialog>
#include <array>

class QLabel;

class frmSlideShowSetting : public QDialog {
    Q_OBJECT

public:
    /// `target` must outlive the dialog.
    frmSlideShowSetting(QWidget* parent, SlideShowSettings& target);

    const FormSupport::Rows<SlideShowSettings>& Bindings() const { return rows; }

    /// True after OK.
    bool Result = false;

private:
    void buildControls();
    void bindControls();
    void apply();

    SlideShowSettings& settings;
    FormSupport::Rows<SlideShowSettings> rows;
    QSlider* sldSlideShow;
    QLabel* lblSlideShow;
    std::array<QCheckBox*, 8> chkSlideShow{};
    QLineEdit* txtDivide;
};
