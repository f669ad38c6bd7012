#include "property/propertyFile.h"

#include "ConfigurationFolder.h"
#include "FullDisk.h"
#include "TestFolder.h"
#include "app/settingsStore.h"
#include "property/drawingElements.h"

#include <QFileInfo>
#include <QLocale>
#include <gtest/gtest.h>

using namespace propertyFile;

namespace {
struct PropertyFile : testing::Test {
    PropertyFile() { Model.FileName = Folder.Write("result", u"結果 1.vrf"_s); }
    /// A file with every element, as `fill` sets them, in the bytes that are written.
    static QByteArray drawn() {
        return TestFolder::Read(QStringLiteral(VELORIN_SOURCE_DIR "/tests/data/drawn.property"));
    }
    QByteArray saved() {
        SavePropertyFile(Settings, Model);
        return TestFolder::Read(path);
    }
    bool load() { return LoadPropertyFile(Settings, Model); }
    bool load(const QByteArray& bytes) {
        Folder.Write(bytes, u"結果 1.vrf.property"_s);
        return load();
    }

    void fill() {
        Model.CurrentStep = 2;
        Model.CurrentItem = 5;
        Settings.Difference = {3, true, false, true, false};
        Settings.ValueDisplay = true;
        Settings.Displacement = {false, 12345678, 1, true};
        Settings.Vector = {2, 1, {{u"流速"_s, 3, -1}, {u"q \"x\""_s, 0, 1}}, false, 350, 0};
        Settings.Contour = {3, {0xff, 0xabcdef, 0xff0000}, false, true, 1.23456789e-20f, -0.1f, 12, false};
    }

    /// The settings that a reset leaves.
    ApplicationSettings start(ResultModel model = {}) const {
        ApplicationSettings settings = Settings;
        ResetDrawingSettings(settings, model);
        return settings;
    }

    TestFolder Folder;
    ApplicationSettings Settings;
    ResultModel Model;
    const QString path = Folder.Path(u"結果 1.vrf.property"_s);
};
} // namespace

TEST_F(PropertyFile, BytesAndRoundTripAndCutAtEveryByte) {
    QLocale::setDefault(QLocale::German);
    fill();
    ApplicationSettings rounded = Settings;
    rounded.Contour.MaxValue = 1.23457e-20f;
    EXPECT_EQ(saved().split('\n'), drawn().split('\n'));
    QLocale::setDefault(QLocale::c());
    ResetDrawingSettings(Settings, Model);
    EXPECT_NE(Settings, rounded);
    EXPECT_TRUE(load());
    EXPECT_EQ(Settings, rounded);
    EXPECT_EQ(std::pair(Model.CurrentStep, Model.CurrentItem), std::pair(2, 5));
    for (qsizetype size = drawn().size(); size >= 0; --size) {
        QFile::resize(path, size);
        EXPECT_EQ(load(), size >= drawn().indexOf("<VRFPROPERTY>") + 13) << size;
        EXPECT_EQ(Settings.Vector.ItemSetCount, Settings.Vector.ItemSets.size()) << size;
    }
}

TEST_F(PropertyFile, ElementsInAnyOrderAndCaseOverTheStoredDefaults) {
    const ConfigurationFolder own;
    ApplicationSettings expected;
    expected.Displacement.Scale = 77;
    expected.Vector.Fiducial = 1;
    expected.Contour.Divide = 9;
    ASSERT_TRUE(settingsStore::SaveDrawingDefaults(expected));
    EXPECT_TRUE(load("<old></old><vrfProperty><contour><colors><INDEX>3</INDEX></colors><legend/><item>1</item>"
                     "<what><legend>False</legend></what></contour><contour/legend>False</contour/legend>"
                     "<legend>False</legend><currentstep>7</currentstep><values><div>3</div></values></vrfproperty>"));
    expected.Contour.ColorIndex = 3;
    EXPECT_EQ(Settings, expected);
    EXPECT_EQ(std::pair(Model.CurrentStep, Model.CurrentItem), std::pair(7, 1));
}

TEST_F(PropertyFile, AdditionsStandInTheFileWhereTheyAreNoDefaults) {
    const ConfigurationFolder own;
    ApplicationSettings start;
    start.Contour.Preset = ColorPreset::Diverging;
    ASSERT_TRUE(settingsStore::SaveDrawingDefaults(start));
    fill();
    const QByteArray without = saved();
    EXPECT_TRUE(load());
    EXPECT_EQ(Settings.Contour.Preset, ColorPreset::None) << "a file of before stays as it looked";
    Settings.HeaderDisplay = Settings.Contour.LegendName = Settings.Contour.LegendRange = true;
    Settings.Contour.Range = ContourRange::Visible;
    Settings.Contour.Preset = ColorPreset::Cividis;
    const ApplicationSettings expected = Settings;
    const QByteArray with = saved();
    EXPECT_TRUE(load(without) && load(with));
    EXPECT_EQ(Settings, expected);
}

