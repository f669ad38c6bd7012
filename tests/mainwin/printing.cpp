// A page printed from the main window through a real print service.
#include "CupsService.h"
#include "mainwin/WindowTest.h"
#include "platform/device/PlotPrinter.h"

#include <QRegularExpression>
#include <QStandardPaths>

namespace {
/// What one of poppler's tools says.
QString poppler(const QString& tool, const QStringList& arguments) {
    QProcess process;
    process.start(tool, arguments);
    EXPECT_TRUE(process.waitForFinished() && process.exitCode() == 0) << tool.toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

/// Left and bottom of a word, in millimetres from the sheet's left top.
QPointF placeOf(const QString& boxes, const QString& word) {
    const QRegularExpression box(
        u"xMin=\"([\\d.]+)\" yMin=\"[\\d.]+\" xMax=\"[\\d.]+\" yMax=\"([\\d.]+)\">%1<"_s.arg(word));
    const auto match = box.match(boxes);
    return QPointF(match.captured(1).toDouble(), match.captured(2).toDouble()) * 25.4 / 72;
}
} // namespace

TEST_F(WindowTest, APageComesOutOfAQueueAsItWasSetUp) {
    const CupsService service;
    if (!service.IsRunning() || QStandardPaths::findExecutable(u"pdftotext"_s).isEmpty())
        GTEST_SKIP() << "no CUPS daemon can be started here, or no tool reads a PDF";
    ASSERT_TRUE(service.AddQueue(u"laser"_s) && service.Run(u"lpadmin"_s, {u"-d"_s, u"laser"_s}));
    openFirst(folder.Write(twoSquares().Bytes()));
    mdApplication::Settings.Page = {
        {},   PlotPrinter::Portrait,
        9,    {200, 300, 100, 400},
        true, 10,
        2,    {{u"above 変位"_s, true, 6, u"Arial,12"_s}, {u"right"_s, true, 17, u"Arial,12"_s}},
        0,    0};
    window.ExecuteCommand(u"miFilePrint"_s);
    const QString file = service.Printed(u"laser"_s);
    EXPECT_TRUE(poppler(u"pdfinfo"_s, {file}).contains(u"595 x 842 pts (A4)"));
    EXPECT_EQ(poppler(u"pdfimages"_s, {u"-list"_s, file}).count(u'\n'), 2) << "no picture in it";
    const QString boxes = poppler(u"pdftotext"_s, {u"-bbox"_s, file, u"-"_s});
    EXPECT_NEAR(placeOf(boxes, u"above"_s).x(), 20, 0.4);
    EXPECT_NEAR(placeOf(boxes, u"above"_s).y(), 30, 1);
    EXPECT_NEAR(placeOf(boxes, u"right"_s).y(), 297 - 40, 1);
    EXPECT_TRUE(boxes.contains(u">変位<"));
    // The outline, a millimetre wide, at ten pixels a millimetre.
    const QString sheet = folder.Path(u"sheet"_s);
    poppler(u"pdftoppm"_s, {u"-r"_s, u"254"_s, u"-gray"_s, u"-singlefile"_s, file, sheet});
    const QImage image(sheet + u".pgm"_s);
    for (const auto& [x, y] : {std::pair(200, 1000), {2000, 1000}, {1000, 300}, {1000, 2570}}) {
        EXPECT_LT(qGray(image.pixel(x, y)), 128) << x << ' ' << y;
        const QPoint outside(x == 200 ? -10 : x == 2000 ? 10 : 0, y == 300 ? -10 : y == 2570 ? 10 : 0);
        EXPECT_GT(qGray(image.pixel(QPoint(x, y) + outside)), 128) << x << ' ' << y;
    }
}
