// The preview of the page: a sheet with its shadow on a quiet ground, as a whole or in its real size, with buttons to
// print it and to set it up. What is on the sheet is painted elsewhere.
// frmPreview form(this, session, printers); form.FirstStep(); form.exec();
#pragma once

#include "platform/device/PlotPrinter.h"

#include <QDialog>
#include <QTimer>
#include <array>
#include <functional>
#include <optional>

class PictureBox;
class Printers;
class QComboBox;
class QLabel;
class QPushButton;
class QScrollArea;
class Session;

class frmPreview : public QDialog {
    Q_OBJECT

public:
    /// Both must outlive the form; `session` has a file open, and its page settings may be changed by the user.
    frmPreview(QWidget* parent, Session& session, Printers& printers);
    ~frmPreview() override;

    /// Takes up the printer of the page settings and shows the page; none when the printer can't be had.
    void FirstStep();

protected:
    void changeEvent(QEvent* event) override;

private:
    enum : int { Whole, RealSize };

    void buildControls();
    QWidget* buildTools();
    void connectControls();
    void print();
    void setUpPage();
    void showFacts();
    void chooseZoom();
    void redraw();
    void paintSheet(QSize pixels);
    void compose();

    Session& session;
    Printers& printers;
    std::function<void(const QString&)> progressBefore; ///< of the printers, which tell this form while it is there
    std::optional<PlotPrinter> printer;
    QImage sheet; ///< null while there is none to paint, and before the first
    bool painting = false;
    QTimer redrawing; ///< runs while the size may still change

    std::array<QPushButton*, 3> Command1{}; ///< print, set up, close
    QComboBox* cmbZoom = nullptr;
    QLabel* lblPrinter = nullptr;
    QLabel* lblPaper = nullptr;
    QLabel* lblStatus = nullptr;
    QScrollArea* picContainer = nullptr;
    PictureBox* picScreen = nullptr;
};
