// The picture of one step, or one a step, in the format that the output's name asks for.
#include "batch/PictureWriter.h"
#include "batch/pictureOptions.h"
#include "batch/sceneOptions.h"
#include "batch/stepRange.h"
#include "platform/base/NativePath.h"
#include "platform/device/Fonts.h"
#include "platform/device/PictureNote.h"
#include "view/scene/pictureCommand.h"

#include <QFile>
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

QString textOf(const char16_t* literal) {
    return QString::fromUtf16(literal);
}

void declare(Options& options) {
    options.Value(u"o"_s, u"OUT"_s, u"The picture: .png, .svg, .pdf or .trace; %d or %04d in it is the step."_s);
    DeclareStepRange(options, u"One picture for each step from A to B, every S-th."_s);
    DeclareSceneOptions(options);
    DeclarePictureOptions(options);
    options.Value(u"scale-mode"_s, u"fixed|automatic"_s, u"How the scale follows the size."_s);
    options.Value(u"zoom"_s, u"Z"_s, u"Zoom step from -7 to 9; 0 shows all."_s);
    for (const pictureCommand::Option& option : pictureCommand::Options())
        if (option.Take)
            options.Value(textOf(option.Name), textOf(option.ValueName), textOf(option.Purpose));
    options.Value(u"like"_s, u"PICTURE"_s,
                  u"Draw as the options say that a picture saved by the window carries; those given here go before."_s);
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

/// The options that a picture carries. What it holds is not trusted: they are parsed as if typed, and none of them
/// names a file.
QStringList wordsIn(const QString& picture) {
    QFile file;
    if (const std::optional<QString> problem = NativePath::OpenToRead(picture, file))
        RefuseInput(picture, *problem);
    const std::optional<QString> note = PictureNote::In(file.read(PictureNote::WithinBytes));
    if (!note)
        RefuseInput(picture, u"it does not tell how it was made"_s);
    const auto [words, problem] = pictureCommand::Take(*note);
    if (!problem.isEmpty())
        RefuseInput(picture, problem);
    return words;
}

/// An option goes before one of the picture that stands for the same thing in another way.
bool isOverruled(const Options& typed, const QString& name) {
    if (typed.IsSet(name))
        return false;
    return (name == u"view" && typed.IsSet(u"zoom"_s)) ||
           (name == u"scale" && (typed.IsSet(u"zoom"_s) || typed.IsSet(u"size"_s)));
}

void takeOptions(const Options& options, const Options& typed, const PictureFile& picture, Session& session) {
    for (const pictureCommand::Option& option : pictureCommand::Options())
        if (const QString name = textOf(option.Name); option.Take && !isOverruled(typed, name))
            for (const QString& text : options.Texts(name))
                if (!option.Take(text, picture, session))
                    throw Stop{WrongUsage, u"--%1 wants %2, not \"%3\""_s.arg(name, textOf(option.ValueName), text)};
}

Status render(const Options& options, const Options& typed, const Streams& streams) {
    const Job job = jobFrom(options);
    {
        // Tried out here, so that a wrong one is told before the file is opened.
        Session trial;
        takeOptions(options, typed, job.picture, trial);
    }
    if (job.range && job.range->first != job.range->last && !numberedName(job.output, 1))
        throw Stop{WrongUsage, u"-o wants %d in the name when there is more than one step"_s};

    Fonts::InstallSubstitutions();
    Session session;
    const std::int32_t item = OpenScene(job.scene, streams, session);
    session.Plotter.SetScaleMode(job.scaleMode);
    mdView::ApplyZoom(job.zoom, session.View);
    takeOptions(options, typed, job.picture, session);
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

} // namespace

Status RunRender(const QStringList& arguments, const Streams& streams) {
    const auto parsed = [&](const QStringList& words) {
        auto options = std::make_unique<Options>(u"render"_s, u"Writes the picture of a step."_s, u"FILE"_s);
        declare(*options);
        options->Parse(words, streams);
        return options;
    };
    const auto typed = parsed(arguments);
    if (!typed->IsSet(u"like"_s))
        return render(*typed, *typed, streams);
    return render(*parsed(wordsIn(typed->Text(u"like"_s)) + arguments), *typed, streams);
}

} // namespace batch
