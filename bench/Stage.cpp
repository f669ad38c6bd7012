#include "Stage.h"

#include "platform/raster/RasterDevice.h"

Stage::Stage(ResultModel model)
    : Model(std::move(model)), picture(PictureSize.Width, PictureSize.Height, QImage::Format_RGB32) {
    picture.fill(Qt::white);
    mdView::SetViewBounds(Model.Mesh, View);
}

void Stage::ShowPart(double part) {
    const PlotRect& whole = View.WholeBounds;
    const float half = float(std::sqrt(part) / 2);
    View.ViewBounds.SetRect(whole.CentreX() - half * whole.Width(), whole.CentreY() - half * whole.Height(),
                            whole.CentreX() + half * whole.Width(), whole.CentreY() + half * whole.Height());
}

void Stage::Paint(int threads, const std::function<void(PlotCanvas&, const Scene&)>& paint) {
    DocumentPlotter plotter;
    plotter.SetHeadless(true);
    plotter.SetScaleMode(PlotScaleMode::Automatic);
    plotter.SetEventSink({[this] { return View.ViewBounds; },
                          [&](PlotCanvas& canvas) {
                              paint(canvas, Scene{Model, Settings, View});
                          },
                          {}});
    RasterDevice device(picture, 96, threads);
    plotter.Draw(device);
}
