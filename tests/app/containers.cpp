#include "app/clsHashTable.h"
#include "app/clsStringArray.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

namespace {
QString itemsOf(const clsStringArray& array) {
    QString text;
    for (int i = 0; i < array.Count(); ++i)
        text += array.Item(i) + u':' + array.PrivateData(i) + u' ';
    return text;
}
} // namespace

TEST(HashTable, IsAMapWithoutRegardToCase) {
    std::mt19937 random(7);
    for (int size = 0; size < 70; ++size) {
        clsHashTable table;
        std::map<QString, QVariant> plain;
        for (int i = 0; i < size; ++i) {
            const QString key = u"Key"_s + QString::number(random() % 100).rightJustified(2, u'0');
            plain[key] = i;
            table.SetValue(i % 2 ? key.toUpper() : key, i);
        }
        EXPECT_EQ(table.Count(), int(plain.size()));
        for (int number = 0; number < 100; ++number) {
            const QString key = u"Key"_s + QString::number(number).rightJustified(2, u'0');
            EXPECT_EQ(table.GetValue(key.toLower()), plain.contains(key) ? plain[key] : QVariant(QString()));
        }
    }
}

TEST(HashTable, AddDoublesAndEqualOrSortedKeysCostNoStack) {
    constexpr int many = 100000;
    for (const int step : {0, 1, -1}) {
        clsHashTable table;
        for (int i = 0; i < many; ++i)
            table.Add(QString::number(many + step * i), i);
        EXPECT_TRUE(table.Count() == many && table.findValue(QString::number(many)) >= 0);
    }
    clsHashTable table;
    table.Add(u"key"_s, 1);
    table.Add(u"KEY"_s, 2);
    EXPECT_EQ(table.GetValue(u"Key"_s), QVariant(2)) << "the sort has turned the two round";
    table.Add(u"none"_s, {});
    EXPECT_EQ(table.CreateReverseHash().GetValue(u"1"_s), QVariant(u"key"_s));
    EXPECT_EQ(table.dump().join(u'|'), u"KEY: int(2)|key: int(1)|none: Empty"_s);
    QString key;
    QVariant value;
    EXPECT_FALSE(table.GetItem(3, key, value) || table.getValueByIndex(-1).isValid());
}

TEST(StringArray, MostRecentFirstOrSorted) {
    clsStringArray array;
    array.Add(u"a"_s, false, u"1"_s);
    EXPECT_EQ(array.Add(u"b"_s, false, u"2"_s), 2);
    EXPECT_EQ(array.Add(u"A"_s, false), 2);
    array.Add(u"a"_s, true, u"B"_s);
    EXPECT_EQ(itemsOf(array), u"A: b:2 a:B "_s);
    EXPECT_TRUE(array.FindItem(u"B"_s) == 1 && array.FindItem(u"b"_s, true) == 2 && array.FindItem(u"c"_s) == -1);
    array.Remove(-1);
    EXPECT_EQ(itemsOf(array), u"A: b:2 "_s) << "the last one";
    array.Remove(2);
    array.Remove(0);
    array.Item(1, u"y"_s);
    EXPECT_EQ(itemsOf(array), u"b:2 "_s);

    clsStringArray unsorted;
    for (const QString& text : {u"b1"_s, u"C2"_s, u"a3"_s, u"B4"_s})
        unsorted.Add(text.left(1), true, text.mid(1));
    unsorted.Sort();
    EXPECT_EQ(itemsOf(unsorted), u"a:3 b:1 B:4 C:2 "_s);
    unsorted.Sort(true);
    EXPECT_EQ(itemsOf(unsorted), u"C:2 b:1 B:4 a:3 "_s);
}
