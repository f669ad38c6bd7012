// What part of the model the window shows, and what helps to read it: values of what is picked, edges that hide them.
#include "mainwin/frmMain.h"

#include "app/NumberFormat.h"
#include "mainwin/commandState.h"
#include "mainwin/ctlScene.h"
#include "mainwin/globals.h"
#include "view/pickedValues.h"
#include "view/scene/legends.h"
#include "view/scene/meshFade.h"

#include <QLabel>

using mdApplication::Current;
using mdApplication::Model;
using mdApplication::Settings;

void frmMain::onZoomed() {
    showZoom();
    commandState::EnableCommands(*bars, facts());
}

void frmMain::showZoom() {
    panels[3]->setText(NumberFormat::Shortest(mdView::ZoomPercent(Current.View)) + u" %"_s);
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

void frmMain::hideTip() {
    scene->HideTip();
}

void frmMain::showPicked() {
    const QString text = IsOpen() ? mdPicking::SummaryText(Model, Settings.Difference, Selection) : QString();
    pickedPanel->setText(text);
    pickedPanel->setVisible(!text.isEmpty());
}

void frmMain::offerHelp() {
    if (slideShow.IsOn())
        return;
    const WindowSettings& window = Settings.Window;
    if (!fadingOffered && window.Mesh && !window.FadeMesh &&
        mdScene::IsMeshDense(Model.Mesh, Current.View, Current.Plotter.Viewport(), scene->DotsPerInch())) {
        fadingOffered = true;
        Tell(u"表示 > 細かいメッシュを薄く で、コンタを隠す辺を薄くできます。"_s);
    }
    if (!digitsOffered && IsOpen() && Settings.Contour.Legend && !Model.LineElementsOnly &&
        mdScene::AreBandsWrittenAlike(Current.CurrentScene())) {
        digitsOffered = true;
        Tell(tr("ツール > オプション の実数フォーマットを 0.000E-0 などにすると、凡例の数値を見分けられます。"));
    }
}
