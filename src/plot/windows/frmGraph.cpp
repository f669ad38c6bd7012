#include "plot/windows/frmGraph.h"

#include "app/windows/GraphWindows.h"
#include "platform/base/NativePath.h"
#include "platform/device/Printers.h"
#include "platform/widgets/FormSupport.h"
#include "platform/widgets/PictureBox.h"
#include "plot/windows/frmGraphSetting.h"
#include "view/clsMouse.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QIcon>
#include <QListWidget>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

using FormSupport::Named;

namespace mdApplication {

void NotifyGraphLayoutChanged(const frmGraph* source) {
    for (QWidget* window : GraphWindows())
        if (auto* graph = qobject_cast<frmGraph*>(window); graph && graph != source)
            graph->LayoutChanged();
}

} // namespace mdApplication

frmGraph::frmGraph(QWidget* owner, const ResultModel& source, ApplicationSettings& target, Printers& installed,
                   Tell progress)
    : QWidget(owner, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMinMaxButtonsHint |
                         Qt::WindowCloseButtonHint),
      model(source), settings(target), printers(installed), tell(std::move(progress)) {
    Q_INIT_RESOURCE(graphWindows);
    setObjectName(u"frmGraph"_s);
    setWindowTitle(graph.Caption);
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_ShowWithoutActivating);
    buildControls();
    buildMenus();
    connectPoints();
    constexpr QSize startSize(720, 540);
    FormSupport::PlaceOnScreen(*this, startSize);
    mdApplication::JoinGraphWindows(*this);
}

void frmGraph::buildControls() {
    tbGeneral = Named(new QToolBar(this), u"tbGeneral"_s);
    picScreen = Named(new PictureBox(this), u"picScreen"_s);
    picScreen->setAccessibleName(tr("グラフ"));
    picScreen->setAcceptDrops(false);
    paint = std::make_unique<LongPaint>(*picScreen, tell);
    lstLegend = Named(new QListWidget(this), u"lstLegend"_s);
    lstLegend->setAccessibleName(tr("系列"));
    lstLegend->setUniformItemSizes(true);
    lstLegend->setContextMenuPolicy(Qt::CustomContextMenu);
    lstLegend->hide();

    addCommand("save", tr("保存"), QKeySequence(u"Ctrl+S"_s), &frmGraph::save);
    addCommand("print", tr("印刷"), QKeySequence(u"Ctrl+P"_s), &frmGraph::print)->setEnabled(printers.Any());
    addCommand("copy", tr("テキストコピー"), QKeySequence(u"Ctrl+C"_s), &frmGraph::copyText);
    addCommand("image", tr("イメージコピー"), QKeySequence(u"Ctrl+Shift+C"_s), &frmGraph::copyImage);
    tbGeneral->addSeparator();
    addCommand("style", tr("グラフスタイル設定"), QKeySequence(u"Ctrl+T"_s), &frmGraph::showSettings);
    legendButton = addCommand("legend", tr("系列表示設定"), QKeySequence(u"Ctrl+L"_s), &frmGraph::toggleLegend);
    legendButton->setCheckable(true);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(tbGeneral);
    layout->addWidget(picScreen, 1);
    picScreen->setFocus();
    // The toolkit's own least size would keep the window from becoming as small as its user wants it.
    setMinimumSize(1, 1);
    connect(picScreen, &PictureBox::Resized, this, &frmGraph::redrawGraph);
    connect(lstLegend, &QListWidget::itemChanged, this, [this](const QListWidgetItem* item) {
        showSeries(lstLegend->row(item), item->checkState() == Qt::Checked);
    });
    connect(lstLegend, &QListWidget::customContextMenuRequested, this,
            [this](QPoint place) { mnuPopTop->popup(lstLegend->viewport()->mapToGlobal(place)); });
}

QAction* frmGraph::addCommand(const char* key, const QString& tip, const QKeySequence& shortcut,
                              void (frmGraph::*act)()) {
    QString picture = QString::fromLatin1(key);
    picture[0] = picture[0].toUpper();
    auto* action = tbGeneral->addAction(QIcon(u":/icons/graph%1.svg"_s.arg(picture)), tip);
    action->setObjectName(QString::fromLatin1(key));
    action->setShortcut(shortcut);
    tbGeneral->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    connect(action, &QAction::triggered, this, [this, action, act] {
        if (LongWork::IsRunning())
            return;
        if (action != legendButton)
            closeLegend();
        (this->*act)();
    });
    return action;
}

