// What part of the model the window shows, and how much of the screen the window has.
#include "mainwin/frmMain.h"

#include "app/NumberFormat.h"
#include "mainwin/commandState.h"
#include "mainwin/ctlScene.h"
#include "mainwin/globals.h"

#include <QLabel>

void frmMain::onZoomed() {
    showZoom();
    commandState::EnableCommands(*bars, facts());
}

void frmMain::showZoom() {
    panels[3]->setText(NumberFormat::Shortest(mdView::ZoomPercent(mdApplication::Current.View)) + u" %"_s);
}

void frmMain::fitView() {
    scene->Fit();
}

void frmMain::goBack() {
    scene->GoTo(-1);
}

void frmMain::goForward() {
    scene->GoTo(1);
}

void frmMain::toggleFullScreen() {
    if (!isFullScreen())
        placeBefore = QRect(pos(), size());
    setWindowState(windowState() ^ Qt::WindowFullScreen);
}
