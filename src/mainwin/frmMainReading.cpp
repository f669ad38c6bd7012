// What helps to read the picture: values of what is picked, the range of the colours, edges that hide them.
#include "mainwin/frmMain.h"

#include "mainwin/ctlScene.h"
#include "mainwin/globals.h"
#include "platform/widgets/LongWork.h"
#include "view/pickedValues.h"
#include "view/scene/Session.h"
#include "view/scene/meshFade.h"

#include <QLabel>

using mdApplication::Current;
using mdApplication::Model;
using mdApplication::Settings;

void frmMain::hideTip() {
    scene->HideTip();
}

void frmMain::showPicked() {
    const QString text = IsOpen() ? mdPicking::SummaryText(Model, Settings.Difference, Selection) : QString();
    pickedPanel->setText(text);
    pickedPanel->setVisible(!text.isEmpty());
}

void frmMain::findRange() {
    if (!IsOpen() || LongWork::IsRunning() || !Current.LacksRange(Model.CurrentItem))
        return;
    LongWork work(u"全ステップの範囲を計算中... (Esc で中止)"_s,
                  [this](const QString& text) { panels[0]->setText(text); });
    bool found = false;
    try {
        work.Run([&](const LongWork::Progress& progress) { found = Current.FindRange(Model.CurrentItem, progress); });
    } catch (const std::bad_alloc&) {
        found = false;
    }
    if (found)
        return;
    Settings.Contour.Range = ContourRange::AsStands;
    Settings.Contour.Automatic = true;
    Tell(u"全ステップの範囲の計算を中止しました。このステップの範囲で描きます。"_s);
}

void frmMain::offerFading() {
    const WindowSettings& window = Settings.Window;
    if (fadingOffered || !window.Mesh || window.FadeMesh || slideShow.IsOn() ||
        !mdScene::IsMeshDense(Model.Mesh, Current.View, Current.Plotter.Viewport(), scene->DotsPerInch()))
        return;
    fadingOffered = true;
    Tell(u"表示 > 細かいメッシュを薄く で、コンタを隠す辺を薄くできます。"_s);
}
