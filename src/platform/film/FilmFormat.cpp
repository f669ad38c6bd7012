#include "platform/film/FilmFormat.h"

#include "platform/base/Literals.h"
#include "platform/base/Rounding.h"

#include <algorithm>

namespace {

constexpr unsigned avi = unsigned(FilmContainer::Avi), mp4 = unsigned(FilmContainer::Mp4),
                   webm = unsigned(FilmContainer::Webm), gif = unsigned(FilmContainer::Gif);

// The first row that fits a container is its usual one.
constexpr FilmCodec codecs[] = {
    {u"mpeg4", u"MPEG-4", "XVID", "mpeg4", "yuv420p", "yuv420p", avi, 31, 1, 90, nullptr},
    {u"raw", u"圧縮なし", "DIB ", "rawvideo", "bgr24", "bgr24", avi, 0, 0, 0, nullptr},
    {u"mjpeg", u"Motion JPEG", "MJPG", "mjpeg", "yuvj444p", "yuvj444p", avi, 31, 2, 90, nullptr},
    {u"utvideo", u"UT Video (可逆)", "ULRG", "utvideo", "gbrp", "gbrp", avi, 0, 0, 0, nullptr},
    {u"ffv1", u"FFV1 (可逆)", "FFV1", "ffv1", "bgr0", "bgr0", avi, 0, 0, 0, nullptr},
    {u"h264", u"H.264", "H264", "libx264", "yuv420p", "yuv444p", avi, 51, 8, 75, "crf"},
    {u"h264", u"H.264", "H264", "libx264", "yuv420p", nullptr, mp4, 51, 8, 75, "crf"},
    {u"mpeg4", u"MPEG-4", "XVID", "mpeg4", "yuv420p", "yuv420p", mp4, 31, 1, 90, nullptr},
    {u"vp9", u"VP9", "VP90", "libvpx-vp9", "yuv420p", "yuv420p", webm, 63, 10, 75, "crf"},
    {u"gif", u"GIF", "GIF ", "gif", "pal8", "pal8", gif, 0, 0, 0, nullptr},
};

constexpr struct {
    const char16_t* Ending;
    FilmContainer Container;
} containers[] = {{u".avi", FilmContainer::Avi},
                  {u".mp4", FilmContainer::Mp4},
                  {u".webm", FilmContainer::Webm},
                  {u".gif", FilmContainer::Gif}};

constexpr int millisecondsPerSecond = 1000;
constexpr int shortestGifInterval = 20;

template<class Matches>
const FilmCodec* findCodec(FilmContainer container, const Matches& matches) {
    const auto* const found =
        std::ranges::find_if(codecs, [&](const FilmCodec& codec) { return codec.Fits(container) && matches(codec); });
    return found == std::end(codecs) ? nullptr : found;
}

int evenIfNeeded(const FilmFormat& format, int side) {
    return format.Codec && !format.Codec->OddPixels ? side + side % 2 : side;
}

} // namespace

std::uint32_t FilmCodec::HandlerCode() const {
    std::uint32_t code = 0;
    for (int i = 3; i >= 0; --i)
        code = code << 8 | static_cast<unsigned char>(Handler[i]);
    return code;
}

namespace filmFormat {

std::optional<FilmContainer> ContainerFor(const QString& fileName) {
    for (const auto& row : containers)
        if (fileName.endsWith(QStringView(row.Ending), Qt::CaseInsensitive))
            return row.Container;
    return {};
}

std::vector<const FilmCodec*> CodecsFor(FilmContainer container) {
    std::vector<const FilmCodec*> fitting;
    for (const FilmCodec& codec : codecs)
        if (codec.Fits(container))
            fitting.push_back(&codec);
    return fitting;
}

const FilmCodec* FindCodec(FilmContainer container, QStringView name) {
    return findCodec(container, [&](const FilmCodec& codec) { return codec.Name == name; });
}

const FilmCodec* FindCodec(FilmContainer container, std::uint32_t handlerCode) {
    return findCodec(container, [=](const FilmCodec& codec) { return codec.HandlerCode() == handlerCode; });
}

FilmRate RateOf(const FilmFormat& format) {
    const int interval = std::max(format.Interval, 1);
    if (format.Container == FilmContainer::Avi)
        return {Round(10.0 * millisecondsPerSecond / interval), 10};
    const int shortest = format.Container == FilmContainer::Gif ? shortestGifInterval : 1;
    return {millisecondsPerSecond, std::max(interval, shortest)};
}

int WidthOf(const FilmFormat& format) {
    return evenIfNeeded(format, format.Width);
}

int HeightOf(const FilmFormat& format) {
    return evenIfNeeded(format, format.Height);
}

} // namespace filmFormat
