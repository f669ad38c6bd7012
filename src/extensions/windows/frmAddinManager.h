// The dialog that shows the add-in modules in their folders, and installs and removes them. Runs nothing of them.
#pragma once

#include "extensions/AddinHost.h"

#include <QDialog>
#include <array>

class QLabel;
class QPushButton;
class QTreeWidget;

class frmAddinManager : public QDialog {
    Q_OBJECT

public:
    /// `host` must outlive the dialog; `folders` as `mdAddIn::AddinFolders` tells them.
    frmAddinManager(QWidget* parent, AddinHost& host, const QStringList& folders);

private:
    /// What a row is, by the picture that it has.
    enum class Kind { Module, Install, NoInstall };
    struct Row {
        AddinModule Module;
        frmAddinManager::Kind Kind;
    };

    void buildControls();
    void refresh();
    void addRow(const Row& row, const QString& state);
    void showRow();
    void install();
    void remove();
    /// Null when no row is selected.
    const Row* selected() const;

    AddinHost& host;
    const QStringList folders;
    std::vector<Row> rows; ///< as they stand in the list
    QTreeWidget* lvModule = nullptr;
    std::array<QPushButton*, 3> cmdModule{}; ///< install, refresh, remove
    QPushButton* Command1 = nullptr;
    std::array<QLabel*, 4> captions{};
    std::array<QLabel*, 4> lblInfo{}; ///< vendor, version, description, file
};
