// The preview against what comes out of the printer.
#include "output/pagePreview.h"

#include "output/mdPage.h"
#include "platform/device/Fonts.h"
#include "platform/device/PaperSizes.h"
#include "platform/device/pictureFile.h"
#include "platform/raster/PreviewDevice.h"
#include "platform/raster/pictureFormats.h"
#include "result/ModelTest.h"

#include <QProcess>
#include <QStandardPaths>

namespace {

struct PreviewTest : testing::Test {
    PreviewTest() {
        Fonts::InstallSubstitutions();
        mdPage::Serve(session);
        EXPECT_TRUE(session.Open(folder.Write(twoSquares().Bytes())) && session.LoadStep(0, 0));
        PageSettings& page = session.Settings.Page;
        for (int i = 0; i < 18; ++i)
            page.Labels.append({u"%file% 位置%1"_s.arg(i), true, i, u"\"ＭＳ Ｐ明朝\",%1,b"_s.arg(8 + i)});
        page.Frame = true;
        page.FrameSize = 10;
    }
    PlotPrinter printer(int orientation, int paper) {
        PlotPrinter result(PrinterDescription::Pdf(), orientation, paper);
        mdPage::SetUp(session.Settings.Page, result, session.Plotter);
        return result;
    }
    /// The printed page, rasterised by someone else.
    QImage printed(const PlotPrinter& on, QSize pixels) {
        const Paint paint = [&](DeviceContext& device) { session.Plotter.DrawPage(device, on); };
        const QString pdf = folder.Write(PdfPage(on, {}, paint)().Bytes, u"o.pdf"_s);
        const QString png = folder.Path(u"o"_s);
        const QString dotsPerInch = QString::number(pixels.width() / on.PaperWidthMm() * 25.4, 'f', 4);
        QProcess::execute(u"pdftoppm"_s, {u"-png"_s, u"-singlefile"_s, u"-r"_s, dotsPerInch, pdf, png});
        // The size of a PDF's sheet is whole points.
        return QImage(png + u".png").convertToFormat(QImage::Format_RGB32).copy({{0, 0}, pixels});
    }

    TestFolder folder;
    Session session;
};

/// The greatest difference of a colour channel where four pixels each way have run into one: how a line less than a
/// pixel wide looks is a matter of taste.
int difference(const QImage& a, const QImage& b) {
    const auto coarse = [](const QImage& image) {
        return image.scaled(image.size() / 4, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    const QImage one = coarse(a), other = coarse(b);
    int greatest = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < 4 * one.width(); ++x)
            greatest = std::max(greatest, std::abs(one.constScanLine(y)[x] - other.constScanLine(y)[x]));
    return greatest;
}

TEST_F(PreviewTest, ShowsAtEverySizeWhatIsPrinted) {
    if (QStandardPaths::findExecutable(u"pdftoppm"_s).isEmpty())
        GTEST_SKIP() << "no pdftoppm";
    constexpr int a3 = 8;
    const std::tuple<int, int, QSize> pages[] = {{PlotPrinter::Landscape, PaperSizes::A4, {840, 594}},
                                                 {PlotPrinter::Portrait, PaperSizes::A4, {420, 594}},
                                                 {PlotPrinter::Landscape, a3, {1680, 1188}}};
    for (const auto& [orientation, paper, size] : pages) {
        const PlotPrinter on = printer(orientation, paper);
        EXPECT_EQ(pagePreview::FittingSize(on, size + QSize(0, 10)), size);
        const QImage preview = pagePreview::Paint(session.Plotter, on, size), page = printed(on, size);
        ASSERT_EQ(page.size(), size);
        EXPECT_LT(difference(preview, page), 120) << size.width();
        session.Settings.Page.Labels.back().Position = 11;
        EXPECT_GT(difference(pagePreview::Paint(session.Plotter, on, size), page), 120) << "a label elsewhere";
        session.Settings.Page.Labels.back().Position = 17;
    }
}

TEST_F(PreviewTest, MeasuresTextAsThePrinterDoes) {
    const PlotPrinter on = printer(PlotPrinter::Portrait, PaperSizes::A4);
    QImage picture(40, 60, QImage::Format_RGB32);
    PreviewDevice preview(picture, on.Measures());
    PdfPage(on, {}, [&](DeviceContext& device) {
        const QString text = u"Velorin 漢字 1.25e-3"_s;
        for (const auto& [face, height] :
             {std::pair(u"ＭＳ Ｐ明朝"_s, 200), {u"Arial"_s, 33}, {u"ＭＳ ゴシック"_s, 151}}) {
            device.SelectFont({.Height = height, .Weight = 700, .Face = face});
            preview.SelectFont({.Height = height, .Weight = 700, .Face = face});
            EXPECT_EQ(preview.MeasureText(text), device.MeasureText(text)) << height;
        }
    });
}

TEST_F(PreviewTest, StopsAndLeavesThePositionsOfTheScreenAlone) {
    const PlotPrinter on = printer(PlotPrinter::Portrait, PaperSizes::A4);
    session.View.NodePoints = {{1, 2}};
    EXPECT_THROW(pagePreview::Paint(session.Plotter, on, {100, 100}, [] { return false; }), DrawingStopped);
    const Paint paint = [&](DeviceContext& device) { session.Plotter.DrawPage(device, on); };
    EXPECT_THROW(PdfPage(on, {}, paint, [] { return false; }), DrawingStopped);
    for (const PictureFormat format : {PngPicture, SvgPicture, PdfPicture})
        EXPECT_THROW(format({.Title = {}, .GoesOn = [] { return false; }}, paint), DrawingStopped);
    pagePreview::Paint(session.Plotter, on, {1, 1});
    EXPECT_EQ(session.View.NodePoints, (std::vector<DevicePoint>{{1, 2}}));
    EXPECT_FALSE(session.View.CoordConverter.has_value());
}

} // namespace
