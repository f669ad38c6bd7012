// The printed page of a step, in the format that the output's name asks for.
#include "app/mdTips.h"
#include "batch/pictureOptions.h"
#include "batch/sceneOptions.h"
#include "output/mdPage.h"
#include "output/pageLabels.h"
#include "platform/base/NativePath.h"
#include "platform/device/Fonts.h"

#include <QFileInfo>
#include <QIODevice>
#include <cmath>

namespace batch {

namespace {

constexpr double leastPaperMm = 1, mostPaperMm = 5000;
constexpr double mostMarginMm = 999.9;
constexpr int pngDotsPerInch = 150, vectorDotsPerInch = 1200, traceDotsPerInch = 254;

/// All that the command line says about the page.
struct Job {
    SceneChoice scene;
    PageSettings page;
    QSizeF sheetMm; ///< upright
    bool isPaperKnown = true;
    QString output;
    PictureFormat format = nullptr;
    int dotsPerInch = 0;
};

void declare(Options& options) {
    options.Value(u"o"_s, u"OUT"_s, u"The page: .pdf, .svg, .png or .trace."_s);
    DeclareSceneOptions(options);
    options.Value(u"settings"_s, u"FILE.reg"_s,
                  u"Paper, orientation, margins, line styles, fonts, number format and mesh of an exported registry "
                  "file."_s);
    options.Value(u"paper"_s, u"A4|A3|Letter|WxH"_s,
                  u"The sheet by name, or its width and height in millimetres when it is upright; A4 by default."_s);
    options.Value(u"orientation"_s, u"portrait|landscape"_s,
                  u"Which way round the sheet lies; landscape by default."_s);
    options.Value(u"margin"_s, u"L,T,R,B"_s,
                  u"Millimetres around the picture, to a tenth; 20 on each side by default."_s);
    options.Value(u"frame"_s, u"MM"_s, u"Draw an outline of this width around the picture."_s);
    options.Value(u"label"_s, u"POSITION[,FONT]=TEXT"_s,
                  u"A label at place 0 to 17, in a font such as \"Arial\",12,b; may be given again. Macros: %path%, "
                  "%file%, %title%, %step%, %time%, %desc%, %item%, %dispx%, %dispy%, %vector%, %vectx%, %vecty%, "
                  "%coord%, %elem%, %proc%, %date%."_s);
    options.Value(u"scale"_s, u"1:N"_s, u"Draw the model to this scale, in the middle of the page."_s);
    options.Value(u"unit"_s, u"mm|cm|m"_s, u"Of the model's coordinates, for --scale; mm by default."_s);
    options.Value(u"dpi"_s, u"D"_s,
                  u"Dots an inch: of a .png, 150 by default; of what .svg and .pdf are divided into."_s);
}

/// A real of `least` to `most`; nothing for any other text.
std::optional<double> realOf(const QString& text, double least, double most) {
    bool ok = false;
    const double number = text.trimmed().toDouble(&ok);
    return ok && number >= least && number <= most ? std::optional(number) : std::nullopt;
}

int tenthsOf(double millimetres) {
    return Round(millimetres * 10);
}

/// By its name, or by what it is called for short.
const PrinterPaper* namedPaper(const QList<PrinterPaper>& papers, const QString& name) {
    constexpr std::pair<QStringView, int> shortNames[] = {{u"letter", 1}, {u"tabloid", 3},   {u"legal", 5}, {u"b4", 12},
                                                          {u"b5", 13},    {u"postcard", 43}, {u"b6", 88}};
    for (const PrinterPaper& paper : papers) {
        const bool called = std::ranges::any_of(shortNames, [&](const auto& row) {
            return row.second == paper.Code && name.compare(row.first, Qt::CaseInsensitive) == 0;
        });
        if (called || name.compare(paper.Name, Qt::CaseInsensitive) == 0)
            return &paper;
    }
    return nullptr;
}

QSizeF parsePaper(const QList<PrinterPaper>& papers, const QString& text) {
    const QString name = text.trimmed();
    if (const PrinterPaper* paper = namedPaper(papers, name))
        return {paper->WidthMm, paper->HeightMm};
    QString sides = name.toLower();
    if (sides.endsWith(u"mm"))
        sides.chop(2);
    const QStringList parts = sides.split(u'x');
    const auto width = realOf(parts.value(0), leastPaperMm, mostPaperMm);
    const auto height = realOf(parts.value(1), leastPaperMm, mostPaperMm);
    if (parts.size() != 2 || !width || !height)
        throw Stop{WrongUsage,
                   u"--paper wants a name such as A4, or WIDTHxHEIGHT of %1 to %2 mm, not \"%3\""_s.arg(leastPaperMm)
                       .arg(mostPaperMm)
                       .arg(text)};
    return {*width, *height};
}

std::array<int, 4> parseMargin(const QString& text) {
    const QStringList parts = text.split(u',');
    std::array<int, 4> margin{};
    bool ok = parts.size() == qsizetype(margin.size());
    for (qsizetype i = 0; ok && i < parts.size(); ++i) {
        const auto millimetres = realOf(parts[i], 0, mostMarginMm);
        ok = millimetres.has_value();
        margin[std::size_t(i)] = tenthsOf(millimetres.value_or(0));
    }
    if (!ok)
        throw Stop{WrongUsage,
                   u"--margin wants LEFT,TOP,RIGHT,BOTTOM of 0 to %1 mm, not \"%2\""_s.arg(mostMarginMm).arg(text)};
    return margin;
}

PageLabel parseLabel(const QString& text) {
    const qsizetype equals = text.indexOf(u'=');
    const QString place = text.left(std::max<qsizetype>(equals, 0));
    const qsizetype comma = place.indexOf(u',');
    bool ok = false;
    const int position = place.left(comma).toInt(&ok);
    if (!ok || position < 0 || position >= pageLabels::PositionCount)
        throw Stop{WrongUsage,
                   u"--label wants POSITION=TEXT or POSITION,FONT=TEXT with a place of 0 to %1, not \"%2\""_s
                       .arg(pageLabels::PositionCount - 1)
                       .arg(text.left(80))};
    return {NativePath::Shown(text.mid(equals + 1)), true, position,
            comma < 0 ? pageLabels::DefaultFont : place.mid(comma + 1)};
}

double parseScale(const QString& text) {
    const QStringList parts = text.split(u':');
    constexpr double least = 1e-9, most = 1e9;
    const auto denominator = realOf(parts.value(1), least, most);
    if (parts.size() != 2 || parts[0].trimmed() != u"1" || !denominator)
        throw Stop{WrongUsage, u"--scale wants 1:N with a number above 0, not \"%1\""_s.arg(text)};
    return *denominator;
}

int parseUnit(const QString& text) {
    const qsizetype unit = QStringList{u"mm"_s, u"cm"_s, u"m"_s}.indexOf(text.trimmed());
    if (unit < 0)
        throw Stop{WrongUsage, u"--unit wants mm, cm or m, not \"%1\""_s.arg(text)};
    return int(unit);
}

/// The page's settings, which are those of `--settings` but for outline, labels and scale.
PageSettings pageFrom(const Options& options, PageSettings page) {
    page.Orientation =
        options.IsFirst(u"orientation"_s, u"portrait"_s, u"landscape"_s, page.Orientation == PlotPrinter::Portrait)
            ? PlotPrinter::Portrait
            : PlotPrinter::Landscape;
    if (options.IsSet(u"margin"_s))
        page.Margin = parseMargin(options.Text(u"margin"_s));
    page.Frame = options.IsSet(u"frame"_s);
    if (page.Frame) {
        const auto width = realOf(options.Text(u"frame"_s), 0, mostMarginMm);
        if (!width)
            throw Stop{
                WrongUsage,
                u"--frame wants a width of 0 to %1 mm, not \"%2\""_s.arg(mostMarginMm).arg(options.Text(u"frame"_s))};
        page.FrameSize = std::max(1, tenthsOf(*width));
    }
    page.Labels.clear();
    for (const QString& label : options.Texts(u"label"_s))
        page.Labels.append(parseLabel(label));
    page.LabelCount = int(page.Labels.size());
    page.ScaleDenominator = options.IsSet(u"scale"_s) ? parseScale(options.Text(u"scale"_s)) : 0;
    page.ScaleUnit = options.IsSet(u"unit"_s) ? parseUnit(options.Text(u"unit"_s)) : 0;
    return page;
}

int dotsPerInchFrom(const Options& options, PictureFormat format) {
    const std::optional<int> wish = DotsPerInchFrom(options);
    if (format == TracePicture && wish)
        throw Stop{WrongUsage, u"a .trace has %1 dots an inch; --dpi does not go with it"_s.arg(traceDotsPerInch)};
    if (format == TracePicture)
        return traceDotsPerInch;
    return wish.value_or(format == PdfPicture || format == SvgPicture ? vectorDotsPerInch : pngDotsPerInch);
}

Job jobFrom(const Options& options) {
    Job job;
    job.output = options.Text(u"o"_s);
    if (!options.IsSet(u"o"_s))
        throw Stop{WrongUsage, u"-o is needed"_s};
    job.format = PictureFormatFor(job.output);
    if (!job.format)
        RefuseEnding(job.output, u".pdf, .svg, .png or .trace"_s);
    job.dotsPerInch = dotsPerInchFrom(options, job.format);
    job.scene = SceneChoiceFrom(options);
    job.page = pageFrom(options, job.scene.Settings.Page);
    const QList<PrinterPaper> papers = PrinterDescription::Pdf().Papers;
    if (options.IsSet(u"paper"_s)) {
        job.sheetMm = parsePaper(papers, options.Text(u"paper"_s));
    } else {
        // Codes that stand for something on one printer alone are unknown here.
        const PlotPrinter sheet(PrinterDescription::Pdf(), PlotPrinter::Portrait, job.page.PaperSize);
        job.sheetMm = {sheet.PaperWidthMm(), sheet.PaperHeightMm()};
        job.isPaperKnown = sheet.PaperSize() == job.page.PaperSize;
    }
    job.scene.Settings.Page = job.page;
    return job;
}

PictureContent contentOf(const Job& job, const PlotPrinter& printer, const DocumentPlotter& plotter) {
    PictureFile file{.Title = NativePath::Shown(QFileInfo(job.scene.Input).fileName())};
    const Paint paint = [&](DeviceContext& device) { plotter.DrawPage(device, printer); };
    if (job.format == PdfPicture)
        return PdfPage(printer, file.Title, paint)();
    const DeviceMeasures measures = printer.Measures();
    file.Size = {measures.Width, measures.Height};
    file.DotsPerInch = job.dotsPerInch;
    return job.format(file, paint)();
}

} // namespace

Status RunPage(const QStringList& arguments, const Streams& streams) {
    Options options(u"page"_s, u"Writes the printed page of a step."_s, u"FILE"_s);
    declare(options);
    options.Parse(arguments, streams);
    const Job job = jobFrom(options);
    PlotPrinter printer(PrinterDescription::OfSheet(job.sheetMm.width(), job.sheetMm.height(), job.dotsPerInch),
                        job.page.Orientation, 0);
    const DeviceMeasures measures = printer.Measures();
    if (job.format == PngPicture)
        RequirePictureSize({measures.Width, measures.Height});

    Fonts::InstallSubstitutions();
    Session session;
    mdPage::Serve(session);
    const std::int32_t item = OpenScene(job.scene, streams, session);
    // In a file without steps the mesh is shown.
    session.LoadStep(std::int32_t(ChosenStep(job.scene, session.Model) - 1), item);
    mdPage::SetUp(job.page, printer, session.Plotter);
    if (const std::optional<QString> problem = SaveContent(job.output, contentOf(job, printer, session.Plotter)))
        RefuseInput(job.output, *problem);
    if (!job.isPaperKnown)
        Warn(streams, options.Text(u"settings"_s), u"paper %1 is not known, the page is A4"_s.arg(job.page.PaperSize));
    if (job.page.ScaleDenominator > 0 && !mdPage::Holds(job.page, printer, session.Model.Mesh, session.View.ViewBounds))
        Warn(streams, job.scene.Input, u"the model does not fit on the page at 1:%1"_s.arg(job.page.ScaleDenominator));
    return Done;
}

} // namespace batch
