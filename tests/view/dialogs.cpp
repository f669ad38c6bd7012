#include "platform/Dialogs.h"
#include "app/settingsStore.h"
#include "platform/PictureBox.h"
#include "result/VrfBuilder.h"
#include "result/mdVelorinResultModel.h"
#include "view/contour.h"
#include "view/frmContourValue.h"
#include "view/frmDifferenceStep.h"
#include "view/frmDrawSettings.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QtTest>
#include <gtest/gtest.h>

namespace {

/// A dialog as its user has it: controls by their names, and keys that go where the focus is.
class User {
public:
    explicit User(QDialog& shown) : dialog(shown) {
        dialog.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    }
    template<class Control>
    Control& Find(const QString& name) const {
        auto* control = dialog.findChild<Control*>(name);
        if (control == nullptr)
            throw std::runtime_error("no control " + name.toStdString());
        return *control;
    }
    void Click(const QString& name) const {
        // Near the left edge, where a check box or option has its mark.
        auto& control = Find<QWidget>(name);
        QTest::mouseClick(&control, Qt::LeftButton, {}, {8, control.height() / 2});
    }
    void Type(const QString& name, const QString& text, Qt::Key end) const {
        auto& box = Find<QLineEdit>(name);
        box.setFocus();
        box.selectAll();
        QTest::keyClicks(&box, text);
        QTest::keyClick(&box, end);
    }
    QString Text(const QString& name) const { return Find<QLineEdit>(name).text(); }
    void Choose(const QString& combo, int index) const {
        auto& control = Find<QComboBox>(combo);
        QTest::keyClick(&control, Qt::Key_Home);
        for (int i = 0; i < index; ++i)
            QTest::keyClick(&control, Qt::Key_Down);
    }

private:
    QDialog& dialog;
};

class DialogTest : public testing::Test {
protected:
    DialogTest() {
        VrfBuilder file = twoSquares();
        file.items = {{u"変位X"_qs, -1, 1}, {u"変位Y"_qs, -1, 2}, {u"主応力X"_qs, 2, 0}, {u"主応力Y"_qs, 2, 0}};
        for (VrfBuilder::Step& step : file.steps) {
            step.values.insert(step.values.begin(), step.values[0]);
            step.values.push_back(step.values[2]);
        }
        EXPECT_TRUE(mdVelorinResultModel::LoadResultFile(folder.Write(file.Bytes()), model));
        EXPECT_TRUE(mdVelorinResultModel::LoadStep(1, 0, model, false, 0));
        Dialogs::Testing::Start();
        settings.Displacement = {.Legend = false, .Scale = 125, .Fiducial = 3, .Original = true};
        settings.Vector = {
            .ItemSetCount = 1, .DefaultItemSet = 0, .ItemSets = {{u"変位"_qs, 0, 1}}, .Scale = 300, .Fiducial = 1};
        settings.Contour = {.ColorIndex = 5, .Colors = {0xff, 0xff00, 0xff0000}, .MaxValue = 7, .MinValue = -1};
    }
    ~DialogTest() override {
        EXPECT_EQ(Dialogs::Testing::UnexpectedCount() + Dialogs::Testing::UnusedCount(), 0);
        Dialogs::Testing::Stop();
    }

