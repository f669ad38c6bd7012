#include "plot/windows/frmGraphSetting.h"
#include "ShownDialog.h"
#include "app/mdTips.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/PictureBox.h"

#include <QListWidget>

namespace {

const QString ok = u"Command1_0"_s;

struct GraphSetting : testing::Test {
    GraphSetting() {
        Dialogs::Testing::Start();
        form.emplace(defaults);
        form->Find<QListWidget>(u"lvFontFace"_s).clear();
        form->Find<QListWidget>(u"lvFontFace"_s).addItems({u"Alpha"_s, u"Beta"_s, u"Beta Two"_s});
    }
    ~GraphSetting() override {
        EXPECT_EQ(Dialogs::Testing::UnexpectedCount() + Dialogs::Testing::UnusedCount(), 0);
        Dialogs::Testing::Stop();
    }
    void showTab(int index) { form->Find<QTabWidget>(u"SSTab1"_s).setCurrentIndex(index); }
    FontObject font(int index) const {
        ColorRef unused = 0;
        return mdTips::ParseFontString(defaults.GraphFonts[std::size_t(index)], unused);
    }

    GraphDefaults defaults;
    std::optional<Shown<frmGraphSetting>> form;
};

TEST_F(GraphSetting, RowsCarryTheirFields) {
    GraphDefaults other = defaults;
    other.GraphLabels = {u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s};
    other.PlotLegend = other.PlotGrid = other.PlotScale = false;
    other.LegendPosition = 5;
    other.DotSize = 7;
    other.LineSize = 12;
    other.ScaleFormat = ScaleFormat::Mask;
    other.ScaleMask = u"0.0#"_s;
    expectRoundTrip(form->Bindings(), defaults, other);
}

TEST_F(GraphSetting, SizesAreOrderedAndMoveOnWithEnter) {
    form->Type(u"txtSize_0"_s, u"0.04"_s, Qt::Key_Return);
    EXPECT_EQ(form->Find<QLineEdit>(u"txtSize_0"_s).text(), u"0.0"_s);
    EXPECT_EQ(form->focusWidget()->objectName(), u"txtSize_1"_s);
    form->Type(u"txtSize_1"_s, u"-1.5"_s);
    EXPECT_EQ(form->Find<QLineEdit>(u"txtSize_1"_s).text(), u"1.5"_s);
    form->Click(ok);
    EXPECT_TRUE(form->HasEnded(true) && defaults.DotSize == 0 && defaults.LineSize == 15);
}

TEST_F(GraphSetting, FacesCompleteWhileTheyAreTyped) {
    const FontObject before = font(1);
    showTab(2);
    form->Choose(u"cmbFont"_s, 1);
    auto& face = form->Find<QLineEdit>(u"txtFontFace"_s);
    const auto type = [&](Qt::Key key) { QTest::keyClick(&face, key); };
    face.setFocus();
    face.selectAll();
    QTest::keyClicks(&face, u"be"_s);
    EXPECT_EQ(face.text() + u'|' + face.selectedText(), u"Beta|ta"_s);
    EXPECT_EQ(form->Find<QListWidget>(u"lvFontFace"_s).currentRow(), 1);
    type(Qt::Key_Backspace);
    EXPECT_EQ(face.text(), u"B"_s) << "the tail and one more";
    type(Qt::Key_Return);
    EXPECT_TRUE(form->isVisible());
    QTest::keyClicks(&face, u"eta "_s);
    form->Click(u"chkFont_2"_s);
    auto& size = form->Find<QComboBox>(u"cmbFontSize"_s);
    size.setEditText(u"21"_s);
    form->Click(ok);
    EXPECT_EQ(font(1), (FontObject{u"Beta Two"_s, 21, before.Bold, before.Italic, true, false}));
    EXPECT_EQ(defaults.GraphFonts[0], GraphDefaults().GraphFonts[0]);
}

TEST_F(GraphSetting, SeriesAreAddedChangedAndRemoved) {
    showTab(3);
    auto& list = form->Find<QListWidget>(u"lstLegend"_s);
    QList<LegendStyle> expected = defaults.LegendStyles;
    const QImage first = form->Find<PictureBox>(u"picLegend"_s).Image();
    form->Click(u"cmdLegend_0"_s);
    EXPECT_EQ(list.currentItem()->text(), u"系列 - %1"_s.arg(expected.size() + 1));
    EXPECT_NE(form->Find<PictureBox>(u"picLegend"_s).Image(), first);
    form->Choose(u"cmbMarkerStyle"_s, 3);
    form->Choose(u"cmbLineStyle"_s, 2);
    for (const auto& answer : {std::optional<ColorRef>(0x123456), std::optional<ColorRef>()}) {
        Dialogs::Testing::QueueColor(answer);
        form->Click(u"cmdColor_1"_s);
    }
    expected.append({PenStyle::Dash, 0x123456, DotStyle::Triangle, 0});
    list.setCurrentRow(1);
    form->Click(u"cmdLegend_1"_s);
    expected.removeAt(1);
    EXPECT_EQ(list.currentRow(), 1);
    form->Click(ok);
    EXPECT_EQ(defaults.LegendStyles, expected);

    defaults.LegendStyles = {{}};
    form.emplace(defaults);
    EXPECT_FALSE(form->Find<QPushButton>(u"cmdLegend_1"_s).isEnabled());
    defaults.LegendStyles.clear();
    form.emplace(defaults);
    form->Click(u"cmdColor_0"_s);
    form->Click(ok);
    EXPECT_TRUE(form->HasEnded(true) && defaults.LegendStyles.isEmpty());
}

} // namespace
