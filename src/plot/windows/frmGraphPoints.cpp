// The layer over the picture of a graph: the point under the mouse or the keys, and the line at the step in view.
#include "app/windows/GraphWindows.h"
#include "platform/widgets/PictureBox.h"
#include "plot/windows/frmGraph.h"

#include <QAction>
#include <QEvent>
#include <QListWidget>

namespace {
constexpr int reachAtFullScale = 8;
} // namespace

void frmGraph::connectPoints() {
    picScreen->Layer = [this](DeviceContext& device) { paintLayer(device); };
    picScreen->installEventFilter(this);
    connect(picScreen, &PictureBox::MouseMoved, this, [this](QPoint pixel) {
        if (!painted || paint->IsRunning())
            return;
        const int reach = qRound(reachAtFullScale * picScreen->devicePixelRatioF());
        mark(graph.Plot.NearestPoint({pixel.x(), pixel.y()}, reach));
    });
    connect(picScreen, &PictureBox::MouseReleased, this, [this](QPoint, Qt::MouseButton button) {
        if (button != Qt::LeftButton)
            return;
        if (legendButton->isChecked())
            closeLegend();
        else
            choosePoint();
    });
}

bool frmGraph::eventFilter(QObject* watched, QEvent* event) {
    if (watched == picScreen && event->type() == QEvent::Leave)
        mark({});
    return QWidget::eventFilter(watched, event);
}

void frmGraph::mark(const std::optional<PlotPoint>& point) {
    if (point == marked)
        return;
    marked = point;
    picScreen->setCursor(marked ? Qt::PointingHandCursor : Qt::ArrowCursor);
    picScreen->setAccessibleDescription(marked ? mdGraph::PointTexts(graph, *marked).join(u", "_s) : QString());
    picScreen->RefreshLayer();
}

void frmGraph::choosePoint() {
    if (!marked || paint->IsRunning())
        return;
    if (const auto origin = mdGraph::OriginOf(graph, marked->Series, marked->Point))
        emit PointChosen(origin->Step, graph.Selection.ObjectType, origin->Object);
}

bool frmGraph::takePointKey(int key) {
    if (!picScreen->hasFocus() || !painted || paint->IsRunning())
        return false;
    constexpr int toTheEnd = 1 << 30;
    const auto go = [this](int series, int points) {
        mark(graph.Plot.PointBeside(marked, series, points));
        return true;
    };
    switch (key) {
    case Qt::Key_Left:
        return go(0, -1);
    case Qt::Key_Right:
        return go(0, 1);
    case Qt::Key_Up:
        return go(-1, 0);
    case Qt::Key_Down:
        return go(1, 0);
    case Qt::Key_Home:
        return go(0, -toTheEnd);
    case Qt::Key_End:
        return go(0, toTheEnd);
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        choosePoint();
        return true;
    default:
        return false;
    }
}

void frmGraph::StepChanged() {
    if (graph.GraphType == GraphType::History)
        picScreen->RefreshLayer();
}

void frmGraph::showStepLine(bool show) {
    settings.Graph.ShowCurrentStep = show;
    for (QWidget* window : mdApplication::GraphWindows())
        if (auto* other = qobject_cast<frmGraph*>(window))
            other->StepChanged();
}

/// Neither saved nor copied nor printed.
void frmGraph::paintLayer(DeviceContext& device) {
    if (!painted)
        return;
    if (settings.Graph.ShowCurrentStep)
        mdGraph::DrawStepLine(device, graph, model, model.CurrentStep);
    if (marked)
        mdGraph::DrawPointMark(device, graph, *marked);
}
