// What leaves the graph window: files, pages, and what is copied.
#include "app/mdApplication.h"
#include "app/windows/GraphWindows.h"
#include "app/windows/ShowMessage.h"
#include "platform/device/Printers.h"
#include "platform/raster/pictureFormats.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/PictureBox.h"
#include "plot/windows/frmGraph.h"

#include <QApplication>
#include <QClipboard>

using namespace mdApplication;

void frmGraph::save() {
    LowerGraphWindows(true);
    const std::optional<QString> path =
        Dialogs::SaveFileName(this, tr("グラフの保存"), PathPart(model.FileName, Folder) + u"*.csv",
                              u"CSVファイル(*.csv)|*.csv|PNGファイル(*.png)|*.png|SVGファイル(*.svg)|*.svg|"
                              "PDFファイル(*.pdf)|*.pdf|すべてのファイル(*.*)|*.*"_s);
    LowerGraphWindows(false);
    if (!path)
        return;
    std::optional<QString> problem;
    LongWork work(tr("保存中..."), tell);
    work.Run([&](const LongWork::Progress&) { problem = SaveContent(*path, contentOf(*path)); });
    if (problem)
        ShowMessage(*path + u"\r\n"_s + *problem, MessageStyle::Stop);
}

PictureContent frmGraph::contentOf(const QString& path) const {
    const PictureFormat format = PictureFormatFor(path);
    if (!format)
        return {mdGraph::GraphTextFile(graph, u','), {}};
    PictureFile file{.Title = graph.Caption, .Size = {picScreen->width(), picScreen->height()}};
    if (format == &PngPicture) {
        file.Size = picScreen->PixelSize();
        file.DotsPerInch = picScreen->DotsPerInch();
    }
    // The screen's picture goes on with its own lengths and positions.
    Graph copy = graph;
    return format(file, [&](DeviceContext& device) {
        mdGraph::ApplyGraphStyle(settings, model, device, copy);
        mdGraph::DrawGraph(device, settings.Graph, copy);
    })();
}

/// As the style was applied for the screen; only places and fonts are those of the page.
void frmGraph::print() {
    const PageSettings& page = settings.Page;
    const std::optional<PlotPrinter> printer = printers.Open(page.Printer, page.Orientation, page.PaperSize);
    if (!printer) {
        ShowMessage(tr("プリンタ[%1]を開くことができません。").arg(page.Printer), MessageStyle::Stop);
        return;
    }
    LowerGraphWindows(true);
    Graph copy = graph;
    const PrintResult result =
        printers.Print(*printer, ApplicationTitle + u' ' + windowTitle(),
                       [&](DeviceContext& device) { mdGraph::PrintGraph(device, settings, copy); });
    LowerGraphWindows(false);
    if (result.End == PrintResult::Refused)
        ShowMessage(tr("プリンタを開くことができません。") + u"\r\n"_s + result.Problem, MessageStyle::Stop);
}

void frmGraph::copyText() {
    QApplication::clipboard()->setText(mdGraph::GraphText(graph, u'\t'));
}

void frmGraph::copyImage() {
    QApplication::clipboard()->setImage(picScreen->Image());
}
