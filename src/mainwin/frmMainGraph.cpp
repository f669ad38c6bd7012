// Graphs of what is picked, and the way back from a point of a graph.
#include "app/windows/ShowMessage.h"
#include "mainwin/ctlScene.h"
#include "mainwin/frmMain.h"
#include "mainwin/globals.h"
#include "platform/device/Printers.h"
#include "plot/windows/frmGraph.h"
#include "view/scene/Session.h"

#include <QLabel>

using mdApplication::Current;
using mdApplication::Model;
using mdApplication::Settings;

void frmMain::createDistribution() {
    createGraphFromSelection(GraphType::Distribution);
}

void frmMain::createHistory() {
    createGraphFromSelection(GraphType::History);
}

void frmMain::createGraphFromSelection(int graphType) {
    if (const auto question = mdGraph::GraphRequest(Selection.Count(), Model.StepCount))
        if (mdApplication::ShowMessage(question->Text, question->Flags) != MessageAnswer::Yes)
            return;
    auto graph = std::make_unique<frmGraph>(this, Model, Settings, *mdApplication::InstalledPrinters,
                                            [this](const QString& text) { panels[0]->setText(text); });
    try {
        if (!graph->Initialize(graphType, Selection)) {
            Tell(u"グラフの作成を中止しました。"_s);
            return;
        }
        if (!mdVelorinResultModel::StillHolds(Model, Model.StepCount - 1)) {
            Tell(DocumentReading::FileHasChanged());
            return;
        }
    } catch (const std::bad_alloc&) {
        graph.reset();
        mdApplication::ShowMessage(u"メモリが不足しています。"_s, MessageStyle::Stop);
        return;
    }
    // Later, since a step that cannot be loaded takes the file and its graphs along.
    connect(graph.get(), &frmGraph::PointChosen, this, &frmMain::showGraphPoint, Qt::QueuedConnection);
    connect(scene, &ctlScene::Painted, graph.get(), &frmGraph::StepChanged);
    // Closing it destroys it.
    graph.release()->show();
}

void frmMain::showGraphPoint(int step, int objectType, int object) {
    if (Current.SlideShow.SlideShowRunning || LongWork::IsRunning())
        return;
    const int objects = objectType == PickedKind::Nodes ? Model.Mesh.NodeCount : Model.Mesh.ElementCount;
    if (step >= Model.StepCount || object >= objects) {
        Tell(tr("読み直したファイルにこの点はありません。"));
        return;
    }
    if (!reading.LoadStep(step, Model.CurrentItem))
        return;
    Selection.Clear();
    Selection.Add(object, objectType);
    repaint();
}