    TestFolder folder;
    ResultModel model;
    ApplicationSettings settings;
};

TEST_F(DialogTest, ContourValueShowsTheRangeOfTheItem) {
    frmContourValue form(nullptr, model, settings);
    const User user(form);
    EXPECT_EQ(user.Text(u"txtDefault_0"_qs), u"undefined"_qs);
    EXPECT_EQ(user.Text(u"txtValue_1"_qs), u"undefined"_qs);
    form.ItemIndex(3);
    EXPECT_EQ(user.Text(u"txtDefault_0"_qs), u"12.00000"_qs);
    EXPECT_EQ(user.Text(u"txtDefault_1"_qs), u"2.00000"_qs);
    EXPECT_EQ(user.Text(u"txtDefault_2"_qs), u"20 分割"_qs);
    EXPECT_EQ(user.Text(u"txtValue_0"_qs), u"12.00000"_qs) << "automatic: a copy of the defaults";
    settings.Contour.Automatic = false;
    settings.Contour.Divide = 12;
    settings.Difference = {.StandardStep = 0, .ApplyContour = true};
    form.ItemIndex(0);
    EXPECT_EQ(user.Text(u"txtDefault_0"_qs), u"5.00000"_qs) << "less the reference step";
    EXPECT_EQ(user.Text(u"txtValue_0"_qs), u"7.00000"_qs);
    EXPECT_EQ(user.Text(u"txtValue_2"_qs), u"12"_qs);
    form.ItemIndex(4);
    EXPECT_EQ(user.Text(u"txtDefault_2"_qs), u"undefined"_qs);
}

TEST_F(DialogTest, ContourValuePutsTypedTextInOrderAndKeepsItOnOk) {
    frmContourValue form(nullptr, model, settings);
    const User user(form);
    user.Type(u"txtValue_0"_qs, u" 1 2.5mm"_qs, Qt::Key_Tab);
    EXPECT_EQ(user.Text(u"txtValue_0"_qs), u"12.50000"_qs);
    user.Type(u"txtValue_1"_qs, u"100"_qs, Qt::Key_Return);
    EXPECT_EQ(user.Find<QLineEdit>(u"txtValue_1"_qs).selectedText(), u"100.00000"_qs);
    EXPECT_TRUE(form.isVisible()) << "Enter belongs to the box";
    user.Type(u"txtValue_2"_qs, u"-7.5"_qs, Qt::Key_Tab);
    EXPECT_EQ(user.Text(u"txtValue_2"_qs), u"8"_qs);
    ContourSettings expected = settings.Contour;
    EXPECT_EQ(settings.Contour, expected);
    user.Click(u"Command1_0"_qs);
    expected.Automatic = false;
    expected.MaxValue = 12.5;
    expected.MinValue = 100;
    expected.Divide = 8;
    EXPECT_EQ(settings.Contour, expected);
    EXPECT_TRUE(form.Result && !form.isVisible());

    frmContourValue again(nullptr, model, settings);
    const User other(again);
    other.Type(u"txtValue_0"_qs, u"1e60"_qs, Qt::Key_Tab);
    other.Click(u"Command1_0"_qs);
    EXPECT_EQ(settings.Contour, expected) << "beyond the range of a single";
}

TEST_F(DialogTest, ContourValueAutomaticKeepsTheRangeAndCancelAll) {
    settings.Contour.Automatic = false;
    const ContourSettings before = settings.Contour;
    for (const bool escape : {false, true}) {
        frmContourValue form(nullptr, model, settings);
        const User user(form);
        user.Type(u"txtValue_0"_qs, u"3"_qs, Qt::Key_Tab);
        if (escape)
            QTest::keyClick(&form, Qt::Key_Escape);
        else
            user.Click(u"Command1_1"_qs);
        EXPECT_EQ(settings.Contour, before);
        EXPECT_FALSE(form.Result || form.isVisible());
    }
    frmContourValue form(nullptr, model, settings);
    const User user(form);
    user.Type(u"txtValue_0"_qs, u"3"_qs, Qt::Key_Tab);
    QTest::keyClick(&form, Qt::Key_A, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !form.isVisible(); }));
    ContourSettings expected = before;
    expected.Automatic = true;
    EXPECT_EQ(settings.Contour, expected);
    EXPECT_TRUE(form.Result);
}

TEST_F(DialogTest, DifferenceStepCountsFromNoneAndKeepsDisabledChecks) {
    frmDifferenceStep form(nullptr);
    const User user(form);
    form.InitDialog(2, 1, {true, false, true, false});
    auto& steps = user.Find<QComboBox>(u"cmbStep"_qs);
    ASSERT_EQ(steps.count(), 3);
    EXPECT_EQ(steps.itemText(0), u"(設定しない)"_qs);
    EXPECT_EQ(steps.currentText(), u"ステップ - 2"_qs);
    user.Click(u"Check1_3"_qs);
    user.Click(u"Check1_0"_qs);
    user.Choose(u"cmbStep"_qs, 1);
    EXPECT_EQ(form.StandardStep(), 0);
    user.Choose(u"cmbStep"_qs, 0);
    EXPECT_FALSE(user.Find<QCheckBox>(u"Check1_2"_qs).isEnabled());
    user.Click(u"Check1_1"_qs);
    user.Click(u"Command1_0"_qs);
    EXPECT_TRUE(form.Result && !form.isVisible());
    EXPECT_EQ(form.StandardStep(), -1);
    EXPECT_TRUE(!form.ApplyDisplacement() && !form.ApplyVector() && form.ApplyContour() && form.ApplyValue());

    form.show();
    user.Click(u"Command1_1"_qs);
    EXPECT_FALSE(form.Result || form.isVisible());
}

