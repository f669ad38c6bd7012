#include "mainwin/globals.h"

#include "app/ApplicationSettings.h"
#include "mainwin/frmMain.h"
#include "result/ResultModel.h"

namespace mdApplication {

ResultModel Model;
ApplicationSettings Settings;

frmMain* MainWindow() {
    return frmMain::Instance();
}

} // namespace mdApplication
