// Painting layer by layer and as a whole, with all of the mesh in view and with 1 % of it, on one core and on two.
// Times are per element of the mesh, in view or not.
#include "QuadMesh.h"
#include "Stage.h"
#include "Table.h"
#include "platform/raster/PngFile.h"
#include "view/scene/contour.h"
#include "view/scene/legends.h"
#include "view/scene/vectors.h"

#include <QBuffer>
#include <pthread.h>

namespace {

/// What is painted. `Prepare` sets what is not the default; `Paint` is what is timed.
struct Layer {
    const char* Name;
    const char* Budget; ///< for two cores and all in view
    void (*Prepare)(ApplicationSettings&);
    void (*Paint)(PlotCanvas&, const Scene&, PaintContext&);
};

const Layer layers[] = {
    {"devicePoints", "", [](ApplicationSettings&) {},
     [](PlotCanvas& canvas, const Scene& scene, PaintContext& context) {
         mdScene::ComputeDevicePoints(canvas.Converter(), canvas.Window(), scene, context);
     }},
    {"mesh", "100 ns", [](ApplicationSettings&) {},
     [](PlotCanvas& canvas, const Scene& scene, PaintContext&) {
         mdScene::DrawMesh(canvas.hDC(), canvas.Converter(), scene);
     }},
    {"outline", "", [](ApplicationSettings& settings) { settings.Window.Mesh = false; },
     [](PlotCanvas& canvas, const Scene& scene, PaintContext&) {
         mdScene::DrawMesh(canvas.hDC(), canvas.Converter(), scene);
     }},
    {"contour", "150 ns", [](ApplicationSettings&) {},
     [](PlotCanvas& canvas, const Scene& scene, PaintContext& context) {
         mdScene::DrawContour(canvas.hDC(), scene, context);
     }},
    {"vectors", "",
     [](ApplicationSettings& settings) {
         settings.Vector.ItemSets = {{QStringLiteral("displacement"), 0, 1}};
         settings.Vector.ItemSetCount = 1;
         settings.Vector.DefaultItemSet = 0;
     },
     [](PlotCanvas& canvas, const Scene& scene, PaintContext& context) {
         mdScene::DrawVectors(canvas.hDC(), canvas.Converter(), canvas.Window(), scene, context);
     }},
    {"numbers", "", [](ApplicationSettings&) {},
     [](PlotCanvas& canvas, const Scene& scene, PaintContext&) {
         mdScene::DrawValues(canvas.hDC(), canvas.AttributeDC(), scene);
     }},
    {"scene", "90 ns", [](ApplicationSettings&) {},
     [](PlotCanvas& canvas, const Scene& scene, PaintContext&) { mdScene::PaintScene(canvas, false, scene); }},
};

/// All threads that are started from here on share this many cores.
void useCores(int count) {
    cpu_set_t cores;
    CPU_ZERO(&cores);
    for (int core = 0; core < count; ++core)
        CPU_SET(core, &cores);
    pthread_setaffinity_np(pthread_self(), sizeof cores, &cores);
}

void paint(benchmark::State& state, const Layer& layer) {
    const int elements = int(state.range(0));
    const int threads = int(state.range(1));
    const double percentInView = double(state.range(2));
    Stage stage(QuadMesh::Opened(elements, 1));
    layer.Prepare(stage.Settings);
    stage.ShowPart(percentInView / 100);
    useCores(threads);
    stage.Paint(threads, [&](PlotCanvas& canvas, const Scene& scene) {
        PaintContext context;
        mdScene::ComputeDevicePoints(canvas.Converter(), canvas.Window(), scene, context);
        Table::Measure(state, elements, {[&] { layer.Paint(canvas, scene, context); }, {}, {}});
    });
    const bool isScene = std::string_view(layer.Name) == "scene";
    if (threads == 2)
        state.SetLabel(percentInView == 100 ? layer.Budget : isScene ? "8 ns" : "");
}

/// The file of a picture beside the toolkit's; an element is a pixel.
void encodePng(benchmark::State& state) {
    Stage stage(QuadMesh::Opened(100000, 1));
    stage.Paint(0);
    const QImage& picture = stage.Picture();
    Table::Measure(state, std::int64_t(picture.width()) * picture.height(),
                   {[&] { benchmark::DoNotOptimize(PngContent(picture)); },
                    [&] {
                        QBuffer buffer;
                        buffer.open(QIODevice::WriteOnly);
                        picture.save(&buffer, "PNG");
                    },
                    {}});
    state.SetLabel("0.35");
}

/// A vector picture of 1 % of the mesh beside that of the whole.
void drawPart(benchmark::State& state, PictureFormat format) {
    Stage whole(QuadMesh::Opened(100000, 1)), part(whole.Model);
    part.ShowPart(0.01);
    const auto draw = [format](Stage& stage) {
        format({.Size = Stage::PictureSize}, [&stage](DeviceContext& device) { stage.Draw(device); });
    };
    Table::Measure(state, whole.Model.Mesh.ElementCount, {[&] { draw(part); }, [&] { draw(whole); }, {}});
    state.SetLabel("0.5");
}

} // namespace

int main(int argc, char** argv) {
    for (const Layer& layer : layers)
        benchmark::RegisterBenchmark(layer.Name, paint, layer)
            ->ArgNames({"", "cores", "view%"})
            ->ArgsProduct({{10000, 100000, 1000000}, {1, 2}, {100, 1}})
            ->UseManualTime();
    benchmark::RegisterBenchmark("png", encodePng)->UseManualTime();
    benchmark::RegisterBenchmark("pdf/part", drawPart, PdfPicture)->UseManualTime();
    benchmark::RegisterBenchmark("svg/part", drawPart, SvgPicture)->UseManualTime();
    return Table::Main(argc, argv);
}
