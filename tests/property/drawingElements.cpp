#include "property/drawingElements.h"

#include "app/ApplicationSettings.h"

#include <gtest/gtest.h>

using drawingElements::Set;

namespace {

class DrawingElementsTest : public testing::Test {
protected:
    void takes(const QString& path, const QString& text) {
        EXPECT_TRUE(Set(path, text, settings)) << path.toStdString() << '=' << text.toStdString();
    }

    ApplicationSettings settings;
};

TEST_F(DrawingElementsTest, EachPathChangesASettingOfItsOwn) {
    QList<ApplicationSettings> results;
    for (const QString& path : drawingElements::Paths()) {
        ApplicationSettings one;
        const bool set = path.endsWith(u"/itemset")     ? Set(path, u"主,1,2"_qs, one)
                         : path.endsWith(u"/automatic") ? Set(path, u"False"_qs, one)
                                                        : Set(path, u"1"_qs, one) || Set(path, u"0x000001"_qs, one);
        EXPECT_TRUE(set) << path.toStdString();
        // Legends are on to begin with.
        if (path.endsWith(u"/legend")) {
            EXPECT_TRUE(Set(path, u"0"_qs, one));
        }
        EXPECT_FALSE(one == ApplicationSettings{}) << path.toStdString();
        EXPECT_FALSE(results.contains(one)) << path.toStdString();
        results.append(one);
    }
    EXPECT_EQ(results.size(), 24);
}

TEST_F(DrawingElementsTest, NumbersAreHeldWithinTheirRange) {
    takes(u"Contour/COLORS/Index"_qs, u" 9 "_qs);
    EXPECT_EQ(settings.Contour.ColorIndex, 5);
    takes(u"displacement/fid"_qs, u"-1"_qs);
    EXPECT_EQ(settings.Displacement.Fiducial, 0);
    takes(u"contour/values/div"_qs, u"99999999999"_qs);
    EXPECT_EQ(settings.Contour.Divide, std::numeric_limits<int>::max());
    takes(u"difference/std"_qs, u"-7"_qs);
    EXPECT_EQ(settings.Difference.StandardStep, -1);
    takes(u"contour/values/max"_qs, u"1.25e2"_qs);
    EXPECT_EQ(settings.Contour.MaxValue, 125);
    for (const QString& text : {u" TRUE"_qs, u"-1"_qs, u"25"_qs}) {
        settings.ValueDisplay = false;
        takes(u"value/disp"_qs, text);
        EXPECT_TRUE(settings.ValueDisplay) << text.toStdString();
    }
    takes(u"contour/colors/max"_qs, u"0x00ff0000"_qs);
    EXPECT_EQ(settings.Contour.Colors[2], 0xff0000u);
}

TEST_F(DrawingElementsTest, WhatIsNoValueIsRefused) {
    const std::pair<QString, QStringList> cases[] = {
        {u"vector/scale"_qs, {u""_qs, u"x"_qs, u"1.5"_qs, u"0x1"_qs}},
        {u"contour/values/min"_qs, {u""_qs, u"1,5"_qs, u"nan"_qs, u"-inf"_qs, u"1e39"_qs}},
        {u"value/disp"_qs, {u""_qs, u"on"_qs, u"True!"_qs}},
        {u"contour/colors/min"_qs, {u"0x"_qs, u"0xgg"_qs, u"red"_qs, u"-1"_qs, u"4294967295"_qs, u"0x1000000"_qs}},
        {u"vector/items/itemset"_qs, {u""_qs, u"a,1"_qs, u"a,1,2,3"_qs, u"a,x,1"_qs}},
        {u"vector/items"_qs, {u"1"_qs}}};
    const ApplicationSettings before = settings;
    for (const auto& [path, texts] : cases)
        for (const QString& text : texts) {
            EXPECT_FALSE(Set(path, text, settings)) << path.toStdString() << '=' << text.toStdString();
            EXPECT_TRUE(settings == before) << path.toStdString() << '=' << text.toStdString();
        }
}

TEST_F(DrawingElementsTest, ItemSetsAddUpAndTheLastIsInUse) {
    takes(u"vector/items/itemset"_qs, u"変位,1,2"_qs);
    takes(u"vector/items/itemset"_qs, u",0,-3"_qs);
    EXPECT_EQ(settings.Vector.ItemSets, (QList<VectorItemSet>{{u"変位"_qs, 0, 1}, {QString(), -1, -1}}));
    EXPECT_EQ(settings.Vector.ItemSetCount, 2);
    EXPECT_EQ(settings.Vector.DefaultItemSet, 1);
}

} // namespace
