// The dialog that leads to pages of the help: by a list of all titles that typing narrows, or by a word that stands in
// them. It shows no page itself: the desktop opens them.
#pragma once

#include "extensions/helpSearch.h"

#include <QDialog>
#include <array>

class ListPanel;
class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;

class frmKeyword : public QDialog {
    Q_OBJECT

public:
    enum { Keywords = 0, Search = 1 };

    /// `Keywords` lists the titles as soon as it is shown.
    frmKeyword(QWidget* parent, const QString& helpFolder, int helpStyle);

    QString HelpDir;

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using Scan = std::function<bool(QList<HelpTopic>&, const helpSearch::Progress&)>;

    void buildControls();
    void showStyle();
    void listKeywords();
    void searchHelp();
    /// Fills the list with what `scan` finds, and tells its progress. False when the user has stopped it.
    bool fillList(const Scan& scan);
    void onType();
    void onMove();
    void onCommand();
    void onDoubleClick();
    void showTopic();

    const int style;
    bool listed = false;
    QLabel* Label1 = nullptr;
    QLineEdit* txtWord = nullptr;
    ListPanel* lpList = nullptr;
    QLabel* lblState = nullptr; ///< progress, then how many were found
    std::array<QPushButton*, 2> Command1{};
    QTimer* Timer1 = nullptr; ///< closes the dialog once the list has done with its event
};
