#include "batch/sceneOptions.h"

#include "app/mdApplication.h"
#include "batch/settingsFile.h"
#include "property/drawingElements.h"
#include "property/propertyFile.h"

namespace batch {

namespace {

void applySettings(const QStringList& assignments, ApplicationSettings& settings) {
    for (const QString& assignment : assignments) {
        const qsizetype equals = assignment.indexOf(u'=');
        if (equals < 0 || !drawingElements::Set(assignment.left(equals), assignment.mid(equals + 1), settings))
            throw Stop{WrongUsage,
                       u"--set wants PATH=VALUE with a known path and a fitting value, not \"%1\""_s.arg(assignment)};
    }
}

} // namespace

void DeclareSceneOptions(Options& options, bool ofOneStep) {
    if (ofOneStep)
        options.Value(u"step"_s, u"N"_s, u"The step; the first by default."_s);
    options.Value(u"item"_s, u"K"_s, u"The item, by number or name; the first by default."_s);
    DeclareDerivedItems(options);
    options.Value(u"mesh"_s, u"on|off"_s, u"Draw all edges, or the outline alone."_s);
    options.Flag(u"fade-mesh"_s, u"Fade edges that lie closer than 3 pixels, a pixel being 1/96 inch."_s);
    options.Flag(u"no-property"_s, u"Leave the drawing property file beside the result file unread."_s);
    options.Value(u"set"_s, u"PATH=VALUE"_s,
                  u"Set a drawing setting; may be given again. Paths: "_s + drawingElements::Paths().join(u", "));
}

SceneChoice SceneChoiceFrom(const Options& options, std::optional<bool> mesh) {
    SceneChoice choice;
    choice.Input = options.Operand();
    if (options.Knows(u"step"_s))
        choice.Step = options.Integer(u"step"_s, 1);
    choice.Derived = DerivedItemsFrom(options);
    choice.Item = options.Text(u"item"_s);
    choice.WithPropertyFile = !options.IsSet(u"no-property"_s);
    choice.Assignments = options.Texts(u"set"_s);
    choice.Settings = SettingsFrom(options);
    bool& drawsMesh = choice.Settings.Window.Mesh;
    drawsMesh = options.IsFirst(u"mesh"_s, u"on"_s, u"off"_s, mesh.value_or(drawsMesh));
    choice.Settings.Window.FadeMesh |= options.IsSet(u"fade-mesh"_s);
    // Tried out here, so that a wrong one is told before the file is opened.
    ApplicationSettings trial;
    applySettings(choice.Assignments, trial);
    choice.Reference = trial.Difference.StandardStep;
    return choice;
}

std::int32_t OpenScene(const SceneChoice& choice, const Streams& streams, Session& session) {
    session.Settings = choice.Settings;
    // Without a file to read the store of drawing defaults isn't touched: many companions may run at once.
    const ResultModel opened = OpenFile(choice.Input, choice.Derived, streams);
    session.TakeUp(opened,
                   choice.WithPropertyFile && mdApplication::FileExists(propertyFile::PathFor(opened.FileName)));
    applySettings(choice.Assignments, session.Settings);
    const ResultModel& model = session.Model;
    const std::int32_t item =
        choice.Item.isEmpty() ? std::max(model.CurrentItem, 0) : FindItem(choice.Item, model, choice.Input);
    if (choice.Reference >= 0)
        RequireStep(model, choice.Input, u"set difference/std"_s, std::int64_t(choice.Reference) + 1);
    return item;
}

std::int64_t ChosenStep(const SceneChoice& choice, const ResultModel& model) {
    if (choice.Step)
        RequireStep(model, choice.Input, u"step"_s, *choice.Step);
    return choice.Step ? *choice.Step : std::int64_t(std::max(model.CurrentStep, 0)) + 1;
}

} // namespace batch
