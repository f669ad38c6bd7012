// A list of texts with a private text beside each. Texts compare without regard to case.
#pragma once

#include <QString>
#include <QStringList>

class clsStringArray {
public:
    /// With `atEnd` adds at the end; without, the most recent stands first: an item of this text moves to the front,
    /// in its new spelling and with its new data, or a new one goes there. Returns the new count.
    int Add(const QString& text, bool atEnd, const QString& privateData = {});
    /// For diagnosis: in a debugging build stops the program if an item has lost its private data.
    void Check() const;
    void Clear();
    int Count() const { return int(items.size()); }
    /// First position of the text, among the private data if so asked; -1 if absent.
    int FindItem(const QString& text, bool inPrivateData = false) const;
    /// Empty for a position that there isn't; writing does nothing then.
    QString Item(int index) const { return items.value(index); }
    void Item(int index, const QString& text);
    QString PrivateData(int index) const { return privates.value(index); }
    void PrivateData(int index, const QString& text);
    /// A negative index means the last item; one beyond the end does nothing.
    void Remove(int index);
    /// By the items; the private data goes along. Equal items may change places.
    void Sort(bool descending = false);

private:
    QStringList items;
    QStringList privates;
};
