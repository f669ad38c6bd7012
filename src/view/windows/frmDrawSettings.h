// The dialog for displacement, vectors and contour colours. It works on copies and writes nothing before OK; it paints
// nothing but its own preview, and range and bands of the contour are not its business.
// frmDrawSettings form(this, Model, Settings); form.exec(); if (form.Result) ...
#pragma once

#include "app/ApplicationSettings.h"
#include "app/clsStringArray.h"
#include "platform/widgets/FormBinding.h"

#include <QDialog>

class PictureBox;
class QGridLayout;
class QListWidget;
class QTabWidget;
struct ResultModel;

class frmDrawSettings : public QDialog {
    Q_OBJECT

public:
    /// Both must outlive the dialog.
    frmDrawSettings(QWidget* parent, const ResultModel& model, ApplicationSettings& settings);

    /// Writes what the controls show into displacement, vector and contour of `target`. The vector set in use and the
    /// contour's range stay as they are there; lengths come out as whole millimetres.
    void ReadDialogSettings(ApplicationSettings& target) const;

    /// All controls but those of the item sets.
    const FormSupport::Rows<ApplicationSettings>& Bindings() const { return rows; }

    /// True after OK.
    bool Result = false;

private:
    // frmDrawSettingsLayout.cpp
    void buildControls();
    QWidget* buildDisplacementTab();
    QWidget* buildVectorTab();
    QWidget* buildItemSetFrame();
    QWidget* buildContourTab();
    QWidget* buildUserColors();
    void bindControls();
    void connectControls();

    // frmDrawSettings.cpp
    void load();
    void apply();
    void setDefault();
    void drawContourPreview();
    void showPreset(int preset);

    // frmDrawSettingsVectors.cpp
    void selectLine(int line);
    int selectedLine() const;
    void enableItemSet(bool enabled);
    void showItemSet();
    void listVertItems(int horz);
    void onHorzSelected(int horz);
    void onVertSelected(int line);
    void onNameChanged(const QString& name);
    void addItemSet();
    void removeItemSet();

    const ResultModel& model;
    ApplicationSettings& settings;
    bool Updating = true;          ///< true while the form fills its own controls
    QList<VectorItemSet> itemSets; ///< the form's copy
    clsStringArray VertItems;      ///< items offered for Y, with the item's index as private data
    FormSupport::Rows<ApplicationSettings> rows;

    QTabWidget* tbTab = nullptr;
    QComboBox* cmbDispScale = nullptr;
    QLineEdit* txtDispScale = nullptr;
    QCheckBox* chkDispPaintLegend = nullptr;
    QCheckBox* chkDispOrgMesh = nullptr;
    QComboBox* cmbVectorScale = nullptr;
    QLineEdit* txtVectorScale = nullptr;
    QCheckBox* chkVectorPaintLegend = nullptr;
    QListWidget* lstVectorItem = nullptr;
    QLineEdit* txtVectorItem = nullptr;
    std::array<QComboBox*, 2> cmbVectorItem{};   ///< X, Y
    std::array<QPushButton*, 2> cmdVectorEdit{}; ///< add, delete
    std::array<QRadioButton*, 6> optContourColor{};
    std::array<ColorButton*, 3> cmdContourColor{}; ///< of the minimum, the middle, the maximum
    QComboBox* cmbContourPreset = nullptr;
    PictureBox* picContourPreview = nullptr;
    QCheckBox* chkContourPaintLegend = nullptr;
    QCheckBox* chkContourLegendName = nullptr;
    QCheckBox* chkContourLegendRange = nullptr;
    QCheckBox* chkContourColorReverse = nullptr;
    std::array<QPushButton*, 2> Command1{}; ///< OK, cancel
    QPushButton* cmdSetDefault = nullptr;
};
