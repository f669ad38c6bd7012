#include "app/clsStringArray.h"

int clsStringArray::Add(const QString& text, bool atEnd, const QString& privateData) {
    const int existing = atEnd ? -1 : FindItem(text);
    if (existing >= 0) {
        items.removeAt(existing);
        privates.removeAt(existing);
    }
    const qsizetype place = atEnd ? items.size() : 0;
    items.insert(place, text);
    privates.insert(place, privateData);
    return Count();
}

void clsStringArray::Check() const {
    for (qsizetype i = 0; i < items.size(); ++i)
        Q_ASSERT(i < privates.size());
}

void clsStringArray::Clear() {
    items.clear();
    privates.clear();
}

int clsStringArray::FindItem(const QString& text, bool inPrivateData) const {
    const QStringList& list = inPrivateData ? privates : items;
    for (qsizetype i = 0; i < list.size(); ++i)
        if (list[i].compare(text, Qt::CaseInsensitive) == 0)
            return int(i);
    return -1;
}

void clsStringArray::Item(int index, const QString& text) {
    if (index >= 0 && index < Count())
        items[index] = text;
}

void clsStringArray::PrivateData(int index, const QString& text) {
    if (index >= 0 && index < Count())
        privates[index] = text;
}

void clsStringArray::Remove(int index) {
    const int place = index < 0 ? Count() - 1 : index;
    if (place < 0 || place >= Count())
        return;
    items.removeAt(place);
    privates.removeAt(place);
}

void clsStringArray::Sort(bool descending) {
    // A selection sort: the order in which it leaves equal items, and with it their private data, is relied on.
    for (qsizetype i = 0; i + 1 < items.size(); ++i) {
        qsizetype best = i;
        for (qsizetype j = i + 1; j < items.size(); ++j) {
            const int order = items[j].compare(items[best], Qt::CaseInsensitive);
            if (descending ? order > 0 : order < 0)
                best = j;
        }
        items.swapItemsAt(i, best);
        privates.swapItemsAt(i, best);
    }
}
