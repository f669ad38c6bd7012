// One result file with all that its picture depends on: document, settings, view. Draws on any device; the window, the
// command line and whatever else makes pictures share it. It shows no message and knows no window.
#pragma once

#include "result/ValueBounds.h"
#include "result/mdVelorinResultModel.h"
#include "view/scene/mdScene.h"

class Session {
public:
    /// What came of a step that was asked for.
    enum class StepLoad {
        Done,    ///< it shows, or there is no such step
        Stopped, ///< on request
        Changed  ///< the file no longer holds what it held when it was opened
    };
    /// Paints what is wanted of the scene on a canvas; the background is already there.
    using Painter = std::function<void(PlotCanvas&, const Scene&)>;

    Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    ResultModel Model;
    ApplicationSettings Settings;
    ViewState View;
    SlideShowRun SlideShow;
    /// Headless and in automatic scale until its owner says otherwise.
    DocumentPlotter Plotter;
    /// What the plotter's pages show; without it they are empty. The positions of the picture stay what they are.
    Painter Printing;

    bool IsOpen() const;
    /// Reads a result file and takes it up. False, with everything as it was, when it can't be used or `progress` says
    /// no; it may be called on another thread as long as nobody else uses the session.
    bool Open(const QString& path, const LoadProgress& progress = {});
    /// Makes `loaded` the document and shows all of it. With `asLeft` the drawing settings, the step and the item are
    /// those of its property file, or what files start from; otherwise settings stay as they are. No step is loaded.
    void TakeUp(const ResultModel& loaded, bool asLeft = true);

    /// Makes `reloaded`, which is the same file read anew with a step of it, the document, and keeps settings and view:
    /// items of vectors by their names, and of a mesh with other bounds all is shown at the same zoom.
    /// Whether it is such a one. With `grown` its first steps are the whole steps of the document, and what is known of
    /// them still holds.
    bool TakeUpAnew(const ResultModel& reloaded, bool grown = false);
    /// Brings the whole mesh into view at 100 %, fitted anew in every scale mode.
    void ShowAll();
    /// Likewise with the mesh where its displacement takes it in a picture of this size.
    void ShowAllDisplaced(DeviceSize size, int dotsPerInch);

    /// Loads a step with the reference step that the settings name; no item counts as the first one. False when there
    /// is no such step, and then none is loaded. Where the contour has the range of all steps it is found before, if
    /// that has not been done for the item.
    bool LoadStep(std::int32_t step, std::int32_t item);
    /// Reads it into `next`, which is to be the document when it is done; the session stays as it is. May be called on
    /// another thread while the session is only read.
    StepLoad ReadStep(std::int32_t step, std::int32_t item, ResultModel& next, const LoadProgress& progress = {}) const;
    /// Both: whatever else comes of it, and without the memory for it, the step that shows stays.
    StepLoad ExchangeStep(std::int32_t step, std::int32_t item);
    /// The step and the item that the document names, the first ones if it names none.
    bool LoadStep() { return LoadStep(std::max(Model.CurrentStep, 0), Model.CurrentItem); }

    /// Whether the contour has the range of all steps, and the one that stands in the settings is not that of `item`.
    bool LacksRange(std::int32_t item) const;
    /// Finds it; of a file that has grown only the new steps are read. Nothing when `progress` says no. May be called
    /// on another thread while the session is only read.
    std::optional<ValueBounds> RangeOfAllSteps(std::int32_t item, const LoadProgress& progress = {}) const;
    /// Puts it into the settings.
    void HoldRange(std::int32_t item, const ValueBounds& range);
    /// Both. False, with the settings as they were, when `progress` says no.
    bool FindRange(std::int32_t item, const LoadProgress& progress = {});

    /// References the members: valid as long as the session.
    Scene CurrentScene() { return {Model, Settings, View, SlideShow}; }
    /// Draws the view on `device`, the whole scene or what `painter` draws of it.
    void Draw(DeviceContext& device, const Painter& painter = {});

private:
    /// What the range of all steps in the settings was found for.
    struct RangeBasis {
        std::weak_ptr<const StepSource> Source; ///< each open of a file has its own
        std::int32_t Item = -1;
        std::int32_t StepCount = 0; ///< from the first on
        int Reference = -1;         ///< -1 when the contour shows no difference
        float Upper = 0, Lower = 0;
    };

    bool isBasisOf(std::int32_t item) const;

    const Painter* painter = nullptr; ///< of the draw that is going on
    RangeBasis rangeBasis;
};
