#include "result/windows/PropertyRows.h"

#include "app/NumberFormat.h"
#include "app/mdApplication.h"
#include "app/mdTips.h"
#include "platform/base/NativePath.h"

namespace {
const std::array<QString, PropertyRows::EntryCount> captions{u"パス"_s,       u"ファイル名"_s,   u"プレフィックス"_s,
                                                             u"バージョン"_s, u"解析タイトル"_s, u"アイテム"_s,
                                                             u"節点"_s,       u"要素"_s,         u"ステップ"_s};

/// What the keys of an entry's rows begin with; empty for an entry that doesn't open.
const std::array<QString, PropertyRows::EntryCount> prefixes{QString(),  QString(),  QString(),  QString(), QString(),
                                                             u"item-"_s, u"node-"_s, u"elem-"_s, u"step-"_s};

QString itemText(const ItemInfo& item) {
    return item.Name + (item.ElementType >= 0 ? u" ( 要素対象 )"_s : u" ( 節点対象 )"_s);
}

QString nodeText(const NodeTable& nodes, int index) {
    constexpr QStringView mask = u"0.000##";
    return QString::number(index + 1) + u" : "_s + NumberFormat::Format(nodes.X[index], mask) + u", "_s +
           NumberFormat::Format(nodes.Y[index], mask);
}

QString elementText(const ElementRecord& element, int index) {
    QStringList corners;
    for (const std::int32_t node : element.NodeIndex)
        corners += QString::number(std::int64_t(node) + 1);
    return QString::number(index + 1) + u" : "_s + corners.join(u" - "_s);
}

QString stepText(const StepInfo& step, int index) {
    return QString::number(index + 1) + u" : "_s + step.Name + u" ( "_s + NumberFormat::Format(step.Time, u"0.0####") +
           u" )"_s;
}
} // namespace

PropertyRows::PropertyRows(const ResultModel& source, QObject* parent) : QAbstractTableModel(parent), model(source) {}

int PropertyRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rowOf(EntryCount);
}

int PropertyRows::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 2;
}

int PropertyRows::childCount(Entry entry) const {
    switch (entry) {
    case Items:
        return model.ItemCount;
    case Nodes:
        return model.Mesh.NodeCount;
    case Elements:
        return model.Mesh.ElementCount;
    case Steps:
        return model.StepCount;
    default:
        return 0;
    }
}

int PropertyRows::rowOf(Entry entry) const {
    int row = entry;
    for (int before = 0; before < entry; ++before)
        if (opened[before])
            row += childCount(Entry(before));
    return row;
}

PropertyRows::Place PropertyRows::placeOf(int row) const {
    int entry = EntryCount - 1;
    while (rowOf(Entry(entry)) > row)
        --entry;
    return {Entry(entry), row - rowOf(Entry(entry)) - 1};
}

QString PropertyRows::entryText(Entry entry) const {
    using namespace mdApplication;
    switch (entry) {
    case Path:
        return mdTips::RemoveTrailingChar(PathPart(NativePath::Shown(model.FileName), mdApplication::Folder));
    case FileName:
        return PathPart(NativePath::Shown(model.FileName), mdApplication::FileName);
    case Prefix:
        return model.Magic;
    case Version:
        return NumberFormat::Format(model.Version * 0.01, u"0.00");
    case Title:
        return model.Title;
    case Elements:
        return QString::number(childCount(entry)) + (model.LineElementsOnly ? u" [ 線要素のみ ]"_s : QString());
    default:
        return QString::number(childCount(entry));
    }
}

QString PropertyRows::childText(Place place) const {
    switch (place.Of) {
    case Items:
        return itemText(model.Items[place.Child]);
    case Nodes:
        return nodeText(model.Mesh.Nodes, place.Child);
    case Elements:
        return elementText(model.Mesh.Elements[place.Child], place.Child);
    default:
        return stepText(model.Steps[place.Child], place.Child);
    }
}

QVariant PropertyRows::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Place place = placeOf(index.row());
    const bool child = place.Child >= 0;
    if (role == KeyRole)
        return child ? QString(prefixes[place.Of] + QString::number(place.Child)) : captions[place.Of];
    if (role == Qt::DisplayRole && index.column() == 0)
        return child ? QString() : captions[place.Of];
    if (role == Qt::DisplayRole)
        return child ? childText(place) : entryText(place.Of);
    if (role == Qt::DecorationRole && index.column() == 0 && !child)
        return prefixes[place.Of].isEmpty() ? noIcon : opened[place.Of] ? openIcon : closeIcon;
    return {};
}

QVariant PropertyRows::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    if (role == Qt::DisplayRole)
        return section == 0 ? u"項目"_s : u"内容"_s;
    return {};
}

void PropertyRows::SetIcons(const QPixmap& close, const QPixmap& open) {
    closeIcon = close;
    openIcon = open;
    noIcon = QPixmap(close.size());
    noIcon.setDevicePixelRatio(close.devicePixelRatio());
    noIcon.fill(Qt::transparent);
    emit dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::DecorationRole});
}

void PropertyRows::Toggle(int row) {
    if (row < 0 || row >= rowCount())
        return;
    const auto [entry, child] = placeOf(row);
    if (child >= 0 || prefixes[entry].isEmpty())
        return;
    if (opened[entry]) {
        RemoveChildRows(prefixes[entry]);
        return;
    }
    const int count = childCount(entry);
    if (count > 0)
        beginInsertRows({}, row + 1, row + count);
    opened[entry] = true;
    if (count > 0)
        endInsertRows();
    emit dataChanged(index(row, 0), index(row, 0), {Qt::DecorationRole});
}

void PropertyRows::RemoveChildRows(const QString& prefix) {
    const auto found = std::find(prefixes.begin() + Items, prefixes.end(), prefix);
    if (found == prefixes.end() || !opened[found - prefixes.begin()])
        return;
    const auto entry = Entry(found - prefixes.begin());
    const int row = rowOf(entry);
    const int count = childCount(entry);
    if (count > 0)
        beginRemoveRows({}, row + 1, row + count);
    opened[entry] = false;
    if (count > 0)
        endRemoveRows();
    emit dataChanged(index(row, 0), index(row, 0), {Qt::DecorationRole});
}
