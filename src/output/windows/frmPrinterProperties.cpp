#include "output/windows/frmPrinterProperties.h"

#include "platform/widgets/FormSupport.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

using FormSupport::Named;

frmPrinterProperties::frmPrinterProperties(QWidget* parent, const QString& printer, const QList<PrinterOption>& options)
    : QDialog(parent) {
    setObjectName(u"frmPrinterProperties"_s);
    setWindowTitle(printer + u" のプロパティ"_s);
    auto* layout = new QGridLayout(this);
    layout->setColumnStretch(1, 1);
    for (const PrinterOption& option : options) {
        auto* combo = Named(new QComboBox, u"cmbOption"_s, int(cmbOption.size()));
        combo->setProperty("option", option.Name);
        for (const PrinterOption::Choice& choice : option.Choices)
            combo->addItem(choice.Caption, choice.Value);
        combo->setCurrentIndex(combo->findData(option.Chosen));
        FormSupport::AddRow(*layout, int(cmbOption.size()), option.Caption, combo);
        cmbOption.append(combo);
    }
    auto* ok = Named(new QPushButton(u"OK"_s), u"Command1"_s, 0);
    auto* cancel = Named(new QPushButton(u"キャンセル"_s), u"Command1"_s, 1);
    FormSupport::ButtonWidths({ok, cancel});
    ok->setDefault(true);
    layout->addLayout(FormSupport::ButtonRow({}, {ok, cancel}), int(cmbOption.size()), 0, 1, 2);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    FormSupport::PlaceOnScreen(*this);
}

QList<std::pair<QString, QString>> frmPrinterProperties::Chosen() const {
    QList<std::pair<QString, QString>> chosen;
    for (const QComboBox* combo : cmbOption)
        if (combo->currentIndex() >= 0)
            chosen.append({combo->property("option").toString(), combo->currentData().toString()});
    return chosen;
}
