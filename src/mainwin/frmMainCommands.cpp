// What the commands do.
#include "mainwin/frmMain.h"

#include "app/mdApplication.h"
#include "app/windows/ShowMessage.h"
#include "mainwin/commandState.h"
#include "mainwin/frmAbout.h"
#include "mainwin/globals.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/PictureBox.h"
#include "platform/widgets/Shell.h"
#include "property/propertyFile.h"
#include "result/windows/frmProperties.h"
#include "view/windows/frmContourValue.h"
#include "view/windows/frmDifferenceStep.h"
#include "view/windows/frmDrawSettings.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QLabel>
#include <QStatusBar>

using mdApplication::Model;
using mdApplication::Settings;
using mdApplication::ShowMessage;

/// A command and its reaction, which is told the command's name.
struct frmMain::Reaction {
    const char16_t* tool;
    void (*act)(frmMain& window, const QString& tool);
};

const frmMain::Reaction frmMain::reactions[] = {
    {u"miFileOpen", [](frmMain& w, const QString&) { w.promptAndOpen(); }},
    {u"miFileSaveLayout", [](frmMain& w, const QString&) { w.saveLayout(); }},
    {u"miFileProperty", [](frmMain& w, const QString&) { w.showProperties(); }},
    {u"miFileQuit", [](frmMain& w, const QString&) { w.close(); }},
    {u"miViewScaleFixed", [](frmMain& w, const QString& tool) { w.setScaleMode(tool); }},
    {u"miViewScaleAutomatic", [](frmMain& w, const QString& tool) { w.setScaleMode(tool); }},
    {u"miViewMesh", [](frmMain& w, const QString& tool) { w.toggle(tool, Settings.Window.Mesh); }},
    {u"miViewZoomIn", [](frmMain& w, const QString&) { w.SetZoom(w.Zoom() + 1); }},
    {u"miViewZoomOut", [](frmMain& w, const QString&) { w.SetZoom(w.Zoom() - 1); }},
    {u"miViewZoomOff", [](frmMain& w, const QString&) { w.SetZoom(0); }},
    {u"miViewToolBar", [](frmMain& w, const QString&) { w.toggleToolBar(); }},
    {u"miViewStatusBar", [](frmMain& w, const QString&) { w.toggleStatusBar(); }},
    {u"miViewRefresh", [](frmMain& w, const QString&) { w.repaint(); }},
    {u"miDrawDiff", [](frmMain& w, const QString&) { w.editDifference(); }},
    {u"miDrawValue", [](frmMain& w, const QString& tool) { w.toggle(tool, Settings.ValueDisplay); }},
    {u"miDrawDispLegend", [](frmMain& w, const QString& tool) { w.toggle(tool, Settings.Displacement.Legend); }},
    {u"miDrawOrgMesh", [](frmMain& w, const QString& tool) { w.toggle(tool, Settings.Displacement.Original); }},
    {u"miDrawVectorLegend", [](frmMain& w, const QString& tool) { w.toggle(tool, Settings.Vector.Legend); }},
    {u"miDrawContourLegend", [](frmMain& w, const QString& tool) { w.toggle(tool, Settings.Contour.Legend); }},
    {u"miDrawContourValue", [](frmMain& w, const QString&) { w.editContourValue(); }},
    {u"miDrawSetting", [](frmMain& w, const QString&) { w.editDrawSettings(); }},
    {u"miToolsImageCopy", [](frmMain& w, const QString&) { w.copyImage(); }},
    {u"miHelpIndex", [](frmMain& w, const QString&) { w.showHelpIndex(); }},
    {u"miHelpVersion", [](frmMain& w, const QString&) { w.showAbout(); }},
};

namespace {

/// A family of commands that stand for the values of one setting, counted from the first one's id.
struct Family {
    const char16_t* band;
    int firstId;
    int lastId;
    int* setting;
};

const Family families[] = {
    {u"pbDrawDispScale", 3211, 3214, &Settings.Displacement.Fiducial},
    {u"pbDrawVectorScale", 3311, 3313, &Settings.Vector.Fiducial},
    {u"pdDrawContourColor", 3421, 3426, &Settings.Contour.ColorIndex},
};

} // namespace

void frmMain::ExecuteCommand(const QString& tool) {
    panels[0]->clear();
    for (const Reaction& reaction : reactions)
        if (tool == QStringView(reaction.tool)) {
            reaction.act(*this, tool);
            return;
        }
    const int id = bars->ToolID(tool);
    for (const Family& family : families)
        if (id >= family.firstId && id <= family.lastId) {
            choose(QString::fromUtf16(family.band), tool, family.firstId, *family.setting);
            return;
        }
    if (tool.startsWith(u"recent-"))
        openResultFile(recentFiles.PrivateData(QStringView(tool).mid(7).toInt()));
}

