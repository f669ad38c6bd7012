#include "app/clsHashTable.h"
#include "app/clsStringArray.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {
QString keyOf(int number) {
    return u"Key"_qs + QString::number(number).rightJustified(6, u'0');
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
        EXPECT_EQ(table.findValue(u"key"_qs), -1);
    }
}

TEST(HashTable, SetReplacesAndAddDoubles) {
    clsHashTable table;
    table.Add(u"key"_qs, 1);
    table.Add(u"KEY"_qs, 2);
    EXPECT_EQ(table.GetValue(u"Key"_qs), QVariant(2)) << "the sort has turned the two round";
    table.SetValue(u"Key"_qs, 3);
    table.Item(u"new"_qs, u"text"_qs);
    EXPECT_EQ(table.Count(), 3);
    EXPECT_EQ(table.Item(u"kEY"_qs), QVariant(3));
    QString key;
    QVariant value;
    EXPECT_TRUE(table.GetItem(table.findValue(u"NEW"_qs), key, value));
    EXPECT_FALSE(table.GetItem(3, key, value) || table.getValueByIndex(-1).isValid());
    EXPECT_EQ(key + value.toString(), u"newtext"_qs);
    table.Clear();
    table.Add(u"b"_qs, 12);
    table.Add(u"a"_qs, u"x"_qs);
    table.Add(u"none"_qs, {});
    EXPECT_EQ(table.CreateReverseHash().GetValue(u"12"_qs), QVariant(u"b"_qs));
    EXPECT_EQ(table.dump().join(u'|'), u"b: int(12)|a: QString(x)|none: Empty"_qs);
}

TEST(StringArray, MostRecentFirst) {
    clsStringArray array;
    array.Add(u"a"_qs, false, u"1"_qs);
    EXPECT_EQ(array.Add(u"b"_qs, false, u"2"_qs), 2);
    EXPECT_EQ(array.Add(u"A"_qs, false), 2);
    EXPECT_EQ(itemsOf(array), u"A: b:2 "_qs);
    array.Add(u"a"_qs, true, u"B"_qs);
    EXPECT_EQ(itemsOf(array), u"A: b:2 a:B "_qs);
    EXPECT_EQ(array.FindItem(u"B"_qs), 1);
    EXPECT_EQ(array.FindItem(u"b"_qs, true), 2);
    EXPECT_EQ(array.FindItem(u"c"_qs), -1);
    array.Remove(-1);
    EXPECT_EQ(itemsOf(array), u"A: b:2 "_qs) << "the last one";
    array.Remove(2);
    array.Remove(0);
    array.Item(1, u"y"_qs);
    EXPECT_EQ(itemsOf(array), u"b:2 "_qs);
    EXPECT_EQ(array.Item(2) + array.PrivateData(-1), QString());
}

TEST(StringArray, SortTakesPrivateDataAlong) {
    clsStringArray array;
    for (const QString& text : {u"b1"_qs, u"C2"_qs, u"a3"_qs, u"B4"_qs})
        array.Add(text.left(1), true, text.mid(1));
    array.Sort();
    array.Check();
    EXPECT_EQ(itemsOf(array), u"a:3 b:1 B:4 C:2 "_qs);
    array.Sort(true);
    EXPECT_EQ(itemsOf(array), u"C:2 b:1 B:4 a:3 "_qs);
}
