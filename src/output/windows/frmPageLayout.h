// The dialog for printer, paper, margins, outline, scale and labels of a page. It works on copies and writes nothing
// before OK; it prints nothing.
// frmPageLayout form(this, printers, Settings.Page); form.exec(); if (form.Result) ...
#pragma once

#include "app/ApplicationSettings.h"
#include "platform/device/PlotPrinter.h"
#include "platform/widgets/FormBinding.h"

#include <QDialog>

class PictureBox;
class Printers;
class QGridLayout;
class QTreeWidget;
class UpDown;

class frmPageLayout : public QDialog {
    Q_OBJECT

public:
    /// Both must outlive the dialog. There has to be a printer.
    frmPageLayout(QWidget* parent, Printers& printers, PageSettings& settings);

    /// What stands in the form beside printer, paper, margins and labels.
    const FormSupport::Rows<PageSettings>& Bindings() const { return rows; }

    /// True after OK.
    bool Result = false;

private:
    // frmPageLayoutControls.cpp
    void buildControls();
    QWidget* buildPageTab();
    QWidget* buildPaperFrame();
    QWidget* buildMarginFrame();
    QWidget* buildScaleFrame();
    QWidget* buildLabelTab();
    void bindControls();
    void connectControls();

    // frmPageLayout.cpp
    void load();
    void apply();
    void choosePrinter();
    void editProperties();
    QString checkedMargin(int index, const QString& text);
    void showMargin(int index);
    void enableControls();
    void paintPaper();

    // frmPageLayoutLabels.cpp
    void listLabels(int selected);
    int selectedLabel() const;
    void addLabel();
    void removeLabel();
    void editLabel();
    bool letEdit(PageLabel& label);

    Printers& printers;
    PageSettings& settings;
    bool Updating = true; ///< true while the form fills its own controls
    std::optional<PlotPrinter> printer;
    QList<PageLabel> labels; ///< the form's copy
    FormSupport::Rows<PageSettings> rows;

    QComboBox* cmbPrinter = nullptr;
    QPushButton* cmdPrinter = nullptr;
    QComboBox* cmbPaper = nullptr;
    QComboBox* cmbOrientation = nullptr;
    PictureBox* picPaper = nullptr;
    std::array<QLineEdit*, 4> txtMargin{}; ///< left, top, right, bottom
    std::array<UpDown*, 4> udMargin{};
    QCheckBox* chkPaintOutline = nullptr;
    QLineEdit* txtOutline = nullptr;
    QComboBox* cmbScale = nullptr;
    QLineEdit* txtScale = nullptr;
    QComboBox* cmbScaleUnit = nullptr;
    QTreeWidget* lvLabel = nullptr;
    std::array<QPushButton*, 3> cmdLabel{}; ///< add, remove, edit
    std::array<QPushButton*, 2> Command1{}; ///< OK, cancel
};
