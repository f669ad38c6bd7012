// A scene with its picture, ready to be painted in parts or as a whole. Paints like the window does: through a plotter,
// on the raster device.
#pragma once

#include "view/scene/mdScene.h"

#include <QImage>
#include <functional>

class Stage {
public:
    static constexpr DeviceSize PictureSize{1280, 1024};

    explicit Stage(ResultModel model);

    /// The middle `part` of the whole's area; 1 shows all.
    void ShowPart(double part);

    /// One paint in which `paint` takes the place of the scene's own; `threads` as the raster device takes it.
    void Paint(int threads, const std::function<void(PlotCanvas&, const Scene&)>& paint);

    ResultModel Model;
    ApplicationSettings Settings;
    ViewState View;

private:
    QImage picture;
};
