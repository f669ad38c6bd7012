// The main window: the picture of the open result file with its scroll bars and status bar. Layout and one line per
// event; what the events do stands in a file per subject.
#pragma once

#include "platform/DocumentPlotter.h"
#include "view/ViewState.h"
#include "view/clsMouse.h"

#include <QMainWindow>
#include <array>

class PictureBox;
class QAction;
class QLabel;
class QScrollBar;

class frmMain : public QMainWindow {
    Q_OBJECT

public:
    frmMain();
    ~frmMain() override;
    /// The one main window; null while there is none.
    static frmMain* Instance();

    /// Takes up the raw command line: opens the file that it names or says that there is none.
    void FirstStep(const QString& commandLine);
    /// True while a result file is open.
    bool IsOpen() const;
    DocumentPlotter& DocPlotter() { return clsModel; }
    int Zoom() const { return view.Zoom; }
    void SetZoom(int value);
    /// Paints the scene anew; nothing while the user interface is being updated or without a file.
    void repaint();

    clsMouse Selection; ///< what the user has picked

protected:
    /// The popup menu of the picture, at `globalPosition`.
    virtual void showPopup(QPoint globalPosition);
    void keyPressEvent(QKeyEvent* event) override;

private:
    // frmMain.cpp
    void buildMenus();
    void buildPanels();
    void updateCommands();
    void onKey(QKeyEvent* event);

    // frmMainDocument.cpp
    void openResultFile(const QString& path);
    void promptAndOpen();
    bool promptFileName(QString& path);
    void updateCaption();
    void selectStep(int step);

    // frmMainView.cpp
    void zoomAt(QPointF pixel, int steps);
    void finishZoom();
    void updateScrollBars();
    void onScroll(ScrollBar bar, int value);
    void showMouseCoordinates(QPointF pixel);
    void onPictureResized();
    void clearPicture();

    // frmMainPicking.cpp
    void connectPicking();
    void beginDrag(DevicePoint corner);
    void moveRubberBand(DevicePoint corner);
    void endDrag(DevicePoint corner, Qt::KeyboardModifiers modifiers);
    void cancelDrag();
    void onMousePressed(QPoint pixel, Qt::MouseButton button);
    void onMouseReleased(QPoint pixel, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
    void paintLayer(DeviceContext& device);
    bool takesMouse() const;
    int screenWidth() const;

    static frmMain* instance;
    DocumentPlotter clsModel;
    ViewState view;
    bool updatingUi = false;

    PictureBox* picScreen = nullptr;
    std::array<QScrollBar*, 2> scrScroll{};
    std::array<QLabel*, 4> panels{};
    QAction* miViewZoomIn = nullptr;
    QAction* miViewZoomOut = nullptr;
    QAction* miViewZoomOff = nullptr;
};
