#include "platform/widgets/ListPanel.h"

#include "platform/widgets/Dialogs.h"
#include "platform/widgets/ListPanelPainter.h"

#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace {
constexpr int descriptionLines = 5, airOfRow = 9, airOfList = 3;
}

ListPanel::ListPanel(QWidget* parent) : QListView(parent) {
    viewport()->setObjectName(u"picList"_s);
    verticalScrollBar()->setObjectName(u"Scrlbar"_s);
    viewport()->setBackgroundRole(QPalette::Window);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    setUniformItemSizes(true);
    setModel(&rows);
    setItemDelegate(new ListPanelPainter(*this));
    updateFrame();
}

int ListPanel::RowHeight() const {
    return std::max(GetPixelFontSize(), PictureSize()) + descriptionLines * GetPixelFontSize() + airOfRow;
}

void ListPanel::AddItem(const QString& text, const QString& description, const QIcon& picture,
                        const QString& privateData, int index) {
    const bool atEnd = sorted || index < 0 || index > ListCount();
    rows.Insert(atEnd ? ListCount() : index, {text, description, privateData, picture});
    if (sorted && !std::exchange(sortWaits, true))
        QMetaObject::invokeMethod(this, &ListPanel::sortNow, Qt::QueuedConnection);
}

void ListPanel::sortNow() {
    if (std::exchange(sortWaits, false))
        rows.Sort();
}

void ListPanel::RemoveItem(int index) {
    if (ListIndex() == index)
        select(-1);
    rows.Remove(index);
}

void ListPanel::Clear() {
    select(-1);
    sortWaits = false;
    rows.Clear();
}

int ListPanel::ListIndex() {
    sortNow();
    return currentIndex().row();
}

void ListPanel::SetListIndex(int index) {
    sortNow();
    select(index);
    emit Change(ListIndex());
}

void ListPanel::select(int index) {
    const QScopedValueRollback own(selecting, true);
    if (rows.Has(index))
        selectionModel()->setCurrentIndex(rows.index(index), QItemSelectionModel::ClearAndSelect);
    else
        selectionModel()->clear();
}

QString ListPanel::ListText(int index) {
    sortNow();
    return rows.Has(index) ? rows.At(index).ListText : QString();
}

QString ListPanel::ListDescription(int index) {
    sortNow();
    return rows.Has(index) ? rows.At(index).ListDescription : QString();
}

QString ListPanel::ListPrivateData(int index) {
    sortNow();
    return rows.Has(index) ? rows.At(index).ListPrivateData : QString();
}

QIcon ListPanel::ListPicture(int index) {
    sortNow();
    return rows.Has(index) ? rows.At(index).ListPicture : QIcon();
}

void ListPanel::SetListText(int index, const QString& text) {
    sortNow();
    rows.Change(index, [&](ListPanelRow& row) { row.ListText = text; });
}

void ListPanel::SetListDescription(int index, const QString& description) {
    sortNow();
    rows.Change(index, [&](ListPanelRow& row) { row.ListDescription = description; });
}

void ListPanel::SetListPrivateData(int index, const QString& privateData) {
    sortNow();
    rows.Change(index, [&](ListPanelRow& row) { row.ListPrivateData = privateData; });
}

void ListPanel::SetListPicture(int index, const QIcon& picture) {
    sortNow();
    rows.Change(index, [&](ListPanelRow& row) { row.ListPicture = picture; });
}

int ListPanel::FindItem(int start, const QString& text) {
    sortNow();
    for (int index = std::max(start, 0); index < ListCount(); ++index)
        if (rows.At(index).ListText == text)
            return index;
    return -1;
}

int ListPanel::HitTest(int x, int y) {
    sortNow();
    if (!viewport()->rect().contains(x, y))
        return -1;
    const int index = (y + verticalOffset()) / RowHeight();
    return rows.Has(index) ? index : -1;
}

void ListPanel::Refresh() {
    doItemsLayout();
}

void ListPanel::SetSorted(bool value) {
    sortNow();
    sorted = value;
    if (sorted)
        rows.Sort();
}

void ListPanel::SetPictureExtent(int value) {
    pictureExtent = value;
    Refresh();
}

void ListPanel::SetMaskColor(ColorRef value) {
    maskColor = value;
    Refresh();
}

ColorRef ListPanel::BackColor() const {
    const QColor color = palette().color(QPalette::Active, QPalette::Window);
    return makeColor(color.red(), color.green(), color.blue());
}

void ListPanel::SetBackColor(ColorRef value) {
    QPalette changed = palette();
    changed.setColor(QPalette::Window, QColor(redOf(value), greenOf(value), blueOf(value)));
    setPalette(changed);
}

void ListPanel::SetBorderStyle(int value) {
    borderStyle = value;
    updateFrame();
}

void ListPanel::SetAppearance(int value) {
    appearance = value;
    updateFrame();
}

void ListPanel::updateFrame() {
    if (borderStyle == 0)
        setFrameStyle(NoFrame);
    else
        setFrameStyle(appearance == 0 ? int(Box) | int(Plain) : int(StyledPanel) | int(Sunken));
}

void ListPanel::AboutBox() {
    Dialogs::MessageBox(this, u"ListPanel 1.02a"_s, u"ListPanel"_s, MessageStyle::Information);
}

void ListPanel::keyPressEvent(QKeyEvent* event) {
    const int before = ListIndex();
    if (before < 0 || (event->key() != Qt::Key_Up && event->key() != Qt::Key_Down)) {
        event->ignore();
        return;
    }
    const int after = event->key() == Qt::Key_Up ? std::max(before - 1, 0) : std::min(before + 1, ListCount() - 1);
    if (after == before)
        return;
    select(after);
    emit Change(after);
}

void ListPanel::mousePressEvent(QMouseEvent* event) {
    emit MouseDown(event->button(), event->modifiers(), event->pos());
    const int before = ListIndex();
    const int after = HitTest(event->pos().x(), event->pos().y());
    if (after != before)
        select(after);
    emit Change(before);
}

void ListPanel::mouseDoubleClickEvent(QMouseEvent*) {
    emit DblClick();
}

void ListPanel::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
    // Without a selected row no key moves anything, so who comes by the keyboard begins at the first one.
    const bool byKeyboard = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ||
                            event->reason() == Qt::ShortcutFocusReason;
    if (byKeyboard && ListIndex() < 0 && ListCount() > 0)
        SetListIndex(0);
}

void ListPanel::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QListView::selectionChanged(selected, deselected);
    if (!selecting)
        SetListIndex(selected.isEmpty() ? -1 : selected.indexes().first().row());
}

void ListPanel::paintEvent(QPaintEvent* event) {
    sortNow();
    QListView::paintEvent(event);
}

void ListPanel::updateGeometries() {
    const int height = RowHeight() * ListCount() + airOfList;
    QScrollBar& bar = *verticalScrollBar();
    bar.setSingleStep(RowHeight());
    bar.setPageStep(viewport()->height());
    bar.setRange(0, std::max(0, height - viewport()->height()));
    QAbstractItemView::updateGeometries();
}
