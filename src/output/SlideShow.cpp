#include "output/SlideShow.h"

#include <exception>
#include <utility>

SlideShow::SlideShow(Session& ofSession) : session(ofSession) {}

void SlideShow::Start(const ShowRange& computed) {
    range = computed;
    savedStep = session.Model.CurrentStep;
    savedContour = session.Settings.Contour;
    session.SlideShow = {true, range.MaxDisplacement, range.MaxVector};
    const SlideShowSettings& settings = session.Settings.SlideShow;
    if (settings.AutomaticContourValue)
        FixContour(session.Settings.Contour, range.Maximum, range.Minimum, settings.ContourDivide);
    else
        session.Settings.Contour.Automatic = false;
    if (settings.AtFirst)
        loadStep(0);
}

void SlideShow::ApplySettings() {
    const SlideShowSettings& settings = session.Settings.SlideShow;
    ContourSettings& contour = session.Settings.Contour;
    if (settings.AutomaticContourValue) {
        FixContour(contour, range.Maximum, range.Minimum, settings.ContourDivide);
    } else {
        FixContour(contour, savedContour.MaxValue, savedContour.MinValue, savedContour.Divide);
        contour.Automatic = savedContour.Automatic;
        contour.Range = savedContour.Range;
    }
}

void SlideShow::Stop() {
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
    if (settings.RestoreStep)
        loadStep(savedStep);
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

void SlideShow::ShowNext() {
    const std::int32_t step = nextStep();
    // The two change places, so that each has its own memory to write the values to in which nobody else has a share.
    if (isAhead(step))
        std::swap(session.Model, ahead);
    else
        loadStep(step);
}

void SlideShow::ReadAhead() noexcept {
    try {
        if (ahead.Source != session.Model.Source)
            ahead = session.Model;
        mdVelorinResultModel::LoadStep(nextStep(), std::max(session.Model.CurrentItem, 0), ahead, false,
                                       session.Settings.Difference.StandardStep);
    } catch (const std::exception&) {
        // Without memory for a second step the show goes on with one.
        ForgetAhead();
    }
}
