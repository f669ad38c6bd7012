#include "property/drawingElements.h"

#include "app/ApplicationSettings.h"

#include <climits>
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
        ApplicationSettings again;
        for (const QString& assignment : drawingElements::Assignments(one))
            EXPECT_TRUE(Set(assignment.section(u'=', 0, 0), assignment.section(u'=', 1), again));
        EXPECT_EQ(again, one) << path.toStdString();
    }
    EXPECT_EQ(results.size(), 1 + 29);
}

TEST(DrawingElements, NumbersAreHeldWithinTheirRangeAndItemSetsAddUp) {
    ApplicationSettings settings;
    for (const auto& [path, text] : {std::pair{u"Contour/COLORS/Index"_s, u" 9 "_s},
                                     {u"contour/values/div"_s, u"99999999999"_s},
                                     {u"contour/values/max"_s, u"1.25e2"_s},
                                     {u"difference/std"_s, u"-7"_s},
                                     {u"displacement/fid"_s, u"4"_s},
                                     {u"value/disp"_s, u" TRUE"_s},
                                     {u"vector/items/itemset"_s, u"変位,1,2"_s},
                                     {u"vector/items/itemset"_s, u",0,-3"_s}})
        EXPECT_TRUE(Set(path, text, settings)) << path.toStdString();
    ApplicationSettings expected;
    expected.Contour.ColorIndex = 5;
    expected.Contour.Divide = INT_MAX;
    expected.Contour.MaxValue = 125;
    expected.Difference.StandardStep = -1;
    expected.Displacement.Fiducial = 3;
    expected.ValueDisplay = true;
    expected.Vector.ItemSets = {{u"変位"_s, 0, 1}, {QString(), -1, -1}};
    expected.Vector.ItemSetCount = 2;
    expected.Vector.DefaultItemSet = 1;
    EXPECT_EQ(settings, expected);
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

} // namespace
