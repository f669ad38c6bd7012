#include "Stage.h"

#include "platform/raster/RasterDevice.h"

Stage::Stage(const ResultModel& model) : picture(PictureSize.Width, PictureSize.Height, QImage::Format_RGB32) {
    picture.fill(Qt::white);
    TakeUp(model, false);
}

void Stage::ShowPart(double part) {
    const PlotRect& whole = View.WholeBounds;
    const float half = float(std::sqrt(part) / 2);
    View.ViewBounds.SetRect(whole.CentreX() - half * whole.Width(), whole.CentreY() - half * whole.Height(),
                            whole.CentreX() + half * whole.Width(), whole.CentreY() + half * whole.Height());
}

void Stage::Paint(int threads, const Painter& paint) {
    RasterDevice device(picture, 96, threads);
    Draw(device, paint);
}
