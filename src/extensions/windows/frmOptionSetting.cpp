#include "extensions/windows/frmOptionSetting.h"

#include "app/NumberFormat.h"
#include "app/mdTipsDrawing.h"
#include "app/windows/GraphWindows.h"
#include "extensions/windows/ctlToolTable.h"
#include "platform/raster/RasterDevice.h"
#include "platform/widgets/FormSupport.h"
#include "platform/widgets/PictureBox.h"
#include "platform/widgets/frmSelDir.h"

#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>

namespace {

constexpr double tenth = 0.1;

QString withoutLastSeparator(const QString& folder) {
    return folder.size() > 1 && folder.endsWith(u'/') ? folder.chopped(1) : folder;
}

QString withLastSeparator(const QString& folder) {
    return folder.isEmpty() || folder.endsWith(u'/') ? folder : QString(folder + u'/');
}

} // namespace

frmOptionSetting::frmOptionSetting(QWidget* parent, ApplicationSettings& applicationSettings,
                                   std::vector<ToolEntry>& toolEntries)
    : QDialog(parent), settings(applicationSettings), tools(toolEntries) {
    setObjectName(u"frmOptionSetting"_s);
    setWindowTitle(u"オプション設定"_s);
    buildControls();
    connectControls();
    load();
    FormSupport::PlaceOnScreen(*this);
}

void frmOptionSetting::load() {
    styles = settings.Style;
    rows.Fill(settings.Window);
    txtHelpDir->setText(withoutLastSeparator(settings.Window.Help));
    cmbRealFormat->setEditText(styles.RealFormat);
    toolPage->SetTools(tools);
    showLine();
    showFont();
}

void frmOptionSetting::apply() {
    styles.RealFormat = cmbRealFormat->currentText();
    settings.Style = styles;
    rows.Read(settings.Window);
    settings.Window.Help = withLastSeparator(txtHelpDir->text());
    tools = toolPage->Tools();
}

void frmOptionSetting::chooseHelpFolder() {
    frmSelDir form(this);
    form.SetPath(txtHelpDir->text());
    mdApplication::runModal(form);
    if (form.Result)
        txtHelpDir->setText(withoutLastSeparator(form.Path()));
}

LineStyle& frmOptionSetting::line() {
    return styles.LineStyles[std::size_t(cmbLine->currentIndex())];
}

void frmOptionSetting::showLine() {
    const QScopedValueRollback filling(Updating, true);
    cmbLineType->setCurrentIndex(line().Style);
    txtLineSize->setText(NumberFormat::Format(line().Width * tenth, u"0.0"));
    picLineColor->SetColor(line().Color);
    drawLineSample();
}

void frmOptionSetting::drawLineSample() {
    RasterDevice device(picLine->BlankSheet(), picLine->DotsPerInch());
    const DeviceSize size = picLine->PixelSize();
    const int width = std::max(1, Round(line().Width * tenth));
    const Pen old = mdTips::SelectGeometricPen(device, line().Style, width, line().Color);
    device.MoveTo({0, size.Height / 2});
    device.LineTo({size.Width, size.Height / 2});
    mdTips::RestoreObject(device, old);
    picLine->ShowSheet();
}

void frmOptionSetting::showFont() {
    const QScopedValueRollback filling(Updating, true);
    ColorRef unused = 0;
    const FontObject font = mdTips::ParseFontString(styles.FontStrings[std::size_t(cmbFont->currentIndex())], unused);
    cmbFontFace->setCurrentIndex(cmbFontFace->findText(font.Name, Qt::MatchFixedString));
    cmbFontFace->setEditText(font.Name);
    fontFields.Show(font);
    drawFontSample();
}

void frmOptionSetting::readFont() {
    if (Updating)
        return;
    QString& text = styles.FontStrings[std::size_t(cmbFont->currentIndex())];
    text = fontFields.Edited(text, cmbFontFace->currentText());
    drawFontSample();
}

bool frmOptionSetting::eventFilter(QObject* watched, QEvent* event) {
    if (watched == cmbFontFace && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            cmbFontFace->lineEdit()->deselect();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmOptionSetting::drawFontSample() {
    fontFields.DrawSample(styles.FontStrings[std::size_t(cmbFont->currentIndex())]);
}
