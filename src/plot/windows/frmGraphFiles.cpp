// What leaves the graph window: files and what is copied.
#include "app/mdApplication.h"
#include "app/windows/GraphWindows.h"
#include "app/windows/ShowMessage.h"
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

void frmGraph::copyText() {
    QApplication::clipboard()->setText(mdGraph::GraphText(graph, u'\t'));
}

void frmGraph::copyImage() {
    QApplication::clipboard()->setImage(picScreen->Image());
}
