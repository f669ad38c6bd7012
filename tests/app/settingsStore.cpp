#include "app/settingsStore.h"

#include "../ConfigurationFolder.h"
#include "app/clsRegEdit.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace Registry;

namespace {
const QString settingsKey = settingsStore::RootKey + u"\\Settings"_qs;

ApplicationSettings loaded() {
    ApplicationSettings settings;
    settingsStore::LoadSettings(settings, u"/opt/velorin"_qs, u"Laser"_qs);
    return settings;
}

void store(const QString& section, const QString& name, std::uint32_t type, const QByteArray& data) {
    const Key key = CreateKey(HKEY_CURRENT_USER, settingsKey + section);
    ASSERT_TRUE(SetValue(key, {name, type, data}));
    CloseKey(key);
}
void storeText(const QString& section, const QString& name, const QString& text) {
    store(section, name, REG_SZ, TextBytes(text));
}
void storeNumber(const QString& section, const QString& name, int number) {
    store(section, name, REG_DWORD, QByteArray(reinterpret_cast<const char*>(&number), 4));
}

QString namesOf(const QString& section) {
    const Key key = OpenKey(HKEY_CURRENT_USER, settingsKey + section);
    const QString list = ValueNames(key).join(u'|');
    CloseKey(key);
    return list;
}

std::optional<Value> stored(const QString& section, const QString& name) {
    const Key key = OpenKey(HKEY_CURRENT_USER, settingsKey + section);
    const auto value = GetValue(key, name);
    CloseKey(key);
    return value;
}

/// Every field that the registry keeps, in the order of the records, each with a value of its own.
ApplicationSettings changed() {
    ApplicationSettings s;
    s.Window = {false, false, 1, false, false, 2, {-1, 2, 3, 4}, true, false, false, u"/help/日本/"_qs};
    s.Page = {u"Büro"_qs, 1, 8, {5, 6, 7, 8}, false, 9, 2, {{u"%p"_qs, true, 17, u"f1"_qs}, {u"二"_qs, false, 3, {}}}};
    s.Style.LineStyles = {LineStyle{2, 3, 4}, {5, 1, 6}, {7, 2, 8}, {9, 4, 0xffffff}};
    s.Style.FontStrings = {u"a"_qs, u"b"_qs, u"c"_qs, u"d"_qs};
    s.Style.RealFormat = u"0.0E+00"_qs;
    s.SlideShow = {1500, false, true, false, 10, false, false, true, false, true};
    s.Graph.GraphLabels = {u"l0"_qs, u"l1"_qs, u"l2"_qs, u"l3"_qs, u"l4"_qs};
    s.Graph.GraphFonts = {u"g0"_qs, u"g1"_qs, u"g2"_qs, u"g3"_qs};
    s.Graph.PlotLegend = s.Graph.PlotGrid = s.Graph.PlotScale = false;
    s.Graph.LegendPosition = 0;
    s.Graph.DotSize = 11;
    s.Graph.LineSize = 12;
    s.Graph.LegendStyles = {{1, 2, 3, 4}, {5, 6, 7, 0xff00ff}};
    return s;
}
} // namespace

TEST(settingsStore, EveryFieldComesBack) {
    const ConfigurationFolder folder;
    const ApplicationSettings saved = changed();
    settingsStore::SaveSettings(saved);
    EXPECT_EQ(loaded(), saved);
    EXPECT_EQ(namesOf({}),
              u"Auto Install|Auto Save|Restore Last File|Restore Window Status|Toolbar|Statusbar|Help|Window State|"
              u"Window Pos|Scale Mode|Mesh|Printer|Paper Size|Orientation|Margin|Frame|Frame Size|Line-1|Line-2|Line-3|"
              u"Line-4|Font-1|Font-2|Font-3|Font-4|Real Format|SS Interval|SS At First|SS Restore Step|"
              u"SS Automatic Contour Value|SS Contour Divide|SS Paint Header|SS Header Step|SS Header Time|"
              u"SS Header Contour|SS Header Vector"_qs);
    EXPECT_EQ(
        namesOf(u"\\Graph"_qs),
        u"Plot Legend|Plot Scale|Plot Grid|Dot Size|Line Size|Legend Position|Legends|Font-0|Font-1|Font-2|Font-3|"
        u"Label-0|Label-1|Label-2|Label-3|Label-4|Legend-0|Legend-1"_qs);
    EXPECT_EQ(namesOf(u"\\Labels\\Item-2"_qs), u"Print|Text|Font|Position"_qs);
    EXPECT_EQ(stored({}, u"Window Pos"_qs)->Data, QByteArray("\xff\xff\xff\xff\2\0\0\0\3\0\0\0\4\0\0\0", 16));
    EXPECT_EQ(stored(u"\\Graph"_qs, u"Legend-1"_qs)->Data, QByteArray("\5\0\0\0\6\0\0\0\7\0\0\0\xff\0\xff\0", 16));
}

