#include "platform/device/PlotPrinter.h"

#include "platform/base/Literals.h"
#include "platform/base/Rounding.h"
#include "platform/device/PaperSizes.h"

namespace {
QList<PrinterPaper> customaryPapers() {
    QList<PrinterPaper> papers;
    for (const PaperSize& row : PaperSizes::Table())
        papers.append({row.Code, row.Name.toString(), row.WidthMm, row.HeightMm});
    return papers;
}

qsizetype placeOf(const QList<PrinterPaper>& papers, int code, qsizetype otherwise) {
    const auto found = std::ranges::find(papers, code, &PrinterPaper::Code);
    return found == papers.end() ? otherwise : found - papers.begin();
}
} // namespace

PrinterDescription PrinterDescription::Pdf() {
    constexpr int finest = 1200;
    PrinterDescription printer{u"PDF"_s, customaryPapers(), PaperSizes::A4, finest};
    printer.Papers.append({PaperSizes::FirstOwn, u"A1"_s, 594, 841});
    printer.Papers.append({PaperSizes::FirstOwn + 1, u"A0"_s, 841, 1189});
    return printer;
}

PrinterDescription PrinterDescription::Fixed() {
    return {u"trace"_s, customaryPapers(), PaperSizes::A4, 254};
}

PrinterDescription PrinterDescription::OfSheet(double widthMm, double heightMm, int dotsPerInch) {
    return {{}, {{PaperSizes::FirstOwn, {}, widthMm, heightMm}}, PaperSizes::FirstOwn, dotsPerInch};
}

PlotPrinter::PlotPrinter(PrinterDescription told, int orientationToUse, int paperSize)
    : description(std::move(told)), orientation(orientationToUse == Portrait ? Portrait : Landscape),
      paper(placeOf(description.Papers, paperSize, placeOf(description.Papers, description.DefaultPaper, 0))) {}

void PlotPrinter::SetPaperSize(int code) {
    paper = placeOf(description.Papers, code, paper);
}

double PlotPrinter::PaperWidth() const {
    return PaperWidthMm() * unitsPerMm();
}

double PlotPrinter::PaperHeight() const {
    return PaperHeightMm() * unitsPerMm();
}

SheetMargins PlotPrinter::unprintable() const {
    const SheetMargins& upright = Paper().Unprintable;
    if (isUpright())
        return upright;
    // Which way a page across is turned is for the printer's software to know: either way all must be within reach.
    const float ends = std::max(upright.Top, upright.Bottom), sides = std::max(upright.Left, upright.Right);
    return {ends, sides, ends, sides};
}

DeviceMeasures PlotPrinter::Measures() const {
    const SheetMargins lost = unprintable();
    const auto dots = [this](double mm) { return Round(mm * dotsPerMm()); };
    DeviceMeasures measures;
    measures.DotsPerInchX = measures.DotsPerInchY = description.DotsPerInch;
    measures.SheetWidth = dots(PaperWidthMm());
    measures.SheetHeight = dots(PaperHeightMm());
    measures.OffsetX = dots(lost.Left);
    measures.OffsetY = dots(lost.Top);
    measures.Width = std::max(0, measures.SheetWidth - measures.OffsetX - dots(lost.Right));
    measures.Height = std::max(0, measures.SheetHeight - measures.OffsetY - dots(lost.Bottom));
    return measures;
}

DeviceRect PlotPrinter::DocumentRect() const {
    const DeviceMeasures sheet = Measures();
    const double perUnit = dotsPerMm() / unitsPerMm();
    return {Round(perUnit * double(document.Left) - sheet.OffsetX),
            Round(perUnit * double(document.Top) - sheet.OffsetY),
            Round(sheet.SheetWidth - perUnit * double(document.Right) - sheet.OffsetX),
            Round(sheet.SheetHeight - perUnit * double(document.Bottom) - sheet.OffsetY)};
}
