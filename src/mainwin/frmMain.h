// The main window: the picture of the open result file with its bars, scroll bars and status bar. Layout and one line
// per event; what the events do stands in a file per subject.
#pragma once

#include "app/clsStringArray.h"
#include "platform/device/DocumentPlotter.h"
#include "view/clsMouse.h"
#include "view/scene/mdScene.h"

#include <QMainWindow>
#include <array>

class CommandBars;
class PictureBox;
class QLabel;
class QScrollBar;
struct ResultModel;

class frmMain : public QMainWindow {
    Q_OBJECT

public:
    frmMain();
    ~frmMain() override;
    /// The one main window; null while there is none.
    static frmMain* Instance();

    /// Takes up the raw command line, at the start and again for a dropped file: puts the window where it was left and
    /// opens the file that is named, or the last one if so set, or says that there is none.
    void FirstStep(const QString& commandLine);
    /// True while a result file is open.
    bool IsOpen() const;
    DocumentPlotter& DocPlotter() { return clsModel; }
    int Zoom() const { return view.Zoom; }
    void SetZoom(int value);
    /// Paints the scene anew; nothing while the user interface is being updated or without a file.
    void repaint();
    /// What a click on the command does.
    void ExecuteCommand(const QString& tool);

    clsMouse Selection; ///< what the user has picked

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    // frmMain.cpp
    void buildPanels();
    void connectEvents();
    bool takeStepKey(const QKeyEvent& event);

    // frmMainCommands.cpp
    struct Reaction;
    static const Reaction reactions[];
    void updateCommandState();
    void onComboSelection(const QString& combo);
    void chooseItem(int item);
    void toggle(const QString& tool, bool& setting);
    void choose(const QString& band, const QString& tool, int firstId, int& setting);
    void saveLayout();
    void setScaleMode(const QString& tool);
    void toggleToolBar();
    void toggleStatusBar();
    void applyBarVisibility();
    void copyImage();
    void editDifference();
    void editContourValue();
    void editDrawSettings();
    void showProperties();
    void showHelpIndex();
    void showAbout();

    // frmMainDocument.cpp
    void openResultFile(const QString& path);
    bool readResultFile(const QString& path, ResultModel& loaded, bool& stopped);
    void takeUpFile();
    void refuseFile(const QString& path);
    void promptAndOpen();
    bool promptFileName(QString& path);
    void updateCaption();
    void loadStep(int step, int item);
    void restoreWindow();
    void storeWindow();
    void loadRecentFiles();
    void saveRecentFiles();
    void addRecentFile(const QString& path, bool atEnd);

    // frmMainView.cpp
    void zoomAt(QPointF pixel, int steps);
    void finishZoom();
    void updateZoomCommands();
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
    void showPopup(QPoint globalPosition);

    static frmMain* instance;
    DocumentPlotter clsModel;
    ViewState view;
    SlideShowRun slideShow;
    bool updatingUi = false;
    clsStringArray recentFiles; ///< paths as shown; the private data is the path itself

    CommandBars* bars = nullptr;
    PictureBox* picScreen = nullptr;
    std::array<QScrollBar*, 2> scrScroll{};
    std::array<QLabel*, 4> panels{};
};
