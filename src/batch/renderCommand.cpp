// The picture of one step, or one a step, in the format that the output's name asks for.
#include "app/ApplicationSettings.h"
#include "batch/commandSupport.h"
#include "platform/Fonts.h"
#include "platform/PainterDevice.h"
#include "platform/RasterDevice.h"
#include "platform/TraceDevice.h"
#include "property/drawingElements.h"
#include "property/propertyFile.h"
#include "view/mdScene.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageWriter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QSvgGenerator>

namespace batch {

namespace {

constexpr double mmPerInch = 25.4;
constexpr int mostPixelsAcross = 32767;
constexpr int mostDotsPerInch = 9600;
constexpr Colour paper = makeColour(255, 255, 255);

struct StepRange {
    int first = 1, last = 1, stride = 1;
};

/// All that the command line says about the pictures.
struct Job {
    QString input, output;
    DeviceSize size{1280, 1024};
    int dotsPerInch = 96;
    int zoom = 0;
    PlotScaleMode scaleMode = PlotScaleMode::Automatic;
    std::optional<StepRange> range;
    std::optional<int> step;
    QString item;
    bool mesh = true;
    bool withPropertyFile = true;
    QStringList assignments; ///< of drawing settings, each of which is sound
};

/// A picture and how its bytes come about; each writes the whole file's content for one paint.
using Paint = std::function<void(DeviceContext&)>;

QByteArray pngOf(const Job& job, const Paint& paint) {
    QImage image(job.size.Width, job.size.Height, QImage::Format_RGB32);
    if (image.isNull())
        RefuseInput(job.output, u"the picture is too large for the memory"_qs);
    image.fill(qRgb(redOf(paper), greenOf(paper), blueOf(paper)));
    image.setDotsPerMeterX(qRound(job.dotsPerInch * 1000 / mmPerInch));
    image.setDotsPerMeterY(qRound(job.dotsPerInch * 1000 / mmPerInch));
    {
        RasterDevice device(image, job.dotsPerInch);
        paint(device);
    }
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

QByteArray svgOf(const Job& job, const Paint& paint) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(job.dotsPerInch);
    generator.setSize({job.size.Width, job.size.Height});
    generator.setViewBox(QRect(0, 0, job.size.Width, job.size.Height));
    generator.setTitle(QFileInfo(job.input).fileName());
    {
        QPainter painter(&generator);
        PainterDevice device(painter, job.size.Width, job.size.Height, job.dotsPerInch, job.dotsPerInch);
        paint(device);
    }
    return buffer.data();
}

QByteArray pdfOf(const Job& job, const Paint& paint) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setResolution(job.dotsPerInch);
        writer.setPageMargins({0, 0, 0, 0});
        constexpr double pointsPerInch = 72;
        writer.setPageSize(QPageSize(QSizeF(job.size.Width, job.size.Height) * pointsPerInch / job.dotsPerInch,
                                     QPageSize::Point, QString(), QPageSize::ExactMatch));
        writer.setTitle(QFileInfo(job.input).fileName());
        writer.setCreator(u"Velorin"_qs);
        QPainter painter(&writer);
        PainterDevice device(painter, job.size.Width, job.size.Height, job.dotsPerInch, job.dotsPerInch);
        paint(device);
    }
    return buffer.data();
}

QByteArray traceOf(const Job& job, const Paint& paint) {
    TraceDevice device(job.size.Width, job.size.Height, job.dotsPerInch);
    paint(device);
    return device.Trace();
}

using Format = QByteArray (*)(const Job&, const Paint&);

Format formatFor(const QString& output) {
    const QString ending = QFileInfo(output).suffix().toLower();
    if (ending == u"png")
        return pngOf;
    if (ending == u"svg")
        return svgOf;
    if (ending == u"pdf")
        return pdfOf;
    if (ending == u"trace")
        return traceOf;
    throw Stop{WrongUsage, u"-o wants a name that ends in .png, .svg, .pdf or .trace, not \"%1\""_qs.arg(output)};
}

