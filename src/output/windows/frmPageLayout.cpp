#include "output/windows/frmPageLayout.h"

#include "app/NumberFormat.h"
#include "app/mdTips.h"
#include "app/mdTipsDrawing.h"
#include "app/windows/ShowMessage.h"
#include "output/windows/frmPrinterProperties.h"
#include "platform/device/Printers.h"
#include "platform/raster/RasterDevice.h"
#include "platform/widgets/FormSupport.h"
#include "platform/widgets/PictureBox.h"
#include "platform/widgets/UpDown.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace {
/// A margin that is to be kept.
QString marginText(int tenths) {
    return NumberFormat::Format(tenths * 0.1, u"0.0");
}
} // namespace

frmPageLayout::frmPageLayout(QWidget* parent, Printers& printersToOffer, PageSettings& target)
    : QDialog(parent), printers(printersToOffer), settings(target) {
    setObjectName(u"frmPageLayout"_s);
    setWindowTitle(u"ページ設定"_s);
    buildControls();
    bindControls();
    connectControls();
    load();
    FormSupport::PlaceOnScreen(*this);
}

void frmPageLayout::load() {
    cmbPrinter->addItems(printers.Names());
    cmbPrinter->setCurrentIndex(
        cmbPrinter->findText(settings.Printer.isEmpty() ? printers.Default() : settings.Printer));
    rows.Fill(settings);
    cmbOrientation->setCurrentIndex(settings.Orientation == PlotPrinter::Portrait ? 0 : 1);
    for (int i = 0; i < int(udMargin.size()); ++i) {
        udMargin[i]->SetValue(settings.Margin[i]);
        showMargin(i);
    }
    labels = settings.Labels.first(std::clamp<qsizetype>(settings.LabelCount, 0, settings.Labels.size()));
    listLabels(-1);
    Updating = false;
    choosePrinter();
    enableControls();
}

void frmPageLayout::choosePrinter() {
    if (Updating)
        return;
    const int paper = printer ? printer->PaperSize() : settings.PaperSize;
    printer.reset();
    Updating = true;
    cmbPaper->clear();
    Updating = false;
    const QString name = cmbPrinter->currentText();
    // A printer that has gone from the system is none of those to choose from.
    if (cmbPrinter->currentIndex() >= 0) {
        printer = printers.Open(name, cmbOrientation->currentIndex() + 1, paper);
        if (!printer)
            mdApplication::ShowMessage(u"プリンタの情報を取得することができません。"_s, MessageStyle::Stop);
    }
    if (printer) {
        Updating = true;
        for (const PrinterPaper& offered : printer->PaperSizes())
            cmbPaper->addItem(offered.Name, offered.Code);
        cmbPaper->setCurrentIndex(cmbPaper->findData(printer->PaperSize()));
        Updating = false;
    }
    cmdPrinter->setEnabled(printer && !printers.Options(name).isEmpty());
    paintPaper();
}

void frmPageLayout::editProperties() {
    const QString name = cmbPrinter->currentText();
    frmPrinterProperties form(this, name, printers.Options(name));
    if (form.exec() != Accepted)
        return;
    for (const auto& [option, value] : form.Chosen())
        printers.Choose(name, option, value);
}

QString frmPageLayout::checkedMargin(int index, const QString& text) {
    const double wished = mdTips::Val(NumberFormat::Format(mdTips::Val(text), u"0.0"));
    const int tenths = std::min(Round(std::abs(wished) * 10), udMargin[index]->Most());
    udMargin[index]->SetValue(tenths);
    return marginText(tenths);
}

void frmPageLayout::showMargin(int index) {
    const int tenths = udMargin[index]->Value();
    if (Round(mdTips::Val(txtMargin[index]->text()) * 10) != tenths || Updating)
        txtMargin[index]->setText(marginText(tenths));
    if (!Updating)
        paintPaper();
}

void frmPageLayout::enableControls() {
    txtOutline->setEnabled(chkPaintOutline->isChecked());
    const bool scaled = cmbScale->currentIndex() > 0;
    txtScale->setEnabled(scaled);
    cmbScaleUnit->setEnabled(scaled);
}

void frmPageLayout::paintPaper() {
    QImage& sheet = picPaper->BlankSheet();
    RasterDevice device(sheet, picPaper->DotsPerInch());
    const QColor ground = palette().color(QPalette::Window);
    device.FillRect({0, 0, sheet.width(), sheet.height()},
                    {.Color = makeColor(ground.red(), ground.green(), ground.blue())});
    if (printer) {
        constexpr int room = 1;
        const double perMm = std::min((sheet.width() - 2 * room) / printer->PaperWidthMm(),
                                      (sheet.height() - 2 * room) / printer->PaperHeightMm());
        const double width = printer->PaperWidthMm() * perMm, height = printer->PaperHeightMm() * perMm;
        const double left = (sheet.width() - width) / 2, top = (sheet.height() - height) / 2;
        mdTips::SelectSolidPen(device, 0, 1, PenStyle::Solid);
        mdTips::SelectBrush(device, makeColor(255, 255, 255), -1);
        device.Rectangle({Round(left), Round(top), Round(left + width), Round(top + height)});
        std::array<double, 4> margin{};
        for (int i = 0; i < 4; ++i)
            margin[i] = udMargin[i]->Value() * 0.1 * perMm;
        const DevicePoint from{Round(left + margin[0]), Round(top + margin[1])};
        const DevicePoint to{Round(left + width - margin[2]) - 1, Round(top + height - margin[3]) - 1};
        mdTips::SelectSolidPen(device, 0, 1, PenStyle::Dot);
        const DevicePoint corners[] = {from, {to.X, from.Y}, to, {from.X, to.Y}, from};
        device.Polyline(corners);
    }
    picPaper->ShowSheet();
}

void frmPageLayout::apply() {
    // A box that still has the focus has not been looked at.
    for (int i = 0; i < int(txtMargin.size()); ++i)
        txtMargin[i]->setText(checkedMargin(i, txtMargin[i]->text()));
    rows.Read(settings);
    if (cmbPrinter->currentIndex() >= 0)
        settings.Printer = cmbPrinter->currentText();
    if (cmbPaper->currentIndex() >= 0)
        settings.PaperSize = cmbPaper->currentData().toInt();
    settings.Orientation = cmbOrientation->currentIndex() + 1;
    for (int i = 0; i < int(udMargin.size()); ++i)
        settings.Margin[i] = udMargin[i]->Value();
    settings.LabelCount = int(labels.size());
    settings.Labels = labels;
    Result = true;
    accept();
}