TEST_F(PropertyFile, NothingToReadLeavesTheStart) {
    fill();
    const ApplicationSettings before = start();
    EXPECT_TRUE(!before.ValueDisplay && before.Difference == DifferenceSettings());
    const auto expectStart = [&](bool loaded, const char* what) {
        EXPECT_TRUE(loaded && Settings == before && Model.CurrentStep == -1 && Model.CurrentItem == -1) << what;
        fill();
    };
    expectStart(!load(), "no property file");
    expectStart(!load(QByteArray("\xff\x80\x00\xfd", 4)), "bytes of no character");
    expectStart(load("<settings><contour><item>3</item></contour></settings>"), "another root");
    expectStart(!load("<VRFPROPERTY></VRFPROPERTY></x>"), "closed twice");
    expectStart(load("<VRFPROPERTY>" + QByteArray("<contour>").repeated(100000)), "deep");
    QFile::remove(Model.FileName);
    expectStart(!load(), "no result file");
}

TEST_F(PropertyFile, ValuesAreReadLeniently) {
    // Element, what stands in the file, and what sets the same on the command line; nothing where the file doesn't
    // count.
    const QString cases =
        u"difference/std|0|0; difference/std| 3 |3; difference/std|three|0; difference/std|-2147483648|;"
        "difference/dsp|-1|1; difference/dsp|True|; vector/scale|-3|0; vector/scale|2.5x|2;"
        "vector/scale||0; vector/scale|99999999999|; contour/legend|fALSE|0; contour/legend|0|0;"
        "contour/legend|Falsch|; contour/values/max|0.25|0.25; contour/values/max|1e39|;"
        "contour/values/max|1,5|1; displacement/fid|-1|0; contour/colors/index|9|5;"
        "contour/colors/max|0xff|0xff; contour/colors/max|red|0"_s;
    for (const QString& line : cases.split(u';')) {
        const QStringList parts = line.split(u'|');
        const QString element = parts[0].trimmed();
        Settings = {};
        ApplicationSettings expected = start();
        EXPECT_TRUE(parts[2].isEmpty() || drawingElements::Set(element, parts[2], expected));
        const QString node = QString(element).replace(u"/"_s, u"><"_s) + u'>' + parts[1];
        EXPECT_TRUE(load("<vrfproperty><" + node.toLatin1() + "</vrfproperty>"));
        EXPECT_EQ(Settings, expected) << line.toStdString();
    }
}

TEST_F(PropertyFile, ItemSets) {
    EXPECT_TRUE(
        load("<vrfproperty><vector><items><itemset><vert>4</vert></itemset><itemset default=\"false\"><name>a>b</name>"
             "<horz>1</horz></itemset><other><name>x</name></other><ITEMSET x=1></ITEMSET>"
             "<itemset><name>c</name><horz>1e10</horz></itemset></items></vector>"));
    EXPECT_EQ(Settings.Vector,
              (VectorSettings{5, 3, {{{}, 0, 4}, {u"a>b"_s, 1, 0}, {{}, 0, 0}, {{}, 0, 0}, {u"c"_s, 0, 0}}}));
    EXPECT_TRUE(load("<vrfproperty><vector><items><itemset a=1></itemset></items>\r\n<items>\r\n  </items></vector>"));
    EXPECT_EQ(Settings.Vector, (VectorSettings{0, -1, {}}));
    // More sets than the records hold are not written.
    Settings.Vector = {3, -1, {{u"one"_s, 1, 1}}};
    EXPECT_TRUE(load(saved()));
    EXPECT_EQ(Settings.Vector, (VectorSettings{1, -1, {{u"one"_s, 1, 1}}}));
}

TEST_F(PropertyFile, AWriteThatFailsSaysSoAndLeavesTheOldFile) {
    fill();
    const QByteArray old = saved();
    Settings.Displacement.Scale = 1;
    {
        const FullDisk full(64);
        EXPECT_TRUE(SavePropertyFile(Settings, Model).contains(path));
    }
    EXPECT_EQ(TestFolder::Read(path), old);
    // A folder that takes no file, even from the system's administrator, and a result file that has gone.
    Model.FileName = u"/proc/version"_s;
    EXPECT_FALSE(SavePropertyFile(Settings, Model).isEmpty());
    Model.FileName = Folder.Path(u"gone.vrf"_s);
    EXPECT_TRUE(SavePropertyFile(Settings, Model).isEmpty() && !QFile::exists(PathFor(Model.FileName)));
}

TEST_F(PropertyFile, ALinkIsFollowedToAPropertyFileAlone) {
    fill();
    const QByteArray text = drawn();
    const QString target = Folder.Path(u"target"_s);
    ASSERT_TRUE(QFile::link(target, path));
    for (const auto& [before, after] : {std::pair{QByteArray(), text},
                                        {"<vrfproperty>", text},
                                        {"", text},
                                        {"a letter", "a letter"},
                                        {"<html></html>", "<html></html>"}}) {
        QFile::remove(target);
        if (!before.isNull())
            Folder.Write(before, u"target"_s);
        EXPECT_EQ(SavePropertyFile(Settings, Model).isEmpty(), after == text) << before.toStdString();
        EXPECT_EQ(TestFolder::Read(target), after);
        EXPECT_TRUE(QFileInfo(path).isSymLink());
    }
}
