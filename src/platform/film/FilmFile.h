// A film as a file that is written frame by frame, wholly or not at all. Paints nothing and chooses nothing.
#pragma once

#include "platform/film/FilmFormat.h"

#include <memory>

/// A picture as rows of pixels 0xffRRGGBB, from the top; references the caller's memory.
struct FilmFrame {
    const std::uint32_t* Pixels = nullptr;
    int Width = 0, Height = 0;
    std::ptrdiff_t Stride = 0; ///< pixels from one row to the next
};

/// Why a film can't be made.
struct FilmFailure {
    enum class Stage {
        Library, ///< what makes films is not there
        File,    ///< the file can't be created
        Stream,  ///< there is no such rate or size
        Codec,   ///< it refuses the format
        Writing
    };
    Stage At;
    QString Reason; ///< in the system's or the encoding library's words
};

/// What was there stays as it was until `Commit`, as `WholeFile` has it. Calls may come from different threads, one
/// after the other.
class FilmFile {
public:
    /// `format` names a codec that fits its container. A failure is kept.
    FilmFile(const QString& path, const FilmFormat& format);
    /// Drops what has not been committed.
    ~FilmFile();

    /// Encodes a picture of the format's size; false after a failure.
    bool Add(const FilmFrame& frame);
    /// Ends the film. Nothing when the file is in its place, else why it isn't.
    std::optional<FilmFailure> Commit();
    /// What went wrong so far.
    const std::optional<FilmFailure>& Failure() const { return failure; }

    /// Why no film at all can be made here; nothing when they can.
    static std::optional<QString> Unavailable();
    /// Whether a codec is to be had here.
    static bool Offers(const FilmCodec& codec);
    /// What a film of such pictures takes at most, about; 0 when the codec refuses them. As if each were a key frame.
    static double BytesPerMinute(const FilmFormat& format, const FilmFrame& frame);

private:
    struct Parts;
    bool fail(FilmFailure::Stage stage, const QString& reason);

    std::unique_ptr<Parts> parts;
    std::optional<FilmFailure> failure;
};
