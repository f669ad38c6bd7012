// What a result file holds, as rows of two columns: nine lines, four of which open to show one row per item, node,
// element or step. A model for a list; rows are made when they are asked for, so opening a million costs nothing.
#pragma once

#include "result/ResultModel.h"

#include <QAbstractTableModel>
#include <QPixmap>
#include <array>

class PropertyRows : public QAbstractTableModel {
    Q_OBJECT

public:
    /// The first nine rows when all are closed; those from `Items` on can be opened.
    enum Entry : int { Path, FileName, Prefix, Version, Title, Items, Nodes, Elements, Steps, EntryCount };
    enum : int { KeyRole = Qt::UserRole };

    explicit PropertyRows(const ResultModel& model, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    /// The signs of rows that are shut and open.
    void SetIcons(const QPixmap& close, const QPixmap& open);
    /// Opens a shut row and shuts an open one; nothing for any other row.
    void Toggle(int row);
    /// Shuts the entry whose rows have keys of this prefix ("node-" and such); nothing for any other prefix.
    void RemoveChildRows(const QString& prefix);

private:
    struct Place {
        Entry Of;
        int Child; ///< -1: the entry's own row
    };

    Place placeOf(int row) const;
    int rowOf(Entry entry) const;
    int childCount(Entry entry) const;
    QString entryText(Entry entry) const;
    QString childText(Place place) const;

    ResultModel model; ///< a copy shares its columns
    std::array<bool, EntryCount> opened{};
    QPixmap closeIcon, openIcon;
    QPixmap noIcon; ///< keeps the captions of all rows in line
};
