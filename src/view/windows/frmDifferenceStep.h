// The dialog for the reference step and which pictures show the difference from it; it changes no setting itself.
// frmDifferenceStep form(this); form.InitDialog(Model.StepCount, difference.StandardStep, {...}); form.exec();
#pragma once

#include "app/ApplicationSettings.h"
#include "platform/widgets/FormBinding.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>

class frmDifferenceStep : public QDialog {
    Q_OBJECT

public:
    explicit frmDifferenceStep(QWidget* parent);

    bool ApplyContour() const { return Check1[Contour]->isChecked(); }
    void ApplyContour(bool apply) { Check1[Contour]->setChecked(apply); }
    bool ApplyValue() const { return Check1[Value]->isChecked(); }
    void ApplyValue(bool apply) { Check1[Value]->setChecked(apply); }
    bool ApplyDisplacement() const { return Check1[Displacement]->isChecked(); }
    void ApplyDisplacement(bool apply) { Check1[Displacement]->setChecked(apply); }
    bool ApplyVector() const { return Check1[Vector]->isChecked(); }
    void ApplyVector(bool apply) { Check1[Vector]->setChecked(apply); }

    /// `flags` in the order displacement, vectors, contour and graphs, numbers.
    void InitDialog(int stepCount, int standardStep, const std::array<bool, 4>& flags);

    const FormSupport::Rows<DifferenceSettings>& Bindings() const { return rows; }

    /// From 0; -1 none.
    int StandardStep() const { return cmbStep->currentIndex() - 1; }
    void StandardStep(int step) { cmbStep->setCurrentIndex(step + 1); }

    /// True after OK.
    bool Result = false;

private:
    enum : int { Displacement, Vector, Contour, Value };

    void onCommand(bool ok);
    void enableChecks();

    FormSupport::Rows<DifferenceSettings> rows;
    QComboBox* cmbStep;
    std::array<QCheckBox*, 4> Check1{};
};
