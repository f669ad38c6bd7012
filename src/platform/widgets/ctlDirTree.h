// A tree of drives and folders that reads a folder only when it is opened. What the chosen folder is for is its owner's
// business.
#pragma once

#include <QTreeWidget>
#include <optional>

class ctlDirTree : public QTreeWidget {
    Q_OBJECT

public:
    explicit ctlDirTree(QWidget* parent = nullptr);

    /// The selected folder with a separator at its end; empty when there is none.
    QString Path() const;
    /// Opens the folders along the path and selects the last one. What it gives back is the error's text; the tree then
    /// stays as it is.
    std::optional<QString> SetPath(const QString& folder);
    /// Begins again with the drives, all closed and none selected.
    void Refresh();

signals:
    /// Another folder is selected, or `SetPath` or `Refresh` has done its work.
    void Change();

private:
    QTreeWidgetItem* makeNode(const QString& path, const QString& text, const QIcon& icon) const;
    void addPlaceholder(QTreeWidgetItem* node) const;
    QTreeWidgetItem* driveOf(const QString& path) const;
    QTreeWidgetItem* childOf(QTreeWidgetItem* node, const QString& path) const;
    void read(QTreeWidgetItem* node) const;

    QIcon folderIcon;      ///< closed, and open for a node that is open or selected
    bool Updating = false; ///< true while the tree itself selects
};
