// The one document and the one window of a run.
#include "app/mdApplication.h"
#include "mainwin/frmMain.h"
#include "result/ResultModel.h"

namespace mdApplication {

ResultModel Model;

frmMain* MainWindow() {
    return frmMain::Instance();
}

} // namespace mdApplication
