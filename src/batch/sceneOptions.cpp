#include "batch/sceneOptions.h"

#include "app/mdApplication.h"
#include "batch/settingsFile.h"
#include "property/drawingElements.h"
#include "property/propertyFile.h"
#include "view/scene/Session.h"

namespace batch {

namespace {

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

} // namespace

void DeclareSceneOptions(Options& options, const QString& stepsPurpose) {
    options.Value(u"steps"_s, u"A:B[:S]"_s, stepsPurpose);
    options.Value(u"item"_s, u"K"_s, u"The item, by number or name; the first by default."_s);
    options.Value(u"mesh"_s, u"on|off"_s, u"Draw all edges, or the outline alone."_s);
    options.Flag(u"no-property"_s, u"Leave the drawing property file beside the result file unread."_s);
    options.Value(u"set"_s, u"PATH=VALUE"_s,
                  u"Set a drawing setting; may be given again. Paths: "_s + drawingElements::Paths().join(u", "));
}

SceneChoice SceneFrom(const Options& options) {
    SceneChoice choice;
    choice.Input = options.Operand();
    if (options.IsSet(u"steps"_s))
        choice.Range = parseRange(options.Text(u"steps"_s));
    choice.Item = options.Text(u"item"_s);
    choice.Mesh = options.IsFirst(u"mesh"_s, u"on"_s, u"off"_s, choice.Mesh);
    choice.WithPropertyFile = !options.IsSet(u"no-property"_s);
    choice.Assignments = options.Texts(u"set"_s);
    choice.Settings = SettingsFrom(options);
    // Tried out here, so that a wrong one is told before the file is opened.
    ApplicationSettings trial;
    applySettings(choice.Assignments, trial);
    choice.Reference = trial.Difference.StandardStep;
    return choice;
}

std::int32_t TakeUpScene(const SceneChoice& choice, Session& session) {
    session.Settings = choice.Settings;
    // Without a file to read the store of drawing defaults isn't touched: many companions may run at once.
    const ResultModel loaded = OpenFile(choice.Input);
    session.TakeUp(loaded,
                   choice.WithPropertyFile && mdApplication::FileExists(propertyFile::PathFor(loaded.FileName)));
    session.Settings.Window.Mesh = choice.Mesh;
    applySettings(choice.Assignments, session.Settings);
    const ResultModel& model = session.Model;
    const std::int32_t item =
        choice.Item.isEmpty() ? std::max(model.CurrentItem, 0) : FindItem(choice.Item, model, choice.Input);
    if (choice.Reference >= 0)
        RequireStep(model, choice.Input, u"set difference/std"_s, std::int64_t(choice.Reference) + 1);
    return item;
}

} // namespace batch
