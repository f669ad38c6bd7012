// The item sets of frmDrawSettings: list, name and the two combos over the form's copy.
#include "view/windows/frmDrawSettings.h"

#include "app/mdTips.h"
#include "platform/base/Rounding.h"
#include "result/ResultModel.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QScopedValueRollback>

int frmDrawSettings::selectedLine() const {
    return lstVectorItem->selectedItems().isEmpty() ? -1 : lstVectorItem->currentRow();
}

void frmDrawSettings::selectLine(int line) {
    {
        const QScopedValueRollback filling(Updating, true);
        lstVectorItem->setCurrentRow(line);
    }
    showItemSet();
}

void frmDrawSettings::enableItemSet(bool enabled) {
    txtVectorItem->setEnabled(enabled);
    for (QComboBox* combo : cmbVectorItem)
        combo->setEnabled(enabled);
}

void frmDrawSettings::showItemSet() {
    if (Updating)
        return;
    const QScopedValueRollback filling(Updating, true);
    const int line = selectedLine();
    const VectorItemSet set = line < 0 ? VectorItemSet() : itemSets[line];
    txtVectorItem->setText(set.Name);
    cmbVectorItem[0]->setCurrentIndex(set.Horz);
    listVertItems(cmbVectorItem[0]->currentIndex());
    if (set.Vert >= 0 && set.Vert < model.Items.size())
        cmbVectorItem[1]->setCurrentIndex(VertItems.FindItem(model.Items[set.Vert].Name));
}

void frmDrawSettings::listVertItems(int horz) {
    const QScopedValueRollback filling(Updating, true);
    VertItems.Clear();
    cmbVectorItem[1]->clear();
    if (horz < 0)
        return;
    // X and Y must lie on the same objects.
    const int elementType = model.Items[horz].ElementType;
    for (int i = 0; i < int(model.Items.size()); ++i) {
        if (model.Items[i].ElementType != elementType)
            continue;
        VertItems.Add(model.Items[i].Name, true, QString::number(i));
        cmbVectorItem[1]->addItem(model.Items[i].Name);
    }
    cmbVectorItem[1]->setCurrentIndex(-1);
}

void frmDrawSettings::onHorzSelected(int horz) {
    if (Updating)
        return;
    listVertItems(horz);
    if (const int line = selectedLine(); line >= 0)
        itemSets[line].Horz = horz;
}

void frmDrawSettings::onVertSelected(int line) {
    const int set = selectedLine();
    if (Updating || set < 0)
        return;
    const int found = VertItems.FindItem(cmbVectorItem[1]->itemText(line));
    if (found >= 0)
        itemSets[set].Vert = Round(mdTips::Val(VertItems.PrivateData(found)));
}

void frmDrawSettings::onNameChanged(const QString& name) {
    const int line = selectedLine();
    if (Updating || line < 0)
        return;
    itemSets[line].Name = name;
    lstVectorItem->item(line)->setText(name);
}

void frmDrawSettings::addItemSet() {
    if (itemSets.isEmpty())
        enableItemSet(true);
    itemSets.append({u"新規アイテムセット"_s, -1, -1});
    lstVectorItem->addItem(itemSets.last().Name);
    selectLine(int(itemSets.size()) - 1);
}

void frmDrawSettings::removeItemSet() {
    if (itemSets.size() == 1)
        enableItemSet(false);
    const int line = selectedLine();
    if (line < 0)
        return;
    itemSets.removeAt(line);
    {
        const QScopedValueRollback filling(Updating, true);
        delete lstVectorItem->takeItem(line);
    }
    selectLine(mdTips::MinOf(line, int(itemSets.size()) - 1));
}