void frmMain::updateCommandState() {
    updatingUi = true;
    commandState::UpdateCommandState(*bars, IsOpen(), Model, Settings);
    updateZoomCommands();
    updatingUi = false;
}

void frmMain::onComboSelection(const QString& combo) {
    if (updatingUi)
        return;
    const int index = bars->ListIndex(combo);
    if (combo == u"miDrawStep")
        loadStep(index, Model.CurrentItem);
    else if (combo == u"miDrawVectorItem")
        Settings.Vector.DefaultItemSet = index;
    else if (combo == u"miDrawContourItem")
        chooseItem(index);
    repaint();
    picScreen->setFocus();
}

void frmMain::chooseItem(int item) {
    const auto typeOf = [](int index) {
        return index >= 0 && index < Model.Items.size() ? Model.Items.at(index).ElementType : -1;
    };
    // What was picked for one kind of object means nothing for another.
    if (typeOf(item) != typeOf(Model.CurrentItem))
        Selection.Clear();
    loadStep(Model.CurrentStep, item);
}

void frmMain::toggle(const QString& tool, bool& setting) {
    bars->SetChecked(tool, !bars->Checked(tool));
    setting = bars->Checked(tool);
    repaint();
}

void frmMain::choose(const QString& band, const QString& tool, int firstId, int& setting) {
    commandState::CheckBandChoiceByName(*bars, band, tool);
    setting = bars->ToolID(tool) - firstId;
    repaint();
}

void frmMain::setScaleMode(const QString& tool) {
    constexpr int fixedId = 2810;
    commandState::CheckBandChoiceByName(*bars, u"pbViewScale"_s, tool);
    Settings.Window.ScaleMode = (bars->ToolID(tool) - fixedId) / 10;
    clsModel.SetScaleMode(PlotScaleMode(Settings.Window.ScaleMode));
    repaint();
}

void frmMain::toggleToolBar() {
    Settings.Window.Toolbar = !Settings.Window.Toolbar;
    applyBarVisibility();
}

void frmMain::toggleStatusBar() {
    Settings.Window.Statusbar = !Settings.Window.Statusbar;
    applyBarVisibility();
}

void frmMain::applyBarVisibility() {
    bars->SetChecked(u"miViewToolBar"_s, Settings.Window.Toolbar);
    bars->SetChecked(u"miViewStatusBar"_s, Settings.Window.Statusbar);
    bars->SetBandVisible(u"tbGeneral"_s, Settings.Window.Toolbar);
    statusBar()->setVisible(Settings.Window.Statusbar);
}

void frmMain::saveLayout() {
    if (!IsOpen()) {
        ShowMessage(u"対象となるデータが存在しません。"_s, MessageStyle::Information);
        return;
    }
    const QString question =
        u"現在の描画設定を、\r\n"_s + propertyFile::PathFor(Model.FileName) + u"\r\nに保存します。"_s;
    if (ShowMessage(question, MessageStyle::Ask) == MessageAnswer::Yes)
        propertyFile::SavePropertyFile(Settings, Model);
}

void frmMain::copyImage() {
    QApplication::clipboard()->setImage(picScreen->Image());
}

void frmMain::editDifference() {
    frmDifferenceStep dialog(this);
    DifferenceSettings& difference = Settings.Difference;
    dialog.InitDialog(
        Model.StepCount, difference.StandardStep,
        {difference.ApplyDisplacement, difference.ApplyVector, difference.ApplyContour, difference.ApplyValue});
    dialog.exec();
    if (!dialog.Result)
        return;
    dialog.Bindings().Read(difference);
    loadStep(Model.CurrentStep, Model.CurrentItem);
    repaint();
}

void frmMain::showHelpIndex() {
    const QDir folder(Settings.Window.Help);
    const QStringList pages = folder.entryList({u"index.htm*"_s}, QDir::Files, QDir::Name);
    if (pages.isEmpty())
        ShowMessage(u"ヘルプドキュメントが見つかりません。"_s, MessageStyle::Stop);
    else
        Shell::Open(folder.filePath(pages.constFirst()));
}

void frmMain::showAbout() {
    frmAbout(this).exec();
}

void frmMain::editContourValue() {
    frmContourValue dialog(this, Model, Settings);
    dialog.ItemIndex(Model.CurrentItem);
    dialog.exec();
    if (dialog.Result)
        repaint();
}

void frmMain::editDrawSettings() {
    frmDrawSettings dialog(this, Model, Settings);
    dialog.exec();
    if (!dialog.Result)
        return;
    updateCommandState();
    repaint();
}

void frmMain::showProperties() {
    frmProperties(this, Model).exec();
}
