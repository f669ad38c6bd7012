#include "output/SlideShow.h"

#include <exception>
#include <utility>

SlideShow::SlideShow(Session& ofSession, StepLoader loader) : session(ofSession), loadStep(std::move(loader)) {
    if (!loadStep)
        loadStep = [this](std::int32_t step) {
            return session.ExchangeStep(step, session.Model.CurrentItem) == Session::StepLoad::Done;
        };
}

bool SlideShow::Start(const ShowRange& computed) {
    range = computed;
    savedStep = session.Model.CurrentStep;
    savedContour = session.Settings.Contour;
    session.SlideShow = {true, range.MaxDisplacement, range.MaxVector};
    const SlideShowSettings& settings = session.Settings.SlideShow;
    if (settings.AutomaticContourValue)
        holdRange();
    else
        session.Settings.Contour.Automatic = false;
    return !settings.AtFirst || loadStep(0);
}

void SlideShow::holdRange() {
    FixContour(session.Settings.Contour, range.Maximum, range.Minimum, session.Settings.SlideShow.ContourDivide);
    session.SlideShow.RangeOfAllSteps = true;
}

void SlideShow::ApplySettings() {
    ContourSettings& contour = session.Settings.Contour;
    session.SlideShow.RangeOfAllSteps = false;
    if (session.Settings.SlideShow.AutomaticContourValue) {
        holdRange();
    } else {
        FixContour(contour, savedContour.MaxValue, savedContour.MinValue, savedContour.Divide);
        contour.Automatic = savedContour.Automatic;
        contour.Range = savedContour.Range;
    }
}

bool SlideShow::Stop() {
    ForgetAhead();
    session.SlideShow = {};
    const SlideShowSettings& settings = session.Settings.SlideShow;
    ContourSettings& contour = session.Settings.Contour;
    if (settings.AutomaticContourValue) {
        contour = savedContour;
    } else {
        contour.Automatic = savedContour.Automatic;
        contour.Range = savedContour.Range;
        contour.Divide = savedContour.Divide;
    }
    return !settings.RestoreStep || loadStep(savedStep);
}

std::int32_t SlideShow::nextStep() const {
    const std::int32_t next = session.Model.CurrentStep + 1;
    return next < session.Model.StepCount ? next : 0;
}

bool SlideShow::isAhead(std::int32_t step) const {
    const ResultModel& shown = session.Model;
    return ahead.Source && ahead.Source == shown.Source && ahead.CurrentStep == step &&
           ahead.CurrentItem == shown.CurrentItem && ahead.ReferenceStep == shown.ReferenceStep;
}

bool SlideShow::ShowNext() {
    const std::int32_t step = nextStep();
    // The two change places, so that each has its own memory to write the values to in which nobody else has a share.
    if (!isAhead(step))
        return loadStep(step);
    std::swap(session.Model, ahead);
    return true;
}

void SlideShow::ReadAhead() noexcept {
    try {
        if (ahead.Source != session.Model.Source)
            ahead = session.Model;
        mdVelorinResultModel::LoadStep(nextStep(), std::max(session.Model.CurrentItem, 0), ahead, false,
                                       session.Settings.Difference.StandardStep);
        if (!mdVelorinResultModel::StillHolds(ahead, nextStep()))
            ForgetAhead();
    } catch (const std::exception&) {
        // Without memory for a second step the show goes on with one.
        ForgetAhead();
    }
}
