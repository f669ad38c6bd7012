// The one document, the one record of settings and the one window of a run. Only the main window and the entry reach
// for them; all else takes what it works on as a parameter.
#pragma once

#include <memory>
#include <vector>

class AddinHost;
class Printers;
class frmMain;
class Session;
struct ApplicationSettings;
struct ResultModel;
struct ToolEntry;

namespace mdApplication {
extern Session Current;
extern ResultModel& Model;            ///< the open result file, of `Current`
extern ApplicationSettings& Settings; ///< the settings in force, of `Current`
extern AddinHost Addins;
extern std::vector<ToolEntry> Tools; ///< as the start of the program or the options left them

/// What there is to print on; a test puts its own list here.
extern std::unique_ptr<Printers> InstalledPrinters;

/// Null before the entry procedure has made the main window and after it has gone.
frmMain* MainWindow();
} // namespace mdApplication
