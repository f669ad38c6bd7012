#include "platform/widgets/ListPanelRows.h"

#include "platform/base/NativePath.h"

#include <numeric>

QVariant ListPanelRows::data(const QModelIndex& index, int role) const {
    if (!Has(index.row()))
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return NativePath::Shown(At(index.row()).ListText);
    case Qt::AccessibleDescriptionRole:
        return NativePath::Shown(At(index.row()).ListDescription);
    default:
        return {};
    }
}

void ListPanelRows::Insert(int index, ListPanelRow row) {
    beginInsertRows({}, index, index);
    rows.insert(rows.begin() + index, std::move(row));
    endInsertRows();
}

void ListPanelRows::Remove(int index) {
    if (!Has(index))
        return;
    beginRemoveRows({}, index, index);
    rows.erase(rows.begin() + index);
    endRemoveRows();
}

void ListPanelRows::Clear() {
    beginResetModel();
    rows.clear();
    endResetModel();
}

void ListPanelRows::Change(int index, const std::function<void(ListPanelRow&)>& change) {
    if (!Has(index))
        return;
    change(rows[std::size_t(index)]);
    emit dataChanged(this->index(index), this->index(index));
}

void ListPanelRows::Sort() {
    std::vector<int> order(rows.size());
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, [this](int left, int right) {
        return At(left).ListText.compare(At(right).ListText, Qt::CaseInsensitive) < 0;
    });
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    std::vector<ListPanelRow> sorted;
    sorted.reserve(rows.size());
    std::vector<int> placeOf(rows.size());
    for (const int from : order) {
        placeOf[std::size_t(from)] = int(sorted.size());
        sorted.push_back(std::move(rows[std::size_t(from)]));
    }
    rows = std::move(sorted);
    for (const QModelIndex& old : persistentIndexList())
        changePersistentIndex(old, index(placeOf[std::size_t(old.row())]));
    emit layoutChanged({}, VerticalSortHint);
}