DeviceSize parseSize(const QString& text) {
    const QStringList sides = text.toLower().split(u'x');
    bool wideOk = false, highOk = false;
    const int wide = sides.value(0).toInt(&wideOk);
    const int high = sides.value(1).toInt(&highOk);
    if (sides.size() != 2 || !wideOk || !highOk || wide < 1 || high < 1 || std::max(wide, high) > mostPixelsAcross)
        throw Stop{WrongUsage, u"--size wants WIDTHxHEIGHT of 1 to %1, not \"%2\""_qs.arg(mostPixelsAcross).arg(text)};
    return {wide, high};
}

StepRange parseRange(const QString& text) {
    const QStringList parts = text.split(u':');
    StepRange range;
    bool ok = parts.size() == 2 || parts.size() == 3;
    int* const targets[] = {&range.first, &range.last, &range.stride};
    for (qsizetype i = 0; ok && i < parts.size(); ++i) {
        *targets[i] = parts[i].toInt(&ok);
        ok = ok && *targets[i] >= 1;
    }
    if (!ok || range.last < range.first)
        throw Stop{WrongUsage, u"--steps wants FIRST:LAST or FIRST:LAST:STRIDE, not \"%1\""_qs.arg(text)};
    return range;
}

void applySettings(const QStringList& assignments, ApplicationSettings& settings) {
    for (const QString& assignment : assignments) {
        const qsizetype equals = assignment.indexOf(u'=');
        if (equals < 0 || !drawingElements::Set(assignment.left(equals), assignment.mid(equals + 1), settings))
            throw Stop{WrongUsage,
                       u"--set wants PATH=VALUE with a known path and a fitting value, not \"%1\""_qs.arg(assignment)};
    }
}

void declare(Options& options) {
    options.Value(u"o"_qs, u"OUT"_qs, u"The picture: .png, .svg, .pdf or .trace; %d or %04d in it is the step."_qs);
    options.Value(u"step"_qs, u"N"_qs, u"The step; the first by default."_qs);
    options.Value(u"steps"_qs, u"A:B[:S]"_qs, u"One picture for each step from A to B, every S-th."_qs);
    options.Value(u"item"_qs, u"K"_qs, u"The item, by number or name; the first by default."_qs);
    options.Value(u"size"_qs, u"WxH"_qs, u"Size in pixels, 1280x1024 by default."_qs);
    options.Value(u"dpi"_qs, u"D"_qs, u"Pixels an inch, 96 by default."_qs);
    options.Value(u"mesh"_qs, u"on|off"_qs, u"Draw all edges, or the outline alone."_qs);
    options.Value(u"scale-mode"_qs, u"fixed|automatic"_qs, u"How the scale follows the size."_qs);
    options.Value(u"zoom"_qs, u"Z"_qs, u"Zoom step from -7 to 9; 0 shows all."_qs);
    options.Flag(u"no-property"_qs, u"Leave the drawing property file beside the result file unread."_qs);
    options.Value(u"set"_qs, u"PATH=VALUE"_qs,
                  u"Set a drawing setting; may be given again. Paths: "_qs + drawingElements::Paths().join(u", "));
}

bool chosen(const Options& options, const QString& name, const QString& first, const QString& second, bool fallback) {
    if (!options.IsSet(name))
        return fallback;
    const QString word = options.Text(name).toLower();
    if (word != first && word != second)
        throw Stop{WrongUsage, u"--%1 wants %2 or %3, not \"%4\""_qs.arg(name, first, second, word)};
    return word == first;
}

Job jobFrom(const Options& options) {
    Job job;
    job.input = options.Operand();
    if (!options.IsSet(u"o"_qs))
        throw Stop{WrongUsage, u"-o is needed"_qs};
    job.output = options.Text(u"o"_qs);
    job.step = options.Integer(u"step"_qs, 1);
    job.item = options.Text(u"item"_qs);
    job.dotsPerInch = options.Integer(u"dpi"_qs, 1, mostDotsPerInch).value_or(job.dotsPerInch);
    job.zoom = options.Integer(u"zoom"_qs, ZoomMin, ZoomMax).value_or(0);
    if (options.IsSet(u"size"_qs))
        job.size = parseSize(options.Text(u"size"_qs));
    if (options.IsSet(u"steps"_qs))
        job.range = parseRange(options.Text(u"steps"_qs));
    job.mesh = chosen(options, u"mesh"_qs, u"on"_qs, u"off"_qs, job.mesh);
    job.withPropertyFile = !options.IsSet(u"no-property"_qs);
    job.scaleMode = chosen(options, u"scale-mode"_qs, u"fixed"_qs, u"automatic"_qs, true) ? PlotScaleMode::Fixed
                                                                                          : PlotScaleMode::Automatic;
    job.assignments = options.Texts(u"set"_qs);
    // Tried out here, so that a wrong one is told before the file is opened.
    ApplicationSettings trial;
    applySettings(job.assignments, trial);
    return job;
}

