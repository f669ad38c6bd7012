// The dialog for the looks that all graphs share: legend, axes, texts, fonts and the styles of series. It works on
// copies and writes nothing before OK; drawing the graphs anew is its owner's business.
// frmGraphSetting form(this, Settings.Graph); form.exec(); if (form.Result) ...
#pragma once

#include "app/ApplicationSettings.h"
#include "app/windows/FontFields.h"
#include "platform/widgets/FormBinding.h"
#include "plot/clsPlot.h"

#include <QDialog>

class PictureBox;
class QLabel;
class QListWidget;
class QTabWidget;

class frmGraphSetting : public QDialog {
    Q_OBJECT

public:
    /// `defaults` must outlive the dialog.
    frmGraphSetting(QWidget* parent, GraphDefaults& defaults);

    /// The controls of the first two pages.
    const FormSupport::Rows<GraphDefaults>& Bindings() const { return rows; }

    /// True after OK.
    bool Result = false;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum : int { Marker = 0, Line = 1 }; ///< indexes of sizes and colours

    // frmGraphSettingLayout.cpp
    void buildControls();
    QWidget* buildGeneralTab();
    QWidget* buildLabelTab();
    QWidget* buildFontTab();
    QWidget* buildSeriesTab();
    void orderControls();
    void bindControls();
    void connectControls();

    // frmGraphSetting.cpp
    void load();
    void apply();
    void enableMask();

    // frmGraphSettingFonts.cpp
    void showFont();
    void readFont();
    void drawFontSample();
    void completeFace(const QString& typed);
    bool takeFaceKey(int key);
    void chooseFace();

    // frmGraphSettingSeries.cpp
    void fillStyleLists();
    void listSeries();
    void showStyle();
    void readStyle();
    void showColors();
    void chooseColor(int which);
    void addStyle();
    void removeStyle();
    void drawSeriesSample();

    GraphDefaults& defaults;
    bool Updating = true; ///< true while the form fills its own controls
    std::array<QString, 4> fonts;
    QList<LegendStyle> styles;
    std::array<ColorRef, 2> colors{};
    clsPlot plot; ///< for its samples
    FormSupport::Rows<GraphDefaults> rows;

    QTabWidget* SSTab1 = nullptr;
    QCheckBox* chkPlotLegend = nullptr;
    QCheckBox* chkPlotGrid = nullptr;
    QCheckBox* chkPlotScale = nullptr;
    QComboBox* cmbLegendPos = nullptr;
    std::array<QLineEdit*, 2> txtSize{};
    QComboBox* cmbScaleFormat = nullptr;
    QLineEdit* txtScaleMask = nullptr;
    std::array<QLineEdit*, 5> txtLabel{};
    QComboBox* cmbFont = nullptr;
    QLineEdit* txtFontFace = nullptr;
    QListWidget* lvFontFace = nullptr;
    FontFields fontFields;
    QListWidget* lstLegend = nullptr;
    std::array<QPushButton*, 2> cmdLegend{}; ///< add, delete
    QComboBox* cmbMarkerStyle = nullptr;
    QComboBox* cmbLineStyle = nullptr;
    std::array<QLabel*, 2> picColor{};
    std::array<QPushButton*, 2> cmdColor{};
    PictureBox* picLegend = nullptr;
    std::array<QPushButton*, 2> Command1{}; ///< OK, cancel
};
