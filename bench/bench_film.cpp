// Films of 100 thousand elements at 1280 x 1024: the whole export beside painting alone, and encoding alone beside the
// same. An element is a frame. A whole that costs no more than the dearer of the two could not be quicker.
#include "QuadMesh.h"
#include "Stage.h"
#include "Table.h"
#include "output/filmFrames.h"
#include "platform/raster/RasterDevice.h"

#include <QTemporaryDir>

namespace {

constexpr int frames = 10;

struct Film {
    FilmFormat Format;
    QTemporaryDir Folder;

    explicit Film(const FilmCodec& codec, FilmContainer container) {
        Format = {.Container = container, .Codec = &codec, .Interval = 100};
        Format.Width = Stage::PictureSize.Width;
        Format.Height = Stage::PictureSize.Height;
    }
    void Write(const filmFrames::PaintFrame& paint) const {
        FilmFile film(Folder.filePath(QStringLiteral("film")), Format);
        filmFrames::Write(film, Format, frames, paint);
        if (film.Commit())
            std::abort();
    }
};

void paintStep(Stage& stage, int step, QImage& sheet) {
    stage.LoadStep(step, 0);
    RasterDevice device(sheet, 96);
    stage.Draw(device);
}

void paintAll(Stage& stage, QImage& sheet) {
    for (int step = 0; step < frames; ++step) {
        sheet.fill(Qt::white);
        paintStep(stage, step, sheet);
    }
}

void measure(benchmark::State& state, const FilmCodec& codec, FilmContainer container, bool whole) {
    Stage stage(QuadMesh::Opened(100000, frames));
    const Film film(codec, container);
    std::vector<QImage> painted;
    QImage sheet(film.Format.Width, film.Format.Height, QImage::Format_RGB32);
    for (int step = 0; step < frames && !whole; ++step) {
        sheet.fill(Qt::white);
        paintStep(stage, step, sheet);
        painted.push_back(sheet.copy());
    }
    const auto exported = [&] { film.Write([&](int frame, QImage& target) { paintStep(stage, frame, target); }); };
    const auto encoded = [&] { film.Write([&](int frame, QImage& target) { target = painted[std::size_t(frame)]; }); };
    Table::Measure(state, frames,
                   {whole ? std::function<void()>(exported) : encoded, [&] { paintAll(stage, sheet); }, {}});
}

} // namespace

int main(int argc, char** argv) {
    for (const FilmContainer container :
         {FilmContainer::Avi, FilmContainer::Mp4, FilmContainer::Webm, FilmContainer::Gif})
        for (const FilmCodec* codec : filmFormat::CodecsFor(container))
            for (const bool whole : {true, false}) {
                const std::string name = std::string(whole ? "film/" : "encode/") + codec->Encoder + "/" +
                                         std::to_string(unsigned(container));
                benchmark::RegisterBenchmark(name.c_str(), measure, *codec, container, whole)
                    ->UseManualTime()
                    ->Iterations(3);
            }
    return Table::Main(argc, argv);
}
