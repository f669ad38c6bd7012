#include "output/filmFrames.h"

#include "platform/base/Parallel.h"

#include <new>

namespace filmFrames {

FilmFrame FrameOf(const QImage& sheet) {
    return {reinterpret_cast<const std::uint32_t*>(sheet.constBits()), sheet.width(), sheet.height(),
            sheet.bytesPerLine() / std::ptrdiff_t(sizeof(std::uint32_t))};
}

bool Write(FilmFile& film, const FilmFormat& format, int count, const PaintFrame& paint, const LoadProgress& progress) {
    if (film.Failure())
        return false;
    std::array<QImage, 2> sheets;
    for (QImage& sheet : sheets) {
        sheet = QImage(format.Width, format.Height, QImage::Format_RGB32);
        if (sheet.isNull())
            throw std::bad_alloc();
    }
    // Declared behind the sheets: its end is waited for before they go, whatever happens.
    std::future<bool> encoded;
    for (int i = 0; i < count; ++i) {
        QImage& sheet = sheets[std::size_t(i % 2)];
        sheet.fill(Qt::white);
        paint(i, sheet);
        if (encoded.valid() && !encoded.get())
            return false;
        encoded = startBeside([&film, frame = FrameOf(sheet)] { return film.Add(frame); });
        if (progress && !progress(i + 1, count))
            return false;
    }
    return !encoded.valid() || encoded.get();
}

} // namespace filmFrames