TEST(settingsStore, AFirstStartHasDefaultsAndLeavesItsTrace) {
    const ConfigurationFolder folder;
    ApplicationSettings defaults;
    SetDefaults(defaults, u"/opt/velorin"_qs, u"Laser"_qs);
    EXPECT_EQ(loaded(), defaults);
    clsRegEdit key;
    ASSERT_TRUE(key.OpenRegKey(HKEY_CURRENT_USER, settingsStore::RootKey.toString()));
    int type = 0;
    QVariant value;
    EXPECT_TRUE(key.GetRegValue({}, type, value));
    EXPECT_EQ(value, QVariant(u"/opt/velorin"_qs));

    // No store at all: defaults as well, and a save that does no harm.
    const ConfigurationFolder shut;
    QFile file(shut.Path() + u"/Ordvane"_qs);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(loaded(), defaults);
    settingsStore::SaveSettings(defaults);
    EXPECT_FALSE(settingsStore::SaveDrawingDefaults(defaults));
}

TEST(settingsStore, BarsAndMeshAreWrittenInTheirOwnWay) {
    for (const bool toolbar : {true, false}) {
        const ConfigurationFolder folder;
        ApplicationSettings settings;
        settings.Window.Toolbar = toolbar;
        settings.Window.Statusbar = !toolbar;
        settingsStore::SaveSettings(settings);
        EXPECT_EQ(stored({}, u"Mesh"_qs)->Data, QByteArray(4, '\xff'));
        EXPECT_EQ(stored({}, u"Toolbar"_qs)->Data, QByteArray(toolbar ? "\1\0\0\0" : "\0\0\0\0", 4));
        EXPECT_EQ(loaded().Window.Statusbar, toolbar);
    }
}

TEST(settingsStore, ConversionsAndWrongTypes) {
    const ConfigurationFolder folder;
    storeNumber({}, u"SCALE mode"_qs, 7);
    storeText({}, u"Paper Size"_qs, u" 12.5 mm"_qs);
    storeText({}, u"Frame Size"_qs, u"3000000000"_qs); // beyond an int: the field stays
    store({}, u"SS Interval"_qs, REG_DWORD, "\1\2");
    storeText({}, u"Auto Save"_qs, u"no"_qs);
    storeText({}, u"Frame"_qs, u"0.25"_qs);
    storeNumber({}, u"Restore Last File"_qs, -5);
    storeNumber({}, u"Real Format"_qs, -12);
    store({}, u"Help"_qs, REG_MULTI_SZ, TextBytes(u"a"));
    store({}, u"Window Pos"_qs, REG_BINARY, QByteArray("\1\0\0\0\2\0\0\0", 8));
    store({}, u"Margin"_qs, REG_BINARY, QByteArray(16, '\1') + "beyond");
    store({}, u"Line-1"_qs, REG_BINARY, "\5");
    storeText({}, u"Line-2"_qs, u"5"_qs);
    store({}, u"Line-3"_qs, REG_BINARY, QByteArray(3000, '\1')); // too large to be listed; the walk goes on
    for (const QString& beyond : {u"Line-0"_qs, u"Line-5"_qs, u"Font-9"_qs, u"Fontage"_qs, u"Unknown"_qs})
        store({}, beyond, REG_BINARY, QByteArray(12, '\1'));
    storeText({}, u"font 3rd"_qs, u"third"_qs);
    ApplicationSettings expected;
    SetDefaults(expected, u"/opt/velorin"_qs, u"Laser"_qs);
    expected.Window.ScaleMode = 1;
    expected.Page.PaperSize = 12; // a half goes to the even neighbour
    expected.Window.AutoSave = false;
    expected.Window.RestoreLastFile = true;
    expected.Style.RealFormat = u"-12"_qs;
    expected.Window.WindowPos = {1, 2, 0, 0};
    expected.Page.Margin.fill(0x01010101);
    expected.Style.LineStyles[0].Width = 5;
    expected.Style.FontStrings[2] = u"third"_qs;
    EXPECT_EQ(loaded(), expected);
    storeNumber({}, u"Scale Mode"_qs, -3);
    EXPECT_EQ(loaded().Window.ScaleMode, 0);
}

