// The dialog for the contour's range and number of bands. It paints nothing and looks for no range: that is up to the
// caller, after it closed with `Result` true. frmContourValue form(this, Model, Settings);
// form.ItemIndex(Model.CurrentItem); form.exec();
#pragma once

#include "app/ApplicationSettings.h"
#include "platform/widgets/FormBinding.h"

#include <QDialog>

struct ResultModel;

class frmContourValue : public QDialog {
    Q_OBJECT

public:
    /// Both must outlive the dialog; of `settings` only the contour is written, and only by OK and automatic.
    frmContourValue(QWidget* parent, const ResultModel& model, ApplicationSettings& settings);

    /// Fills the dialog for an item; "undefined" stands for the values of an item that there isn't.
    void ItemIndex(int item);
    int ItemIndex() const { return itemIndex; }

    const FormSupport::Rows<ContourSettings>& Bindings() const { return rows; }

    /// True after OK and after automatic.
    bool Result = false;

private:
    void buildControls();
    void apply();
    void applyAutomatic();
    void showRange(int choice);

    const ResultModel& model;
    ApplicationSettings& settings;
    int itemIndex = -1;
    FormSupport::Rows<ContourSettings> rows;

    std::array<QLineEdit*, 3> txtDefault{}; ///< maximum, minimum, bands
    std::array<QLineEdit*, 3> txtValue{};   ///< likewise
    QComboBox* cmbRange = nullptr;          ///< whose range OK gives the contour
    std::array<QPushButton*, 3> Command1{}; ///< OK, cancel, automatic
};
