// The picture of one step, or one a step, in the format that the output's name asks for.
#include "app/ApplicationSettings.h"
#include "app/mdApplication.h"
#include "batch/PictureWriter.h"
#include "batch/pictureOptions.h"
#include "batch/settingsFile.h"
#include "platform/base/NativePath.h"
#include "platform/device/Fonts.h"
#include "property/drawingElements.h"
#include "property/propertyFile.h"
#include "view/scene/Session.h"

#include <QRegularExpression>

namespace batch {

namespace {

struct StepRange {
    std::int64_t first = 1, last = 1, stride = 1;
};

/// All that the command line says about the pictures.
struct Job {
    QString input;
    QString output; ///< may have a place for the step in its name
    PictureFile picture;
    PictureFormat format = nullptr;
    int zoom = 0;
    PlotScaleMode scaleMode = PlotScaleMode::Automatic;
    std::optional<StepRange> range;
    std::optional<int> step;
    QString item;
    bool mesh = true;
    bool withPropertyFile = true;
    QStringList assignments;      ///< of drawing settings, each of which is sound
    std::int32_t reference = -1;  ///< the step that these name
    ApplicationSettings settings; ///< what the pictures start from
};

StepRange parseRange(const QString& text) {
    const QStringList parts = text.split(u':');
    StepRange range;
    bool ok = parts.size() == 2 || parts.size() == 3;
    std::int64_t* const targets[] = {&range.first, &range.last, &range.stride};
    for (qsizetype i = 0; ok && i < parts.size(); ++i) {
        *targets[i] = parts[i].toInt(&ok);
        ok = ok && *targets[i] >= 1;
    }
    if (!ok || range.last < range.first)
        throw Stop{WrongUsage, u"--steps wants FIRST:LAST or FIRST:LAST:STRIDE, not \"%1\""_s.arg(text)};
    return range;
}

void applySettings(const QStringList& assignments, ApplicationSettings& settings) {
    for (const QString& assignment : assignments) {
        const qsizetype equals = assignment.indexOf(u'=');
        if (equals < 0 || !drawingElements::Set(assignment.left(equals), assignment.mid(equals + 1), settings))
            throw Stop{WrongUsage,
                       u"--set wants PATH=VALUE with a known path and a fitting value, not \"%1\""_s.arg(assignment)};
    }
}

void declare(Options& options) {
    options.Value(u"o"_s, u"OUT"_s, u"The picture: .png, .svg, .pdf or .trace; %d or %04d in it is the step."_s);
    options.Value(u"step"_s, u"N"_s, u"The step; the first by default."_s);
    options.Value(u"steps"_s, u"A:B[:S]"_s, u"One picture for each step from A to B, every S-th."_s);
    options.Value(u"item"_s, u"K"_s, u"The item, by number or name; the first by default."_s);
    DeclarePictureOptions(options);
    options.Value(u"mesh"_s, u"on|off"_s, u"Draw all edges, or the outline alone."_s);
    options.Value(u"scale-mode"_s, u"fixed|automatic"_s, u"How the scale follows the size."_s);
    options.Value(u"zoom"_s, u"Z"_s, u"Zoom step from -7 to 9; 0 shows all."_s);
    options.Flag(u"no-property"_s, u"Leave the drawing property file beside the result file unread."_s);
    options.Value(u"set"_s, u"PATH=VALUE"_s,
                  u"Set a drawing setting; may be given again. Paths: "_s + drawingElements::Paths().join(u", "));
}

Job jobFrom(const Options& options) {
    Job job;
    job.input = options.Operand();
    if (!options.IsSet(u"o"_s))
        throw Stop{WrongUsage, u"-o is needed"_s};
    job.output = options.Text(u"o"_s);
    job.format = PictureFormatFor(job.output);
    if (!job.format)
        RefuseEnding(job.output, u".png, .svg, .pdf or .trace"_s);
    job.picture = PictureFileFrom(options);
    job.step = options.Integer(u"step"_s, 1);
    job.item = options.Text(u"item"_s);
    job.zoom = options.Integer(u"zoom"_s, ZoomMin, ZoomMax).value_or(0);
    if (options.IsSet(u"steps"_s))
        job.range = parseRange(options.Text(u"steps"_s));
    job.mesh = options.IsFirst(u"mesh"_s, u"on"_s, u"off"_s, job.mesh);
    job.withPropertyFile = !options.IsSet(u"no-property"_s);
    job.scaleMode = options.IsFirst(u"scale-mode"_s, u"fixed"_s, u"automatic"_s, true) ? PlotScaleMode::Fixed
                                                                                       : PlotScaleMode::Automatic;
    job.assignments = options.Texts(u"set"_s);
    job.settings = SettingsFrom(options);
    // Tried out here, so that a wrong one is told before the file is opened.
    ApplicationSettings trial;
    applySettings(job.assignments, trial);
    job.reference = trial.Difference.StandardStep;
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

/// Takes the file up with the settings of its pictures: the property file's, if there is one and it counts, under those
/// of the command line.
void takeUp(const Job& job, Session& session) {
    session.Settings = job.settings;
    // Without a file to read the store of drawing defaults isn't touched: many companions may run at once.
    const ResultModel model = OpenFile(job.input);
    session.TakeUp(model, job.withPropertyFile && mdApplication::FileExists(propertyFile::PathFor(model.FileName)));
    session.Settings.Window.Mesh = job.mesh;
    applySettings(job.assignments, session.Settings);
    session.Plotter.SetScaleMode(job.scaleMode);
    mdView::ApplyZoom(job.zoom, session.View);
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
    takeUp(job, session);
    ResultModel& model = session.Model;
    const std::int32_t item =
        job.item.isEmpty() ? std::max(model.CurrentItem, 0) : FindItem(job.item, model, job.input);
    const std::int64_t step = job.step ? *job.step : std::int64_t(std::max(model.CurrentStep, 0)) + 1;
    const StepRange range = job.range.value_or(StepRange{step, step, 1});
    if (job.reference >= 0)
        RequireStep(model, job.input, u"set difference/std"_s, std::int64_t(job.reference) + 1);
    PictureWriter writer;
    for (std::int64_t number = range.first; number <= range.last; number += range.stride) {
        if (job.range || job.step)
            RequireStep(model, job.input, job.range ? u"steps"_s : u"step"_s, number);
        // What the property file alone names may be gone: then, and in a file without steps, the mesh is shown.
        session.LoadStep(std::int32_t(number - 1), item);
        writer.Write(numberedName(job.output, number).value_or(job.output),
                     job.format(job.picture, [&session](DeviceContext& device) { session.Draw(device); }));
    }
    writer.Finish();
    return Done;
}

} // namespace batch
