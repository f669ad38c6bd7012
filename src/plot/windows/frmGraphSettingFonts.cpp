// The fonts of frmGraphSetting: one of four at a time, with a name that completes itself while it is typed.
#include "app/mdTips.h"
#include "plot/windows/frmGraphSetting.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QScopedValueRollback>

namespace {

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
    fontFields.Show(font);
    drawFontSample();
}

void frmGraphSetting::readFont() {
    if (Updating)
        return;
    QString& text = fonts[std::size_t(cmbFont->currentIndex())];
    text = fontFields.Edited(text, txtFontFace->text());
    drawFontSample();
}

void frmGraphSetting::drawFontSample() {
    fontFields.DrawSample(fonts[std::size_t(cmbFont->currentIndex())]);
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
