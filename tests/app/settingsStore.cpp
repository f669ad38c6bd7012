#include "app/settingsStore.h"

#include "ConfigurationFolder.h"
#include "FullDisk.h"
#include "TestFolder.h"
#include "app/clsRegEdit.h"
#include "platform/registry/RegistryText.h"

#include <QBuffer>
#include <gtest/gtest.h>

using namespace Registry;

namespace {
ApplicationSettings loaded() {
    ApplicationSettings settings;
    settingsStore::LoadSettings(settings, u"/opt/velorin"_s, u"Laser"_s);
    return settings;
}

/// A registry as its editor exports it.
QByteArray registryFile(const QString& name) {
    return TestFolder::Read(QStringLiteral(VELORIN_SOURCE_DIR "/tests/data/") + name);
}
QByteArray exported() {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(RegistryText::Export(buffer).Done);
    return BytesText(buffer.data()).mid(1).remove(u'\r').toUtf8();
}

/// Every field that the registry keeps, in the order of the records, each with a value of its own.
ApplicationSettings changed() {
    ApplicationSettings s;
    s.Window = {.Toolbar = false,
                .Statusbar = false,
                .ScaleMode = 1,
                .Mesh = false,
                .RestoreWindowStatus = false,
                .WindowState = 2,
                .WindowPos = {-1, 2, 3, 4},
                .RestoreLastFile = true,
                .AutoSave = false,
                .AutoInstall = false,
                .Help = u"/help/日本/"_s,
                .PictureFolder = u"/pictures/"_s,
                .FitDisplaced = true,
                .FollowFile = true,
                .PointTip = false,
                .FadeMesh = true,
                .DeriveStresses = true};
    s.Page = {u"Büro"_s, 1, 8, {5, 6, 7, 8}, false, 9, 2, {{u"%p"_s, true, 17, u"f1"_s}, {u"二"_s, false, 3, {}}},
              2.5,       2};
    s.Style.LineStyles = {LineStyle{2, 3, 4}, {5, 1, 6}, {7, 2, 8}, {9, 4, 0xffffff}};
    s.Style.FontStrings = {u"a"_s, u"b"_s, u"c"_s, u"d"_s};
    s.Style.RealFormat = u"0.0E+00"_s;
    s.SlideShow = {1500, false, true, false, 10, false, false, true, false, true};
    s.Graph = {{u"l0"_s, u"l1"_s, u"l2"_s, u"l3"_s, u"l4"_s},
               {u"g0"_s, u"g1"_s, u"g2"_s, u"g3"_s},
               false,
               0,
               false,
               false,
               11,
               12,
               {{1, 2, 3, 4}, {5, 6, 7, 0xff00ff}},
               ScaleFormat::Mask,
               u"0.0#"_s,
               false};
    return s;
}
} // namespace

TEST(settingsStore, EveryFieldIsWrittenInItsFormAndComesBack) {
    const ConfigurationFolder folder;
    ApplicationSettings saved = changed();
    settingsStore::SaveSettings(saved);
    EXPECT_EQ(loaded(), saved);
    saved.Contour = {5, {1, 2, 0xff000003}, false, true, 9, -9, 7, false};
    saved.Displacement = {false, 150, 1, true};
    saved.Vector = {1, 0, {{u"v"_s, 1, 2}}, false, 50, 0};
    saved.Window.Toolbar = saved.Window.Mesh = true;
    // What leaves no trace.
    saved.Window.FitDisplaced = saved.Window.FollowFile = saved.Window.FadeMesh = saved.Window.DeriveStresses = false;
    saved.Window.PointTip = true;
    saved.Window.PictureFolder.clear();
    settingsStore::SaveSettings(saved);
    EXPECT_TRUE(settingsStore::SaveDrawingDefaults(saved));
    EXPECT_EQ(exported().split('\n'), registryFile(u"settings.reg"_s).split('\n'));
    EXPECT_TRUE(loaded().Window.Statusbar) << "comes back as the tool bar";
    saved.Contour.Preset = ColorPreset::Cividis;
    saved.Contour.LegendName = saved.Contour.LegendRange = true;
    EXPECT_TRUE(settingsStore::SaveDrawingDefaults(saved));
    ContourSettings stored = {.MaxValue = 9, .MinValue = -9};
    settingsStore::LoadContourDefaults(stored);
    stored.Automatic = false;
    EXPECT_EQ(stored, saved.Contour);
    const FullDisk full(0);
    EXPECT_EQ(loaded().Page, saved.Page) << "what can't be written is read all the same";
}

