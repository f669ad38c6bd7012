#include "platform/film/FilmFile.h"

#include "platform/base/Literals.h"
#include "platform/base/WholeFile.h"
#include "platform/film/FfmpegEncoder.h"

#include <QtEndian>
#include <cstring>

namespace {

using Stage = FilmFailure::Stage;

constexpr int bufferSize = 1 << 18;
constexpr double bytesPerDataRate = 1000;

/// The beginning of an AVI file with one stream, in which these numbers stand at fixed places.
struct AviHead {
    static constexpr qint64 StreamMark = 100, Stream = 108, Picture = 172, End = 212;
    static constexpr qint64 Handler = Stream + 4, Scale = Stream + 20, Rate = Stream + 24, Quality = Stream + 40,
                            PictureBits = Picture + 14, PictureBytes = Picture + 20;
    static constexpr std::uint32_t UsualQuality = 1000;
};

const char* muxerOf(FilmContainer container) {
    switch (container) {
    case FilmContainer::Mp4:
        return "mp4";
    case FilmContainer::Webm:
        return "webm";
    case FilmContainer::Gif:
        return "gif";
    default:
        return "avi";
    }
}

} // namespace

/// The file under what FFmpeg writes, and all that it writes with.
struct FilmFile::Parts {
    Parts(const QString& path, const FilmFormat& wanted) : format(wanted), file(path) {}
    ~Parts();

    int Begin();
    int Open();
    int Write(const FilmFrame* frame);
    void StateAviNumbers();

    static int WriteBytes(void* parts, std::uint8_t* bytes, int count);
    static std::int64_t Seek(void* parts, std::int64_t position, int from);

    FilmFormat format;
    WholeFile file;
    qint64 position = 0, end = 0;
    std::array<char, AviHead::End> head{}; ///< what stands at the file's beginning
    FfmpegEncoder encoder;
    const FfmpegLibrary& ffmpeg = FfmpegLibrary::Get();
    AVFormatContext* context = nullptr;
    AVIOContext* bytes = nullptr;
    AVStream* stream = nullptr;
};

FilmFile::Parts::~Parts() {
    if (context)
        ffmpeg.avformat_free_context(context);
    if (bytes) {
        ffmpeg.av_free(bytes->buffer);
        ffmpeg.avio_context_free(&bytes);
    }
}

int FilmFile::Parts::WriteBytes(void* opaque, std::uint8_t* from, int count) {
    Parts& parts = *static_cast<Parts*>(opaque);
    const char* const start = reinterpret_cast<const char*>(from);
    if (parts.position < qint64(parts.head.size()))
        std::memcpy(parts.head.data() + parts.position, start,
                    std::size_t(std::min<qint64>(count, qint64(parts.head.size()) - parts.position)));
    const qint64 again = std::min<qint64>(count, parts.end - parts.position);
    if (again > 0 && !parts.file.Rewrite(parts.position, start, again))
        return AVERROR(EIO);
    if (again < count && parts.file.write(start + again, count - again) < 0)
        return AVERROR(EIO);
    parts.position += count;
    parts.end = std::max(parts.end, parts.position);
    return count;
}

std::int64_t FilmFile::Parts::Seek(void* opaque, std::int64_t position, int from) {
    Parts& parts = *static_cast<Parts*>(opaque);
    if (from == AVSEEK_SIZE)
        return parts.end;
    const qint64 start = from == SEEK_CUR ? parts.position : from == SEEK_END ? parts.end : 0;
    if (start + position < 0 || start + position > parts.end)
        return AVERROR(EINVAL);
    return parts.position = start + position;
}

int FilmFile::Parts::Begin() {
    const char* const muxer = muxerOf(format.Container);
    if (const int status = ffmpeg.avformat_alloc_output_context2(&context, nullptr, muxer, nullptr); status < 0)
        return status;
    return encoder.Open(format, (context->oformat->flags & AVFMT_GLOBALHEADER) != 0);
}

int FilmFile::Parts::Open() {
    auto* const buffer = static_cast<unsigned char*>(ffmpeg.av_malloc(bufferSize));
    bytes = buffer ? ffmpeg.avio_alloc_context(buffer, bufferSize, 1, this, nullptr, WriteBytes, Seek) : nullptr;
    if (!bytes) {
        ffmpeg.av_free(buffer);
        return AVERROR(ENOMEM);
    }
    context->pb = bytes;
    context->flags |= AVFMT_FLAG_CUSTOM_IO;
    stream = ffmpeg.avformat_new_stream(context, nullptr);
    if (!stream)
        return AVERROR(ENOMEM);
    stream->time_base = encoder.Context().time_base;
    stream->avg_frame_rate = encoder.Context().framerate;
    if (format.Container == FilmContainer::Avi)
        ffmpeg.av_dict_set(&stream->metadata, "title", "VIDEO #0", 0);
    const int status = ffmpeg.avcodec_parameters_from_context(stream->codecpar, &encoder.Context());
    if (status < 0)
        return status;
    // For the one that knows it: uncompressed rows stand from the bottom up.
    ffmpeg.av_opt_set(context, "flipped_raw_rgb", "1", AV_OPT_SEARCH_CHILDREN);
    return ffmpeg.avformat_write_header(context, nullptr);
}

