#include "view/scene/vectors.h"

#include "app/mdTipsDrawing.h"
#include "platform/base/Rounding.h"
#include "result/mdVelorinResultModel.h"
#include "view/scene/valueScale.h"

#include <cmath>

namespace mdScene {

namespace {

constexpr double pi = 3.14159265358979;

/// The corners of one arrow and the way over them.
struct Arrow {
    DevicePoint Tail, Head, Barb1, Barb2;
};

double halfLength(float vx, float vy, float scale) {
    return std::sqrt(double(vx) * vx + double(vy) * vy) * double(scale) * 0.5;
}

Arrow arrowAt(int x, int y, float vx, float vy, float scale) {
    double length = halfLength(vx, vy, scale);
    const double angle = ArrowAngle(vx, vy);
    const double cx = std::cos(angle) * length;
    const double cy = std::sin(angle) * length;
    Arrow arrow;
    arrow.Tail = {Round(x - cx), Round(y - cy)};
    arrow.Head = {Round(x + cx), Round(y + cy)};
    length *= 0.5;
    const auto barb = [&](double direction) {
        return DevicePoint{Round(arrow.Head.X - std::cos(direction) * length),
                           Round(arrow.Head.Y - std::sin(direction) * length)};
    };
    arrow.Barb1 = barb(angle + BarbAngle);
    arrow.Barb2 = barb(angle - BarbAngle);
    return arrow;
}

/// Collects arrows and hands them to the device a batch at a time.
class ArrowCollector {
public:
    ArrowCollector(DeviceContext& onDevice, double deviceScale, int penWidth)
        : device(onDevice), visible(onDevice.VisibleArea()), scale(float(deviceScale)), margin(penWidth + 1.0) {}
    ArrowCollector(const ArrowCollector&) = delete;
    ArrowCollector& operator=(const ArrowCollector&) = delete;

    void Add(DevicePoint at, float vx, float vy) {
        if (!maySee(at, vx, vy))
            return;
        const Arrow arrow = arrowAt(at.X, at.Y, vx, vy, scale);
        const std::int32_t first = std::int32_t(points.size());
        points.insert(points.end(), {arrow.Tail, arrow.Head, arrow.Barb1, arrow.Barb2});
        steps.insert(steps.end(), {~first, first + 1, ~(first + 2), first + 1, first + 3});
        if (points.size() >= batchPoints)
            Flush();
    }
    /// Hands over what is left; to be called behind the last one.
    void Flush() {
        device.Lines(points, steps);
        points.clear();
        steps.clear();
    }

private:
    static constexpr std::size_t batchPoints = 1 << 16;

    /// Half the arrow's length reaches everything of it, the barbs included.
    bool maySee(DevicePoint at, float vx, float vy) const {
        const double reach = halfLength(vx, vy, scale) + margin;
        // A vector that is no number has no place to go to.
        if (!visible || !std::isfinite(reach))
            return std::isfinite(reach);
        return !(at.X + reach < visible->Left || at.X - reach > visible->Right || at.Y + reach < visible->Top ||
                 at.Y - reach > visible->Bottom);
    }

    DeviceContext& device;
    std::optional<DeviceRect> visible;
    float scale;
    double margin;
    std::vector<DevicePoint> points;
    std::vector<std::int32_t> steps;
};

struct ItemPair {
    int horz = -1, vert = -1;
};

/// The items of the set in use; nothing unless both exist and stand on the same objects.
std::optional<ItemPair> itemsInUse(const Scene& scene) {
    const VectorSettings& settings = scene.Settings.Vector;
    const int set = settings.DefaultItemSet;
    if (set < 0 || set >= settings.ItemSetCount || set >= settings.ItemSets.size())
        return {};
    const ItemPair pair{settings.ItemSets.at(set).Horz, settings.ItemSets.at(set).Vert};
    const auto missing = [&](int item) { return item < 0 || item >= scene.Model.Items.size(); };
    if (missing(pair.horz) || missing(pair.vert) ||
        scene.Model.Items.at(pair.horz).ElementType != scene.Model.Items.at(pair.vert).ElementType)
        return {};
    return pair;
}

/// Arrows at those of `positions` that `stands` accepts.
template<typename Stands>
void addArrows(ArrowCollector& arrows, std::span<const DevicePoint> positions, const ItemValues& horz,
               const ItemValues& vert, float sign, Stands stands) {
    // Packed element values are shorter than the list of elements: the rest has no arrows.
    const qsizetype count = std::min({qsizetype(positions.size()), horz.Values.size(), vert.Values.size()});
    const float* vx = horz.Values.constData();
    const float* vy = vert.Values.constData();
    for (qsizetype i = 0; i < count; ++i)
        if (stands(i))
            arrows.Add(positions[std::size_t(i)], vx[i], vy[i] * sign);
}

} // namespace

double ArrowAngle(float x, float y) {
    if (x == 0 && y == 0)
        return 0;
    if (x == 0)
        return y < 0 ? pi * 1.5 : pi * 0.5;
    if (y == 0)
        return x < 0 ? pi : 0;
    return std::atan(double(y) / double(x)) + (x < 0 ? pi : 0);
}

void DrawArrow(DeviceContext& device, int x, int y, float vx, float vy, float scale) {
    const Arrow arrow = arrowAt(x, y, vx, vy, scale);
    device.MoveTo(arrow.Tail);
    device.LineTo(arrow.Head);
    device.MoveTo(arrow.Barb1);
    device.LineTo(arrow.Head);
    device.LineTo(arrow.Barb2);
}

void DrawVectors(DeviceContext& device, const PlotConverter& converter, const PlotRect& window, const Scene& scene,
                 PaintContext& context) {
    const VectorSettings& settings = scene.Settings.Vector;
    const std::optional<ItemPair> items = itemsInUse(scene);
    if (!items || settings.Scale < 1 || settings.Fiducial == 0)
        return;
    const bool difference = scene.Settings.Difference.ApplyVector;
    const ItemValues horz = mdVelorinResultModel::GetItemValues(items->horz, scene.Model, difference);
    const ItemValues vert = mdVelorinResultModel::GetItemValues(items->vert, scene.Model, difference);
    double scale = 0, unused = 0;
    converter.PaperLengthToDevice(settings.Scale * 0.1, 0, scale, unused);
    if (settings.Fiducial != 1) {
        const float largest =
            scene.SlideShow.SlideShowRunning ? scene.SlideShow.SlideMaxVector : largestMagnitude(horz, vert);
        if (largest == 0)
            return;
        scale /= double(largest);
    }
    context.VectorScale = scale;
    const float sign = float(signOf(window.Height()));
    const MeshData& mesh = scene.Model.Mesh;
    const std::int32_t type = scene.Model.Items.at(items->horz).ElementType;
    const LineStyle& style = scene.Settings.Style.LineStyles[2];
    const Pen old = SelectLineStyle(device, converter, style);
    ArrowCollector arrows(device, scale, LineStyleWidth(converter, style));
    if (type >= 0)
        addArrows(arrows, ElementCentres(scene), horz, vert, sign, [&](qsizetype e) {
            return mesh.Elements.ElementType.at(e) == type && mesh.Elements.NodeCount(e) > 0;
        });
    else
        addArrows(arrows, scene.View.NodePoints, horz, vert, sign,
                  [&](qsizetype i) { return mesh.Nodes.Active.at(i) != 0; });
    arrows.Flush();
    mdTips::RestoreObject(device, old);
}

} // namespace mdScene
