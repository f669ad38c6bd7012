// The fonts of frmGraphSetting: one of four at a time, with a name that completes itself while it is typed.
#include "app/NumberFormat.h"
#include "app/mdTipsDrawing.h"
#include "platform/raster/RasterDevice.h"
#include "platform/widgets/PictureBox.h"
#include "plot/windows/frmGraphSetting.h"

#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QScopedValueRollback>

namespace {

/// The styles in the order of their boxes.
constexpr bool FontObject::*fontStyles[] = {&FontObject::Bold, &FontObject::Italic, &FontObject::Underline,
                                            &FontObject::StrikeThrough};

/// The first of the list that begins with `text`, and null for none.
QListWidgetItem* firstLike(const QListWidget& list, const QString& text, Qt::MatchFlags how) {
    return text.isEmpty() ? nullptr : list.findItems(text, how).value(0);
}

} // namespace

void frmGraphSetting::showFont() {
    const QScopedValueRollback guard(Updating, true);
    ColorRef unused = 0;
    const FontObject font = mdTips::ParseFontString(fonts[std::size_t(cmbFont->currentIndex())], unused);
    txtFontFace->setText(font.Name);
    lvFontFace->setCurrentItem(firstLike(*lvFontFace, font.Name, Qt::MatchFixedString));
    cmbFontSize->setEditText(NumberFormat::Shortest(font.Size));
    for (std::size_t i = 0; i < chkFont.size(); ++i)
        chkFont[i]->setChecked(font.*fontStyles[i]);
    drawFontSample();
}

void frmGraphSetting::readFont() {
    if (Updating)
        return;
    QString& text = fonts[std::size_t(cmbFont->currentIndex())];
    ColorRef color = 0;
    FontObject font = mdTips::ParseFontString(text, color);
    font.Name = txtFontFace->text();
    font.Size = mdTips::Val(cmbFontSize->currentText());
    for (std::size_t i = 0; i < chkFont.size(); ++i)
        font.*fontStyles[i] = chkFont[i]->isChecked();
    text = mdTips::MakeFontString(font, color);
    drawFontSample();
}

void frmGraphSetting::drawFontSample() {
    RasterDevice device(picFont->BlankSheet(), picFont->DotsPerInch());
    const DeviceSize size = picFont->PixelSize();
    ColorRef color = 0;
    const FontObject font = mdTips::ParseFontString(fonts[std::size_t(cmbFont->currentIndex())], color);
    constexpr int centre = 5;
    const Font old = mdTips::SelectFontFor(device, device, font, 0);
    mdTips::DrawAnchoredText(device, size.Width / 2, size.Height / 2, u"AaBbあア亜"_s, centre);
    mdTips::RestoreObject(device, old);
    picFont->ShowSheet();
}

void frmGraphSetting::completeFace(const QString& typed) {
    QListWidgetItem* found = firstLike(*lvFontFace, typed, Qt::MatchStartsWith);
    if (!found || Updating)
        return;
    {
        const QScopedValueRollback guard(Updating, true);
        lvFontFace->setCurrentItem(found);
        lvFontFace->scrollToItem(found);
        txtFontFace->setText(found->text());
        // From the end back, so that going on with the arrow keys starts where the typing ended.
        txtFontFace->setSelection(int(found->text().size()), int(typed.size() - found->text().size()));
    }
    readFont();
}

bool frmGraphSetting::takeFaceKey(int key) {
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        return true;
    const int start = txtFontFace->selectionStart();
    if (key != Qt::Key_Backspace || start < 1 || txtFontFace->selectionEnd() != txtFontFace->text().size())
        return false;
    txtFontFace->setText(txtFontFace->text().left(start - 1));
    return true;
}

bool frmGraphSetting::eventFilter(QObject* watched, QEvent* event) {
    if (watched == txtFontFace && event->type() == QEvent::KeyPress &&
        takeFaceKey(static_cast<QKeyEvent*>(event)->key()))
        return true;
    return QDialog::eventFilter(watched, event);
}

void frmGraphSetting::chooseFace() {
    if (!Updating && lvFontFace->currentItem())
        txtFontFace->setText(lvFontFace->currentItem()->text());
}
