// Labels of a page: where they come to stand, and what their macros become.
#include "output/pageLabels.h"

#include "platform/device/TraceDevice.h"
#include "result/ModelTest.h"

using namespace pageLabels;

namespace {

TEST(PageLabels, StandAtTheirPlacesOnEverySheet) {
    // At 254 dots an inch a text of two letters in 9 points is 32 wide and as high. The left top corners of the text at
    // the 18 places, on an odd width, too, half of which is rounded to the even neighbour, and around a document
    // without room.
    const struct {
        DeviceSize Sheet;
        DeviceRect Document;
        QByteArray Corners;
    } cases[] = {{{2970, 2100},
                  {200, 200, 2770, 1900},
                  "0 0,1469 0,2938 0,0 2068,1469 2068,2938 2068,"
                  "200 168,1469 168,2738 168,200 1900,1469 1900,2738 1900,"
                  "200 200,1469 200,2738 200,200 1868,1469 1868,2738 1868,"},
                 {{1480, 2100},
                  {100, 150, 1350, 1900},
                  "0 0,724 0,1448 0,0 2068,724 2068,1448 2068,"
                  "100 118,724 118,1318 118,100 1900,724 1900,1318 1900,"
                  "100 150,724 150,1318 150,100 1868,724 1868,1318 1868,"},
                 {{101, 63},
                  {70, 60, 30, 20},
                  "0 0,34 0,69 0,0 31,34 31,69 31,70 28,34 28,-2 28,70 20,34 20,-2 20,"
                  "70 60,34 60,-2 60,70 -12,34 -12,-2 -12,"}};
    for (const auto& c : cases) {
        QList<PageLabel> labels;
        for (int i = 0; i <= PositionCount; ++i)
            labels += {{u"%a%"_s, true, i, u"Arial, 9"_s}, {u"not this"_s, false, i, {}}};
        TraceDevice device(c.Sheet.Width, c.Sheet.Height, 254);
        PrintPageLabels(device, device, c.Document, labels, {{u"%a%"_s, u"ab"_s}});
        QByteArray corners;
        for (const QByteArray& line : device.Trace().split('\n'))
            if (line.startsWith("Text "))
                corners += line.chopped(5).sliced(5) + ',';
        EXPECT_EQ(corners.toStdString(), QByteArray(c.Corners + "0 0,").toStdString())
            << "one that there isn't is the first";
    }
    EXPECT_EQ(PositionName(16) + PositionName(-1) + PositionName(PositionCount), u"中央下内左上左上"_s);
}

struct LabelMacrosTest : ModelTest {};

TEST_F(LabelMacrosTest, StandForWhatIsShown) {
    open(twoSquares());
    mdVelorinResultModel::LoadStep(1, 1, model, false, -1);
    VectorSettings vector{2, 1, {{u"甲"_s, 0, 1}, {u"乙"_s, 1, -1}}};
    const QString all = u"%file%|%title%|%step%|%time%|%desc%|%item%|%dispx%|%dispy%|%vector%|%vectx%|%vecty%|%coord%|"
                        "%elem%|%proc%|%date%|%none%"_s;
    const QDate day(2026, 3, 9);
    const auto expanded = [&](const QString& text) {
        return mdTips::ExpandLabelMacros(text, BuildLabelMacros(model, vector, day));
    };
    const QString file = model.FileName.section(u'/', -1);
    EXPECT_EQ(expanded(u"%path%"_s), model.FileName);
    EXPECT_EQ(expanded(all), file + u"|試験|2|1.25|Time : 1.250|応力|変位|変位|乙|応力||6|2|2|2026年3月9日|%none%");
    // A value may name what comes behind it in the table, not what came before.
    model.Title = u"%file%%step%%vector%"_s;
    vector.DefaultItemSet = 2;
    EXPECT_EQ(expanded(u"%title%%vectx%"_s), u"%file%2%vector%%vectx%"_s);
    model.CurrentStep = model.CurrentItem = -1;
    EXPECT_EQ(expanded(u"%step%%time%%desc%%item%"_s), u"0"_s);
    const QString longText = u"%step%"_s.repeated(20000);
    EXPECT_EQ(expanded(longText).size(), 20000);

    const QStringList lines = MacroDescriptions(day);
    EXPECT_EQ(lines.size(), 16);
    EXPECT_EQ(lines.first(), u" %path%   パスを含む完全なファイル名"_s);
    EXPECT_EQ(lines.last(), u" %date%   本日の日付(2026年3月9日)"_s);
}

} // namespace
