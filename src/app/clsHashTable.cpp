#include "app/clsHashTable.h"

#include <QObject>
#include <utility>

namespace {
int compareKeys(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive);
}

/// Half of the sum, a half to the even neighbour. Which of several equal keys is found hangs on this.
qsizetype middle(qsizetype low, qsizetype high) {
    const qsizetype sum = low + high;
    const qsizetype below = sum >> 1;
    return below + (sum & below & 1);
}

QString kindOf(const QVariant& value) {
    const int type = value.typeId();
    if (!value.isValid())
        return u"Empty"_qs;
    if (type == QMetaType::Nullptr)
        return u"Null"_qs;
    if (value.metaType().flags() & QMetaType::PointerToQObject) {
        const auto* object = value.value<QObject*>();
        return u"Object("_qs + (object ? QString::fromLatin1(object->metaObject()->className()) : u"Nothing"_qs) + u')';
    }
    if (type == QMetaType::QString || value.canConvert<double>())
        return QString::fromLatin1(value.typeName()) + u'(' + value.toString() + u')';
    return type >= QMetaType::User ? u"DataObject"_qs : QString::fromLatin1(value.typeName());
}
} // namespace

void clsHashTable::Add(const QString& key, const QVariant& value) {
    m_entries.append({key, value});
    m_sorted = false;
}

void clsHashTable::Clear() {
    m_entries.clear();
    m_sorted = false;
}

clsHashTable clsHashTable::CreateReverseHash() const {
    clsHashTable reverse;
    for (const Entry& entry : m_entries)
        reverse.Add(entry.Value.toString(), entry.Key);
    return reverse;
}

QStringList clsHashTable::dump() const {
    QStringList lines;
    for (const Entry& entry : m_entries)
        lines.append(entry.Key + u": "_qs + kindOf(entry.Value));
    return lines;
}

void clsHashTable::sort(qsizetype first, qsizetype last) {
    // The smaller part goes into the recursion and the larger one round the loop, so the depth stays logarithmic.
    while (first < last) {
        const QString pivot = m_entries[middle(first, last)].Key;
        qsizetype low = first, high = last;
        while (low <= high) {
            while (low < last && compareKeys(pivot, m_entries[low].Key) > 0)
                ++low;
            while (high > first && compareKeys(pivot, m_entries[high].Key) < 0)
                --high;
            if (low <= high)
                std::swap(m_entries[low++], m_entries[high--]);
        }
        if (high - first < last - low) {
            sort(first, high);
            first = low;
        } else {
            sort(low, last);
            last = high;
        }
    }
}

int clsHashTable::findValue(const QString& key) {
    if (m_entries.isEmpty())
        return -1;
    if (!m_sorted) {
        sort(0, m_entries.size() - 1);
        m_sorted = true;
    }
    qsizetype low = 0, high = m_entries.size() - 1, last = -1;
    for (;;) {
        const qsizetype mid = middle(low, high);
        // Rounding up may step past the end when the key belongs behind every entry.
        const int order = has(mid) ? compareKeys(m_entries[mid].Key, key) : 1;
        if (order == 0)
            return int(mid);
        if (mid == last || low == high || high < 0 || low < 0)
            return -1;
        if (order < 0)
            low = mid + 1;
        else
            high = mid - 1;
        last = mid;
    }
}

bool clsHashTable::GetItem(int index, QString& key, QVariant& value) const {
    if (!has(index))
        return false;
    key = m_entries[index].Key;
    value = m_entries[index].Value;
    return true;
}

QVariant clsHashTable::GetValue(const QString& key) {
    const int index = findValue(key);
    return index < 0 ? QVariant(QString()) : m_entries[index].Value;
}

QVariant clsHashTable::getValueByIndex(int index) const {
    return has(index) ? m_entries[index].Value : QVariant();
}

void clsHashTable::SetValue(const QString& key, const QVariant& value) {
    const int index = findValue(key);
    if (index < 0)
        Add(key, value);
    else
        m_entries[index].Value = value;
}

void clsHashTable::setValueByIndex(int index, const QVariant& value) {
    if (has(index))
        m_entries[index].Value = value;
}
