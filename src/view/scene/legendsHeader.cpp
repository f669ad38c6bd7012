#include "view/scene/legends.h"

#include "app/NumberFormat.h"
#include "app/mdTipsDrawing.h"
#include "platform/base/Rounding.h"

namespace mdScene {

namespace {

QString headerText(const Scene& scene) {
    const SlideShowSettings& show = scene.Settings.SlideShow;
    const VectorSettings& vector = scene.Settings.Vector;
    const ResultModel& model = scene.Model;
    QString text;
    if (show.HeaderStep)
        text += u"   STEP : "_s + QString::number(std::int64_t(model.CurrentStep) + 1);
    if (show.HeaderTime && model.CurrentStep >= 0 && model.CurrentStep < model.Steps.size())
        text += u"   TIME : "_s + NumberFormat::Shortest(model.Steps.at(model.CurrentStep).Time);
    if (show.HeaderContour && model.CurrentItem >= 0 && model.CurrentItem < model.Items.size())
        text += u"   CONTOUR : "_s + model.Items.at(model.CurrentItem).Name;
    if (show.HeaderVector && vector.DefaultItemSet >= 0 && vector.DefaultItemSet < vector.ItemSets.size())
        text += u"   VECTOR : "_s + vector.ItemSets.at(vector.DefaultItemSet).Name;
    return text;
}

} // namespace

void DrawHeader(DeviceContext& device, const Scene& scene, DevicePoint leftTop) {
    const QString text = headerText(scene);
    const int dotsPerInch = device.GetDeviceCaps(DeviceCaps::LogPixelsY);
    const Font old = device.SelectFont(stockFont(Stock::GuiFont, dotsPerInch));
    const DeviceSize size = mdTips::MeasureText(device, text);
    const auto [left, top] = leftTop;
    device.FillRect({left, top, Round(left + size.Width + 1.0), Round(top + size.Height + 1.0)},
                    stockBrush(Stock::WhiteBrush));
    mdTips::DrawAnchoredText(device, left, top, text, 1);
    mdTips::RestoreObject(device, old);
}

} // namespace mdScene
