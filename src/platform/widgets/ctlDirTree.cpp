#include "platform/widgets/ctlDirTree.h"

#include "platform/base/Drives.h"
#include "platform/base/NativePath.h"

#include <QHeaderView>
#include <QScopedValueRollback>
#include <QStyle>

namespace {

constexpr int keyRole = Qt::UserRole;
/// The key of the child that stands for those not read yet; no folder has it.
const QString placeholderKey = u"//"_s;

QString keyOf(const QTreeWidgetItem* node) {
    return node->data(0, keyRole).toString();
}

QIcon folderIconOf(const QStyle& style) {
    const QIcon closed = style.standardIcon(QStyle::SP_DirClosedIcon),
                open = style.standardIcon(QStyle::SP_DirOpenIcon);
    QIcon icon;
    for (const int size : {16, 32, 64}) {
        icon.addPixmap(closed.pixmap(size), QIcon::Normal, QIcon::Off);
        for (const auto& [mode, state] :
             {std::pair(QIcon::Normal, QIcon::On), {QIcon::Selected, QIcon::Off}, {QIcon::Selected, QIcon::On}})
            icon.addPixmap(open.pixmap(size), mode, state);
    }
    return icon;
}

QIcon iconOf(Drives::Kind kind, const QStyle& style) {
    switch (kind) {
    case Drives::Kind::Home:
        return style.standardIcon(QStyle::SP_DirHomeIcon);
    case Drives::Kind::Network:
        return style.standardIcon(QStyle::SP_DriveNetIcon);
    default:
        return style.standardIcon(QStyle::SP_DriveHDIcon);
    }
}

} // namespace

ctlDirTree::ctlDirTree(QWidget* parent) : QTreeWidget(parent), folderIcon(folderIconOf(*style())) {
    setHeaderHidden(true);
    // Long names are scrolled to instead of being cut.
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    header()->setStretchLastSection(false);
    setUniformRowHeights(true);
    connect(this, &QTreeWidget::itemExpanded, this, &ctlDirTree::read);
    connect(this, &QTreeWidget::itemSelectionChanged, this, [this] {
        if (!Updating)
            emit Change();
    });
    Refresh();
}

void ctlDirTree::Refresh() {
    {
        const QScopedValueRollback busy(Updating, true);
        clear();
        for (const Drives::Drive& drive : Drives::All()) {
            const QString name = drive.Kind == Drives::Kind::Root   ? tr("ファイルシステム")
                                 : drive.Kind == Drives::Kind::Home ? tr("ホーム")
                                                                    : drive.Name;
            QTreeWidgetItem* node =
                makeNode(drive.Path, name + u" ("_s + drive.Path + u')', iconOf(drive.Kind, *style()));
            addTopLevelItem(node);
            addPlaceholder(node);
        }
    }
    emit Change();
}

QTreeWidgetItem* ctlDirTree::makeNode(const QString& path, const QString& text, const QIcon& icon) const {
    auto* node = new QTreeWidgetItem({NativePath::Shown(text)});
    node->setData(0, keyRole, path);
    node->setIcon(0, icon);
    return node;
}

/// Shows the mark of a folder that can be opened without having read it.
void ctlDirTree::addPlaceholder(QTreeWidgetItem* node) const {
    node->addChild(makeNode(placeholderKey, {}, {}));
}

void ctlDirTree::read(QTreeWidgetItem* node) const {
    if (node->childCount() == 0 || keyOf(node->child(0)) != placeholderKey)
        return;
    QList<QTreeWidgetItem*> children;
    for (const QString& name : NativePath::Folders(keyOf(node))) {
        children += makeNode(keyOf(node) + name + u'/', name, folderIcon);
        if (NativePath::HasFolders(keyOf(children.last())))
            addPlaceholder(children.last());
    }
    delete node->takeChild(0);
    node->addChildren(children);
}

QString ctlDirTree::Path() const {
    const QList<QTreeWidgetItem*> selected = selectedItems();
    return selected.isEmpty() ? QString() : keyOf(selected.first());
}

std::optional<QString> ctlDirTree::SetPath(const QString& folder) {
    const QString absolute = NativePath::Absolute(folder);
    if (folder.isEmpty() || !NativePath::IsFolder(absolute))
        return tr("指定されたディレクトリは存在しません。");
    const QString path = absolute.endsWith(u'/') ? absolute : QString(absolute + u'/');
    if (topLevelItemCount() == 0)
        Refresh();
    {
        const QScopedValueRollback busy(Updating, true);
        QTreeWidgetItem* node = driveOf(path);
        for (qsizetype end = keyOf(node).size(); end < path.size(); end = keyOf(node).size()) {
            read(node);
            node->setExpanded(true);
            node = childOf(node, path.left(path.indexOf(u'/', end) + 1));
        }
        node->setExpanded(true);
        setCurrentItem(node);
        scrollToItem(node, PositionAtCenter);
    }
    emit Change();
    return {};
}

/// The drive that reaches furthest along the path.
QTreeWidgetItem* ctlDirTree::driveOf(const QString& path) const {
    QTreeWidgetItem* best = topLevelItem(0);
    for (int i = 1; i < topLevelItemCount(); ++i)
        if (const QString key = keyOf(topLevelItem(i)); path.startsWith(key) && key.size() > keyOf(best).size())
            best = topLevelItem(i);
    return best;
}

/// A folder that has come since its parent was read, or stands in one that can't be read, gets its node now.
QTreeWidgetItem* ctlDirTree::childOf(QTreeWidgetItem* node, const QString& path) const {
    int place = 0;
    for (int i = 0; i < node->childCount(); ++i) {
        const QString key = keyOf(node->child(i));
        if (key == path)
            return node->child(i);
        if (key.compare(path, Qt::CaseInsensitive) < 0)
            place = i + 1;
    }
    QTreeWidgetItem* added = makeNode(path, path.section(u'/', -2, -2), folderIcon);
    node->insertChild(place, added);
    if (NativePath::HasFolders(path))
        addPlaceholder(added);
    return added;
}
