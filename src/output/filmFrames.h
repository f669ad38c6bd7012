// The frames of a film, each encoded while the next one is painted. Who paints them and when the film ends is the
// caller's business.
#pragma once

#include "platform/film/FilmFile.h"
#include "result/readers/readerTable.h"

#include <QImage>
#include <functional>

namespace filmFrames {

/// A sheet of format RGB32 as a frame, which must not outlive it.
FilmFrame FrameOf(const QImage& sheet);

/// Paints a frame, counted from 0, on a white sheet of format RGB32.
using PaintFrame = std::function<void(int frame, QImage& sheet)>;

/// Adds `count` pictures of the film's size to `film`, with two sheets for all of them. False when the film has failed
/// or `progress`, told after each one, says no. What `paint` throws comes out; a size without memory throws bad_alloc.
bool Write(FilmFile& film, const FilmFormat& format, int count, const PaintFrame& paint,
           const LoadProgress& progress = {});

} // namespace filmFrames
