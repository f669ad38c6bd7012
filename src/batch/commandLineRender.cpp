// The picture of one step, or one a step, in the format that the output's name asks for.
#include "batch/PictureWriter.h"
#include "batch/pictureOptions.h"
#include "batch/sceneOptions.h"
#include "batch/stepRange.h"
#include "platform/base/NativePath.h"
#include "platform/device/Fonts.h"

#include <QRegularExpression>

namespace batch {

namespace {

/// All that the command line says about the pictures.
struct Job {
    SceneChoice scene;
    QString output; ///< may have a place for the step in its name
    PictureFile picture;
    PictureFormat format = nullptr;
    int zoom = 0;
    PlotScaleMode scaleMode = PlotScaleMode::Automatic;
    std::optional<StepRange> range;
};

void declare(Options& options) {
    options.Value(u"o"_s, u"OUT"_s, u"The picture: .png, .svg, .pdf or .trace; %d or %04d in it is the step."_s);
    DeclareStepRange(options, u"One picture for each step from A to B, every S-th."_s);
    DeclareSceneOptions(options);
    DeclarePictureOptions(options);
    options.Value(u"scale-mode"_s, u"fixed|automatic"_s, u"How the scale follows the size."_s);
    options.Value(u"zoom"_s, u"Z"_s, u"Zoom step from -7 to 9; 0 shows all."_s);
}

Job jobFrom(const Options& options) {
    Job job;
    if (!options.IsSet(u"o"_s))
        throw Stop{WrongUsage, u"-o is needed"_s};
    job.output = options.Text(u"o"_s);
    job.format = PictureFormatFor(job.output);
    if (!job.format)
        RefuseEnding(job.output, u".png, .svg, .pdf or .trace"_s);
    job.picture = PictureFileFrom(options);
    job.zoom = options.Integer(u"zoom"_s, ZoomMin, ZoomMax).value_or(0);
    job.range = StepRangeFrom(options);
    job.scaleMode = options.IsFirst(u"scale-mode"_s, u"fixed"_s, u"automatic"_s, true) ? PlotScaleMode::Fixed
                                                                                       : PlotScaleMode::Automatic;
    job.scene = SceneChoiceFrom(options, true);
    return job;
}

/// The output's name with its %d or %04d replaced by the step's number; nothing when it has none.
std::optional<QString> numberedName(const QString& output, std::int64_t step) {
    static const QRegularExpression place(u"%(0?)([0-9]{0,2})d"_s);
    const QRegularExpressionMatch match = place.match(NativePath::Shown(output));
    if (!match.hasMatch())
        return {};
    const QChar fill = match.captured(1).isEmpty() ? u' ' : u'0';
    const QString number = QString::number(step).rightJustified(match.captured(2).toInt(), fill);
    return output.left(match.capturedStart()) + number + output.mid(match.capturedEnd());
}

} // namespace

Status RunRender(const QStringList& arguments, const Streams& streams) {
    Options options(u"render"_s, u"Writes the picture of a step."_s, u"FILE"_s);
    declare(options);
    options.Parse(arguments, streams);
    const Job job = jobFrom(options);
    if (job.range && job.range->first != job.range->last && !numberedName(job.output, 1))
        throw Stop{WrongUsage, u"-o wants %d in the name when there is more than one step"_s};

    Fonts::InstallSubstitutions();
    Session session;
    const std::int32_t item = OpenScene(job.scene, streams, session);
    session.Plotter.SetScaleMode(job.scaleMode);
    mdView::ApplyZoom(job.zoom, session.View);
    StepRange range = job.range.value_or(StepRange());
    if (!job.range)
        range.first = range.last = ChosenStep(job.scene, session.Model);
    PictureWriter writer;
    for (std::int64_t number = range.first; number <= range.last; number += range.stride) {
        if (job.range)
            RequireStep(session.Model, job.scene.Input, u"steps"_s, number);
        // What the property file alone names may be gone: then, and in a file without steps, the mesh is shown.
        session.LoadStep(std::int32_t(number - 1), item);
        writer.Write(numberedName(job.output, number).value_or(job.output),
                     job.format(job.picture, [&session](DeviceContext& device) { session.Draw(device); }));
    }
    writer.Finish();
    return Done;
}

} // namespace batch