void frmGraph::buildMenus() {
    mnuPopTop = Named(new QMenu(this), u"mnuPopTop"_s);
    for (const bool checked : {true, false}) {
        QAction* action = mnuPopTop->addAction(checked ? tr("全系列を描画(&A)") : tr("全系列を描画しない(&N)"));
        action->setObjectName(checked ? u"mnuPop_0"_s : u"mnuPop_1"_s);
        connect(action, &QAction::triggered, this, [this, checked] { checkAllSeries(checked); });
    }
    mnuPicture = Named(new QMenu(this), u"mnuPicture"_s);
    stepLine = mnuPicture->addAction(tr("現在のステップを表示(&S)"));
    stepLine->setObjectName(u"stepLine"_s);
    stepLine->setCheckable(true);
    connect(stepLine, &QAction::triggered, this, &frmGraph::showStepLine);
    mnuPicture->addSeparator();
    mnuPicture->addActions(tbGeneral->actions());
}

bool frmGraph::Initialize(int graphType, const clsMouse& selection) {
    Building = true;
    graph.GraphType = graphType;
    SelectionSnapshot picked{selection.ObjectType(), {}};
    for (std::int32_t i = 0; i < selection.Count(); ++i)
        picked.Index.push_back(selection.Item(i));
    LongWork work(tr("グラフを作成中... (Esc で中止)"), tell);
    const bool whole = work.Run([&, copy = model](const LongWork::Progress& progress) {
        if (graphType == GraphType::History)
            mdGraph::BuildHistory(copy, settings.Difference, picked, graph, progress);
        else if (graphType == GraphType::Distribution)
            mdGraph::BuildDistribution(copy, settings.Difference, picked, graph, progress);
    });
    if (!whole)
        return false;
    setWindowTitle(NativePath::Shown(graph.Caption));
    fillLegend();
    Building = false;
    redrawGraph();
    return true;
}

void frmGraph::fillLegend() {
    lstLegend->clear();
    for (int series = 1; series <= graph.Plot.DataLegendCount(); ++series) {
        auto* item = new QListWidgetItem(graph.Plot.DataLabel(series), lstLegend);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Checked);
    }
    lstLegend->setCurrentRow(0);
}

void frmGraph::showSeries(int row, bool visible) {
    if (row + 1 > graph.Plot.DataLegendCount())
        return;
    graph.Plot.SetDataLegendHidden(row + 1, !visible);
    redrawGraph();
}

void frmGraph::checkAllSeries(bool checked) {
    Building = true;
    for (int row = 0; row < lstLegend->count(); ++row)
        lstLegend->item(row)->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
    Building = false;
    redrawGraph();
}

void frmGraph::toggleLegend() {
    lstLegend->setVisible(legendButton->isChecked());
    placeLegend();
    if (lstLegend->isVisible())
        lstLegend->setFocus();
    else
        picScreen->setFocus();
}

void frmGraph::closeLegend() {
    if (!legendButton->isChecked())
        return;
    legendButton->setChecked(false);
    toggleLegend();
}

/// At the right side of the picture, as wide as the names want it and at most half of it.
void frmGraph::placeLegend() {
    const QRect area = picScreen->geometry();
    const int wanted =
        lstLegend->sizeHintForColumn(0) + 2 * lstLegend->frameWidth() + lstLegend->fontMetrics().averageCharWidth() * 5;
    const int width = std::min(wanted, area.width() / 2);
    lstLegend->setGeometry(area.right() + 1 - width, area.top(), width, area.height());
    lstLegend->raise();
}

void frmGraph::redrawGraph() {
    if (Building)
        return;
    painted = false;
    marked.reset();
    stale = !isVisible();
    if (stale)
        return;
    const LongPaint::Outcome outcome = paint->Paint([this](DeviceContext& device) {
        if (graph.Plot.DataLegendCount() == 0)
            return;
        mdGraph::ApplyGraphStyle(settings, model, device, graph);
        mdGraph::DrawGraph(device, settings.Graph, graph);
    });
    if (outcome == LongPaint::Outcome::Later)
        return;
    painted = outcome == LongPaint::Outcome::Shown;
    if (!painted)
        tell(paint->WhyStopped());
    picScreen->RefreshLayer();
}

void frmGraph::showSettings() {
    mdApplication::LowerGraphWindows(true);
    frmGraphSetting dialog(this, settings.Graph);
    dialog.exec();
    mdApplication::LowerGraphWindows(false);
    if (!dialog.Result)
        return;
    mdApplication::NotifyGraphLayoutChanged(this);
    LayoutChanged();
}

void frmGraph::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    placeLegend();
}

void frmGraph::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (stale)
        redrawGraph();
}

void frmGraph::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    if (mdApplication::GraphWindows().size() == 1 && parentWidget())
        parentWidget()->activateWindow();
}

void frmGraph::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && lstLegend->isVisible())
        closeLegend();
    else if (event->key() == Qt::Key_Escape)
        close();
    else if (!takePointKey(event->key()))
        QWidget::keyPressEvent(event);
}

void frmGraph::contextMenuEvent(QContextMenuEvent* event) {
    stepLine->setChecked(settings.Graph.ShowCurrentStep);
    stepLine->setEnabled(graph.GraphType == GraphType::History);
    mnuPicture->popup(event->globalPos());
}
