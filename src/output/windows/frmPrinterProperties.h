// The dialog for what a printer lets its user choose, such as the sides to print on. It tells nobody what was chosen.
#pragma once

#include "platform/device/Printers.h"

#include <QDialog>

class QComboBox;

class frmPrinterProperties : public QDialog {
    Q_OBJECT

public:
    frmPrinterProperties(QWidget* parent, const QString& printer, const QList<PrinterOption>& options);

    /// Pairs of option and value, as the system knows them.
    QList<std::pair<QString, QString>> Chosen() const;

private:
    QList<QComboBox*> cmbOption;
};
