// Asks for the folder of a manual: one that holds a first page, "index.htm" with whatever follows. frmSelDir
// form(this); form.SetPath(...); form.exec(); if (form.Result) ... form.Path().
#pragma once

#include <QDialog>
#include <array>

class QLineEdit;
class QPushButton;
class ctlDirTree;

class frmSelDir : public QDialog {
    Q_OBJECT

public:
    explicit frmSelDir(QWidget* parent = nullptr);

    /// With a separator at its end, empty for none.
    QString Path() const;
    /// A folder that isn't there is passed over.
    void SetPath(const QString& folder);

    /// True after OK.
    bool Result = false;

private:
    void showPath();

    ctlDirTree* ctlDirTree1 = nullptr;
    QLineEdit* txtPath = nullptr;
    QPushButton* cmdRefresh = nullptr;
    std::array<QPushButton*, 2> Command1{}; ///< OK, cancel
};
