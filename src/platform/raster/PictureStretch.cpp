#include "platform/raster/PictureStretch.h"

#include <QImage>
#include <vector>

namespace {
/// The unit, of `count`, that the middle of unit `index` out of `size` lies over.
int under(std::int64_t index, std::int64_t size, int count) {
    return int((2 * index + 1) * count / (2 * size));
}
} // namespace

void stretchPicture(const PixelSurface& surface, const DeviceRect& target, const QImage& picture) {
    const DeviceRect rect = normalised(target);
    const PixelSurface part = surface.Within(rect.Left, rect.Top, rect.Right, rect.Bottom);
    if (part.IsEmpty() || picture.isNull())
        return;
    const std::int64_t width = std::int64_t(rect.Right) - rect.Left;
    const std::int64_t height = std::int64_t(rect.Bottom) - rect.Top;
    std::vector<int> columns;
    for (int x = part.Left; x < part.Right; ++x)
        columns.push_back(under(std::int64_t(x) - rect.Left, width, picture.width()));

    const QImage::Format format =
        picture.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
    // Row by row, since a picture of few bits a pixel would be many times as large when converted as a whole.
    QImage line;
    int lineRow = -1;
    for (int y = part.Top; y < part.Bottom; ++y) {
        const int row = under(std::int64_t(y) - rect.Top, height, picture.height());
        if (row != lineRow && picture.format() != format)
            line = picture.copy(0, row, picture.width(), 1).convertToFormat(format);
        lineRow = row;
        const QImage& source = picture.format() == format ? picture : line;
        const auto* const pixels =
            reinterpret_cast<const std::uint32_t*>(source.constScanLine(&source == &line ? 0 : row));
        std::uint32_t* const drawn = part.Pixel(part.Left, y);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const std::uint32_t pixel = pixels[columns[i]];
            const unsigned cover = pixel >> 24;
            if (cover == 255 || format == QImage::Format_RGB32)
                drawn[i] = pixel | 0xff000000u;
            else if (cover != 0)
                drawn[i] = pixel + scalePixel(drawn[i], 255 - cover);
        }
    }
}
