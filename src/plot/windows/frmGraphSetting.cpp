#include "plot/windows/frmGraphSetting.h"

#include "platform/widgets/FormSupport.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>

frmGraphSetting::frmGraphSetting(QWidget* parent, GraphDefaults& target) : QDialog(parent), defaults(target) {
    setObjectName(u"frmGraphSetting"_s);
    setWindowTitle(tr("グラフ設定"));
    buildControls();
    bindControls();
    load();
    connectControls();
    FormSupport::PlaceOnScreen(*this);
}

void frmGraphSetting::load() {
    fonts = defaults.GraphFonts;
    styles = defaults.LegendStyles;
    rows.Fill(defaults);
    enableMask();
    fillStyleLists();
    listSeries();
    Updating = false;
    showFont();
    lstLegend->setCurrentRow(0);
    showStyle();
}

void frmGraphSetting::enableMask() {
    txtScaleMask->setEnabled(cmbScaleFormat->currentIndex() == ScaleFormat::Mask);
}

void frmGraphSetting::apply() {
    rows.Read(defaults);
    defaults.GraphFonts = fonts;
    defaults.LegendStyles = styles;
    Result = true;
    accept();
}
