// What a film may look like: containers by the ending of the file's name, codecs as rows of a table, and the numbers
// that follow from a choice. Writes nothing and needs no library.
#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <optional>
#include <vector>

enum class FilmContainer : unsigned { Avi = 1, Mp4 = 2, Webm = 4, Gif = 8 };

/// A way to compress pictures. Texts that go to the encoding library are plain; `Name` and `Caption` are for people.
struct FilmCodec {
    const char16_t* Name;
    const char16_t* Caption;
    const char* Handler; ///< four characters by which AVI files and the registry know it
    const char* Encoder;
    const char* Pixels;
    const char* OddPixels;             ///< where width or height is odd; null when these have to be even
    unsigned Containers;               ///< of `FilmContainer`
    int WorstQuantizer, BestQuantizer; ///< for quality 0 and 100 %; both 0 for a lossless one
    int UsualQuality;                  ///< per cent, when none is asked for
    const char* QuantizerOption;       ///< of the encoder; null for the common one

    bool IsLossless() const { return WorstQuantizer == BestQuantizer; }
    bool Fits(FilmContainer container) const { return (Containers & unsigned(container)) != 0; }
    std::uint32_t HandlerCode() const; ///< the four characters as a number, the first one lowest
};

/// Frames per unit of time: `Rate` / `Scale` a second.
struct FilmRate {
    int Rate = 1, Scale = 1;
};

/// All that a film is told before its first frame.
struct FilmFormat {
    FilmContainer Container = FilmContainer::Avi;
    const FilmCodec* Codec = nullptr;
    int Quality = -1;  ///< 0 to 10000, higher is better; -1: the codec's usual one
    int KeyFrames = 0; ///< at most so many frames from one key frame to the next; 0: as the container has it
    int DataRate = 0;  ///< thousands of bytes a second, in place of the quality; 0: as much as the quality needs
    int Width = 0, Height = 0; ///< of the pictures, in pixels
    int Interval = 0;          ///< milliseconds from one frame to the next
};

namespace filmFormat {

inline constexpr int MaxQuality = 10000;

/// By the ending of a file's name, in large or small letters: avi, mp4, webm or gif.
std::optional<FilmContainer> ContainerFor(const QString& fileName);

/// In the order in which they are offered; the first one is the usual one.
std::vector<const FilmCodec*> CodecsFor(FilmContainer container);

/// By name, or by the code that an AVI file knows it by; null when the container takes no such codec.
const FilmCodec* FindCodec(FilmContainer container, QStringView name);
const FilmCodec* FindCodec(FilmContainer container, std::uint32_t handlerCode);

/// AVI: 10000 / interval in tenths of a frame a second, a half to the even neighbour; below 1 there is no such film.
/// GIF waits at least 20 ms. Others: exactly the interval.
FilmRate RateOf(const FilmFormat& format);

/// The film's own size: one more column or row than the pictures where the codec needs even ones.
int WidthOf(const FilmFormat& format);
int HeightOf(const FilmFormat& format);

} // namespace filmFormat
