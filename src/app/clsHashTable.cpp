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
        return u"Empty"_s;
    if (type == QMetaType::Nullptr)
        return u"Null"_s;
    if (value.metaType().flags() & QMetaType::PointerToQObject) {
        const auto* object = value.value<QObject*>();
        return u"Object("_s + (object ? QString::fromLatin1(object->metaObject()->className()) : u"Nothing"_s) + u')';
    }
    if (type == QMetaType::QString || value.canConvert<double>())
        return QString::fromLatin1(value.typeName()) + u'(' + value.toString() + u')';
    return type >= QMetaType::User ? u"DataObject"_s : QString::fromLatin1(value.typeName());
}
} // namespace

void clsHashTable::Add(const QString& key, const QVariant& value) {
    entries.append({key, value});
    sorted = false;
}

void clsHashTable::Clear() {
    entries.clear();
    sorted = false;
}

clsHashTable clsHashTable::CreateReverseHash() const {
    clsHashTable reverse;
    for (const Entry& entry : entries)
        reverse.Add(entry.Value.toString(), entry.Key);
    return reverse;
}

QStringList clsHashTable::dump() const {
    QStringList lines;
    for (const Entry& entry : entries)
        lines.append(entry.Key + u": "_s + kindOf(entry.Value));
    return lines;
}

void clsHashTable::sort(qsizetype first, qsizetype last) {
    // The smaller part goes into the recursion and the larger one round the loop, so the depth stays logarithmic.
    while (first < last) {
        const QString pivot = entries[middle(first, last)].Key;
        qsizetype low = first, high = last;
        while (low <= high) {
            while (low < last && compareKeys(pivot, entries[low].Key) > 0)
                ++low;
            while (high > first && compareKeys(pivot, entries[high].Key) < 0)
                --high;
            if (low <= high)
                std::swap(entries[low++], entries[high--]);
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
    if (entries.isEmpty())
        return -1;
    if (!sorted) {
        sort(0, entries.size() - 1);
        sorted = true;
    }
    qsizetype low = 0, high = entries.size() - 1, last = -1;
    for (;;) {
        const qsizetype mid = middle(low, high);
        // Rounding up may step past the end when the key belongs behind every entry.
        const int order = has(mid) ? compareKeys(entries[mid].Key, key) : 1;
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
    key = entries[index].Key;
    value = entries[index].Value;
    return true;
}

QVariant clsHashTable::GetValue(const QString& key) {
    const int index = findValue(key);
    return index < 0 ? QVariant(QString()) : entries[index].Value;
}

QVariant clsHashTable::getValueByIndex(int index) const {
    return has(index) ? entries[index].Value : QVariant();
}

void clsHashTable::SetValue(const QString& key, const QVariant& value) {
    const int index = findValue(key);
    if (index < 0)
        Add(key, value);
    else
        entries[index].Value = value;
}

void clsHashTable::setValueByIndex(int index, const QVariant& value) {
    if (has(index))
        entries[index].Value = value;
}
