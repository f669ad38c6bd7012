// What the window does about the printed page.
#include "GivenPrinters.h"
#include "WindowTest.h"
#include "output/windows/frmPageLayout.h"
#include "output/windows/frmPreview.h"

#include <QComboBox>
#include <QLabel>
#include <QTimer>

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
    /// Does `act` to the dialog that `command` opens, and closes it.
    template<class Dialog>
    void whenOpen(const QString& command, const std::function<void(Dialog&)>& act) {
        bool done = false;
        QTimer::singleShot(0, &window, [&] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            act(*dialog);
            dialog->close();
            done = true;
        });
        window.ExecuteCommand(command);
        EXPECT_TRUE(done);
    }

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
    whenOpen<frmPreview>(u"miFilePreview"_s, [&](frmPreview& preview) {
        const auto click = [&](const QString& name) {
            QTest::mouseClick(preview.findChild<QWidget*>(name), Qt::LeftButton);
        };
        const auto text = [&](const QString& name) { return preview.findChild<QLabel*>(name)->text(); };
        const auto whiteRows = [&] {
            const QImage image = preview.findChild<PictureBox*>(u"picScreen"_s)->Image();
            int rows = 0;
            for (int y = 0; y < image.height(); ++y)
                rows += image.pixel(image.width() / 2, y) == qRgb(255, 255, 255);
            return rows;
        };
        EXPECT_EQ(text(u"lblPrinter"_s) + text(u"lblPaper"_s), u"traceA4  297 × 210 mm"_s);
        QTest::qWait(300);
        const int fitting = whiteRows();
        EXPECT_GT(fitting, 100);
        auto* zoom = preview.findChild<QComboBox*>(u"cmbZoom"_s);
        QTest::keyClick(zoom, Qt::Key_Down);
        QTest::qWait(300);
        EXPECT_EQ(preview.findChild<PictureBox*>(u"picScreen"_s)->minimumHeight(), 794 + 10);
        EXPECT_GT(whiteRows(), fitting);
        click(u"Command1_0"_s);
        EXPECT_EQ(printers->Pages.size(), 1);
        QTimer::singleShot(0, &preview, [&] {
            auto* layout = qobject_cast<frmPageLayout*>(QApplication::activeModalWidget());
            layout->findChild<QComboBox*>(u"cmbOrientation"_s)->setCurrentIndex(0);
            layout->findChild<QComboBox*>(u"cmbPrinter"_s)->setCurrentIndex(1);
            QTest::mouseClick(layout->findChild<QWidget*>(u"Command1_0"_s), Qt::LeftButton);
        });
        click(u"Command1_1"_s);
        EXPECT_EQ(text(u"lblPrinter"_s) + text(u"lblPaper"_s), u"PDFA4  210 × 297 mm"_s);
        Settings.Page.ScaleDenominator = 0.001;
        preview.FirstStep();
        EXPECT_EQ(text(u"lblStatus"_s), u"縮尺 1:0.001 では余白の内側に収まりません。"_s);
        printers->List.clear();
        preview.FirstStep();
        EXPECT_EQ(text(u"lblStatus"_s), u"プリンタを開くことができません。"_s);
        QTest::qWait(300);
        EXPECT_EQ(whiteRows(), 0) << "no sheet";
    });
}

} // namespace