TEST(settingsStore, GraphValuesWithNumbers) {
    const ConfigurationFolder folder;
    const QString graph = u"\\Graph"_qs;
    const GraphDefaults defaults;
    storeNumber(graph, u"Dot Size"_qs, 0);
    storeText(graph, u"LINE size"_qs, u"-4"_qs);
    storeNumber(graph, u"Legends"_qs, 50);
    for (const QString& beyond : {u"Font-4"_qs, u"Label-5"_qs, u"Label--1"_qs, u"Font1"_qs})
        storeText(graph, beyond, u"dropped"_qs);
    storeText(graph, u"fontastic-2 and more"_qs, u"two"_qs);
    storeText(graph, u"Label-"_qs, u"nought"_qs);
    store(graph, u"Legend-7"_qs, REG_BINARY, QByteArray("\1\0\0\0\2\0\0\0\3\0\0\0\4\0\0\0", 16));
    storeText(graph, u"Legend-0"_qs, u"not one"_qs);
    store(graph, u"leg-x"_qs, REG_BINARY, QByteArray("\7\0\0\0", 4));
    const GraphDefaults read = loaded().Graph;
    EXPECT_EQ(read.DotSize, 1);
    EXPECT_EQ(read.LineSize, 1);
    EXPECT_EQ(read.GraphFonts,
              (std::array{defaults.GraphFonts[0], defaults.GraphFonts[1], u"two"_qs, defaults.GraphFonts[3]}));
    EXPECT_EQ(read.GraphLabels[0], u"nought"_qs);
    ASSERT_EQ(read.LegendStyles.size(), 2);
    EXPECT_EQ(read.LegendStyles[0], (LegendStyle{1, 2, 3, 4}));
    EXPECT_EQ(read.LegendStyles[1], (LegendStyle{7, 0x4080ff, 1, 0x4080ff})) << "only the front is new";

    settingsStore::SaveGraphSettings({.LegendStyles = {{}}});
    EXPECT_TRUE(namesOf(graph).endsWith(u"Label-4|Legend-0"_qs)) << "made anew, what else was there has gone";
}

TEST(settingsStore, LabelsAreFoundByNumber) {
    const ConfigurationFolder folder;
    storeText(u"\\Labels\\Item-1"_qs, u"TEXT"_qs, u"one"_qs);
    storeText(u"\\Labels\\Item-3"_qs, u"Text"_qs, u"three"_qs);
    storeNumber(u"\\Labels\\Item-3"_qs, u"Print"_qs, 2);
    ApplicationSettings settings = loaded();
    EXPECT_EQ(settings.Page.LabelCount, 2);
    EXPECT_EQ(settings.Page.Labels, (QList<PageLabel>{{u"one"_qs, false, 0, {}}, {}}));
    settings = loaded(); // opening has made the missing one
    EXPECT_EQ(settings.Page.Labels[2], (PageLabel{u"three"_qs, true, 0, {}}));
    settings.Page.LabelCount = 1;
    settingsStore::SavePageLabels(settings.Page);
    EXPECT_EQ(loaded().Page.Labels, (QList<PageLabel>{{u"one"_qs, false, 0, {}}}));
    for (const auto& [told, kept] : {std::pair{5, 3}, {0, 0}}) { // three there are
        settings.Page.LabelCount = told;
        settingsStore::SavePageLabels(settings.Page);
        EXPECT_EQ(loaded().Page.LabelCount, kept);
    }
}

TEST(settingsStore, DrawingDefaults) {
    const ConfigurationFolder folder;
    ApplicationSettings settings;
    settings.Contour = {5, {1, 2, 0xff000003}, false, true, 9, -9, 7, false};
    settings.Displacement = {false, 150, 1, true};
    settings.Vector = {1, 0, {{u"v"_qs, 1, 2}}, false, 50, 0};
    EXPECT_TRUE(settingsStore::SaveDrawingDefaults(settings));
    EXPECT_EQ(namesOf(u"\\Contour"_qs), u"Legend|Reverse|Color|Divide|Min Color|Mid Color|Max Color"_qs);
    ApplicationSettings read;
    read.Contour.MaxValue = 4;
    read.Contour.Automatic = false;
    read.Vector = {2, 1, {{}, {}}, true, 1, 1};
    const auto load = [&] {
        settingsStore::LoadContourDefaults(read.Contour);
        settingsStore::LoadDisplacementDefaults(read.Displacement);
        settingsStore::LoadVectorDefaults(read.Vector);
    };
    load();
    EXPECT_EQ(read.Contour, (ContourSettings{5, {1, 2, 0xff000003}, false, true, 4, 0, 7, true}));
    EXPECT_EQ(read.Displacement, settings.Displacement);
    EXPECT_EQ(read.Vector, (VectorSettings{0, -1, {}, false, 50, 0}));

    storeNumber(u"\\Contour"_qs, u"Color"_qs, 6);
    storeNumber(u"\\Displacement"_qs, u"Fiducial"_qs, 3);
    load();
    EXPECT_EQ(read.Contour.ColorIndex, 5);
    EXPECT_EQ(read.Displacement.Fiducial, 2);

    ASSERT_TRUE(DeleteTree(HKEY_CURRENT_USER, settingsKey));
    load();
    EXPECT_EQ(read.Contour, (ContourSettings{.Reverse = true, .MaxValue = 4})) << "but Reverse stays";
    EXPECT_EQ(read.Displacement, DisplacementSettings());
}
