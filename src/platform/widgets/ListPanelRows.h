// The rows of a `ListPanel` as a model, which screen readers read too. Sorting waits until someone looks, so that many
// rows are added at the cost of one sort. No geometry and no pictures on the screen.
#pragma once

#include <QAbstractListModel>
#include <QIcon>
#include <vector>

/// One row as its owner gave it.
struct ListPanelRow {
    QString ListText;
    QString ListDescription;
    QString ListPrivateData;
    QIcon ListPicture;
};

class ListPanelRows : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : int(rows.size()); }
    /// Title and description, for the eye.
    QVariant data(const QModelIndex& index, int role) const override;

    int Count() const { return int(rows.size()); }
    bool Has(int index) const { return index >= 0 && index < Count(); }
    const ListPanelRow& At(int index) const { return rows[std::size_t(index)]; }
    /// `index` from 0 to `Count`; the row there and the later ones move up.
    void Insert(int index, ListPanelRow row);
    void Remove(int index);
    void Clear();
    /// Changes the row by `change`; nothing when there is none.
    void Change(int index, const std::function<void(ListPanelRow&)>& change);

    /// By their texts without regard to case; equal ones keep their order, and whoever holds an index follows its row.
    void Sort();

private:
    std::vector<ListPanelRow> rows;
};