TEST(settingsStore, AFirstStartHasDefaultsAndLeavesItsTrace) {
    const ConfigurationFolder folder;
    ApplicationSettings defaults;
    SetDefaults(defaults, u"/opt/velorin"_s, u"Laser"_s);
    EXPECT_EQ(loaded(), defaults);
    EXPECT_TRUE(exported().contains("@=\"/opt/velorin\""));
    // No store at all: defaults as well, and a save that does no harm.
    ASSERT_TRUE(QDir(folder.Path() + u"/Ordvane"_s).removeRecursively() &&
                QFile::link(u"none"_s, folder.Path() + u"/Ordvane"_s));
    EXPECT_EQ(loaded(), defaults);
    settingsStore::SaveSettings(defaults);
    EXPECT_FALSE(settingsStore::SaveDrawingDefaults(defaults));
}

TEST(settingsStore, ConversionsAndWrongTypes) {
    const ConfigurationFolder folder;
    ASSERT_TRUE(RegistryText::Import(registryFile(u"bent.reg"_s)).Done);
    ApplicationSettings read = loaded();
    settingsStore::LoadContourDefaults(read.Contour);
    PageSettings page = loaded().Page; // the first load has made the missing label
    EXPECT_EQ(page.Labels, (QList<PageLabel>{{u"one"_s, false, 0, {}}, {}, {u"three"_s, true, 0, {}}}));
    for (const auto& [told, kept] : {std::pair{1, 1}, {5, 3}, {0, 0}}) { // three there are
        page.LabelCount = told;
        settingsStore::SavePageLabels(page);
        EXPECT_EQ(loaded().Page.Labels, page.Labels.first(kept));
    }
    // What was read, as it is written again; what else the graph's key had is gone, as that is made anew.
    settingsStore::SaveSettings(read);
    EXPECT_TRUE(settingsStore::SaveDrawingDefaults(read));
    EXPECT_EQ(exported().split('\n'), registryFile(u"bent.saved.reg"_s).split('\n'));
}

TEST(settingsStore, DrawingDefaultsKeepWhatTheRegistryHasNot) {
    const ConfigurationFolder folder;
    ASSERT_TRUE(RegistryText::Import(registryFile(u"settings.reg"_s)).Done);
    for (const bool stored : {true, false}) {
        ApplicationSettings read, expected;
        read.Contour = {.Reverse = !stored, .MaxValue = 4, .Automatic = false};
        read.Vector = {2, 1, {{}, {}}, true, 1, 1};
        settingsStore::LoadContourDefaults(read.Contour);
        settingsStore::LoadDisplacementDefaults(read.Displacement);
        settingsStore::LoadVectorDefaults(read.Vector);
        expected.Contour = {.Reverse = true, .MaxValue = 4};
        if (stored) {
            expected.Contour = {5, {1, 2, 0xff000003}, false, true, 4, 0, 7, true};
            expected.Displacement = {false, 150, 1, true};
            expected.Vector = {0, -1, {}, false, 50, 0};
        }
        EXPECT_EQ(read, expected);
        ASSERT_TRUE(DeleteTree(HKEY_CURRENT_USER, settingsStore::RootKey + u"\\Settings"_s));
    }
}
