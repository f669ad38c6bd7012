// What part of the model the window shows.
#include "mainwin/frmMain.h"

#include "mainwin/ctlScene.h"

void frmMain::fitView() {
    scene->Fit();
}
