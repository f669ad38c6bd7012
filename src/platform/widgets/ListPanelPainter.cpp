#include "platform/widgets/ListPanelPainter.h"

#include "platform/widgets/ListPanel.h"

#include <QTextLayout>

namespace {
constexpr int margin = 4;
/// More than five lines of any list hold; texts may be whole files.
constexpr qsizetype longestText = 4096;
} // namespace

ListPanelPainter::ListPanelPainter(ListPanel& owner) : QStyledItemDelegate(&owner), panel(owner) {}

QSize ListPanelPainter::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {0, panel.RowHeight()};
}

const QPixmap& ListPanelPainter::masked(const QIcon& picture) const {
    const qreal scale = panel.devicePixelRatioF();
    const Sample wanted{picture.cacheKey(), panel.PictureSize(), panel.MaskColor(), scale};
    if (sample == wanted)
        return picSample;
    QImage image =
        picture.pixmap(QSize(wanted.Size, wanted.Size), scale).toImage().convertToFormat(QImage::Format_ARGB32);
    const QRgb mask = qRgb(redOf(wanted.MaskColor), greenOf(wanted.MaskColor), blueOf(wanted.MaskColor));
    for (int y = 0; y < image.height(); ++y)
        for (QRgb& pixel : std::span(reinterpret_cast<QRgb*>(image.scanLine(y)), std::size_t(image.width())))
            if (pixel == mask)
                pixel = 0;
    picSample = QPixmap::fromImage(image);
    sample = wanted;
    return picSample;
}

void ListPanelPainter::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const bool selected = option.state & QStyle::State_Selected;
    const bool disabled = !panel.isEnabled();
    // The colours of a list at work, whichever window is in front.
    const auto color = [&](QPalette::ColorRole role) { return option.palette.color(QPalette::Active, role); };
    const QRect whole(0, option.rect.top(), panel.viewport()->width(), option.rect.height());
    painter->save();
    painter->fillRect(whole, color(selected ? QPalette::Highlight : disabled ? QPalette::Button : QPalette::Window));
    const int size = panel.PictureSize();
    const QRect row = whole.adjusted(margin, 1, -margin, -1);
    const ListPanelRow& shown = static_cast<const ListPanelRows*>(index.model())->At(index.row());
    if (!shown.ListPicture.isNull())
        painter->drawPixmap(QRect(row.topLeft(), QSize(size, size)), masked(shown.ListPicture));
    painter->setPen(color(selected ? QPalette::HighlightedText : QPalette::WindowText));
    painter->setFont(panel.font());
    const QRect title = row.adjusted(size + margin, 0, 0, 0);
    painter->drawText(
        QRect(title.topLeft(), QSize(title.width(), panel.TitleHeight())), Qt::AlignVCenter | Qt::TextSingleLine,
        panel.fontMetrics().elidedText(index.data().toString().left(longestText), Qt::ElideRight, title.width()));
    drawDescription(*painter, title.adjusted(0, panel.TitleHeight(), 0, 0),
                    index.data(Qt::AccessibleDescriptionRole).toString().left(longestText));
    if (selected && panel.hasFocus()) {
        painter->setPen(QPen(color(QPalette::HighlightedText), 1, Qt::DotLine));
        painter->drawRect(whole.adjusted(1, 1, -2, -2));
    }
    painter->restore();
}

/// As many lines as there is room for; the last one tells that there is more.
void ListPanelPainter::drawDescription(QPainter& painter, const QRect& place, const QString& text) const {
    const int lineHeight = panel.GetPixelFontSize();
    int y = place.top(), room = place.height() / lineHeight;
    for (const QString& paragraph : QString(text).remove(u'\r').split(u'\n')) {
        QTextLayout layout(paragraph, panel.font());
        QTextOption wrap;
        wrap.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        layout.setTextOption(wrap);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid() && room > 0; line = layout.createLine()) {
            line.setLineWidth(place.width());
            QString part = paragraph.mid(line.textStart(), line.textLength());
            if (--room == 0)
                part = panel.fontMetrics().elidedText(paragraph.mid(line.textStart()), Qt::ElideRight, place.width());
            painter.drawText(QPoint(place.left(), y + panel.fontMetrics().ascent()), part);
            y += lineHeight;
        }
        layout.endLayout();
    }
}
