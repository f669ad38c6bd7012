#include "property/drawingElements.h"

#include "app/ApplicationSettings.h"

#include <gtest/gtest.h>

using drawingElements::Set;

namespace {

TEST(DrawingElements, EachPathChangesASettingOfItsOwn) {
    QList<ApplicationSettings> results{{}};
    for (const QString& path : drawingElements::Paths()) {
        ApplicationSettings one;
        // Legends and the automatic range are on to begin with.
        const bool isOn = path.endsWith(u"/legend") || path.endsWith(u"/automatic");
        const QString text = path.endsWith(u"/itemset") ? u"主,1,2"_s : isOn ? u"False"_s : u"1"_s;
        EXPECT_TRUE(Set(path, text, one)) << path.toStdString();
        EXPECT_FALSE(results.contains(one)) << path.toStdString();
        results.append(one);
    }
    EXPECT_EQ(results.size(), 1 + 24);
}

TEST(DrawingElements, NumbersAreHeldWithinTheirRange) {
    const std::array<QString, 3> cases[] = {
        {u"Contour/COLORS/Index"_s, u" 9 "_s, u"5"_s},    {u"contour/values/div"_s, u"99999999999"_s, u"2147483647"_s},
        {u"contour/values/max"_s, u"1.25e2"_s, u"125"_s}, {u"difference/std"_s, u"-7"_s, u"0"_s},
        {u"displacement/fid"_s, u"4"_s, u"3"_s},          {u"value/disp"_s, u" TRUE"_s, u"-1"_s}};
    for (const auto& [path, text, same] : cases) {
        ApplicationSettings settings, expected;
        EXPECT_TRUE(Set(path, text, settings) && Set(path, same, expected));
        EXPECT_EQ(settings, expected) << path.toStdString();
    }
}

TEST(DrawingElements, WhatIsNoValueIsRefused) {
    const std::pair<QString, QStringList> cases[] = {
        {u"vector/scale"_s, {u""_s, u"x"_s, u"1.5"_s, u"0x1"_s}},
        {u"contour/values/min"_s, {u""_s, u"1,5"_s, u"nan"_s, u"-inf"_s, u"1e39"_s}},
        {u"value/disp"_s, {u""_s, u"on"_s, u"True!"_s}},
        {u"contour/colors/min"_s, {u"0x"_s, u"0xgg"_s, u"red"_s, u"-1"_s, u"4294967295"_s, u"0x1000000"_s}},
        {u"vector/items/itemset"_s, {u""_s, u"a,1"_s, u"a,1,2,3"_s, u"a,x,1"_s}},
        {u"vector/items"_s, {u"1"_s}}};
    ApplicationSettings settings;
    for (const auto& [path, texts] : cases)
        for (const QString& text : texts) {
            EXPECT_FALSE(Set(path, text, settings)) << path.toStdString() << '=' << text.toStdString();
            EXPECT_EQ(settings, ApplicationSettings()) << path.toStdString() << '=' << text.toStdString();
        }
}

TEST(DrawingElements, ItemSetsAddUpAndTheLastIsInUse) {
    ApplicationSettings settings;
    EXPECT_TRUE(Set(u"vector/items/itemset"_s, u"変位,1,2"_s, settings));
    EXPECT_TRUE(Set(u"vector/items/itemset"_s, u",0,-3"_s, settings));
    EXPECT_EQ(settings.Vector.ItemSets, (QList<VectorItemSet>{{u"変位"_s, 0, 1}, {QString(), -1, -1}}));
    EXPECT_EQ(settings.Vector.ItemSetCount, 2);
    EXPECT_EQ(settings.Vector.DefaultItemSet, 1);
}

} // namespace
