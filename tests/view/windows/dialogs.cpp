#include "platform/widgets/Dialogs.h"
#include "RoundTrip.h"
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

/// A dialog as its user has it.
template<class Dialog>
struct Shown : Dialog {
    explicit Shown(auto&... arguments) : Dialog(nullptr, arguments...) {
        this->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(this));
    }
    template<class Control>
    Control& Find(const QString& name) const {
        auto* control = this->template findChild<Control*>(name);
        if (control == nullptr)
            throw std::runtime_error("no control " + name.toStdString());
        return *control;
    }
    void Click(const QString& name) const {
        // Near the left edge, where a check box or option has its mark.
        auto& control = Find<QWidget>(name);
        QTest::mouseClick(&control, Qt::LeftButton, {}, {8, control.height() / 2});
    }
    void Type(const QString& name, const QString& text, Qt::Key end = Qt::Key_Tab) const {
        auto& box = Find<QLineEdit>(name);
        box.setFocus();
        box.selectAll();
        QTest::keyClicks(&box, text);
        QTest::keyClick(&box, end);
    }
    void Choose(const QString& combo, int index) const {
        QTest::keyClick(&Find<QComboBox>(combo), Qt::Key_Home);
        while (Find<QComboBox>(combo).currentIndex() < index)
            QTest::keyClick(&Find<QComboBox>(combo), Qt::Key_Down);
    }
    void Tab(int index) const { Find<QTabWidget>(u"tbTab"_s).setCurrentIndex(index); }
    /// The texts of all boxes, one after the other.
    QString Texts() const {
        QStringList texts;
        for (const auto* box : this->template findChildren<QLineEdit*>())
            texts.append(box->text());
        return texts.join(u'|');
    }
    /// Whether the dialog has closed, and with this result.
    bool HasEnded(bool result) const { return this->Result == result && !this->isVisible(); }
};

