#include "app/clsHashTable.h"
#include "app/clsStringArray.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {
QString keyOf(int number) {
    return u"Key"_s + QString::number(number).rightJustified(6, u'0');
}

QString itemsOf(const clsStringArray& array) {
    QString text;
    for (int i = 0; i < array.Count(); ++i)
        text += array.Item(i) + u':' + array.PrivateData(i) + u' ';
    return text;
}
} // namespace

TEST(HashTable, FindsEveryKeyOfTablesOfAnySize) {
    std::mt19937 random(7);
    for (int size = 0; size < 70; ++size) {
        std::vector<int> odd;
        for (int i = 0; i < size; ++i)
            odd.push_back(2 * i + 1);
        std::shuffle(odd.begin(), odd.end(), random);
        clsHashTable table;
        for (const int number : odd)
            table.Add(keyOf(number), number);
        for (int number = 0; number <= 2 * size; ++number)
            EXPECT_EQ(table.GetValue(keyOf(number).toUpper()), number % 2 ? QVariant(number) : QVariant(QString()))
                << size << ' ' << number;
    }
}

TEST(HashTable, EqualAndSortedKeysCostNoStack) {
    constexpr int many = 100000;
    for (const int step : {0, 1, -1}) {
        clsHashTable table;
        for (int i = 0; i < many; ++i)
            table.Add(keyOf(many + step * i), i);
        EXPECT_GE(table.findValue(keyOf(many)), 0);
        EXPECT_EQ(table.findValue(u"key"_s), -1);
    }
}

TEST(HashTable, SetReplacesAndAddDoubles) {
    clsHashTable table;
    table.Add(u"key"_s, 1);
    table.Add(u"KEY"_s, 2);
    EXPECT_EQ(table.GetValue(u"Key"_s), QVariant(2)) << "the sort has turned the two round";
    table.SetValue(u"Key"_s, 3);
    table.Item(u"new"_s, u"text"_s);
    EXPECT_EQ(table.Count(), 3);
    EXPECT_EQ(table.Item(u"kEY"_s), QVariant(3));
    QString key;
    QVariant value;
    EXPECT_TRUE(table.GetItem(table.findValue(u"NEW"_s), key, value));
    EXPECT_FALSE(table.GetItem(3, key, value) || table.getValueByIndex(-1).isValid());
    EXPECT_EQ(key + value.toString(), u"newtext"_s);
    table.Clear();
    table.Add(u"b"_s, 12);
    table.Add(u"a"_s, u"x"_s);
    table.Add(u"none"_s, {});
    EXPECT_EQ(table.CreateReverseHash().GetValue(u"12"_s), QVariant(u"b"_s));
    EXPECT_EQ(table.dump().join(u'|'), u"b: int(12)|a: QString(x)|none: Empty"_s);
}

TEST(StringArray, MostRecentFirst) {
    clsStringArray array;
    array.Add(u"a"_s, false, u"1"_s);
    EXPECT_EQ(array.Add(u"b"_s, false, u"2"_s), 2);
    EXPECT_EQ(array.Add(u"A"_s, false), 2);
    EXPECT_EQ(itemsOf(array), u"A: b:2 "_s);
    array.Add(u"a"_s, true, u"B"_s);
    EXPECT_EQ(itemsOf(array), u"A: b:2 a:B "_s);
    EXPECT_EQ(array.FindItem(u"B"_s), 1);
    EXPECT_EQ(array.FindItem(u"b"_s, true), 2);
    EXPECT_EQ(array.FindItem(u"c"_s), -1);
    array.Remove(-1);
    EXPECT_EQ(itemsOf(array), u"A: b:2 "_s) << "the last one";
    array.Remove(2);
    array.Remove(0);
    array.Item(1, u"y"_s);
    EXPECT_EQ(itemsOf(array), u"b:2 "_s);
    EXPECT_EQ(array.Item(2) + array.PrivateData(-1), QString());
}

TEST(StringArray, SortTakesPrivateDataAlong) {
    clsStringArray array;
    for (const QString& text : {u"b1"_s, u"C2"_s, u"a3"_s, u"B4"_s})
        array.Add(text.left(1), true, text.mid(1));
    array.Sort();
    array.Check();
    EXPECT_EQ(itemsOf(array), u"a:3 b:1 B:4 C:2 "_s);
    array.Sort(true);
    EXPECT_EQ(itemsOf(array), u"C:2 b:1 B:4 a:3 "_s);
}
