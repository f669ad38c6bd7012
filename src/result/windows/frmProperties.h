// The window that lists what the open file holds. It reads and changes nothing.
// frmProperties form(this, Model); form.exec();
#pragma once

#include <QDialog>

class PictureBox;
class PropertyRows;
class QPushButton;
class QTableView;
struct ResultModel;

class frmProperties : public QDialog {
    Q_OBJECT

public:
    /// Works on a copy of `model`, which shares its columns.
    frmProperties(QWidget* parent, const ResultModel& model);

    /// Draws the two signs at the scale of the desktop.
    void DrawPropertyIcons();
    /// Asks for the file of the text export, starting from the result file's name; `ok` is false after Cancel.
    void PromptExportName(QString& path, bool& ok);
    /// Removes all rows whose key starts with `prefix`: "item-", "node-", "elem-" or "step-".
    void RemoveChildRows(const QString& prefix);

private:
    void buildControls();

    QString exportPath; ///< what the export dialog starts from
    PropertyRows* rows;
    QTableView* lvProperties = nullptr;
    QPushButton* Command1 = nullptr; ///< close
    QPushButton* Command2 = nullptr; ///< text export
    PictureBox* Picture1 = nullptr;  ///< where the signs are drawn; never shown
};
