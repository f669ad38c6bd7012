// The slide show: the window's mode in which a timer shows one step after the other. What a show holds fixed and puts
// back stands with the show.
#include "mainwin/frmMain.h"

#include "app/NumberFormat.h"
#include "app/mdApplication.h"
#include "app/windows/GraphWindows.h"
#include "mainwin/commandState.h"
#include "mainwin/ctlScene.h"
#include "mainwin/globals.h"
#include "output/windows/frmSlideShowSetting.h"
#include "platform/widgets/LongWork.h"

#include <QLabel>

using mdApplication::Model;
using mdApplication::Settings;

void frmMain::toggleSlideShow() {
    if (!slideShow.IsOn()) {
        beginSlideShow();
        return;
    }
    endSlideShow();
    repaint();
}

void frmMain::beginSlideShow() {
    const std::optional<ShowRange> range = reading.RangeForShow();
    if (!range) {
        Tell(u"スライドショーを中止しました。"_s);
        return;
    }
    if (!mdVelorinResultModel::StillHolds(Model, Model.StepCount - 1)) {
        Tell(DocumentReading::FileHasChanged());
        return;
    }
    slideShow.Start(*range);
    Selection.Clear();
    showSlideShowState();
    repaint();
}

void frmMain::endSlideShow() {
    timSlideShow.stop();
    slideShow.Stop();
    showSlideShowState();
}

void frmMain::showSlideShowState() {
    mdApplication::HideGraphWindows();
    applyBarVisibility();
    commandState::EnableCommands(*bars, facts());
    updateCaption();
    scene->setFocus();
    if (!isMinimized())
        mdApplication::ShowGraphWindows();
}

void frmMain::restartSlideShow() {
    timSlideShow.setTimerType(Qt::PreciseTimer);
    timSlideShow.start(std::max(Settings.SlideShow.Interval, 1));
    commandState::EnableCommands(*bars, facts());
}

/// Every command does this first, whatever else it does.
void frmMain::pauseSlideShow() {
    if (!timSlideShow.isActive())
        return;
    timSlideShow.stop();
    slideShow.ForgetAhead();
    commandState::EnableCommands(*bars, facts());
}

/// The timer runs on meanwhile, so that a step stands as long as it is set however long the next one takes; when that
/// takes longer the timer fires once at its end, not as often as it would have.
void frmMain::showNextSlide() {
    if (LongWork::IsRunning())
        return;
    if (slideShow.ShowNext())
        scene->Paint([this] { slideShow.ReadAhead(); });
    else
        pauseSlideShow();
}

void frmMain::editSlideShow() {
    frmSlideShowSetting dialog(this, Settings.SlideShow);
    mdApplication::runModal(dialog);
    if (!dialog.Result || !slideShow.IsOn())
        return;
    slideShow.ApplySettings();
    repaint();
}

QString frmMain::slideShowNote() const {
    if (!slideShow.IsOn() || Model.CurrentStep < 0 || Model.CurrentStep >= Model.Steps.size())
        return {};
    return u"%1 / %2    %3 : %4"_s.arg(Model.CurrentStep + 1)
        .arg(Model.StepCount)
        .arg(panels[2]->toolTip(), NumberFormat::Shortest(Model.Steps.at(Model.CurrentStep).Time));
}
