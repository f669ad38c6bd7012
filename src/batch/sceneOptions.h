// The options of the commands that draw the scene of a result file: what is drawn of it and how. The size and the form
// of the pictures are not their business.
#pragma once

#include "app/ApplicationSettings.h"
#include "batch/commandSupport.h"

class Session;

namespace batch {

struct StepRange {
    std::int64_t first = 1, last = 1, stride = 1;

    int Count() const { return int((last - first) / stride + 1); }
    std::int64_t At(int index) const { return first + index * stride; } ///< the step's number, counted from 1
};

/// What the command line says of the scene.
struct SceneChoice {
    QString Input;
    std::optional<StepRange> Range;
    QString Item;
    bool Mesh = true;
    bool WithPropertyFile = true;
    QStringList Assignments;      ///< of drawing settings, each of which is sound
    std::int32_t Reference = -1;  ///< the step that these name
    ApplicationSettings Settings; ///< what the pictures start from
};

/// Declares `--steps`, `--item`, `--mesh`, `--no-property` and `--set`; `stepsPurpose` tells of the first.
void DeclareSceneOptions(Options& options, const QString& stepsPurpose);

/// Stops the command for a wrong one, before any file is opened.
SceneChoice SceneFrom(const Options& options);

/// Takes the file up with the settings of its pictures: the property file's, if there is one and it counts, under those
/// of the command line. Returns the item to be shown. Stops the command when something isn't there.
std::int32_t TakeUpScene(const SceneChoice& choice, Session& session);

} // namespace batch
