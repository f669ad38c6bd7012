// The dialog of the options of the whole program: its start, the help folder, number format, line styles and fonts of
// the picture, external tools. It works on copies and writes nothing before OK. frmOptionSetting form(this, Settings,
// Tools); form.exec(); if (form.Result) ...
#pragma once

#include "app/ApplicationSettings.h"
#include "app/windows/FontFields.h"
#include "extensions/toolTable.h"
#include "platform/widgets/FormBinding.h"

#include <QDialog>
#include <array>

class PictureBox;
class QTabWidget;
class ctlToolTable;

class frmOptionSetting : public QDialog {
    Q_OBJECT

public:
    /// Both must outlive the dialog. After OK `tools` is what the dialog shows; to keep it is the caller's business.
    frmOptionSetting(QWidget* parent, ApplicationSettings& settings, std::vector<ToolEntry>& tools);

    /// The switches of the first tab.
    const FormSupport::Rows<WindowSettings>& Bindings() const { return rows; }

    /// True after OK.
    bool Result = false;

protected:
    /// Enter in the box of the face ends its completion, not the dialog.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // frmOptionSettingLayout.cpp
    void buildControls();
    QWidget* buildGeneralTab();
    QWidget* buildLineTab();
    QWidget* buildFontTab();
    void listLineTypes();
    void listFontFaces();
    void connectControls();

    // frmOptionSetting.cpp
    void load();
    void apply();
    void chooseHelpFolder();
    LineStyle& line();
    void showLine();
    void drawLineSample();
    void showFont();
    void readFont();
    void drawFontSample();

    ApplicationSettings& settings;
    std::vector<ToolEntry>& tools;
    StyleSettings styles; ///< the form's copy
    FormSupport::Rows<WindowSettings> rows;
    bool Updating = false; ///< true while the form fills its own controls

    QTabWidget* SSTab1 = nullptr;
    std::array<QCheckBox*, 4> Check1{}; ///< window, last file, add-ins, layout files
    QLineEdit* txtHelpDir = nullptr;
    QPushButton* cmdHelpDir = nullptr;
    QComboBox* cmbRealFormat = nullptr;
    QComboBox* cmbLine = nullptr;
    QComboBox* cmbLineType = nullptr;
    QLineEdit* txtLineSize = nullptr;
    ColorButton* picLineColor = nullptr;
    QPushButton* cmdLineColor = nullptr;
    PictureBox* picLine = nullptr;
    QComboBox* cmbFont = nullptr;
    QComboBox* cmbFontFace = nullptr;
    FontFields fontFields;
    ctlToolTable* toolPage = nullptr;
    std::array<QPushButton*, 2> Command1{}; ///< OK, cancel
};
