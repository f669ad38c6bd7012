// Sheets in printers: their measures, what can be reached of them, and the page that comes of it.
#include "platform/device/PlotPrinter.h"
#include "platform/device/PaperSizes.h"
#include "platform/device/pictureFile.h"

#include <QRegularExpression>
#include <gtest/gtest.h>

namespace {
std::array<int, 8> capsOf(const DeviceContext& device) {
    std::array<int, 8> caps{4, 6, 8, 10, 110, 111, 112, 113};
    for (int& number : caps)
        number = device.GetDeviceCaps(DeviceCaps(number));
    return caps;
}
} // namespace

TEST(PlotPrinter, MeasuresTurnWithTheSheetAndTheDocumentStaysWhereItIs) {
    // 100 x 200 mm of which 1, 2, 3 and 4 mm (from the left on, clockwise) are out of reach, at ten dots a millimetre.
    const PrinterDescription told{u"p"_s, {{7, u"a"_s, 50, 60}, {300, u"b"_s, 100, 200, {1, 2, 3, 4}}}, 300, 254};
    struct {
        int Orientation, Paper;
        std::array<int, 8> Caps;
        DeviceRect Document; // margins of 10, 20, 30.04 and 40 mm
    } const rows[] = {{1, 300, {96, 194, 960, 1940, 1000, 2000, 10, 20}, {90, 180, 690, 1580}},
                      {2, 9, {192, 94, 1920, 940, 2000, 1000, 40, 30}, {60, 170, 1660, 570}},
                      {0, 7, {60, 50, 600, 500, 600, 500, 0, 0}, {100, 200, 300, 100}}};
    for (const auto& row : rows) {
        PlotPrinter printer(told, row.Orientation, row.Paper);
        printer.SetPaperSize(1234);
        EXPECT_EQ(printer.PaperSize(), row.Paper == 9 ? 300 : row.Paper) << "the default for one that it hasn't";
        printer.Document() = {10, 20, 30.04f, 40};
        EXPECT_EQ(printer.DocumentRect(), row.Document);
        printer.SetUnit(PlotUnit::Dots);
        EXPECT_EQ(printer.PaperWidth(), row.Caps[4]);
        printer.Document() = {100, 200, 300.4f, 400};
        EXPECT_EQ(printer.DocumentRect(), row.Document);
        const auto encoding = PdfPage(printer, u"t"_s, [&](DeviceContext& device) {
            EXPECT_EQ(capsOf(device), row.Caps);
            device.MoveTo({0, 0});
            device.LineTo({device.GetDeviceCaps(DeviceCaps::HorzRes), 0});
        });
        const QString page = QString::fromLatin1(encoding().Bytes);
        const auto box = QRegularExpression(u"/MediaBox \\[0 0 ([\\d.]+) ([\\d.]+)\\]"_s).match(page);
        EXPECT_NEAR(box.captured(1).toDouble(), printer.PaperWidthMm() / 25.4 * 72, 0.5) << "whole points";
        EXPECT_NEAR(box.captured(2).toDouble(), printer.PaperHeightMm() / 25.4 * 72, 0.5);
    }
    for (const PaperSize& paper : PaperSizes::Table())
        EXPECT_EQ(PaperSizes::CodeOf(paper.WidthMm + 0.4, paper.HeightMm - 0.4), paper.Code) << "each size once";
    EXPECT_FALSE(PaperSizes::CodeOf(297, 210) || PaperSizes::Find(2));
}
