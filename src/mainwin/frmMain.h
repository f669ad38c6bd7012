// The main window: the picture of the open result file with its bars and its status bar. Layout and one line per event;
// what the events do stands in a file per subject, and what the picture does by itself in its control.
#pragma once

#include "mainwin/FollowedFile.h"
#include "mainwin/RecentFiles.h"
#include "output/SlideShow.h"
#include "platform/device/DocumentPlotter.h"
#include "platform/device/pictureFile.h"
#include "view/clsMouse.h"
#include "view/scene/Session.h"

#include <QMainWindow>
#include <QTimer>

class QLabel;
class StartPage;
class ctlScene;
struct CommandFacts;

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
    DocumentPlotter& DocPlotter();
    int Zoom() const;
    void SetZoom(int value);
    /// Paints the scene anew; nothing while the user interface is being updated or without a file.
    void repaint();
    /// Shows a line in the status bar, behind what has become of the file and others that were told since the last
    /// command; none when it is empty.
    void Tell(const QString& line);
    /// What a click on the command does.
    void ExecuteCommand(const QString& tool);

    clsMouse Selection; ///< what the user has picked

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    // The command table names the reactions among these.
    friend struct commandTable;

    // frmMain.cpp
    void buildPanels();
    void connectEvents();
    bool takeKey(const QKeyEvent& event);
    bool takeStepKey(const QKeyEvent& event);
    void onPainted();
    void forgetTold();
    void showTold();

    // frmMainCommands.cpp
    CommandFacts facts() const;
    void updateCommandState();
    void onBandOpening(const QString& band);
    void onComboSelection(const QString& combo);
    void chooseStep();
    /// The nearest one there is.
    void goToStep(int step);
    void showStepBefore();
    void showStepAfter();
    void chooseVector();
    void chooseItem();
    void zoomIn() { SetZoom(Zoom() + 1); }
    void zoomOut() { SetZoom(Zoom() - 1); }
    void zoomOff() { SetZoom(0); }
    void quit() { close(); }
    void saveLayout();
    void applyScaleMode();
    void applyBarVisibility();
    void copyImage();
    void editDifference();
    void editContourValue();
    void editDrawSettings();
    void showProperties();
    void openRecentFile(int index);

    // frmMainHelp.cpp
    /// The first page of the manual; empty, and the user has been told, when there is none.
    QString helpIndex();
    void showHelpIndex();
    void showHelpKeyword();
    void showHelpSearch();
    void findHelp(int style);
    void showAbout();

    // frmMainView.cpp
    void onZoomed();
    void showZoom();
    void fitView();
    void goBack();
    void goForward();
    void hideTip();
    void showPicked();
    void offerHelp(); ///< once each: to fade a dense mesh, to write the legend with more digits

    // frmMainPlace.cpp
    void toggleFullScreen();
    /// Whether the window is to change, which may take a while.
    bool restoreWindow();
    void storeWindow();
    QSize roomForFrame() const;

    // frmMainGraph.cpp
    void createDistribution();
    void createHistory();
    void createGraphFromSelection(int graphType);
    void showGraphPoint(int step, int objectType, int object);

    // frmMainExtensions.cpp
    void buildAddinMenu();
    void buildToolsMenu();
    void editOptions();
    void manageAddins();
    void runAddin(int number);
    void runTool(int index);

    // frmMainPage.cpp
    bool isThereAPrinter();
    void printOut();
    void showPreview();
    void editPageLayout();

    // frmMainPicture.cpp
    void savePicture();
    void writePicture(const QString& path, PictureFormat format, PictureFile& picture);
    void copyPictureCommand();

    // frmMainDocument.cpp
    void openResultFile(const QString& path);
    void takeUpFile(const DocumentReading::Opening& opening);
    /// The open file read anew.
    void takeUpAnew(const DocumentReading::Anew& anew);
    /// Gives the open file up and says why.
    void dropFile(const QString& why);
    /// Brings the window up before anything else is done.
    void showAtOnce();
    void promptAndOpen();
    bool promptFileName(QString& path);
    void showRecentFiles();
    void updateCaption();
    void tellWhatIsMissing(int step);
    bool mayFollow() const;
    void reloadFile() { followed.Reload(); }
    void lookAtFile() { followed.LookNow(); }

    // frmMainSlideShow.cpp
    void toggleSlideShow();
    void beginSlideShow();
    void endSlideShow();
    void showSlideShowState();
    void restartSlideShow();
    void pauseSlideShow();
    void showNextSlide();
    void editSlideShow();
    QString slideShowNote() const;

    // frmMainFilm.cpp
    using FilmWork = std::function<void(const LoadProgress&)>;
    void exportSlideShow();
    /// False when the work was asked to stop.
    bool makeFilm(const FilmWork& makeFrames);
    void promptFilmName(QString& path, bool& cancel);

    static frmMain* instance;
    bool updatingUi = false;
    QRect placeBefore;          ///< before the window filled the screen
    bool sizeToCome = false;    ///< the window has not got its real size yet
    bool fadingOffered = false; ///< since the start of the program
    bool digitsOffered = false; ///< likewise
    QString notice;             ///< what the status bar says when nothing else has its first panel
    DocumentReading reading;
    FollowedFile followed;
    RecentFiles recentFiles;
    SlideShow slideShow;
    QTimer timSlideShow;
    CommandBars* bars = nullptr;
    ctlScene* scene = nullptr;
    StartPage* startPage = nullptr;
    std::array<QLabel*, 4> panels{};
    QLabel* pickedPanel = nullptr; ///< shown while something is picked
};