/// The output's name with its %d or %04d replaced by the step's number; nothing when it has none.
std::optional<QString> numberedName(const QString& output, int step) {
    static const QRegularExpression place(u"%(0?)([0-9]{0,2})d"_qs);
    const QRegularExpressionMatch match = place.match(output);
    if (!match.hasMatch())
        return {};
    const QChar fill = match.captured(1).isEmpty() ? u' ' : u'0';
    const QString number = QString::number(step).rightJustified(match.captured(2).toInt(), fill);
    return output.left(match.capturedStart()) + number + output.mid(match.capturedEnd());
}

void save(const QString& path, const QByteArray& bytes) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        RefuseInput(path, file.errorString());
}

/// The settings of the picture: the property file's, if there is one and it counts, under those of the command line.
/// Leaves the file's step and item in `model`.
ApplicationSettings settingsFor(const Job& job, ResultModel& model) {
    ApplicationSettings settings;
    // Without a file to read the store of drawing defaults isn't touched: many companions may run at once.
    if (job.withPropertyFile && QFileInfo::exists(propertyFile::PathFor(model.FileName)))
        propertyFile::LoadPropertyFile(settings, model);
    settings.Window.Mesh = job.mesh;
    applySettings(job.assignments, settings);
    return settings;
}

/// Paints the loaded step in `format`.
QByteArray pictureOf(const Job& job, Format format, const ResultModel& model, const ApplicationSettings& settings,
                     ViewState& view) {
    DocumentPlotter plotter;
    plotter.SetHeadless(true);
    plotter.SetScaleMode(job.scaleMode);
    plotter.SetEventSink({[&view] { return view.ViewBounds; },
                          [&](PlotCanvas& canvas) {
                              mdScene::PaintScene(canvas, false, {model, settings, view});
                          },
                          {}});
    return format(job, [&plotter](DeviceContext& device) { plotter.Draw(device); });
}

} // namespace

Status RunRender(const QStringList& arguments, const Streams& streams) {
    Options options(u"render"_qs, u"Writes the picture of a step."_qs, u"FILE"_qs);
    declare(options);
    options.Parse(arguments, streams);
    const Job job = jobFrom(options);
    const Format format = formatFor(job.output);
    if (job.range && job.range->first != job.range->last && !numberedName(job.output, 1))
        throw Stop{WrongUsage, u"-o wants %d in the name when there is more than one step"_qs};

    Fonts::InstallSubstitutions();
    ResultModel model = OpenFile(job.input);
    const ApplicationSettings settings = settingsFor(job, model);
    const std::int32_t item =
        job.item.isEmpty() ? std::max(model.CurrentItem, 0) : FindItem(job.item, model, job.input);
    const int step = job.step.value_or(std::max(model.CurrentStep, 0) + 1);
    const StepRange range = job.range.value_or(StepRange{step, step, 1});
    // A file without steps has a mesh to show all the same.
    const bool meshAlone = model.StepCount < 1 && !job.step && !job.range;
    ViewState view;
    mdView::SetViewBounds(model.Mesh, view);
    mdView::ApplyZoom(job.zoom, view);
    for (qint64 number = range.first; number <= range.last; number += range.stride) {
        if (!meshAlone)
            LoadNumberedStep(model, job.input, int(number), item, settings.Difference.StandardStep + 1);
        save(numberedName(job.output, int(number)).value_or(job.output), pictureOf(job, format, model, settings, view));
    }
    return Done;
}

} // namespace batch
