// Paints the rows of a `ListPanel`: their ground, the picture without its mask colour, title and description.
#pragma once

#include "platform/base/Geometry.h"

#include <QStyledItemDelegate>

class ListPanel;

class ListPanelPainter : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// The panel owns its painter.
    explicit ListPanelPainter(ListPanel& panel);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const QPixmap& masked(const QIcon& picture) const;
    void drawDescription(QPainter& painter, const QRect& place, const QString& text) const;

    ListPanel& panel;
    /// What the work picture was made of.
    struct Sample {
        qint64 Picture = 0;
        int Size = 0;
        ColorRef MaskColor = 0;
        qreal Scale = 0;
        bool operator==(const Sample&) const = default;
    };
    mutable Sample sample;
    mutable QPixmap picSample; ///< the picture drawn last, masked; most lists have one for all rows
};
