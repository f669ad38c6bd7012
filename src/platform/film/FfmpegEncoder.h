// Turns pictures into the packets of one codec. Knows no file.
#pragma once

#include "platform/film/FfmpegLibrary.h"
#include "platform/film/FilmPalette.h"

#include <functional>

class FfmpegEncoder {
public:
    /// What is done with a packet, which is the callee's for the time of the call; below 0 is an error that ends the
    /// encoding.
    using Take = std::function<int(AVPacket&)>;

    FfmpegEncoder() = default;
    ~FfmpegEncoder();
    FfmpegEncoder(const FfmpegEncoder&) = delete;
    FfmpegEncoder& operator=(const FfmpegEncoder&) = delete;

    /// Below 0 when the codec refuses the format. `headersApart`: they go to the container, not into the first packet.
    int Open(const FilmFormat& format, bool headersApart);
    /// A picture of the format's size; null ends the film. Below 0 for an error.
    int Encode(const FilmFrame* frame, const Take& take);

    const AVCodecContext& Context() const { return *context; }

private:
    void setRates(const FilmFormat& format, int cores);
    int openConverter();
    int fill(AVFrame& target, const FilmFrame& frame);
    FilmFrame padded(const FilmFrame& frame);

    const FfmpegLibrary& ffmpeg = FfmpegLibrary::Get();
    AVCodecContext* context = nullptr;
    SwsContext* converter = nullptr;
    AVPacket* packet = nullptr;
    std::int64_t frames = 0;
    bool bottomUp = false;
    FilmPalette palette;
    std::vector<std::uint32_t> enlarged; ///< a picture with its last column and row once more, where that is needed
};
