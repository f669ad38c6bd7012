#include "app/clsStringArray.h"

int clsStringArray::Add(const QString& text, bool atEnd, const QString& privateData) {
    const int existing = atEnd ? -1 : FindItem(text);
    if (existing >= 0) {
        m_items.removeAt(existing);
        m_privateData.removeAt(existing);
    }
    const qsizetype place = atEnd ? m_items.size() : 0;
    m_items.insert(place, text);
    m_privateData.insert(place, privateData);
    return Count();
}

void clsStringArray::Check() const {
    for (qsizetype i = 0; i < m_items.size(); ++i)
        Q_ASSERT(i < m_privateData.size());
}

void clsStringArray::Clear() {
    m_items.clear();
    m_privateData.clear();
}

int clsStringArray::FindItem(const QString& text, bool inPrivateData) const {
    const QStringList& list = inPrivateData ? m_privateData : m_items;
    for (qsizetype i = 0; i < list.size(); ++i)
        if (list[i].compare(text, Qt::CaseInsensitive) == 0)
            return int(i);
    return -1;
}

void clsStringArray::Item(int index, const QString& text) {
    if (index >= 0 && index < Count())
        m_items[index] = text;
}

void clsStringArray::PrivateData(int index, const QString& text) {
    if (index >= 0 && index < Count())
        m_privateData[index] = text;
}

void clsStringArray::Remove(int index) {
    const int place = index < 0 ? Count() - 1 : index;
    if (place < 0 || place >= Count())
        return;
    m_items.removeAt(place);
    m_privateData.removeAt(place);
}

void clsStringArray::Sort(bool descending) {
    // A selection sort: the order in which it leaves equal items, and with it their private data, is relied on.
    for (qsizetype i = 0; i + 1 < m_items.size(); ++i) {
        qsizetype best = i;
        for (qsizetype j = i + 1; j < m_items.size(); ++j) {
            const int order = m_items[j].compare(m_items[best], Qt::CaseInsensitive);
            if (descending ? order > 0 : order < 0)
                best = j;
        }
        m_items.swapItemsAt(i, best);
        m_privateData.swapItemsAt(i, best);
    }
}
