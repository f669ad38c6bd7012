#include "platform/film/FfmpegEncoder.h"

#include <algorithm>
#include <thread>

namespace {

constexpr int bytesPerDataRate = 1000;
constexpr int bitsPerByte = 8;
constexpr int usualKeyFrames = 50;
/// More than these make the files larger and little else.
constexpr int mostThreads = 8;

/// From 0 for the worst to 1 for the best.
double qualityOf(const FilmFormat& format) {
    return format.Quality < 0 ? format.Codec->UsualQuality / 100.0
                              : std::min(format.Quality, filmFormat::MaxQuality) / double(filmFormat::MaxQuality);
}

double quantizerOf(const FilmFormat& format) {
    const FilmCodec& codec = *format.Codec;
    return codec.WorstQuantizer + (codec.BestQuantizer - codec.WorstQuantizer) * qualityOf(format);
}

/// Between two key frames; 1 makes a key frame of each.
int keyFramesOf(const FilmFormat& format) {
    if (format.KeyFrames > 0)
        return format.KeyFrames;
    return format.Container == FilmContainer::Avi ? 1 : usualKeyFrames;
}

} // namespace

FfmpegEncoder::~FfmpegEncoder() {
    if (converter)
        ffmpeg.sws_freeContext(converter);
    if (packet)
        ffmpeg.av_packet_free(&packet);
    if (context)
        ffmpeg.avcodec_free_context(&context);
}

void FfmpegEncoder::setRates(const FilmFormat& format, int cores) {
    const FilmCodec& codec = *format.Codec;
    context->gop_size = keyFramesOf(format);
    context->max_b_frames = 0; // an AVI file has no place for times other than in order
    context->thread_count = std::clamp(cores, 1, mostThreads);
    // Each is for the encoder that knows it, and refused by the others.
    for (const auto& [name, value] :
         {std::pair("preset", "veryfast"), {"deadline", "realtime"}, {"cpu-used", "6"}, {"row-mt", "1"}})
        ffmpeg.av_opt_set(context, name, value, AV_OPT_SEARCH_CHILDREN);
    if (codec.IsLossless())
        return;
    if (format.DataRate > 0) {
        context->bit_rate = std::int64_t(format.DataRate) * bytesPerDataRate * bitsPerByte;
        // At few frames a second one of them may take several seconds' share.
        const double frameBits = double(context->bit_rate) * av_q2d(context->time_base);
        context->bit_rate_tolerance = int(std::min(2e9, std::max(double(context->bit_rate), 2 * frameBits)));
    } else if (codec.QuantizerOption) {
        context->bit_rate = 0;
        ffmpeg.av_opt_set(context, codec.QuantizerOption, QByteArray::number(quantizerOf(format), 'f', 1).constData(),
                          AV_OPT_SEARCH_CHILDREN);
    } else {
        context->flags |= AV_CODEC_FLAG_QSCALE;
        context->qmin = codec.BestQuantizer;
        context->global_quality = int(FF_QP2LAMBDA * quantizerOf(format));
    }
}

int FfmpegEncoder::Open(const FilmFormat& format, bool headersApart) {
    const FilmCodec& codec = *format.Codec;
    const AVCodec* const encoder = ffmpeg.avcodec_find_encoder_by_name(codec.Encoder);
    if (!encoder)
        return AVERROR_ENCODER_NOT_FOUND;
    context = ffmpeg.avcodec_alloc_context3(encoder);
    packet = ffmpeg.av_packet_alloc();
    if (!context || !packet)
        return AVERROR(ENOMEM);
    context->width = filmFormat::WidthOf(format);
    context->height = filmFormat::HeightOf(format);
    const bool odd = context->width % 2 != 0 || context->height % 2 != 0;
    context->pix_fmt = ffmpeg.av_get_pix_fmt(odd ? codec.OddPixels : codec.Pixels);
    const FilmRate rate = filmFormat::RateOf(format);
    context->time_base = {rate.Scale, rate.Rate};
    context->framerate = {rate.Rate, rate.Scale};
    // Uncompressed pictures have no mark of their own and stand on their heads.
    bottomUp = encoder->id == AV_CODEC_ID_RAWVIDEO;
    if (format.Container == FilmContainer::Avi && !bottomUp)
        context->codec_tag = codec.HandlerCode();
    if (headersApart)
        context->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    setRates(format, int(std::thread::hardware_concurrency()));
    if (context->pix_fmt == AV_PIX_FMT_YUV420P || context->pix_fmt == AV_PIX_FMT_YUV444P) {
        // Players take this one where a film names none, as MPEG-4 in AVI can't.
        context->colorspace = AVCOL_SPC_SMPTE170M;
        context->color_primaries = AVCOL_PRI_SMPTE170M;
        context->color_trc = AVCOL_TRC_SMPTE170M;
        context->color_range = AVCOL_RANGE_MPEG;
    }
    const int opened = ffmpeg.avcodec_open2(context, encoder, nullptr);
    return opened < 0 ? opened : openConverter();
}

