// Writes pictures of the size of a window as a film, a frame a step. Knows nothing of result files and shows no window:
// for the painting of a frame, for the codec and for the file's name it asks its owner.
#pragma once

#include "output/filmFrames.h"
#include "platform/device/DocumentPlotter.h"

/// The codec choice in the terms of its dialog.
struct AviCompressor {
    std::uint32_t fccHandler = 0; ///< four characters, the first one lowest; 0: none chosen yet
    int lKey = 0;                 ///< at most so many frames from one key frame to the next; 0: each is one
    int lDataRate = 0;            ///< thousands of bytes a second; 0: as much as the quality needs
    int lQ = -1;                  ///< quality, 0 to 10000; -1: the codec's usual one
    bool operator==(const AviCompressor&) const = default;

    /// The choice for a film of that container: its usual codec where it doesn't take the chosen one.
    FilmFormat FormatFor(FilmContainer container) const;
};

/// What a writer asks of its owner. One that is not set has an answer of its own.
struct AviWriterEvents {
    /// Supplies a path, or sets `cancel`, which is the answer without it.
    std::function<void(QString& fileName, bool& cancel)> GetFileName;
    /// Paints frame number `frame`, counted from 0, on a white sheet; called on the thread of `Work`.
    std::function<void(int frame, PlotCanvas& plot)> RenderScene;
    /// The codec dialog, for films of the size and rate of `format`; false on Cancel. Without it the choice stands.
    std::function<bool(AviCompressor& choice, const FilmFormat& format)> ChooseCodec;
    /// Where the frames are made: calls what it is given once, with a progress in frames that says no to stop. Without
    /// it they are made at once.
    std::function<void(const std::function<void(const LoadProgress&)>&)> Work;
};

/// For one export. The choice is read from the registry when it is created and written when it goes.
class clsAviWriter {
public:
    explicit clsAviWriter(AviWriterEvents events = {});
    ~clsAviWriter();
    clsAviWriter(const clsAviWriter&) = delete;
    clsAviWriter& operator=(const clsAviWriter&) = delete;

    void Dispose();
    /// The last outcome, good or bad; empty after a Cancel or a stop.
    const QString& ErrorMessage() const { return errorMessage; }
    /// Makes the film. A path that is no existing file is asked for; its ending says which container it is, AVI by
    /// default. Unless true comes back nothing new is there and an old file is as it was.
    bool Export(const QString& fileName);
    int FrameCount = 0;
    /// Takes sheets of that size, as fine as `hDC`.
    bool Initialize(const DeviceContext& hDC, int width, int height);
    int Interval = 0; ///< milliseconds
    bool IsValid() const { return bufferReady; }
    PlotScaleMode ScaleMode() const { return cPlot.ScaleMode(); }
    void ScaleMode(PlotScaleMode mode) { cPlot.SetScaleMode(mode); }
    const PlotRect& Window() const { return cPlot.Window(); }
    void Window(const PlotRect& window) { cPlot.SetWindow(window); }

private:
    bool end(const QString& message, bool ok = false);
    bool failed(const FilmFailure& failure);
    void paint(QImage& sheet);

    AviWriterEvents events;
    DocumentPlotter cPlot;
    AviCompressor compressor;
    QString errorMessage;
    int bufferWidth = 0, bufferHeight = 0, dotsPerInch = 0;
    int currentFrame = 0;
    bool bufferReady = false;
};
