// A table of keys and values, in spite of its name without hashing: an array that is sorted when a key is looked for
// after an addition, and then searched by halving. Keys compare without regard to case and may stand more than once.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

/// A position names an entry only until the next look-up by key, which may sort the table.
class clsHashTable {
public:
    /// Adds an entry at the end, also when there is one of that key.
    void Add(const QString& key, const QVariant& value);
    void Clear();
    int Count() const { return int(entries.size()); }
    /// A table with each value, as text, for key and its key for value.
    clsHashTable CreateReverseHash() const;
    /// For diagnosis: one line for each entry with its key and the kind of its value.
    QStringList dump() const;
    /// Position of one of the entries of that key, -1 if there is none.
    int findValue(const QString& key);
    /// False, and nothing is stored, for a position that there isn't.
    bool GetItem(int index, QString& key, QVariant& value) const;
    /// The empty text for an unknown key.
    QVariant GetValue(const QString& key);
    /// No value for a position that there isn't.
    QVariant getValueByIndex(int index) const;
    QVariant Item(const QString& key) { return GetValue(key); }
    void Item(const QString& key, const QVariant& value) { SetValue(key, value); }
    /// Replaces the value of the entry that `findValue` finds, or adds one.
    void SetValue(const QString& key, const QVariant& value);
    /// Does nothing for a position that there isn't.
    void setValueByIndex(int index, const QVariant& value);

private:
    struct Entry {
        QString Key;
        QVariant Value;
    };

    void sort(qsizetype first, qsizetype last);
    bool has(qsizetype index) const { return index >= 0 && index < entries.size(); }

    QList<Entry> entries;
    bool sorted = false;
};
