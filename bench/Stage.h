// A session with its picture, ready to be painted in parts or as a whole: through its plotter, on the raster device.
#pragma once

#include "view/scene/Session.h"

#include <QImage>

class Stage : public Session {
public:
    static constexpr DeviceSize PictureSize{1280, 1024};

    explicit Stage(const ResultModel& model);

    /// The middle `part` of the whole's area; 1 shows all.
    void ShowPart(double part);

    /// One paint, by `painter` if there is one; `threads` as the raster device takes it.
    void Paint(int threads, const Painter& painter = {});
    /// What was painted last.
    const QImage& Picture() const { return picture; }

private:
    QImage picture;
};