struct DialogTest : ModelTest {
    DialogTest() {
        VrfBuilder file = twoSquares();
        file.items = {{u"変位X"_s, -1, 1}, {u"変位Y"_s, -1, 2}, {u"主応力X"_s, 2, 0}, {u"主応力Y"_s, 2, 0}};
        for (VrfBuilder::Step& step : file.steps)
            step.values = {step.values[0], step.values[0], step.values[1], step.values[1]};
        open(file, 1, 0, 0);
        Dialogs::Testing::Start();
        settings.Displacement = {.Legend = false, .Scale = 125, .Fiducial = 3, .Original = true};
        settings.Vector = {
            .ItemSetCount = 1, .DefaultItemSet = 0, .ItemSets = {{u"変位"_s, 0, 1}}, .Scale = 300, .Fiducial = 1};
        settings.Contour = {.ColorIndex = 5, .Colors = {0xff, 0xff00, 0xff0000}, .MaxValue = 7, .MinValue = -1};
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
    EXPECT_EQ(textsOf(-1), u"undefined|undefined|undefined|undefined|undefined|20"_s);
    EXPECT_EQ(textsOf(3), u"12.00000|2.00000|20 分割|12.00000|2.00000|20"_s) << "automatic: a copy of the defaults";
    settings.Contour.Automatic = false;
    settings.Contour.Divide = 12;
    settings.Difference = {.StandardStep = 0, .ApplyContour = true};
    EXPECT_EQ(textsOf(0), u"5.00000|1.00000|20 分割|7.00000|-1.00000|12"_s) << "less the reference step";
    settings.Difference.ApplyContour = false;
    EXPECT_TRUE(textsOf(0).startsWith(u"12.00000|"));
    EXPECT_TRUE(textsOf(4).startsWith(u"undefined|undefined|undefined|7.00000|"));
}

TEST_F(DialogTest, RowsCarryTheirFields) {
    ContourSettings contour = settings.Contour, otherContour = contour;
    otherContour.MaxValue = 0.5f;
    otherContour.MinValue = 1000;
    otherContour.Divide = 7;
    expectRoundTrip(Shown<frmContourValue>(model, settings).Bindings(), contour, otherContour);

    Shown<frmDifferenceStep> difference;
    difference.InitDialog(2, -1, {});
    expectRoundTrip(difference.Bindings(), {.StandardStep = -1}, {1, true, true, true, true});

    ApplicationSettings other = settings;
    other.Displacement = {.Legend = true, .Scale = 70, .Fiducial = 0, .Original = false};
    other.Vector.Fiducial = 2;
    other.Vector.Scale = 0;
    other.Vector.Legend = false;
    other.Contour.ColorIndex = 2;
    other.Contour.Colors = {1, 2, 3};
    other.Contour.Legend = false;
    other.Contour.Reverse = true;
    settings.Displacement.Scale = 120;
    expectRoundTrip(Shown<frmDrawSettings>(model, settings).Bindings(), settings, other);
}

TEST_F(DialogTest, ContourValuePutsTypedTextInOrderAndKeepsItOnOk) {
    Shown<frmContourValue> form(model, settings);
    ContourSettings expected = settings.Contour;
    form.Type(u"txtValue_0"_s, u" 1 2.5mm"_s);
    form.Type(u"txtValue_1"_s, u"1e60"_s);
    form.Type(u"txtValue_2"_s, u"-7.5"_s, Qt::Key_Return);
    EXPECT_EQ(form.Find<QLineEdit>(u"txtValue_2"_s).selectedText(), u"8"_s);
    EXPECT_TRUE(form.isVisible()) << "Enter belongs to the box";
    EXPECT_TRUE(form.Texts().contains(u"|12.50000|"));
    EXPECT_EQ(settings.Contour, expected);
    form.Click(ok);
    expected = {5, expected.Colors, true, false, 12.5, -1, 8, false};
    EXPECT_EQ(settings.Contour, expected) << "a minimum beyond the range of a single is none";
    EXPECT_TRUE(form.HasEnded(true));
    for (const auto& [key, with, result] :
         {std::tuple(Qt::Key_Escape, Qt::NoModifier, false), {Qt::Key_A, Qt::AltModifier, true}}) {
        Shown<frmContourValue> again(model, settings);
        again.Type(u"txtValue_0"_s, u"3"_s);
        QTest::keyClick(&again, key, with);
        EXPECT_TRUE(QTest::qWaitFor([&, ends = result] { return again.HasEnded(ends); }));
        expected.Automatic = result;
        EXPECT_EQ(settings.Contour, expected) << "automatic and cancel keep the range";
    }
}

TEST_F(DialogTest, DifferenceStepCountsFromNoneAndKeepsDisabledChecks) {
    Shown<frmDifferenceStep> form;
    form.InitDialog(2, 2, {});
    EXPECT_EQ(form.StandardStep(), -1) << "the file has no such step";
    form.InitDialog(2, 1, {true, false, true, false});
    const auto& steps = form.Find<QComboBox>(u"cmbStep"_s);
    EXPECT_EQ(steps.itemText(0) + steps.currentText(), u"(設定しない)ステップ - 2"_s);
    form.Click(u"Check1_3"_s);
    form.Click(u"Check1_0"_s);
    form.Choose(u"cmbStep"_s, 0);
    form.Click(u"Check1_1"_s); // disabled now
    form.Click(ok);
    EXPECT_TRUE(form.HasEnded(true));
    EXPECT_EQ(form.StandardStep(), -1);
    EXPECT_TRUE(!form.ApplyDisplacement() && !form.ApplyVector() && form.ApplyContour() && form.ApplyValue());
    form.show();
    form.Click(cancel);
    EXPECT_TRUE(form.HasEnded(false));
}

TEST_F(DialogTest, DrawSettingsKeepAllOnOkAndNothingBefore) {
    ApplicationSettings expected = settings;
    Shown<frmDrawSettings> form(model, settings);
    EXPECT_EQ(form.Find<QLineEdit>(u"txtDispScale"_s).text(), u"12.5"_s);
    form.Type(u"txtDispScale"_s, u"2.5"_s, Qt::Key_Return);
    EXPECT_EQ(form.Find<QLineEdit>(u"txtDispScale"_s).selectedText(), u"2"_s);
    form.Tab(1);
    form.Type(u"txtVectorScale"_s, u"-4"_s);
    EXPECT_EQ(form.Find<QLineEdit>(u"txtVectorScale"_s).text(), u"0"_s);
    form.Type(u"txtVectorItem"_s, u"reverse"_s);
    form.Choose(u"cmbVectorItem_1"_s, 0);
    ApplicationSettings stored;
    for (const auto& [answer, scale] : {std::pair{MessageAnswer::No, 200}, {MessageAnswer::Yes, 20}}) {
        Dialogs::Testing::QueueAnswer(answer);
        form.Click(u"cmdSetDefault"_s);
        EXPECT_EQ(Dialogs::Testing::Asked().last().Flags, 292);
        settingsStore::LoadDisplacementDefaults(stored.Displacement);
        EXPECT_EQ(stored.Displacement.Scale, scale);
    }
    settingsStore::LoadVectorDefaults(stored.Vector);
    EXPECT_TRUE(stored.Vector.ItemSets.isEmpty());
    EXPECT_EQ(settings, expected);
    form.Click(ok);
    expected.Displacement.Scale = 20;
    expected.Vector.Scale = 0;
    expected.Vector.ItemSets = {{u"reverse"_s, 0, 0}};
    EXPECT_EQ(settings, expected);
    EXPECT_TRUE(form.HasEnded(true));
}

TEST_F(DialogTest, DrawSettingsCancelLeavesItemSetsThatWereAddedAndDeleted) {
    const ApplicationSettings before = settings;
    Shown<frmDrawSettings> form(model, settings);
    form.Tab(1);
    auto& list = form.Find<QListWidget>(u"lstVectorItem"_s);
    const auto& nameBox = form.Find<QLineEdit>(u"txtVectorItem"_s);
    const QString add = u"cmdVectorEdit_0"_s, remove = u"cmdVectorEdit_1"_s;
    form.Click(remove);
    EXPECT_EQ(list.count(), 0);
    EXPECT_FALSE(nameBox.isEnabled() || form.Find<QComboBox>(u"cmbVectorItem_0"_s).isEnabled());
    for (const QString& button : {remove, add, add})
        form.Click(button);
    EXPECT_TRUE(nameBox.isEnabled());
    form.Type(u"txtVectorItem"_s, u"B"_s);
    EXPECT_EQ(list.item(1)->text(), u"B"_s) << "the last one added is selected";
    form.Click(add);
    list.setCurrentRow(0);
    EXPECT_EQ(nameBox.text(), u"新規アイテムセット"_s);
    form.Click(remove);
    EXPECT_EQ(nameBox.text(), u"B"_s);
    ApplicationSettings read = before;
    form.ReadDialogSettings(read);
    EXPECT_EQ(read.Vector.ItemSets, (QList<VectorItemSet>{{u"B"_s, -1, -1}, {u"新規アイテムセット"_s, -1, -1}}));
    EXPECT_EQ(read.Vector.ItemSetCount, 2);
    form.Click(cancel);
    EXPECT_EQ(settings, before);
    EXPECT_TRUE(form.HasEnded(false));
}

TEST_F(DialogTest, DrawSettingsPairItemsOfTheSameObjects) {
    settings.Vector.ItemSets.append({u"外"_s, 9, 77});
    settings.Vector.ItemSetCount = 2;
    model.NoDisplacement = model.LineElementsOnly = true;
    Shown<frmDrawSettings> form(model, settings);
    const auto& tabs = form.Find<QTabWidget>(u"tbTab"_s);
    EXPECT_EQ(tabs.currentIndex(), 1) << "the first one that counts";
    EXPECT_FALSE(tabs.isTabEnabled(0) || tabs.isTabEnabled(2));
    auto& list = form.Find<QListWidget>(u"lstVectorItem"_s);
    const auto& vert = form.Find<QComboBox>(u"cmbVectorItem_1"_s);
    const auto set = [&](int index) {
        ApplicationSettings read;
        form.ReadDialogSettings(read);
        return read.Vector.ItemSets[index];
    };
    EXPECT_EQ(vert.currentText(), u"変位Y"_s);
    form.Choose(u"cmbVectorItem_0"_s, 2);
    EXPECT_EQ(vert.count(), 2);
    EXPECT_EQ(set(0), (VectorItemSet{u"変位"_s, 2, 1})) << "Y stays though it lies on other objects now";
    form.Choose(u"cmbVectorItem_1"_s, 1);
    EXPECT_EQ(set(0), (VectorItemSet{u"変位"_s, 2, 3}));
    list.setCurrentRow(1);
    EXPECT_EQ(vert.count(), 0);
    list.setCurrentRow(0);
    EXPECT_EQ(vert.currentText(), u"主応力Y"_s);
    EXPECT_EQ(set(1), (VectorItemSet{u"外"_s, 9, 77})) << "looking at a set changes nothing";
}

TEST_F(DialogTest, DrawSettingsPreviewRunsThroughTheRamp) {
    Shown<frmDrawSettings> form(model, settings);
    form.Tab(2);
    QCoreApplication::processEvents();
    const auto ends = [&] {
        const QImage& image = form.Find<PictureBox>(u"picContourPreview"_s).Image();
        const auto nameAt = [&](int x) { return image.pixelColor(x, image.height() - 1).name(); };
        return QString(nameAt(0) + nameAt(image.width() / 2).left(2) + nameAt(image.width() - 1).left(2));
    };
    EXPECT_EQ(ends(), u"#0000ff#0#f"_s) << "without reversal from the colour of the maximum";
    form.Click(u"chkContourColorReverse"_s);
    EXPECT_EQ(ends().left(7), u"#ff0000"_s);
    form.Click(u"optContourColor_0"_s);
    EXPECT_EQ(ends().left(7), u"#000000"_s);
    Dialogs::Testing::QueueColor(std::nullopt);
    form.Click(u"cmdContourColor_0"_s);
    Dialogs::Testing::QueueColor(0x00ffff);
    form.Click(u"cmdContourColor_0"_s);
    EXPECT_EQ(Dialogs::Testing::Asked()[1].Text, u"#ff0000"_s);
    form.Click(u"optContourColor_5"_s);
    EXPECT_EQ(ends().left(7), u"#ffff00"_s);
}

} // namespace
