// The printed page as a PDF and as a preview, beside a paint of the same view on the screen.
#include "QuadMesh.h"
#include "Stage.h"
#include "Table.h"
#include "output/mdPage.h"
#include "output/pagePreview.h"
#include "platform/device/PaperSizes.h"
#include "platform/device/pictureFile.h"

namespace {

/// A session and the page of it that the settings start from.
struct PageStage {
    explicit PageStage(int elements) : Session(QuadMesh::Opened(elements, 1)) {
        mdPage::Serve(Session);
        mdPage::SetUp(Session.Settings.Page, Printer, Session.Plotter);
    }
    Stage Session;
    PlotPrinter Printer{PrinterDescription::Pdf(), PlotPrinter::Landscape, PaperSizes::A4};
};

void pdf(benchmark::State& state) {
    const int elements = int(state.range(0));
    PageStage stage(elements);
    qsizetype bytes = 0;
    const auto paint = [&](DeviceContext& device) { stage.Session.Plotter.DrawPage(device, stage.Printer); };
    Table::Measure(
        state, elements,
        {[&] { bytes = PdfPage(stage.Printer, {}, paint)().Bytes.size(); }, [&] { stage.Session.Paint(0); }, {}});
    state.SetLabel(std::to_string(bytes / elements) + " bytes an element");
}

void preview(benchmark::State& state) {
    const int elements = int(state.range(0));
    PageStage stage(elements);
    const QSize pixels = pagePreview::FittingSize(stage.Printer, {1280, 1024});
    Table::Measure(state, elements,
                   {[&] { benchmark::DoNotOptimize(pagePreview::Paint(stage.Session.Plotter, stage.Printer, pixels)); },
                    [&] { stage.Session.Paint(0); },
                    {}});
}

} // namespace

BENCHMARK(pdf)->Arg(10000)->Arg(100000)->UseManualTime();
BENCHMARK(preview)->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime();

int main(int argc, char** argv) {
    return Table::Main(argc, argv);
}
