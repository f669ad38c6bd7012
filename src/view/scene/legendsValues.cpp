#include "view/scene/legends.h"

#include "app/NumberFormat.h"
#include "app/mdTipsDrawing.h"
#include "platform/base/Rounding.h"
#include "result/mdVelorinResultModel.h"

namespace mdScene {

namespace {

/// Writes numbers around their points, as far as the device may show them.
class NumberWriter {
public:
    NumberWriter(DeviceContext& onDevice, const QString& numberMask) : device(onDevice), mask(numberMask) {
        const std::optional<DeviceRect> area = device.VisibleArea();
        if (!area)
            return;
        // What a number takes at most, without making its text: the digits of the largest single with its groups, and
        // whatever else the mask holds, each as wide as a capital.
        constexpr double longestNumber = 56;
        const DeviceSize wide = mdTips::MeasureText(device, u"M"_s);
        const double reachX = (longestNumber + double(mask.size())) * std::max(wide.Width, wide.Height) / 2;
        reach = {Round(area->Left - reachX), Round(area->Top - double(wide.Height)), Round(area->Right + reachX),
                 Round(area->Bottom + double(wide.Height))};
    }

    void Write(DevicePoint at, float value) {
        if (at.X < reach.Left || at.X > reach.Right || at.Y < reach.Top || at.Y > reach.Bottom)
            return;
        mdTips::DrawAnchoredText(device, at.X, at.Y, NumberFormat::Format(value, mask), 5);
    }

private:
    DeviceContext& device;
    const QString& mask;
    /// Numbers that stand in here may be seen; everywhere, when the device can't tell.
    DeviceRect reach{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX};
};

} // namespace

void DrawValues(DeviceContext& device, const DeviceContext& ref, const Scene& scene) {
    const ResultModel& model = scene.Model;
    const MeshData& mesh = model.Mesh;
    if (model.CurrentItem < 0 || model.CurrentItem >= model.Items.size())
        return;
    const Font old = SelectFontString(device, ref, scene.Settings.Style.FontStrings[3]);
    NumberWriter numbers(device, scene.Settings.Style.RealFormat);
    const QList<float> values =
        mdVelorinResultModel::GetItemValues(model.CurrentItem, model, scene.Settings.Difference.ApplyValue).Values;
    const std::int32_t type = model.Items.at(model.CurrentItem).ElementType;
    const std::vector<DevicePoint>& points = type < 0 ? scene.View.NodePoints : ElementCentres(scene);
    const qsizetype count = std::min(qsizetype(points.size()), values.size());
    for (qsizetype i = 0; i < count; ++i) {
        const bool stands = type < 0 ? mesh.Nodes.Active.at(i) != 0
                                     : mesh.Elements.ElementType.at(i) == type && mesh.Elements.NodeCount(i) > 0;
        if (stands)
            numbers.Write(points[std::size_t(i)], values.at(i));
    }
    mdTips::RestoreObject(device, old);
}

} // namespace mdScene
