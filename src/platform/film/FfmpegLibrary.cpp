#include "platform/film/FfmpegLibrary.h"

#include "platform/base/Literals.h"

#include <dlfcn.h>

namespace {

#define VELORIN_TEXT(number) #number
#define VELORIN_SO_NAME(library, version) "lib" #library ".so." VELORIN_TEXT(version)

// The versions that this was built for: records have the same layout within them.
constexpr const char* avutil = VELORIN_SO_NAME(avutil, LIBAVUTIL_VERSION_MAJOR);
constexpr const char* avcodec = VELORIN_SO_NAME(avcodec, LIBAVCODEC_VERSION_MAJOR);
constexpr const char* avformat = VELORIN_SO_NAME(avformat, LIBAVFORMAT_VERSION_MAJOR);
constexpr const char* swscale = VELORIN_SO_NAME(swscale, LIBSWSCALE_VERSION_MAJOR);

/// Stays loaded to the end of the program, as the libraries' own threads and tables want it.
template<class Procedure>
void find(const char* library, const char* name, Procedure& procedure, QString& problem) {
    if (!problem.isEmpty())
        return;
    void* const handle = ::dlopen(library, RTLD_NOW | RTLD_LOCAL);
    void* const found = handle ? ::dlsym(handle, name) : nullptr;
    if (found)
        procedure = reinterpret_cast<Procedure>(found);
    else
        problem = QString::fromLocal8Bit(::dlerror());
}

FfmpegLibrary load() {
    FfmpegLibrary ffmpeg;
#define VELORIN_FIND(library, procedure) find(library, #procedure, ffmpeg.procedure, ffmpeg.Problem);
    VELORIN_FFMPEG_PROCEDURES(VELORIN_FIND)
#undef VELORIN_FIND
    // What goes wrong is told as a reason, and not on the error stream besides.
    if (ffmpeg.Problem.isEmpty())
        ffmpeg.av_log_set_level(AV_LOG_QUIET);
    return ffmpeg;
}

} // namespace

const FfmpegLibrary& FfmpegLibrary::Get() {
    static const FfmpegLibrary ffmpeg = load();
    return ffmpeg;
}

QString FfmpegLibrary::ErrorText(int error) const {
    char text[AV_ERROR_MAX_STRING_SIZE]{};
    av_strerror(error, text, sizeof text);
    return QString::fromLocal8Bit(text);
}
