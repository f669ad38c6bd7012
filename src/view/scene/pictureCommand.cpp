#include "view/scene/pictureCommand.h"

#include "app/NumberFormat.h"
#include "platform/base/NativePath.h"
#include "platform/base/ShellWords.h"
#include "property/drawingElements.h"
#include "view/scene/styleElements.h"

#include <algorithm>

namespace pictureCommand {

namespace {

const QString program = u"velorin-batch"_s, command = u"render"_s, output = u"-o"_s;

QStringList valueIf(bool needed, const QString& value = {}) {
    return needed ? QStringList{value} : QStringList();
}

QString joined(std::initializer_list<float> numbers) {
    QStringList texts;
    for (const float number : numbers)
        texts += NumberFormat::Shortest(number);
    return texts.join(u',');
}

/// Nothing when the text isn't so many finite numbers between commas.
std::optional<std::vector<float>> numbersOf(const QString& text, std::size_t count) {
    std::vector<float> numbers;
    for (const QString& part : text.split(u',')) {
        bool ok = false;
        numbers.push_back(part.toFloat(&ok));
        if (!ok || !std::isfinite(numbers.back()))
            return {};
    }
    return numbers.size() == count ? std::optional(numbers) : std::nullopt;
}

QStringList viewOf(const Session& shown, const PictureFile&) {
    ViewState whole;
    mdView::SetViewBounds(shown.Model.Mesh, whole);
    mdView::ApplyZoom(0, whole);
    const auto text = [](const PlotRect& rect) {
        return joined({rect.Left(), rect.Top(), rect.Width(), -rect.Height()});
    };
    const QString bounds = text(shown.View.ViewBounds);
    return valueIf(bounds != text(whole.ViewBounds), bounds);
}

bool takeView(const QString& text, const PictureFile&, Session& session) {
    const auto numbers = numbersOf(text, 4);
    if (!numbers || numbers->at(2) < 0 || numbers->at(3) < 0)
        return false;
    PlotRect& bounds = session.View.ViewBounds;
    bounds.SetLeft(numbers->at(0));
    bounds.SetTop(numbers->at(1));
    bounds.SetWidth(numbers->at(2));
    bounds.SetHeight(-numbers->at(3));
    return true;
}

/// Nothing when the picture is one in which the bounds just fit.
std::optional<double> heldScale(const Session& shown, const PictureFile& picture) {
    const DocumentPlotter& plotter = shown.Plotter;
    const int width = plotter.Viewport().DeviceWidth();
    if (plotter.ScaleMode() == PlotScaleMode::Automatic || plotter.Scale() <= 0 || width <= 0)
        return {};
    const double scale = plotter.Scale() * (double(picture.Size.Width) / width);
    const bool fits = scale == DocumentPlotter::FittingScale(shown.View.ViewBounds, picture.Size);
    return fits ? std::nullopt : std::optional(scale);
}

QStringList scaleOf(const Session& shown, const PictureFile& picture) {
    const std::optional<double> scale = heldScale(shown, picture);
    return valueIf(scale.has_value(), NumberFormat::Shortest(scale.value_or(0)));
}

bool takeScale(const QString& text, const PictureFile& picture, Session& session) {
    bool ok = false;
    const double scale = text.toDouble(&ok);
    if (!ok || !std::isfinite(scale) || scale <= 0)
        return false;
    session.Plotter.HoldScale(scale, picture.Size.Width);
    return true;
}

QStringList showOf(const Session& shown, const PictureFile&) {
    const SlideShowRun& show = shown.SlideShow;
    const QString whose = show.RangeOfAllSteps ? u",steps"_s : QString();
    return valueIf(show.SlideShowRunning, joined({show.SlideMaxDisplacement, show.SlideMaxVector}) + whose);
}

bool takeShow(const QString& text, const PictureFile&, Session& session) {
    const bool ofAllSteps = text.endsWith(u",steps");
    const auto numbers = numbersOf(ofAllSteps ? text.section(u',', 0, -2) : text, 2);
    if (numbers)
        session.SlideShow = {true, numbers->at(0), numbers->at(1), ofAllSteps};
    return numbers.has_value();
}

/// The number of a step or an item that is there, counted from 1.
QStringList numberOf(std::int32_t index, std::int32_t count) {
    return valueIf(index >= 0 && index < count, QString::number(index + 1));
}

constexpr Option options[] = {
    {u"step",
     [](const Session& shown, const PictureFile&) { return numberOf(shown.Model.CurrentStep, shown.Model.StepCount); }},
    {u"item",
     [](const Session& shown, const PictureFile&) { return numberOf(shown.Model.CurrentItem, shown.Model.ItemCount); }},
    {u"size",
     [](const Session&, const PictureFile& picture) {
         return valueIf(true, u"%1x%2"_s.arg(picture.Size.Width).arg(picture.Size.Height));
     }},
    {u"dpi",
     [](const Session&, const PictureFile& picture) {
         return valueIf(picture.DotsPerInch.has_value(), QString::number(picture.Resolution()));
     }},
    {u"mesh", [](const Session& shown, const PictureFile&) { return valueIf(!shown.Settings.Window.Mesh, u"off"_s); }},
    {u"fade-mesh", [](const Session& shown, const PictureFile&) { return valueIf(shown.Settings.Window.FadeMesh); }},
    {u"view", viewOf, u"X,Y,WIDTH,HEIGHT", u"The part of the model to show, from its left and top on.", takeView},
    {u"scale", scaleOf, u"S", u"Pixels a unit of length, around the middle of the view.", takeScale},
    {u"slide-show", showOf, u"DISPLACEMENT,VECTOR[,steps]",
     u"As in a slide show: the largest displacement and vector of all steps give the scales; with \"steps\" the legend "
     u"says "
     "that the contour's range is theirs too.",
     takeShow},
    {u"no-property", [](const Session&, const PictureFile&) { return valueIf(true); }},
    {u"set", [](const Session& shown, const PictureFile&) { return drawingElements::Assignments(shown.Settings); }},
    {u"style", [](const Session& shown, const PictureFile&) { return styleElements::Assignments(shown.Settings); },
     u"NAME=VALUE", u"Set a line, a font or the like; may be given again.",
     [](const QString& text, const PictureFile&, Session& session) {
         return styleElements::Set(text, session.Settings);
     }},
};

const Option* optionOf(const QString& word) {
    const auto* const found = std::ranges::find_if(
        options, [&](const Option& option) { return word == u"--"_s + QStringView(option.Name).toString(); });
    return found == std::end(options) ? nullptr : found;
}

bool isFlag(const Option& option) {
    return QStringView(option.Name) == u"no-property" || QStringView(option.Name) == u"fade-mesh";
}

} // namespace

std::span<const Option> Options() {
    return options;
}

QString Line(const Session& shown, const PictureFile& picture, const QString& fileName) {
    // A name with a place for the step's number would be another one when the line runs.
    QStringList words{program, command, NativePath::Absolute(shown.Model.FileName), output,
                      QString(fileName).replace(u'%', u'_')};
    for (const Option& option : options)
        for (const QString& value : option.Values(shown, picture)) {
            words += u"--"_s + QStringView(option.Name).toString();
            if (!isFlag(option))
                words += value;
        }
    return ShellWords::Line(words);
}

Taken Take(const QString& line) {
    const std::optional<QStringList> words = ShellWords::Split(line);
    if (!words || words->value(0) != program || words->value(1) != command)
        return {{}, u"its note is no command of velorin-batch render"_s};
    Taken taken;
    for (qsizetype i = 2; i < words->size(); ++i) {
        const QString& word = words->at(i);
        const Option* const option = optionOf(word);
        const bool hasValue = word == output || (option && !isFlag(*option));
        if (!option && word != output && word.startsWith(u'-'))
            return {{}, u"its command has an option that is unknown here: "_s + word};
        if (hasValue && i + 1 == words->size())
            return {{}, u"its command ends without a value for "_s + word};
        if (option)
            taken.Words += word;
        if (hasValue && option)
            taken.Words += words->at(i + 1);
        i += hasValue ? 1 : 0;
    }
    return taken;
}

void Copy(const Session& shown, const PictureFile& picture, Session& copy) {
    copy.Model = shown.Model;
    copy.Settings = shown.Settings;
    copy.SlideShow = shown.SlideShow;
    copy.View.WholeBounds = shown.View.WholeBounds;
    copy.View.ViewBounds = shown.View.ViewBounds;
    copy.View.Zoom = shown.View.Zoom;
    if (const std::optional<double> scale = heldScale(shown, picture))
        copy.Plotter.HoldScale(*scale, picture.Size.Width);
}

} // namespace pictureCommand
