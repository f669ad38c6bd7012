// The list of labels in frmPageLayout.
#include "output/windows/frmPageLayout.h"

#include "app/windows/ShowMessage.h"
#include "output/pageLabels.h"
#include "output/windows/frmLabelEdit.h"

#include <QTreeWidget>

void frmPageLayout::listLabels(int selected) {
    const bool before = std::exchange(Updating, true);
    lvLabel->clear();
    QList<QTreeWidgetItem*> lines;
    for (const PageLabel& label : labels) {
        // One line, and no more of it than could be seen.
        constexpr int longest = 1000;
        QString text = label.Text.left(longest);
        auto* line = new QTreeWidgetItem({text.replace(u'\n', u' '), pageLabels::PositionName(label.Position)});
        line->setCheckState(0, label.Print ? Qt::Checked : Qt::Unchecked);
        lines.append(line);
    }
    lvLabel->addTopLevelItems(lines);
    lvLabel->setCurrentItem(lvLabel->topLevelItem(selected));
    Updating = before;
}

int frmPageLayout::selectedLabel() const {
    const QList<QTreeWidgetItem*> selected = lvLabel->selectedItems();
    return selected.isEmpty() ? -1 : lvLabel->indexOfTopLevelItem(selected.first());
}

bool frmPageLayout::letEdit(PageLabel& label) {
    frmLabelEdit form(this);
    form.FontString(label.Font);
    form.LabelString(label.Text);
    form.Position(label.Position);
    form.exec();
    if (!form.Result)
        return false;
    label.Font = form.FontString();
    label.Text = form.LabelString();
    label.Position = form.Position();
    return true;
}

void frmPageLayout::addLabel() {
    PageLabel label{{}, true, 0, pageLabels::DefaultFont};
    if (!letEdit(label))
        return;
    labels.append(label);
    listLabels(int(labels.size()) - 1);
}

void frmPageLayout::removeLabel() {
    const int index = selectedLabel();
    if (index < 0) {
        mdApplication::ShowMessage(u"項目を選択してください。"_s, MessageStyle::Information);
        return;
    }
    const QString question = labels.at(index).Text + u" を削除します。"_s;
    if (mdApplication::ShowMessage(question, MessageStyle::AskNoDefault) != MessageAnswer::Yes)
        return;
    labels.removeAt(index);
    listLabels(std::max(index - 1, 0));
}

void frmPageLayout::editLabel() {
    const int index = selectedLabel();
    if (index < 0)
        mdApplication::ShowMessage(u"項目を選択してください。"_s, MessageStyle::Information);
    else if (letEdit(labels[index]))
        listLabels(index);
}
