// The pictures of the steps of a file as a film, in the format that the output's name asks for. A frame is the picture
// of its step; as in a slide show all of them share the contour's range and the scales.
#include "batch/pictureOptions.h"
#include "batch/sceneOptions.h"
#include "batch/stepRange.h"
#include "output/filmFrames.h"
#include "platform/device/Fonts.h"
#include "platform/raster/RasterDevice.h"
#include "result/ShowRange.h"
#include "view/scene/Session.h"
#include "view/scene/contour.h"

#include <QIODevice>

namespace batch {

namespace {

constexpr int mostMilliseconds = 10000;
constexpr int mostKeyFrames = 1000;
constexpr int mostDataRate = 100000;
constexpr int qualityPerCent = filmFormat::MaxQuality / 100;

/// Whose range the contour has in each frame.
struct ContourChoice {
    enum class Of { File, Step, Given };
    Of Whose = Of::File;
    float Minimum = 0, Maximum = 0; ///< when given
};

struct Job {
    QString output;
    FilmFormat film;
    int resolution = 0;
    ContourChoice contour;
    bool header = true;
    std::optional<StepRange> steps; ///< all without
    SceneChoice scene;
};

QString namesOf(const std::vector<const FilmCodec*>& codecs) {
    QStringList names;
    for (const FilmCodec* codec : codecs)
        names += QString::fromUtf16(codec->Name);
    return names.join(u", ");
}

/// For each ending the codecs that it takes, the usual one first.
QString codecsPurpose() {
    QStringList parts;
    for (const QString& ending : {u".avi"_s, u".mp4"_s, u".webm"_s, u".gif"_s})
        parts += ending + u": "_s + namesOf(filmFormat::CodecsFor(*filmFormat::ContainerFor(ending)));
    return parts.join(u"; ") + u'.';
}

void declare(Options& options) {
    options.Value(u"o"_s, u"OUT"_s, u"The film: .avi, .mp4, .webm or .gif."_s);
    DeclareStepRange(options, u"A frame for each step from A to B, every S-th; all steps by default."_s);
    DeclareSceneOptions(options, false);
    DeclarePictureOptions(options);
    options.Value(u"interval"_s, u"MS"_s,
                  u"Milliseconds from one frame to the next; that of the slide show by default."_s);
    options.Value(u"codec"_s, u"NAME"_s, codecsPurpose());
    options.Value(u"quality"_s, u"Q"_s, u"0 to 100, higher is better."_s);
    options.Value(u"key-frames"_s, u"N"_s,
                  u"At most N frames from one key frame to the next; in AVI each is one by default."_s);
    options.Value(u"data-rate"_s, u"N"_s, u"Kilobytes a second, in place of the quality."_s);
    options.Value(u"range"_s, u"file|step|MIN,MAX"_s,
                  u"The contour's range: that of all steps, by default, of each step, or a given one."_s);
    options.Flag(u"no-header"_s, u"Leave out the line above the picture."_s);
}

ContourChoice contourFrom(const Options& options) {
    const QString text = options.IsSet(u"range"_s) ? options.Text(u"range"_s) : u"file"_s;
    if (text == u"file" || text == u"step")
        return {.Whose = text == u"file" ? ContourChoice::Of::File : ContourChoice::Of::Step};
    const QStringList ends = text.split(u',');
    bool lowOk = false, highOk = false;
    const float low = ends.value(0).toFloat(&lowOk), high = ends.value(1).toFloat(&highOk);
    if (ends.size() != 2 || !lowOk || !highOk || !std::isfinite(low) || !std::isfinite(high) || !(low < high))
        throw Stop{WrongUsage, u"--range wants file, step or MIN,MAX, not \"%1\""_s.arg(text)};
    return {ContourChoice::Of::Given, low, high};
}

/// A wish that the codec knows nothing of would go unheard.
void refuseFor(const Options& options, const QString& name, const FilmCodec& codec) {
    if (options.IsSet(name))
        throw Stop{WrongUsage, u"--%1 is nothing that the codec %2 has"_s.arg(name, QStringView(codec.Name))};
}

FilmFormat filmFrom(const Options& options, const QString& output) {
    FilmFormat film;
    const std::optional<FilmContainer> container = filmFormat::ContainerFor(output);
    if (!container)
        RefuseEnding(output, u".avi, .mp4, .webm or .gif"_s);
    film.Container = *container;
    const auto codecs = filmFormat::CodecsFor(film.Container);
    film.Codec = codecs.front();
    if (options.IsSet(u"codec"_s))
        film.Codec = filmFormat::FindCodec(film.Container, options.Text(u"codec"_s).toLower());
    if (!film.Codec)
        throw Stop{WrongUsage, u"--codec wants one of %1 for this ending, not \"%2\""_s.arg(namesOf(codecs),
                                                                                            options.Text(u"codec"_s))};
    if (film.Codec->IsLossless())
        for (const QString& name : {u"quality"_s, u"data-rate"_s})
            refuseFor(options, name, *film.Codec);
    if (film.Container == FilmContainer::Gif)
        refuseFor(options, u"key-frames"_s, *film.Codec);
    if (const auto quality = options.Integer(u"quality"_s, 0, 100))
        film.Quality = *quality * qualityPerCent;
    film.KeyFrames = options.Integer(u"key-frames"_s, 1, mostKeyFrames).value_or(0);
    film.DataRate = options.Integer(u"data-rate"_s, 1, mostDataRate).value_or(0);
    return film;
}

Job jobFrom(const Options& options) {
    Job job;
    if (!options.IsSet(u"o"_s))
        throw Stop{WrongUsage, u"-o is needed"_s};
    job.output = options.Text(u"o"_s);
    job.film = filmFrom(options, job.output);
    const PictureFile picture = PictureFileFrom(options);
    job.film.Width = picture.Size.Width;
    job.film.Height = picture.Size.Height;
    job.resolution = picture.Resolution();
    job.contour = contourFrom(options);
    const std::optional<int> interval = options.Integer(u"interval"_s, 1, mostMilliseconds);
    job.steps = StepRangeFrom(options);
    job.scene = SceneChoiceFrom(options, true);
    const SlideShowSettings& show = job.scene.Settings.SlideShow;
    job.film.Interval = std::clamp(interval.value_or(show.Interval), 1, mostMilliseconds);
    job.header = show.PaintHeader && !options.IsSet(u"no-header"_s);
    return job;
}

/// What all frames share.
void holdRange(const ContourChoice& choice, std::int32_t item, Session& session) {
    ApplicationSettings& settings = session.Settings;
    const bool ofFile = choice.Whose == ContourChoice::Of::File;
    // The item's own values are read where they count.
    const ShowRange range = *ComputeItemRange(ofFile ? item : -1, session.Model, settings.Vector);
    session.SlideShow = {true, range.MaxDisplacement, range.MaxVector, ofFile};
    if (ofFile)
        FixContour(settings.Contour, range.Maximum, range.Minimum, settings.SlideShow.ContourDivide);
    else if (choice.Whose == ContourChoice::Of::Given)
        FixContour(settings.Contour, choice.Maximum, choice.Minimum, settings.SlideShow.ContourDivide);
}

/// The range of the step that is loaded, in as many bands as the drawing settings say.
void takeRangeOfStep(Session& session) {
    ContourSettings& contour = session.Settings.Contour;
    contour.Range = ContourRange::AsStands;
    if (contour.Automatic)
        return;
    const ItemValues values = mdScene::ContourValues(session.CurrentScene());
    FixContour(contour, values.MaxValue, values.MinValue, contour.Divide);
}

[[noreturn]] void refuse(const QString& output, const FilmFailure& failure) {
    if (failure.At == FilmFailure::Stage::Library)
        RefuseInput(output, u"no films can be made here: "_s + failure.Reason);
    if (failure.At == FilmFailure::Stage::Codec)
        RefuseInput(output, u"the codec refuses this film: "_s + failure.Reason);
    RefuseInput(output, failure.Reason);
}

/// The steps of the frames, all of which the file has.
StepRange framesOf(const Job& job, const ResultModel& model) {
    const QString& input = job.scene.Input;
    if (model.StepCount < 1)
        RefuseInput(input, u"フレーム数が設定されていません。"_s);
    const StepRange range = job.steps.value_or(StepRange{1, model.StepCount, 1});
    RequireStep(model, input, u"steps"_s, range.At(0));
    RequireStep(model, input, u"steps"_s, range.At(range.Count() - 1));
    return range;
}

void tellSize(const Job& job, const Streams& streams) {
    const int width = filmFormat::WidthOf(job.film), height = filmFormat::HeightOf(job.film);
    if (width != job.film.Width || height != job.film.Height)
        streams.Errors.write(u"%1: %2x%3, since the codec wants even sizes\n"_s.arg(OneLine(job.output))
                                 .arg(width)
                                 .arg(height)
                                 .toUtf8());
}

} // namespace

Status RunFilm(const QStringList& arguments, const Streams& streams) {
    Options options(u"film"_s, u"Writes the pictures of all steps as a film."_s, u"FILE"_s);
    declare(options);
    options.Parse(arguments, streams);
    const Job job = jobFrom(options);

    Fonts::InstallSubstitutions();
    Session session;
    const std::int32_t item = OpenScene(job.scene, streams, session);
    const StepRange steps = framesOf(job, session.Model);
    FilmFile film(job.output, job.film);
    if (film.Failure())
        refuse(job.output, *film.Failure());
    holdRange(job.contour, item, session);
    session.Settings.SlideShow.PaintHeader = job.header;
    if (!job.header)
        session.Settings.HeaderDisplay = false;
    filmFrames::Write(film, job.film, steps.Count(), [&](int frame, QImage& sheet) {
        session.LoadStep(std::int32_t(steps.At(frame) - 1), item);
        if (job.contour.Whose == ContourChoice::Of::Step)
            takeRangeOfStep(session);
        RasterDevice device(sheet, job.resolution);
        session.Draw(device);
    });
    if (const std::optional<FilmFailure> failure = film.Commit())
        refuse(job.output, *failure);
    tellSize(job, streams);
    return Done;
}

} // namespace batch
