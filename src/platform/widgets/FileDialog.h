// The dialog that asks for a file: the desktop's own where there is one, else the toolkit's. For `Dialogs` alone.
#pragma once

#include <QFileDialog>

class QCheckBox;
class QListWidget;
class QListWidgetItem;

/// The toolkit's dialog knows no name that is not UTF-8. Where there are such files to be opened they stand in a list
/// of their own beneath.
class FileDialog : public QFileDialog {
    Q_OBJECT

public:
    /// `filter` is that of `Dialogs::OpenFileName`.
    FileDialog(QWidget* parent, const QString& title, const QString& filter, bool save);

    /// Begins in a folder, or with a file; when it opens, among files of its kind.
    void StartAt(const QString& start);
    /// A box to tick beneath all else; null where the dialog is the desktop's.
    QCheckBox* AddSwitch(const QString& caption, bool on);
    /// What was chosen, once it is accepted.
    QString Chosen() const;

    void accept() override;

private:
    void fitColumns();
    void selectFilterOf(const QString& name);
    void buildOtherNames();
    void listOtherNames();
    void takeOtherName(const QListWidgetItem& item);

    QListWidget* otherNames = nullptr; ///< none when the dialog is the desktop's, or saves
    QString folder;                    ///< that is shown, as far as it is known
    QString chosen;                    ///< from the list; empty if it wasn't
};