TEST_F(DialogTest, DrawSettingsKeepAllOnOkAndNothingBefore) {
    const ApplicationSettings before = settings;
    frmDrawSettings form(nullptr, model, settings);
    const User user(form);
    EXPECT_EQ(user.Text(u"txtDispScale"_qs), u"12.5"_qs);
    user.Choose(u"cmbDispScale"_qs, 1);
    user.Type(u"txtDispScale"_qs, u"2.5"_qs, Qt::Key_Return);
    EXPECT_EQ(user.Find<QLineEdit>(u"txtDispScale"_qs).selectedText(), u"2"_qs);
    user.Click(u"chkDispPaintLegend"_qs);
    user.Find<QTabWidget>(u"tbTab"_qs).setCurrentIndex(1);
    user.Type(u"txtVectorScale"_qs, u"-4"_qs, Qt::Key_Tab);
    EXPECT_EQ(user.Text(u"txtVectorScale"_qs), u"0"_qs);
    user.Type(u"txtVectorItem"_qs, u"reverse"_qs, Qt::Key_Tab);
    user.Choose(u"cmbVectorItem_1"_qs, 0);
    user.Find<QTabWidget>(u"tbTab"_qs).setCurrentIndex(2);
    user.Click(u"optContourColor_2"_qs);
    user.Click(u"chkContourColorReverse"_qs);
    Dialogs::Testing::QueueColour(std::nullopt);
    user.Click(u"cmdContourColor_0"_qs);
    Dialogs::Testing::QueueColour(0x123456);
    user.Click(u"cmdContourColor_2"_qs);
    EXPECT_EQ(Dialogs::Testing::Asked()[1].Text, u"#0000ff"_qs);
    EXPECT_EQ(settings, before);

    user.Click(u"Command1_0"_qs);
    ApplicationSettings expected = before;
    expected.Displacement = {.Legend = true, .Scale = 20, .Fiducial = 1, .Original = true};
    expected.Vector.Scale = 0;
    expected.Vector.ItemSets = {{u"reverse"_qs, 0, 0}};
    expected.Contour.ColorIndex = 2;
    expected.Contour.Reverse = true;
    expected.Contour.Colors[2] = 0x123456;
    EXPECT_EQ(settings, expected);
    EXPECT_TRUE(form.Result && !form.isVisible());
}

TEST_F(DialogTest, DrawSettingsCancelLeavesItemSetsThatWereAddedAndDeleted) {
    const ApplicationSettings before = settings;
    frmDrawSettings form(nullptr, model, settings);
    const User user(form);
    user.Find<QTabWidget>(u"tbTab"_qs).setCurrentIndex(1);
    auto& list = user.Find<QListWidget>(u"lstVectorItem"_qs);
    auto& name = user.Find<QLineEdit>(u"txtVectorItem"_qs);
    user.Click(u"cmdVectorEdit_1"_qs);
    EXPECT_EQ(list.count(), 0);
    EXPECT_FALSE(name.isEnabled() || user.Find<QComboBox>(u"cmbVectorItem_0"_qs).isEnabled());
    user.Click(u"cmdVectorEdit_1"_qs);
    user.Click(u"cmdVectorEdit_0"_qs);
    user.Click(u"cmdVectorEdit_0"_qs);
    EXPECT_TRUE(name.isEnabled());
    EXPECT_EQ(list.currentRow(), 1);
    user.Type(u"txtVectorItem"_qs, u"B"_qs, Qt::Key_Tab);
    EXPECT_EQ(list.item(1)->text(), u"B"_qs);
    list.setCurrentRow(0);
    EXPECT_EQ(name.text(), u"新規アイテムセット"_qs);
    user.Click(u"cmdVectorEdit_1"_qs);
    EXPECT_EQ(name.text(), u"B"_qs);

    ApplicationSettings read = before;
    form.ReadDialogSettings(read);
    EXPECT_EQ(read.Vector.ItemSets, (QList<VectorItemSet>{{u"B"_qs, -1, -1}}));
    EXPECT_EQ(read.Vector.ItemSetCount, 1);
    user.Click(u"Command1_1"_qs);
    EXPECT_EQ(settings, before);
    EXPECT_FALSE(form.Result);
}

