// Set-up and printing of a page from the main window, through a real print service.
#include "CupsService.h"
#include "GivenPrinters.h"
#include "mainwin/WindowTest.h"
#include "output/windows/frmPageLayout.h"
#include "platform/widgets/SystemPrinters.h"

#include <QRegularExpression>

namespace {
struct PrintingTest : WindowTest {
    ~PrintingTest() override { mdApplication::InstalledPrinters = std::make_unique<SystemPrinters>(); }

    /// What one of poppler's tools says.
    static QString poppler(const QString& tool, const QStringList& arguments) {
        QProcess process;
        process.start(tool, arguments);
        EXPECT_TRUE(process.waitForFinished() && process.exitCode() == 0) << tool.toStdString();
        return QString::fromUtf8(process.readAllStandardOutput());
    }
    /// Left and bottom of a word, in points from the sheet's left top.
    static QPointF placeOf(const QString& boxes, const QString& word) {
        const QRegularExpression box(
            u"xMin=\"([\\d.]+)\" yMin=\"[\\d.]+\" xMax=\"[\\d.]+\" yMax=\"([\\d.]+)\">%1<"_s.arg(word));
        const auto match = box.match(boxes);
        EXPECT_TRUE(match.hasMatch()) << word.toStdString();
        return {match.captured(1).toDouble(), match.captured(2).toDouble()};
    }
};

constexpr double pointsPerMm = 72 / 25.4;
} // namespace

TEST_F(PrintingTest, ThePageIsSetUpForThePrintersThereAre) {
    auto given = std::make_unique<GivenPrinters>();
    given->List.clear();
    GivenPrinters& printers = *given;
    mdApplication::InstalledPrinters = std::move(given);
    expectMessage(u"利用可能なプリンタがありません。"_s, [&] { window.ExecuteCommand(u"miFilePrinter"_s); });
    printers.List = {PrinterDescription::Fixed()};
    QTimer::singleShot(0, &window, [] {
        auto* dialog = qobject_cast<frmPageLayout*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        QTest::mouseClick(dialog->findChild<QWidget*>(u"Command1_0"_s), Qt::LeftButton);
    });
    window.ExecuteCommand(u"miFilePrinter"_s);
    EXPECT_EQ(mdApplication::Settings.Page.Printer, u"trace"_s);
}

TEST_F(PrintingTest, APageComesOutOfAQueueAsItWasSetUp) {
    const CupsService service;
    if (!service.IsRunning() || QStandardPaths::findExecutable(u"pdftotext"_s).isEmpty())
        GTEST_SKIP() << "no CUPS daemon can be started here, or no tool reads a PDF";
    ASSERT_TRUE(service.AddQueue(u"laser"_s) && service.SetDefault(u"laser"_s));
    openFirst(folder.Write(twoSquares().Bytes()));
    PageSettings& page = mdApplication::Settings.Page;
    page = {{}, PlotPrinter::Portrait, 9, {200, 300, 100, 400}, true, 10, 2, {}, 0, 0};
    page.Labels = {{u"above 変位"_s, true, 6, u"Arial,12"_s}, {u"right"_s, true, 17, u"Arial,12"_s}};
    window.ExecuteCommand(u"miFilePrint"_s);
    const QString file = service.Printed(u"laser"_s);
    EXPECT_TRUE(poppler(u"pdfinfo"_s, {file}).contains(u"595 x 842 pts (A4)"));
    EXPECT_EQ(poppler(u"pdfimages"_s, {u"-list"_s, file}).count(u'\n'), 2) << "no picture in it";
    const QString boxes = poppler(u"pdftotext"_s, {u"-bbox"_s, file, u"-"_s});
    const QPointF above = placeOf(boxes, u"above"_s), right = placeOf(boxes, u"right"_s);
    EXPECT_NEAR(above.x(), 20 * pointsPerMm, 1);
    EXPECT_NEAR(above.y(), 30 * pointsPerMm, 3);
    EXPECT_NEAR(right.y(), (297 - 40) * pointsPerMm, 3);
    EXPECT_TRUE(boxes.contains(u">変位<"));
    // The outline, a millimetre wide, at ten pixels a millimetre.
    const QString sheet = folder.Path(u"sheet"_s);
    poppler(u"pdftoppm"_s, {u"-r"_s, u"254"_s, u"-gray"_s, u"-singlefile"_s, file, sheet});
    const QImage image(sheet + u".pgm"_s);
    for (const auto& [x, y, dark] : {std::tuple(200, 1000, true),
                                     {190, 1000, false},
                                     {2000, 1000, true},
                                     {2010, 1000, false},
                                     {1000, 300, true},
                                     {1000, 290, false},
                                     {1000, 2570, true},
                                     {1000, 2580, false}})
        EXPECT_EQ(qGray(image.pixel(x, y)) < 128, dark) << x << ' ' << y;

    page.Printer = u"laser"_s;
    ASSERT_TRUE(service.Reject(u"laser"_s));
    Dialogs::Testing::QueueAnswer(MessageAnswer::Ok);
    window.ExecuteCommand(u"miFilePrint"_s);
    EXPECT_TRUE(Dialogs::Testing::Asked().last().Text.startsWith(u"laser\r\n"));
    ASSERT_TRUE(service.Remove(u"laser"_s));
    expectMessage(u"laser\r\nプリンタを開くことができません。"_s, [&] { window.ExecuteCommand(u"miFilePrint"_s); });
    EXPECT_EQ(page.Printer, u"laser"_s);
}
