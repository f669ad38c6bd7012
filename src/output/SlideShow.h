// A slide show without its window and its timer: what it holds fixed in a session and puts back, and the step that
// comes next, which can be read beforehand. It paints nothing and knows no time.
#pragma once

#include "result/ShowRange.h"
#include "view/scene/Session.h"

class SlideShow {
public:
    /// Loads a step of the item that shows; false when it can't be had.
    using StepLoader = std::function<bool(std::int32_t step)>;

    /// The session must outlive the show. It is the session that says whether a show is on. Without a loader the
    /// session exchanges its steps.
    explicit SlideShow(Session& session, StepLoader loader = {});
    SlideShow(const SlideShow&) = delete;
    SlideShow& operator=(const SlideShow&) = delete;

    // Where a step that can't be had is asked for, the one that shows stays, all else is done, and it is false.

    bool IsOn() const { return session.SlideShow.SlideShowRunning; }
    /// Begins a show with what `ComputeItemRange` gives of the current item: holds the contour as the settings say and
    /// goes to the first step if they say so.
    bool Start(const ShowRange& computed);
    /// Takes up settings of the show that have changed while it is on.
    void ApplySettings();
    /// Puts the contour back as the settings say now, and the step if they say so.
    bool Stop();

    /// Goes to the next step, behind the last one to the first.
    bool ShowNext();
    /// Reads the step that comes next into a place of its own. May be called on another thread while the session is
    /// only read; what it can't do, `ShowNext` does.
    void ReadAhead() noexcept;
    /// Gives that place's memory up.
    void ForgetAhead() { ahead = {}; }

private:
    void holdRange();
    std::int32_t nextStep() const;
    bool isAhead(std::int32_t step) const;

    Session& session;
    StepLoader loadStep;
    std::int32_t savedStep = -1;
    ContourSettings savedContour;
    ShowRange range;
    ResultModel ahead; ///< of the same file with its next step; empty when none has been read
};
