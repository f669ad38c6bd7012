// The procedures of FFmpeg's libraries that films are made with. The libraries, with all that they bring, are loaded
// when the first film is asked for: programs that make none start without them, also where they are not installed.
#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

#include <QString>

// VISIT(library, procedure)
#define VELORIN_FFMPEG_PROCEDURES(VISIT)                                                                               \
    VISIT(avutil, av_dict_set)                                                                                         \
    VISIT(avutil, av_frame_alloc)                                                                                      \
    VISIT(avutil, av_frame_free)                                                                                       \
    VISIT(avutil, av_frame_get_buffer)                                                                                 \
    VISIT(avutil, av_free)                                                                                             \
    VISIT(avutil, av_get_pix_fmt)                                                                                      \
    VISIT(avutil, av_log_set_level)                                                                                    \
    VISIT(avutil, av_malloc)                                                                                           \
    VISIT(avutil, av_opt_set)                                                                                          \
    VISIT(avutil, av_strerror)                                                                                         \
    VISIT(avcodec, av_packet_alloc)                                                                                    \
    VISIT(avcodec, av_packet_free)                                                                                     \
    VISIT(avcodec, av_packet_rescale_ts)                                                                               \
    VISIT(avcodec, avcodec_alloc_context3)                                                                             \
    VISIT(avcodec, avcodec_find_encoder_by_name)                                                                       \
    VISIT(avcodec, avcodec_free_context)                                                                               \
    VISIT(avcodec, avcodec_open2)                                                                                      \
    VISIT(avcodec, avcodec_parameters_from_context)                                                                    \
    VISIT(avcodec, avcodec_receive_packet)                                                                             \
    VISIT(avcodec, avcodec_send_frame)                                                                                 \
    VISIT(avformat, av_interleaved_write_frame)                                                                        \
    VISIT(avformat, av_write_trailer)                                                                                  \
    VISIT(avformat, avformat_alloc_output_context2)                                                                    \
    VISIT(avformat, avformat_free_context)                                                                             \
    VISIT(avformat, avformat_new_stream)                                                                               \
    VISIT(avformat, avformat_write_header)                                                                             \
    VISIT(avformat, avio_alloc_context)                                                                                \
    VISIT(avformat, avio_context_free)                                                                                 \
    VISIT(avformat, avio_flush)                                                                                        \
    VISIT(swscale, sws_freeContext)                                                                                    \
    VISIT(swscale, sws_getCoefficients)                                                                                \
    VISIT(swscale, sws_getContext)                                                                                     \
    VISIT(swscale, sws_scale)                                                                                          \
    VISIT(swscale, sws_setColorspaceDetails)

struct FfmpegLibrary {
#define VELORIN_DECLARE(library, procedure) decltype(&::procedure) procedure = nullptr;
    VELORIN_FFMPEG_PROCEDURES(VELORIN_DECLARE)
#undef VELORIN_DECLARE

    QString Problem; ///< why it can't be used; empty when it can

    /// Loaded at the first call and from then on the same, for all threads.
    static const FfmpegLibrary& Get();

    QString ErrorText(int error) const;
};
