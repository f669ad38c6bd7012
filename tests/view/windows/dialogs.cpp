#include "platform/widgets/Dialogs.h"
#include "ShownDialog.h"
#include "app/settingsStore.h"
#include "platform/widgets/PictureBox.h"
#include "result/ModelTest.h"
#include "view/windows/frmContourValue.h"
#include "view/windows/frmDifferenceStep.h"
#include "view/windows/frmDrawSettings.h"

#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QtTest>

namespace {
struct DialogTest : ModelTest {
    DialogTest() {
        VrfBuilder file = twoSquares();
        file.items = {{u"変位X"_s, -1, 1}, {u"変位Y"_s, -1, 2}, {u"主応力X"_s, 2, 0}, {u"主応力Y"_s, 2, 0}};
        for (VrfBuilder::Step& step : file.steps)
            step.values = {step.values[0], step.values[0], step.values[1], step.values[1]};
        open(file, 1, 0, 0);
        Dialogs::Testing::Start();
        settings.Displacement = {.Legend = false, .Scale = 120, .Fiducial = 3, .Original = true};
        settings.Vector = {
            .ItemSetCount = 1, .DefaultItemSet = 0, .ItemSets = {{u"変位"_s, 0, 1}}, .Scale = 300, .Fiducial = 1};
        settings.Contour = {
            .ColorIndex = 5, .Colors = {0xff, 0xff00, 0xff0000}, .Legend = false, .MaxValue = 7, .MinValue = -1};
    }
    ~DialogTest() override {
        EXPECT_EQ(Dialogs::Testing::UnexpectedCount() + Dialogs::Testing::UnusedCount(), 0);
        Dialogs::Testing::Stop();
    }

