// Fuzz target: any bytes as a plot's style file, read, drawn, written and read again.
#include "Fuzz.h"
#include "platform/device/TraceDevice.h"
#include "platform/raster/RasterDevice.h"
#include "plot/clsPlot.h"

#include <limits>

namespace {

/// The style of a plot with something of everything that a style changes.
struct StyleFile : clsPlot {
    StyleFile() {
        GraphTitle = u"title"_s;
        constexpr float infinite = std::numeric_limits<float>::infinity();
        for (const float odd : {0.0f, 1.0f, 2.0f, std::nanf(""), infinite, -infinite, 1e-45f})
            for (const int series : {1, 2, 3}) {
                DataAdd(series, odd, float(series));
                DataAdd(series, float(series), odd);
                SetDataLineStyle(series, series - 1);
                SetDataDotStyle(series, series);
            }
        SetDataLineWidth(2, 5);
        PickupLineAdd(1.5f, 2, 0xff, 1, 0);
    }
    void Read(const QString& path) {
        PictureFolder = path.left(path.lastIndexOf(u'/'));
        StyleLoad(path);
    }
    void Write(const QString& path) const { StyleSave(path); }
    bool Draw() {
        const bool comesBack = isSound(ScaleBase) & isSound(ScalePlot);
        TraceDevice device(320, 240);
        SetDrawArea(0, 0, 320, 240);
        Redraw(&device, nullptr);
        require(device.Trace().size() < qsizetype(16) << 20, "a picture of this size takes few calls");
        static QImage image(160, 120, QImage::Format_RGB32);
        RasterDevice raster(image, 96);
        SetDrawArea(0, 0, image.width(), image.height());
        Redraw(&raster, nullptr);
        return comesBack;
    }

private:
    /// Checks one scale; false when a line of the file can't hold its font's name.
    bool isSound(int scale) const {
        require(std::isfinite(ScaleMax(scale)) && std::isfinite(ScaleMScale(scale)), "real numbers");
        const auto isWidth = [](int width) { return width >= 0 && width <= 32767; };
        require(isWidth(ScaleLineWidth(scale)) && isWidth(GridWidth(scale)), "widths");
        const FontObject& font = *ScaleFont(scale);
        require(font.Size >= 1 && font.Size <= 1638 && font.Name.size() <= 255, "fonts");
        return font.Name.trimmed() == font.Name && !font.Name.endsWith(u'\\') && !font.Name.contains(u'#') &&
               !font.Name.contains(u'"');
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    readDrawWriteRead<StyleFile>(data, size);
    return 0;
}
