#include "mainwin/globals.h"

#include "mainwin/frmMain.h"
#include "view/scene/Session.h"

namespace mdApplication {

Session Current;
ResultModel& Model = Current.Model;
ApplicationSettings& Settings = Current.Settings;

frmMain* MainWindow() {
    return frmMain::Instance();
}

} // namespace mdApplication