    ApplicationSettings settings;
};

const QString ok = u"Command1_0"_s, cancel = u"Command1_1"_s;

TEST_F(DialogTest, ContourValueShowsTheRangeOfTheItem) {
    Shown<frmContourValue> form(model, settings);
    const auto textsOf = [&](int item) {
        form.ItemIndex(item);
        return form.Texts();
    };
    EXPECT_EQ(textsOf(3), u"12.00000|2.00000|20 分割|12.00000|2.00000|20"_s) << "automatic: a copy of the defaults";
    settings.Contour.Automatic = false;
    settings.Contour.Divide = 12;
    settings.Difference = {.StandardStep = 0, .ApplyContour = true};
    EXPECT_EQ(textsOf(0), u"5.00000|1.00000|20 分割|7.00000|-1.00000|12"_s) << "less the reference step";
    for (const int none : {-1, 4})
        EXPECT_EQ(textsOf(none), u"undefined|undefined|undefined|7.00000|-1.00000|12"_s);
}

TEST_F(DialogTest, RowsCarryTheirFields) {
    expectRoundTrip(Shown<frmContourValue>(model, settings).Bindings(), {.MaxValue = 7, .MinValue = -1},
                    {.MaxValue = 0.5f, .MinValue = 1000, .Divide = 7});
    Shown<frmDifferenceStep> difference;
    difference.InitDialog(2, -1, {});
    expectRoundTrip(difference.Bindings(), {.StandardStep = -1}, {1, true, true, true, true});
    ApplicationSettings other = settings;
    other.Displacement = {.Legend = true, .Scale = 70, .Fiducial = 0, .Original = false};
    other.Vector = {
        .ItemSetCount = 1, .DefaultItemSet = 0, .ItemSets = {{u"変位"_s, 0, 1}}, .Legend = false, .Fiducial = 2};
    other.Contour = {2, {1, 2, 3}, true, true, 7, -1};
    other.Contour.Preset = ColorPreset::Cividis;
    other.Contour.LegendName = other.Contour.LegendRange = true;
    expectRoundTrip(Shown<frmDrawSettings>(model, settings).Bindings(), settings, other);
}

TEST_F(DialogTest, ContourValueKeepsTypedTextOnOkAndNoneOtherwise) {
    ContourSettings expected = settings.Contour;
    for (const auto& [button, automatic] : {std::pair{cancel, false}, {u"Command1_2"_s, true}, {ok, false}}) {
        expected.Automatic = settings.Contour.Automatic = false;
        Shown<frmContourValue> form(model, settings);
        form.Type(u"txtValue_0"_s, u" 1 2.5mm"_s);
        form.Type(u"txtValue_1"_s, u"1e60"_s);
        form.Type(u"txtValue_2"_s, u"-7.5"_s, Qt::Key_Return);
        EXPECT_EQ(form.Find<QLineEdit>(u"txtValue_2"_s).selectedText(), u"8"_s);
        EXPECT_TRUE(form.isVisible() && settings.Contour == expected) << "Enter belongs to the box";
        form.Click(button);
        EXPECT_TRUE(form.HasEnded(button != cancel));
        expected.Automatic = automatic;
        if (button == ok)
            expected = {5, expected.Colors, false, false, 12.5, -1, 8, false};
        EXPECT_EQ(settings.Contour, expected) << "a minimum beyond the range of a single is none";
    }
}

TEST_F(DialogTest, ContourValueOffersWhoseRangeItIs) {
    settings.Contour.Automatic = false;
    const ContourSettings before = settings.Contour;
    const auto choose = [&](int line) {
        Shown<frmContourValue> form(model, settings);
        form.Choose(u"cmbRange"_s, line);
        EXPECT_EQ(form.Find<QLineEdit>(u"txtValue_0"_s).isEnabled(), line == 0);
        form.Click(ok);
        EXPECT_TRUE(form.HasEnded(true));
        return settings.Contour;
    };
    ContourSettings expected = before;
    for (const auto& [line, range, automatic] : {std::tuple{1, ContourRange::AsStands, true},
                                                 {2, ContourRange::AllSteps, false},
                                                 {0, ContourRange::AsStands, false},
                                                 {3, ContourRange::Visible, true}}) {
        expected.Range = range;
        expected.Automatic = automatic;
        EXPECT_EQ(choose(line), expected) << line;
        const int shown = Shown<frmContourValue>(model, settings).Find<QComboBox>(u"cmbRange"_s).currentIndex();
        EXPECT_EQ(shown, line > 1 ? line : 0) << "OK alone still fixes the range of a step";
    }
}

TEST_F(DialogTest, DifferenceStepKeepsDisabledChecks) {
    Shown<frmDifferenceStep> form;
    form.InitDialog(2, 2, {});
    EXPECT_EQ(form.StandardStep(), -1) << "the file has no such step";
    form.InitDialog(2, 1, {true, false, true, false});
    EXPECT_EQ(form.Find<QComboBox>(u"cmbStep"_s).currentText(), u"ステップ - 2"_s);
    form.Click(u"Check1_3"_s);
    form.Choose(u"cmbStep"_s, 0);
    form.Click(u"Check1_1"_s);
    form.Click(ok);
    EXPECT_TRUE(form.HasEnded(true) && form.StandardStep() == -1);
    EXPECT_TRUE(form.ApplyDisplacement() && !form.ApplyVector() && form.ApplyContour() && form.ApplyValue());
}

TEST_F(DialogTest, DrawSettingsAreDefaultsAfterYesAndKeptOnOk) {
    ApplicationSettings expected = settings, stored;
    Shown<frmDrawSettings> form(model, settings);
    form.Type(u"txtDispScale"_s, u"2.5"_s);
    form.ShowTab(1);
    form.Type(u"txtVectorScale"_s, u"-4"_s);
    form.Choose(u"cmbVectorItem_1"_s, 0);
    for (const auto& [answer, scale] :
         {std::pair{MessageAnswer::No, stored.Displacement.Scale}, {MessageAnswer::Yes, 20}}) {
        Dialogs::Testing::QueueAnswer(answer);
        form.Click(u"cmdSetDefault"_s);
        settingsStore::LoadDisplacementDefaults(stored.Displacement);
        EXPECT_EQ(stored.Displacement.Scale, scale);
    }
    settingsStore::LoadVectorDefaults(stored.Vector);
    EXPECT_TRUE(stored.Vector.ItemSets.isEmpty() && form.isVisible());
    EXPECT_EQ(settings, expected);
    form.Click(ok);
    expected.Displacement.Scale = 20;
    expected.Vector.Scale = 0;
    expected.Vector.ItemSets = {{u"変位"_s, 0, 0}};
    EXPECT_TRUE(form.HasEnded(true) && settings == expected);
}

TEST_F(DialogTest, DrawSettingsEditItemSetsUntilCancel) {
    settings.Vector.ItemSets.append({u"外"_s, 9, 77});
    settings.Vector.ItemSetCount = 2;
    model.NoDisplacement = model.LineElementsOnly = true;
    const ApplicationSettings before = settings;
    Shown<frmDrawSettings> form(model, settings);
    const auto& tabs = form.Find<QTabWidget>(u"tbTab"_s);
    EXPECT_TRUE(!tabs.isTabEnabled(0) && tabs.currentIndex() == 1 && !tabs.isTabEnabled(2));
    auto& list = form.Find<QListWidget>(u"lstVectorItem"_s);
    EXPECT_EQ(list.accessibleName(), u"アイテムセット"_s);
    const auto& vert = form.Find<QComboBox>(u"cmbVectorItem_1"_s);
    const auto& name = form.Find<QLineEdit>(u"txtVectorItem"_s);
    const QString add = u"cmdVectorEdit_0"_s, remove = u"cmdVectorEdit_1"_s;
    const auto expectSets = [&](const QList<VectorItemSet>& sets) {
        ApplicationSettings read;
        form.ReadDialogSettings(read);
        EXPECT_EQ(read.Vector.ItemSets, sets);
        EXPECT_EQ(read.Vector.ItemSetCount, sets.size());
    };
    form.Choose(u"cmbVectorItem_0"_s, 2);
    expectSets({{u"変位"_s, 2, 1}, {u"外"_s, 9, 77}}); // Y stays though it lies on other objects now
    EXPECT_EQ(vert.count(), 2);
    form.Choose(u"cmbVectorItem_1"_s, 1);
    list.setCurrentRow(1);
    EXPECT_EQ(vert.count(), 0);
    list.setCurrentRow(0);
    EXPECT_EQ(vert.currentText(), u"主応力Y"_s);
    expectSets({{u"変位"_s, 2, 3}, {u"外"_s, 9, 77}}); // looking at a set changes nothing
    form.Click(remove);
    EXPECT_EQ(name.text(), u"外"_s);
    form.Click(remove);
    EXPECT_FALSE(name.isEnabled() || vert.isEnabled());
    for (const QString& button : {remove, add, add})
        form.Click(button);
    EXPECT_TRUE(name.isEnabled());
    form.Type(u"txtVectorItem"_s, u"B"_s);
    EXPECT_EQ(list.item(1)->text(), u"B"_s) << "the last one added is selected";
    expectSets({{u"新規アイテムセット"_s, -1, -1}, {u"B"_s, -1, -1}});
    form.Click(cancel);
    EXPECT_TRUE(form.HasEnded(false) && settings == before);
}

TEST_F(DialogTest, DrawSettingsPreviewRunsThroughTheRamp) {
    Shown<frmDrawSettings> form(model, settings);
    form.ShowTab(2);
    QCoreApplication::processEvents();
    const auto ends = [&] {
        const QImage& image = form.Find<PictureBox>(u"picContourPreview"_s).Image();
        return QString(image.pixelColor(0, image.height() - 1).name() + image.pixelColor(image.width() - 1, 0).name());
    };
    EXPECT_TRUE(ends().startsWith(u"#0000ff#f"_s)) << "without reversal from the colour of the maximum";
    form.Click(u"chkContourColorReverse"_s);
    EXPECT_TRUE(ends().startsWith(u"#ff0000"_s));
    Dialogs::Testing::QueueColor(0x00ffff);
    form.Click(u"cmdContourColor_0"_s);
    EXPECT_TRUE(ends().startsWith(u"#ffff00"_s));
    form.Click(u"optContourColor_0"_s);
    EXPECT_TRUE(ends().startsWith(u"#000000"_s));
    form.Choose(u"cmbContourPreset"_s, ColorPreset::Viridis);
    EXPECT_TRUE(ends().startsWith(u"#fde725"_s)) << "who chooses a preset gets the scheme that has it";
    EXPECT_FALSE(form.Find<QWidget>(u"cmdContourColor_0"_s).isEnabled());
}

} // namespace
