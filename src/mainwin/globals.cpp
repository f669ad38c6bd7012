#include "mainwin/globals.h"

#include "extensions/AddinHost.h"
#include "extensions/toolTable.h"
#include "mainwin/frmMain.h"
#include "platform/widgets/SystemPrinters.h"
#include "view/scene/Session.h"

namespace mdApplication {

Session Current;
ResultModel& Model = Current.Model;
ApplicationSettings& Settings = Current.Settings;
AddinHost Addins;
std::vector<ToolEntry> Tools;
std::unique_ptr<Printers> InstalledPrinters = std::make_unique<SystemPrinters>();

frmMain* MainWindow() {
    return frmMain::Instance();
}

} // namespace mdApplication
