// What the window does about the printed page.
#include "GivenPrinters.h"
#include "WindowTest.h"
#include "output/windows/frmPreview.h"

#include <QComboBox>
#include <QLabel>

using mdApplication::InstalledPrinters;
using mdApplication::Settings;

namespace {

struct PageWindowTest : WindowTest {
    PageWindowTest() {
        auto given = std::make_unique<GivenPrinters>();
        printers = given.get();
        before = std::exchange(InstalledPrinters, std::move(given));
        openFirst(folder.Write(twoSquares().Bytes(), u"二.vrf"_s));
    }
    ~PageWindowTest() override { InstalledPrinters = std::move(before); }
    GivenPrinters* printers = nullptr;
    std::unique_ptr<Printers> before;
};

TEST_F(PageWindowTest, PrintsTheViewAndTellsWhatGoesWrong) {
    PageSettings& page = Settings.Page;
    page.Labels = {{u"%file%"_s, true, 17, u"Arial, 9"_s}};
    const auto positions = mdApplication::Current.View.NodePoints;
    window.ExecuteCommand(u"miFilePrint"_s);
    ASSERT_EQ(printers->Pages.size(), 1);
    EXPECT_EQ(printers->Pages[0].Title, u"二.vrf"_s);
    EXPECT_TRUE(printers->Pages[0].Trace.startsWith("ClipRect 200 200 2770 1900\n"));
    EXPECT_TRUE(printers->Pages[0].Trace.contains("Text 2674 1868 \"二.vrf\"\n"));
    EXPECT_EQ(mdApplication::Current.View.NodePoints, positions) << "those of the screen, for the mouse";
    page.ScaleDenominator = 0.001;
    Dialogs::Testing::QueueAnswer(MessageAnswer::No);
    window.ExecuteCommand(u"miFilePrint"_s);
    EXPECT_EQ(printers->Pages.size(), 1) << "it does not fit, and was not to be printed";
    page.ScaleDenominator = 0;

    const auto print = [&] { window.ExecuteCommand(u"miFilePrint"_s); };
    printers->Result = {PrintResult::Refused, u"trace: no toner"_s};
    expectMessage(printers->Result.Problem, print);
    page.Printer = u"gone"_s;
    expectMessage(u"gone\r\nプリンタを開くことができません。"_s, print);
    printers->List.clear();
    for (const QString& command : {u"miFilePrint"_s, u"miFilePreview"_s, u"miFilePrinter"_s})
        expectMessage(u"利用可能なプリンタがありません。"_s, [&] { window.ExecuteCommand(command); });
}

TEST_F(PageWindowTest, PreviewShowsTheSheetAndPrintsIt) {
    frmPreview preview(&window, mdApplication::Current, *printers);
    preview.show();
    const auto shown = [&] {
        preview.FirstStep();
        QTest::qWait(300);
        QString texts;
        for (const QString& name : {u"lblPrinter"_s, u"lblPaper"_s, u"lblStatus"_s})
            texts += preview.findChild<QLabel*>(name)->text() + u'|';
        return texts;
    };
    const auto whiteRows = [&] {
        const QImage image = preview.findChild<PictureBox*>(u"picScreen"_s)->Image();
        int rows = 0;
        for (int y = 0; y < image.height(); ++y)
            rows += image.pixel(image.width() / 2, y) == qRgb(255, 255, 255);
        return rows;
    };
    EXPECT_EQ(shown(), u"trace|A4  297 × 210 mm||"_s);
    EXPECT_GT(whiteRows(), 100);
    QTest::keyClick(preview.findChild<QComboBox*>(u"cmbZoom"_s), Qt::Key_Down);
    Settings.Page.Orientation = PlotPrinter::Portrait;
    Settings.Page.ScaleDenominator = 0.001;
    EXPECT_EQ(shown(), u"trace|A4  210 × 297 mm|縮尺 1:0.001 では余白の内側に収まりません。|"_s);
    EXPECT_EQ(preview.findChild<PictureBox*>(u"picScreen"_s)->minimumHeight(), 1123 + 10) << "at 96 dots an inch";
    Settings.Page.ScaleDenominator = 0;
    QTest::mouseClick(preview.findChild<QWidget*>(u"Command1_0"_s), Qt::LeftButton);
    EXPECT_EQ(printers->Pages.size(), 1);
    printers->List.clear();
    EXPECT_EQ(shown(), u"||プリンタを開くことができません。|"_s);
    EXPECT_EQ(whiteRows(), 0) << "no sheet";
}

} // namespace
