// What the commands do.
#include "mainwin/frmMain.h"

#include "app/mdApplication.h"
#include "app/windows/GraphWindows.h"
#include "app/windows/ShowMessage.h"
#include "mainwin/commandState.h"
#include "mainwin/commandTable.h"
#include "mainwin/ctlScene.h"
#include "mainwin/globals.h"
#include "platform/widgets/LongWork.h"
#include "property/propertyFile.h"
#include "result/windows/frmProperties.h"
#include "view/windows/frmContourValue.h"
#include "view/windows/frmDifferenceStep.h"
#include "view/windows/frmDrawSettings.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QStatusBar>

using mdApplication::Current;
using mdApplication::Model;
using mdApplication::runModal;
using mdApplication::Settings;
using mdApplication::ShowMessage;

void frmMain::ExecuteCommand(const QString& tool) {
    // Assistive tools reach commands also while the mouse and the keyboard don't.
    if (LongWork::IsRunning())
        return;
    forgetTold();
    pauseSlideShow();
    if (const FamilyRow* family = commandTable::FamilyOf(tool))
        (this->*family->act)(bars->ToolID(tool) - family->firstId);
    const CommandRow* row = commandTable::Find(tool);
    if (!row || !row->act)
        return;
    if (row->flag) {
        bars->SetChecked(tool, !bars->Checked(tool));
        row->flag(Settings) = bars->Checked(tool);
    }
    if (const BandRow* band = commandTable::ChoiceOf(tool)) {
        const QString name = QString::fromUtf16(band->name);
        commandState::CheckBandChoiceByName(*bars, name, tool);
        band->choice(Settings) = int(bars->BandTools(name).indexOf(tool));
    }
    (this->*row->act)();
}

CommandFacts frmMain::facts() const {
    return {.Model = Model,
            .Settings = Settings,
            .FileOpen = IsOpen(),
            .Zoom = Zoom(),
            .HasViewBefore = scene->CanGoTo(-1),
            .HasViewAfter = scene->CanGoTo(1),
            .PickedCount = Selection.Count(),
            .ShowOn = slideShow.IsOn(),
            .ShowMoves = timSlideShow.isActive()};
}

void frmMain::updateCommandState() {
    updatingUi = true;
    commandState::UpdateCommandState(*bars, facts());
    updatingUi = false;
}

void frmMain::onBandOpening(const QString& band) {
    commandState::EnableOnOpening(*bars, band, facts());
    // A module that is not the same any more leaves the menu at once.
    if (band == u"pbAddIn")
        buildAddinMenu();
}

void frmMain::onComboSelection(const QString& combo) {
    if (updatingUi || LongWork::IsRunning())
        return;
    forgetTold();
    if (const CommandRow* row = commandTable::Find(combo); row && row->act)
        (this->*row->act)();
    repaint();
    scene->setFocus();
}

void frmMain::chooseStep() {
    reading.LoadStep(bars->ListIndex(u"miDrawStep"_s), Model.CurrentItem);
}

void frmMain::goToStep(int step) {
    const int last = bars->ListCount(u"miDrawStep"_s) - 1;
    bars->SetListIndex(u"miDrawStep"_s, std::min(std::max(step, 0), last));
}

void frmMain::showStepBefore() {
    goToStep(bars->ListIndex(u"miDrawStep"_s) - 1);
}

void frmMain::showStepAfter() {
    goToStep(bars->ListIndex(u"miDrawStep"_s) + 1);
}

void frmMain::chooseVector() {
    Settings.Vector.DefaultItemSet = bars->ListIndex(u"miDrawVectorItem"_s);
}

void frmMain::chooseItem() {
    const auto typeOf = [](int index) {
        return index >= 0 && index < Model.Items.size() ? Model.Items.at(index).ElementType : -1;
    };
    const int item = bars->ListIndex(u"miDrawContourItem"_s);
    // What was picked for one kind of object means nothing for another.
    const bool sameKind = typeOf(item) == typeOf(Model.CurrentItem);
    if (reading.LoadStep(Model.CurrentStep, item) && !sameKind)
        Selection.Clear();
}

void frmMain::applyScaleMode() {
    DocPlotter().SetScaleMode(PlotScaleMode(Settings.Window.ScaleMode));
    repaint();
}

void frmMain::applyBarVisibility() {
    bars->SetChecked(u"miViewToolBar"_s, Settings.Window.Toolbar);
    bars->SetChecked(u"miViewStatusBar"_s, Settings.Window.Statusbar);
    bars->SetBandVisible(u"mbGeneral"_s, !slideShow.IsOn());
    bars->SetBandVisible(u"tbGeneral"_s, !slideShow.IsOn() && Settings.Window.Toolbar);
    bars->SetBandVisible(u"tbSlideShow"_s, slideShow.IsOn());
    statusBar()->setVisible(Settings.Window.Statusbar);
}

void frmMain::saveLayout() {
    if (!IsOpen()) {
        ShowMessage(u"対象となるデータが存在しません。"_s, MessageStyle::Information);
        return;
    }
    const QString question =
        u"現在の描画設定を、\r\n"_s + propertyFile::PathFor(Model.FileName) + u"\r\nに保存します。"_s;
    if (ShowMessage(question, MessageStyle::Ask) != MessageAnswer::Yes)
        return;
    const QString problem = mdApplication::FileExists(Model.FileName)
                                ? propertyFile::SavePropertyFile(Settings, Model)
                                : tr("計算結果ファイルがないため、描画設定を保存できません。");
    Tell(problem.isEmpty() ? u"描画設定を保存しました。"_s : problem);
}

void frmMain::copyImage() {
    QApplication::clipboard()->setImage(scene->Picture());
}

void frmMain::editDifference() {
    frmDifferenceStep dialog(this);
    DifferenceSettings& difference = Settings.Difference;
    dialog.InitDialog(
        Model.StepCount, difference.StandardStep,
        {difference.ApplyDisplacement, difference.ApplyVector, difference.ApplyContour, difference.ApplyValue});
    runModal(dialog);
    if (!dialog.Result)
        return;
    const DifferenceSettings before = difference;
    dialog.Bindings().Read(difference);
    if (!reading.LoadStep(Model.CurrentStep, Model.CurrentItem))
        difference = before;
    repaint();
}

void frmMain::editContourValue() {
    frmContourValue dialog(this, Model, Settings);
    dialog.ItemIndex(Model.CurrentItem);
    runModal(dialog);
    if (dialog.Result)
        repaint();
}

void frmMain::editDrawSettings() {
    frmDrawSettings dialog(this, Model, Settings);
    runModal(dialog);
    if (!dialog.Result)
        return;
    updateCommandState();
    repaint();
}

void frmMain::showProperties() {
    frmProperties dialog(this, Model);
    runModal(dialog);
}

void frmMain::openRecentFile(int index) {
    openResultFile(recentFiles.Path(index));
}
