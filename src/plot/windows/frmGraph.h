// A window with one graph: its picture, the list of its series, saving and copying. It is built once and does not
// follow the item of the main window; how a graph is built and drawn is mdGraph's business.
#pragma once

#include "platform/widgets/LongPaint.h"
#include "plot/mdGraph.h"

#include <QWidget>

class QAction;
class QListWidget;
class QMenu;
class QToolBar;
class PictureBox;
class Printers;
class clsMouse;
struct PictureContent;

class frmGraph : public QWidget {
    Q_OBJECT

public:
    /// Told what long work is going on, and at its end an empty text.
    using Tell = std::function<void(const QString&)>;

    /// `model`, `settings` and `printers` are the program's, and must outlive the window. It is destroyed when it is
    /// closed.
    frmGraph(QWidget* owner, const ResultModel& model, ApplicationSettings& settings, Printers& printers, Tell tell);

    /// Builds a graph of the model's item and of what is picked, once. False when the user has stopped it: the window
    /// is of no use then.
    bool Initialize(int graphType, const clsMouse& selection);
    int GraphType() const { return graph.GraphType; }
    bool Invalid() const { return graph.Invalid; }
    QString Description() const { return {}; }

    /// The settings have changed.
    void LayoutChanged() { redrawGraph(); }
    /// The main window shows another step.
    void StepChanged();

signals:
    /// A point has been chosen: its step, and the object that it stands for (`PickedKind`).
    void PointChosen(int step, int objectType, int object);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // frmGraph.cpp
    void buildControls();
    QAction* addCommand(const char* key, const QString& tip, const QKeySequence& shortcut, void (frmGraph::*act)());
    void buildMenus();
    void fillLegend();
    void checkAllSeries(bool checked);
    void showSeries(int row, bool visible);
    void toggleLegend();
    void closeLegend();
    void placeLegend();
    void redrawGraph();
    void showSettings();

    // frmGraphFiles.cpp
    void save();
    void print();
    PictureContent contentOf(const QString& path) const;
    void copyText();
    void copyImage();

    // frmGraphPoints.cpp
    void connectPoints();
    void paintLayer(DeviceContext& device);
    void mark(const std::optional<PlotPoint>& point);
    void choosePoint();
    bool takePointKey(int key);
    void showStepLine(bool show);

    const ResultModel& model;
    ApplicationSettings& settings;
    Printers& printers;
    Tell tell;
    Graph graph;
    bool Building = false;           ///< the list of series is being filled or changed as a whole
    bool stale = true;               ///< to be drawn as soon as the window is shown
    bool painted = false;            ///< the picture is that of the graph as it is
    std::optional<PlotPoint> marked; ///< in the picture as it is

    QToolBar* tbGeneral = nullptr;
    PictureBox* picScreen = nullptr;
    QListWidget* lstLegend = nullptr;
    QMenu* mnuPopTop = nullptr;
    QMenu* mnuPicture = nullptr;
    QAction* legendButton = nullptr;
    QAction* stepLine = nullptr;
    std::unique_ptr<LongPaint> paint;
};

namespace mdApplication {
/// Has every open graph but `source` drawn anew.
void NotifyGraphLayoutChanged(const frmGraph* source);
} // namespace mdApplication
