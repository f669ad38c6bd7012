#include "property/propertyFile.h"
#include "TestFolder.h"
#include "app/settingsStore.h"

#include <QDir>
#include <QLocale>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

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
    bool loadInRoot(const QByteArray& bytes) { return load("<VRFPROPERTY>" + bytes + "</VRFPROPERTY>"); }

    void fill() {
        Model.CurrentStep = 2;
        Model.CurrentItem = 5;
        Settings.Difference = {3, true, false, true, false};
        Settings.ValueDisplay = true;
        Settings.Displacement = {false, 12345678, 1, true};
        Settings.Vector = {2, 1, {{u"流速"_s, 3, -1}, {u"q \"x\""_s, 0, 1}}, false, 350, 0};
        Settings.Contour = {3, {0xff, 0xabcdef, 0xff0000}, false, true, 125, -0.1f, 12, false};
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

TEST_F(PropertyFile, BytesAndRoundTrip) {
    QLocale::setDefault(QLocale::German);
    fill();
    const ApplicationSettings filled = Settings;
    EXPECT_EQ(saved().split('\n'), drawn().split('\n'));
    QLocale::setDefault(QLocale::c());
    ResetDrawingSettings(Settings, Model);
    EXPECT_NE(Settings, filled);
    EXPECT_TRUE(load());
    EXPECT_EQ(Settings, filled);
    EXPECT_EQ(Model.CurrentStep, 2);
    EXPECT_EQ(Model.CurrentItem, 5);
    Settings.Contour.MaxValue = 1.23456789e-20f;
    EXPECT_TRUE(load(saved()));
    EXPECT_EQ(Settings.Contour.MaxValue, 1.23457e-20f);
}

TEST_F(PropertyFile, ElementsInAnyOrderAndCaseAndUnknownOnesPassedOver) {
    ApplicationSettings expected = start();
    EXPECT_TRUE(load("<old></old><vrfProperty><contour><colors><max>0x00ff0000</max><INDEX>9</INDEX></colors>"
                     "<what><legend>False</legend></what><legend/>"
                     "<item>1</item></contour><contour/legend>False</contour/legend><legend>False</"
                     "legend><currentstep>7</currentstep>"
                     "<values><div>3</div></values><displacement><fid>-1</fid></displacement></vrfproperty>"));
    expected.Contour.Colors[2] = 0xff0000;
    expected.Contour.ColorIndex = 5;
    expected.Displacement.Fiducial = 0;
    EXPECT_EQ(Settings, expected);
    EXPECT_EQ(Model.CurrentStep, 7);
    EXPECT_EQ(Model.CurrentItem, 1);
}

TEST_F(PropertyFile, NothingToReadLeavesTheStart) {
    fill();
    const ApplicationSettings before = start();
    EXPECT_FALSE(before.ValueDisplay);
    const auto expectStart = [&](bool loaded, const char* what) {
        EXPECT_TRUE(loaded) << what;
        EXPECT_EQ(Settings, before) << what;
        EXPECT_EQ(Model.CurrentStep, -1) << what;
        EXPECT_EQ(Model.CurrentItem, -1) << what;
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

TEST_F(PropertyFile, Values) {
    using Get = double (*)(const ApplicationSettings&);
    const Get standard = [](const auto& s) { return double(s.Difference.StandardStep); };
    const Get scale = [](const auto& s) { return double(s.Vector.Scale); };
    const Get legend = [](const auto& s) { return double(s.Contour.Legend); };
    const Get displaced = [](const auto& s) { return double(s.Difference.ApplyDisplacement); };
    const Get max = [](const auto& s) { return double(s.Contour.MaxValue); };
    const struct {
        Get Value;
        const char *Group, *Element;
        std::vector<std::pair<const char*, double>> Texts;
    } cases[] = {
        {standard, "difference", "std", {{"0", -1}, {" 3 ", 2}, {"three", -1}, {"-2147483648", -1}}},
        {scale, "vector", "scale", {{"-3", 0}, {"2.5x", 2}, {"", 0}, {"99999999999", start().Vector.Scale}}},
        {legend, "contour", "legend", {{"fALSE", 0}, {"0", 0}, {"Falsch", 1}}},
        {displaced, "difference", "dsp", {{"-1", 1}, {"True", 0}}},
        {max, "contour><values", "max", {{"0.25", 0.25}, {"1e39", 0.25}, {"1,5", 1}}},
    };
    for (const auto& c : cases)
        for (const auto& [text, expected] : c.Texts) {
            EXPECT_TRUE(loadInRoot(QByteArray("<") + c.Group + "><" + c.Element + '>' + text));
            EXPECT_EQ(c.Value(Settings), expected) << c.Element << ": " << text;
        }
}

TEST_F(PropertyFile, ItemSets) {
    const auto expectSets = [this](const QList<VectorItemSet>& sets, int inUse) {
        EXPECT_EQ(Settings.Vector.ItemSets, sets);
        EXPECT_EQ(Settings.Vector.ItemSetCount, sets.size());
        EXPECT_EQ(Settings.Vector.DefaultItemSet, inUse);
    };
    EXPECT_TRUE(loadInRoot("<vector><items><itemset><vert>4</vert></itemset><itemset default=\"false\"><name>a>b</name>"
                           "<horz>1</horz></itemset><other><name>x</name></other><ITEMSET x=1></ITEMSET>"
                           "<itemset><name>c</name><horz>1e10</horz></itemset></items></vector>"));
    expectSets({{{}, 0, 4}, {u"a>b"_s, 1, 0}, {{}, 0, 0}, {{}, 0, 0}, {u"c"_s, 0, 0}}, 3);
    EXPECT_TRUE(loadInRoot("<vector><items><itemset a=1></itemset></items>\r\n<items>\r\n  </items></vector>"));
    expectSets({}, -1);
    // More sets than the records hold are not written.
    Settings.Vector.ItemSetCount = 3;
    Settings.Vector.ItemSets = {{u"one"_s, 1, 1}};
    EXPECT_TRUE(load(saved()));
    expectSets({{u"one"_s, 1, 1}}, -1);
}

TEST_F(PropertyFile, CutAtEveryByte) {
    const QByteArray whole = drawn();
    load(whole);
    for (qsizetype size = whole.size(); size >= 0; --size) {
        QFile::resize(path, size);
        const bool hasRoot = size >= whole.indexOf("<VRFPROPERTY>") + 13;
        EXPECT_EQ(load(), hasRoot) << size;
        EXPECT_EQ(Settings.Vector.ItemSetCount, Settings.Vector.ItemSets.size()) << size;
    }
}

TEST_F(PropertyFile, WhatAFileDoesNotTellComesFromTheStoredDefaults) {
    ApplicationSettings defaults;
    defaults.Displacement.Scale = 77;
    defaults.Vector.Fiducial = 1;
    defaults.Contour.Divide = 9;
    ASSERT_TRUE(settingsStore::SaveDrawingDefaults(defaults));
    fill();
    EXPECT_TRUE(loadInRoot("<displacement><fid>0</fid></displacement>"));
    ASSERT_TRUE(settingsStore::SaveDrawingDefaults({}));
    defaults.Displacement.Fiducial = 0;
    EXPECT_EQ(Settings.Displacement, defaults.Displacement);
    EXPECT_EQ(Settings.Vector, defaults.Vector);
    EXPECT_EQ(Settings.Contour.Divide, 9);
    EXPECT_EQ(Settings.Contour.MaxValue, 125) << "the ends of the contour have no default";
}

TEST_F(PropertyFile, AWriteThatFailsIsSilentAndLeavesTheOldFile) {
    fill();
    const QByteArray old = saved();
    const QFile::Permissions mode = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    QFile::setPermissions(path, mode);
    // A file may not grow beyond this, as on a full disk; the small one would fit into a buffer.
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    const rlimit tight{4096, usual.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    for (const int count : {20000, 60}) {
        Settings.Vector.ItemSets.resize(count);
        Settings.Vector.ItemSetCount = count;
        setrlimit(RLIMIT_FSIZE, &tight);
        EXPECT_EQ(saved(), old) << count;
        setrlimit(RLIMIT_FSIZE, &usual);
    }
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(QDir(Folder.Path({})).entryList(QDir::Files).size(), 2) << "nothing is left beside the two files";
    Settings.Vector.ItemSets.resize(1);
    EXPECT_NE(saved(), old);
    EXPECT_EQ(QFile::permissions(path), mode);
    // A folder that takes no file, even from the system's administrator, and a result file that has gone.
    for (const QString& result : {u"/proc/version"_s, Folder.Path(u"gone.vrf"_s)}) {
        Model.FileName = result;
        SavePropertyFile(Settings, Model);
        EXPECT_FALSE(QFile::exists(PathFor(result)));
    }
}