TEST_F(DialogTest, DrawSettingsPairsItemsOfTheSameObjects) {
    settings.Vector.ItemSets.append({u"外"_qs, 9, 77});
    settings.Vector.ItemSetCount = 2;
    frmDrawSettings form(nullptr, model, settings);
    const User user(form);
    auto& vert = user.Find<QComboBox>(u"cmbVectorItem_1"_qs);
    EXPECT_EQ(vert.currentText(), u"変位Y"_qs);
    user.Choose(u"cmbVectorItem_0"_qs, 2);
    EXPECT_EQ(vert.count(), 2);
    EXPECT_EQ(vert.currentIndex(), -1);
    const auto sets = [&] {
        ApplicationSettings read;
        form.ReadDialogSettings(read);
        return read.Vector.ItemSets;
    };
    EXPECT_EQ(sets()[0], (VectorItemSet{u"変位"_qs, 2, 1})) << "Y stays though it lies on other objects now";
    user.Choose(u"cmbVectorItem_1"_qs, 1);
    EXPECT_EQ(sets()[0], (VectorItemSet{u"変位"_qs, 2, 3}));
    user.Find<QListWidget>(u"lstVectorItem"_qs).setCurrentRow(1);
    EXPECT_EQ(vert.count(), 0);
    user.Find<QListWidget>(u"lstVectorItem"_qs).setCurrentRow(0);
    EXPECT_EQ(vert.currentText(), u"主応力Y"_qs);
    EXPECT_EQ(sets()[1], (VectorItemSet{u"外"_qs, 9, 77})) << "looking at a set changes nothing";
}

TEST_F(DialogTest, DrawSettingsOpenOnTheFirstTabThatCounts) {
    model.NoDisplacement = true;
    model.LineElementsOnly = true;
    const frmDrawSettings form(nullptr, model, settings);
    const auto* tabs = form.findChild<QTabWidget*>(u"tbTab"_qs);
    EXPECT_EQ(tabs->currentIndex(), 1);
    EXPECT_FALSE(tabs->isTabEnabled(0) || tabs->isTabEnabled(2));
}

TEST_F(DialogTest, DrawSettingsBecomeTheDefaultsOnlyAfterYes) {
    const ApplicationSettings before = settings;
    frmDrawSettings form(nullptr, model, settings);
    const User user(form);
    user.Type(u"txtDispScale"_qs, u"31"_qs, Qt::Key_Tab);
    DisplacementSettings stored;
    for (const int answer : {Dialogs::Answer::No, Dialogs::Answer::Yes}) {
        Dialogs::Testing::QueueAnswer(answer);
        user.Click(u"cmdSetDefault"_qs);
        EXPECT_EQ(Dialogs::Testing::Asked().last().Flags, 292);
        settingsStore::LoadDisplacementDefaults(stored);
        EXPECT_EQ(stored.Scale, answer == Dialogs::Answer::Yes ? 310 : DisplacementSettings().Scale);
    }
    VectorSettings vectors;
    settingsStore::LoadVectorDefaults(vectors);
    EXPECT_TRUE(vectors.ItemSets.isEmpty());
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(settings, before);
}

TEST_F(DialogTest, DrawSettingsPreviewRunsThroughTheRamp) {
    frmDrawSettings form(nullptr, model, settings);
    const User user(form);
    user.Find<QTabWidget>(u"tbTab"_qs).setCurrentIndex(2);
    QCoreApplication::processEvents();
    const auto colourAt = [&](double part) {
        const QImage& image = user.Find<PictureBox>(u"picContourPreview"_qs).Image();
        return image.pixelColor(int(part * (image.width() - 1)), image.height() - 1);
    };
    EXPECT_EQ(colourAt(0), QColor(0, 0, 255)) << "without reversal the colour of the maximum";
    EXPECT_NEAR(colourAt(0.5).green(), 255, 3);
    EXPECT_NEAR(colourAt(1).red(), 255, 3);
    user.Click(u"chkContourColorReverse"_qs);
    EXPECT_EQ(colourAt(0), QColor(255, 0, 0));
    user.Click(u"optContourColor_0"_qs);
    EXPECT_EQ(colourAt(0), QColor(0, 0, 0));
    Dialogs::Testing::QueueColour(0x00ffff);
    user.Click(u"cmdContourColor_0"_qs);
    user.Click(u"optContourColor_5"_qs);
    EXPECT_EQ(colourAt(0), QColor(255, 255, 0));
}

} // namespace