int FilmFile::Parts::Write(const FilmFrame* frame) {
    const int status = encoder.Encode(frame, [this](AVPacket& packet) {
        ffmpeg.av_packet_rescale_ts(&packet, encoder.Context().time_base, stream->time_base);
        packet.stream_index = stream->index;
        return ffmpeg.av_interleaved_write_frame(context, &packet);
    });
    return status < 0 ? status : bytes->error;
}

/// The muxer reduces the rate and leaves other fields open.
void FilmFile::Parts::StateAviNumbers() {
    if (format.Container != FilmContainer::Avi || std::memcmp(head.data() + AviHead::StreamMark, "strh", 4) != 0)
        return;
    const auto state = [this](qint64 place, std::uint32_t number) {
        const std::uint32_t stored = qToLittleEndian(number);
        file.Rewrite(place, reinterpret_cast<const char*>(&stored), sizeof stored);
    };
    const FilmRate rate = filmFormat::RateOf(format);
    state(AviHead::Handler, format.Codec->HandlerCode());
    state(AviHead::Scale, std::uint32_t(rate.Scale));
    state(AviHead::Rate, std::uint32_t(rate.Rate));
    state(AviHead::Quality, AviHead::UsualQuality);
    if (encoder.Context().codec_id == AV_CODEC_ID_RAWVIDEO) {
        const auto rowBytes = (std::uint32_t(format.Width) * 3 + 3) / 4 * 4;
        state(AviHead::PictureBytes, rowBytes * std::uint32_t(format.Height));
    }
}

FilmFile::FilmFile(const QString& path, const FilmFormat& format) {
    if (const std::optional<QString> why = Unavailable()) {
        fail(Stage::Library, *why);
        return;
    }
    parts = std::make_unique<Parts>(path, format);
    if (parts->file.Problem()) {
        fail(Stage::File, *parts->file.Problem());
        return;
    }
    if (format.Interval < 1 || filmFormat::RateOf(format).Rate < 1 || format.Width < 1 || format.Height < 1) {
        fail(Stage::Stream, u"no such rate or size"_s);
        return;
    }
    int status = parts->Begin();
    if (status < 0) {
        fail(Stage::Codec, parts->ffmpeg.ErrorText(status));
        return;
    }
    status = parts->Open();
    if (status < 0)
        fail(Stage::Writing, parts->ffmpeg.ErrorText(status));
}

FilmFile::~FilmFile() = default;

bool FilmFile::fail(Stage stage, const QString& reason) {
    if (!failure)
        failure = FilmFailure{stage, parts ? parts->file.Problem().value_or(reason) : reason};
    return false;
}

bool FilmFile::Add(const FilmFrame& frame) {
    if (failure)
        return false;
    const int status = parts->Write(&frame);
    return status >= 0 || fail(Stage::Writing, parts->ffmpeg.ErrorText(status));
}

std::optional<FilmFailure> FilmFile::Commit() {
    if (failure)
        return failure;
    int status = parts->Write(nullptr);
    if (status >= 0)
        status = parts->ffmpeg.av_write_trailer(parts->context);
    if (status >= 0) {
        parts->ffmpeg.avio_flush(parts->bytes);
        status = parts->bytes->error;
    }
    if (status < 0)
        fail(Stage::Writing, parts->ffmpeg.ErrorText(status));
    else
        parts->StateAviNumbers();
    if (!failure)
        if (const std::optional<QString> problem = parts->file.Commit())
            fail(Stage::Writing, *problem);
    return failure;
}

std::optional<QString> FilmFile::Unavailable() {
    const QString& problem = FfmpegLibrary::Get().Problem;
    return problem.isEmpty() ? std::optional<QString>() : problem;
}

bool FilmFile::Offers(const FilmCodec& codec) {
    const FfmpegLibrary& ffmpeg = FfmpegLibrary::Get();
    return ffmpeg.Problem.isEmpty() && ffmpeg.avcodec_find_encoder_by_name(codec.Encoder);
}

double FilmFile::BytesPerMinute(const FilmFormat& format, const FilmFrame& frame) {
    constexpr double secondsPerMinute = 60;
    if (Unavailable())
        return 0;
    FfmpegEncoder encoder;
    double frameBytes = 0;
    const auto count = [&frameBytes](AVPacket& packet) {
        frameBytes += packet.size;
        return 0;
    };
    if (encoder.Open(format, false) < 0 || encoder.Encode(&frame, count) < 0 || encoder.Encode(nullptr, count) < 0)
        return 0;
    if (format.DataRate > 0 && !format.Codec->IsLossless())
        return format.DataRate * bytesPerDataRate * secondsPerMinute;
    const FilmRate rate = filmFormat::RateOf(format);
    return frameBytes * rate.Rate / rate.Scale * secondsPerMinute;
}
