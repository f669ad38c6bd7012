// The running of add-in modules with the open file and the selection, and the question at the start of the program.
// Asks through what it is given, so that no window stands here.
#pragma once

#include "extensions/AddinHost.h"
#include "result/ResultModel.h"
#include "view/clsMouse.h"

#include <functional>

namespace mdAddIn {
/// Shows a text with `flags` of `MessageStyle` and gives a `MessageAnswer`.
using Ask = std::function<int(const QString& text, int flags)>;

/// Where modules are looked for: the folder "addin" beside the program (or, for one that is installed in a "bin", its
/// own folder in the "lib" beside that), and the user's.
QStringList AddinFolders(const QString& programFolder);

/// `Search` in several folders.
std::vector<AddinModule> Candidates(const AddinHost& host, const QStringList& folders, bool all);

/// Looks for new modules and offers to install them; nothing is asked when there is none.
void AutoInstallAddins(AddinHost& host, const QStringList& folders, const Ask& ask);

/// Runs the module of a number, from 1, in `ModuleList`. What the user is to be told of its failure, with the style of
/// a stop; empty when all went well, and for a number that there isn't. `work` gets the run itself and must have it
/// done before it returns, on whatever thread.
QString RunAddin(AddinHost& host, int number, const ResultModel& model, const clsMouse& selection,
                 const std::function<void(const QString& name, const std::function<void()>& run)>& work);
} // namespace mdAddIn
