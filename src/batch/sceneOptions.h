// The options of the commands that draw steps of a result file as the window does: which file, step and item, and how
// they are drawn. Not what comes of the picture.
#pragma once

#include "batch/commandSupport.h"
#include "view/scene/Session.h"

namespace batch {

/// All that these options say.
struct SceneChoice {
    QString Input;
    DerivedItems Derived;
    QString Item;            ///< by number or name; empty when the file is to say
    std::optional<int> Step; ///< from 1; likewise
    bool WithPropertyFile = true;
    QStringList Assignments;      ///< of drawing settings, each of which is sound
    std::int32_t Reference = -1;  ///< the step that these name
    ApplicationSettings Settings; ///< what the pictures start from, `--mesh` included
};

/// Declares `--item`, `--derive`, `--mesh`, `--fade-mesh`, `--no-property`, `--set` and, for the commands that draw one
/// step,
/// `--step`.
void DeclareSceneOptions(Options& options, bool ofOneStep = true);

/// Stops the command when an option makes no sense, before any file but that of `--settings` is opened. Without
/// `--mesh` the edges are drawn if `mesh` says so, or else as the settings say.
SceneChoice SceneChoiceFrom(const Options& options, std::optional<bool> mesh = {});

/// Opens the file in `session`, with the property file's settings, if there is one and it counts, under those of the
/// command line, and gives the chosen item. Stops the command when there is no such file or item.
std::int32_t OpenScene(const SceneChoice& choice, const Streams& streams, Session& session);
/// The chosen step of an open file, counted from 1. Stops the command when a step was chosen that there isn't.
std::int64_t ChosenStep(const SceneChoice& choice, const ResultModel& model);

} // namespace batch
