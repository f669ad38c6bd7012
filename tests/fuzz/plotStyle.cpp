// Fuzz target: any bytes as a plot's style file, loaded, drawn, written and read again.
#include "Fuzz.h"
#include "platform/device/TraceDevice.h"
#include "platform/raster/RasterDevice.h"
#include "plot/clsPlot.h"

#include <QTemporaryDir>
#include <limits>

namespace {

/// A plot with something of everything that a style changes.
struct Drawn : clsPlot {
    explicit Drawn(const QString& folder) {
        PictureFolder = folder;
        GraphTitle = u"title"_s;
        for (const int series : {1, 2})
            for (int i = 0; i < 4; ++i)
                DataAdd(series, float(i), float(i * i - series));
        constexpr float nan = std::numeric_limits<float>::quiet_NaN(),
                        infinite = std::numeric_limits<float>::infinity();
        for (const float odd : {nan, infinite, -infinite, 1e-45f}) {
            DataAdd(3, odd, 1);
            DataAdd(3, 2, odd);
        }
        SetDataLineWidth(2, 5);
        for (const int series : {1, 2, 3}) {
            SetDataLineStyle(series, series - 1);
            SetDataDotStyle(series, series);
        }
        PickupLineAdd(1.5f, 2, 0xff, 1, 0);
        SetDrawArea(0, 0, 320, 240);
    }
};

void draw(clsPlot& plot) {
    TraceDevice device(320, 240);
    plot.Redraw(&device, nullptr);
    constexpr qsizetype most = qsizetype(16) << 20;
    require(device.Trace().size() < most, "a picture of this size takes few calls");

    static QImage image(160, 120, QImage::Format_RGB32);
    RasterDevice raster(image, 96);
    plot.SetDrawArea(0, 0, image.width(), image.height());
    plot.Redraw(&raster, nullptr);
}

void requireRanges(const clsPlot& plot) {
    const auto isWidth = [](int width) { return width >= 0 && width <= 32767; };
    for (const int scale : {clsPlot::ScaleBase, clsPlot::ScalePlot}) {
        require(isWidth(plot.ScaleLineWidth(scale)) && isWidth(plot.GridWidth(scale)), "widths");
        require(std::isfinite(plot.ScaleMax(scale)) && std::isfinite(plot.ScaleMScale(scale)), "real numbers");
        const FontObject& font = *plot.ScaleFont(scale);
        require(font.Size >= 1 && font.Size <= 1638 && font.Name.size() <= 255, "fonts");
    }
}

/// A name that a line of the file can't hold doesn't come back.
bool nameComesBack(const QString& name) {
    const bool bare = name.startsWith(u' ') || name.endsWith(u' ') || name.endsWith(u'\\');
    return !bare && !name.contains(u'#') && !name.contains(u'"');
}

QByteArray styleOf(const clsPlot& plot, const QString& path) {
    plot.StyleSave(path);
    return bytesOf(path);
}

/// Without the keys of the grid that don't come back.
QByteArray withoutGrid(const QByteArray& style) {
    QByteArray rest;
    for (const QByteArray& line : style.split('\n'))
        if (!line.startsWith("    glcolor") && !line.startsWith("    glwiwdth"))
            rest += line + '\n';
    return rest;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Program program;
    static const MemoryFile input;
    static const QTemporaryDir folder(u"/dev/shm/velorin-XXXXXX"_s);
    const QString path = folder.filePath(u"saved.style"_s);
    input.Write(data, size);
    Drawn read(folder.path()), once(folder.path()), twice(folder.path());
    read.StyleLoad(input.Path());
    requireRanges(read);
    const bool namesComeBack = nameComesBack(read.ScaleFont(clsPlot::ScaleBase)->Name) &&
                               nameComesBack(read.ScaleFont(clsPlot::ScalePlot)->Name);
    if (namesComeBack) {
        const QByteArray first = styleOf(read, path);
        once.StyleLoad(path);
        const QByteArray second = styleOf(once, path);
        require(withoutGrid(second) == withoutGrid(first), "all but the grid comes back");
        twice.StyleLoad(path);
        require(styleOf(twice, path) == second, "from then on all comes back");
    }
    draw(read);
    return 0;
}
