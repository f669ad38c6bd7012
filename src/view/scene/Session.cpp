#include "view/scene/Session.h"

#include "property/propertyFile.h"
#include "result/ShowRange.h"
#include "view/scene/sceneFit.h"

#include <QScopeGuard>
#include <utility>

namespace {
int referenceOf(const DifferenceSettings& difference) {
    return difference.ApplyContour ? std::max(difference.StandardStep, -1) : -1;
}
} // namespace

Session::Session() {
    Plotter.SetHeadless(true);
    Plotter.SetScaleMode(PlotScaleMode::Automatic);
    Plotter.SetEventSink({[this] { return View.ViewBounds; },
                          [this](PlotCanvas& canvas) {
                              if (painter && *painter)
                                  (*painter)(canvas, CurrentScene());
                              else
                                  mdScene::PaintScene(canvas, false, CurrentScene());
                          },
                          [this] { return std::exchange(View.RefitPending, false); },
                          [this](PlotCanvas& canvas) {
                              ViewState onPaper;
                              if (Printing)
                                  Printing(canvas, {Model, Settings, onPaper, SlideShow});
                          }});
}

bool Session::IsOpen() const {
    return !mdVelorinResultModel::IsFileClosed(Model);
}

bool Session::Open(const QString& path, const LoadProgress& progress) {
    // A file without a title keeps the one before it.
    ResultModel loaded;
    loaded.Title = Model.Title;
    if (!mdVelorinResultModel::LoadResultFile(path, loaded, progress))
        return false;
    TakeUp(loaded);
    return true;
}

void Session::TakeUp(const ResultModel& loaded, bool asLeft) {
    Model = loaded;
    if (asLeft)
        propertyFile::LoadPropertyFile(Settings, Model);
    ShowAll();
}

void Session::ShowAll() {
    mdView::SetViewBounds(Model.Mesh, View);
    mdView::ApplyZoom(0, View);
    View.RefitPending = true;
}

bool Session::TakeUpAnew(const ResultModel& reloaded, bool grown) {
    // A step that was cut short, and a reference step that was not there, would have another range now.
    const bool rangeHolds = grown && mdVelorinResultModel::WholeSteps(Model) == Model.StepCount &&
                            rangeBasis.Source.lock() == Model.Source && rangeBasis.Reference < Model.StepCount;
    if (rangeHolds)
        rangeBasis.Source = reloaded.Source;

    for (VectorItemSet& set : Settings.Vector.ItemSets) {
        set.Horz = mdVelorinResultModel::ItemLike(Model, set.Horz, reloaded);
        set.Vert = mdVelorinResultModel::ItemLike(Model, set.Vert, reloaded);
    }
    ViewState before, now;
    mdView::SetViewBounds(Model.Mesh, before);
    mdView::SetViewBounds(reloaded.Mesh, now);
    Model = reloaded;
    if (before.WholeBounds == now.WholeBounds)
        return false;
    mdView::SetViewBounds(Model.Mesh, View);
    mdView::ApplyZoom(View.Zoom, View);
    View.RefitPending = true;
    return true;
}

Session::StepLoad Session::ReadStep(std::int32_t step, std::int32_t item, ResultModel& next,
                                    const LoadProgress& progress) const {
    next = Model;
    bool stopped = false;
    const auto goesOn = [&](qint64 done, qint64 total) { return !(stopped = stopped || !progress(done, total)); };
    mdVelorinResultModel::LoadStep(step, std::max(item, 0), next, false, Settings.Difference.StandardStep,
                                   progress ? LoadProgress(goesOn) : LoadProgress());
    if (stopped)
        return StepLoad::Stopped;
    for (const std::int32_t read : {step, Settings.Difference.StandardStep})
        if (!mdVelorinResultModel::StillHolds(Model, read))
            return StepLoad::Changed;
    return StepLoad::Done;
}

Session::StepLoad Session::ExchangeStep(std::int32_t step, std::int32_t item) {
    ResultModel next;
    const StepLoad outcome = ReadStep(step, item, next);
    if (outcome == StepLoad::Done)
        Model = std::move(next);
    return outcome;
}

void Session::ShowAllDisplaced(DeviceSize size, int dotsPerInch) {
    ShowAll();
    if (const auto bounds = mdScene::DisplacedBounds(CurrentScene(), size, dotsPerInch))
        View.WholeBounds = View.ViewBounds = *bounds;
}

bool Session::LoadStep(std::int32_t step, std::int32_t item) {
    // A file whose first load failed has no item, and would otherwise never load a step again.
    item = std::max(item, 0);
    if (LacksRange(item))
        FindRange(item);
    return mdVelorinResultModel::LoadStep(step, item, Model, false, Settings.Difference.StandardStep);
}

/// Whether the range that stands in the settings has been found for the item, over some steps of the file at least.
bool Session::isBasisOf(std::int32_t item) const {
    const ContourSettings& contour = Settings.Contour;
    return rangeBasis.Source.lock() == Model.Source && rangeBasis.Item == item &&
           rangeBasis.Reference == referenceOf(Settings.Difference) && rangeBasis.Upper == contour.MaxValue &&
           rangeBasis.Lower == contour.MinValue;
}

bool Session::LacksRange(std::int32_t item) const {
    return Settings.Contour.Range == ContourRange::AllSteps &&
           (!isBasisOf(item) || rangeBasis.StepCount != Model.StepCount);
}

std::optional<ValueBounds> Session::RangeOfAllSteps(std::int32_t item, const LoadProgress& progress) const {
    const std::int32_t known = isBasisOf(item) ? rangeBasis.StepCount : 0;
    std::optional<ValueBounds> range = ComputeContourRange(item, Model, Settings.Difference, known, progress);
    if (range && known > 0)
        range->Take({rangeBasis.Upper, rangeBasis.Lower});
    return range;
}

void Session::HoldRange(std::int32_t item, const ValueBounds& range) {
    ContourSettings& contour = Settings.Contour;
    contour.MaxValue = range.Max;
    contour.MinValue = range.Min;
    contour.Automatic = false;
    rangeBasis = {Model.Source, item, Model.StepCount, referenceOf(Settings.Difference), range.Max, range.Min};
}

bool Session::FindRange(std::int32_t item, const LoadProgress& progress) {
    const std::optional<ValueBounds> range = RangeOfAllSteps(item, progress);
    if (range)
        HoldRange(item, *range);
    return range.has_value();
}

void Session::Draw(DeviceContext& device, const Painter& chosen) {
    painter = &chosen;
    const auto done = qScopeGuard([this] { painter = nullptr; });
    Plotter.Draw(device);
}