int FfmpegEncoder::openConverter() {
    if (context->pix_fmt == AV_PIX_FMT_PAL8)
        return 0;
    converter = ffmpeg.sws_getContext(context->width, context->height, AV_PIX_FMT_BGR0, context->width, context->height,
                                      context->pix_fmt, SWS_AREA | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INP, nullptr,
                                      nullptr, nullptr);
    if (!converter)
        return AVERROR(EINVAL);
    const int* const coefficients = ffmpeg.sws_getCoefficients(SWS_CS_SMPTE170M);
    const int fullRange = context->pix_fmt == AV_PIX_FMT_YUVJ444P;
    constexpr int one = 1 << 16;
    ffmpeg.sws_setColorspaceDetails(converter, coefficients, 1, coefficients, fullRange, 0, one, one);
    return 0;
}

FilmFrame FfmpegEncoder::padded(const FilmFrame& frame) {
    if (frame.Width == context->width && frame.Height == context->height)
        return frame;
    enlarged.resize(std::size_t(context->width) * std::size_t(context->height));
    for (int y = 0; y < context->height; ++y) {
        const std::uint32_t* const row = frame.Pixels + std::min(y, frame.Height - 1) * frame.Stride;
        std::uint32_t* const target = enlarged.data() + std::size_t(y) * std::size_t(context->width);
        std::copy_n(row, frame.Width, target);
        std::fill(target + frame.Width, target + context->width, row[frame.Width - 1]);
    }
    return {enlarged.data(), context->width, context->height, context->width};
}

int FfmpegEncoder::Encode(const FilmFrame* frame, const Take& take) {
    AVFrame* converted = nullptr;
    int status = 0;
    if (frame) {
        converted = ffmpeg.av_frame_alloc();
        if (!converted)
            return AVERROR(ENOMEM);
        status = fill(*converted, padded(*frame));
    }
    if (status >= 0)
        status = ffmpeg.avcodec_send_frame(context, converted);
    ffmpeg.av_frame_free(&converted);
    while (status >= 0) {
        status = ffmpeg.avcodec_receive_packet(context, packet);
        if (status == AVERROR(EAGAIN) || status == AVERROR_EOF)
            return 0;
        if (status >= 0) {
            packet->duration = 1;
            status = take(*packet);
        }
    }
    return status;
}

int FfmpegEncoder::fill(AVFrame& target, const FilmFrame& frame) {
    target.width = context->width;
    target.height = context->height;
    target.format = context->pix_fmt;
    target.pts = frames++;
    target.quality = context->global_quality;
    target.color_range = context->color_range;
    target.colorspace = context->colorspace;
    if (const int status = ffmpeg.av_frame_get_buffer(&target, 0); status < 0)
        return status;
    if (!converter) {
        const FilmPalette::Colors& colors = palette.Index(frame, target.data[0], target.linesize[0]);
        std::ranges::copy(colors, reinterpret_cast<std::uint32_t*>(target.data[1]));
        return 0;
    }
    std::uint8_t* planes[AV_NUM_DATA_POINTERS];
    int strides[AV_NUM_DATA_POINTERS];
    std::ranges::copy(target.data, planes);
    std::ranges::copy(target.linesize, strides);
    if (bottomUp) {
        planes[0] += std::ptrdiff_t(strides[0]) * (context->height - 1);
        strides[0] = -strides[0];
    }
    const auto* const source = reinterpret_cast<const std::uint8_t*>(frame.Pixels);
    const int sourceStride = int(frame.Stride * std::ptrdiff_t(sizeof(std::uint32_t)));
    return ffmpeg.sws_scale(converter, &source, &sourceStride, 0, context->height, planes, strides);
}
