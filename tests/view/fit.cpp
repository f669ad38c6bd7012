#include "DrawnScene.h"
#include "Picture.h"
#include "view/scene/sceneFit.h"

using namespace mdScene;

namespace {

TEST_F(DrawnScene, TheDisplacedMeshJustHasRoomInItsBounds) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        Dice dice(seed);
        VrfBuilder file = twoSquares();
        for (VrfBuilder::Step& step : file.steps)
            for (auto& values : step.values)
                for (double& value : values)
                    value = dice.Between(-90, 90);
        open(file);
        mdVelorinResultModel::LoadStep(0, 0, model, false, 0);
        settings.Displacement.Fiducial = dice.Between(1, 3);
        settings.Displacement.Scale = settings.Displacement.Fiducial == 1 ? 1 : dice.Between(0, 300);
        const DeviceSize size{dice.Between(300, 900), dice.Between(300, 900)};
        const auto bounds = DisplacedBounds(scene(), size, 96);
        ASSERT_TRUE(bounds) << seed;
        const double scale = std::min(size.Width / double(bounds->Width()), size.Height / double(-bounds->Height()));
        const PlotDocument document{0, 0, size.Width, size.Height};
        ComputeDevicePoints({*bounds, document, scale, TraceDevice(size.Width, size.Height)}, *bounds, scene(),
                            context);
        const auto [left, right] = std::ranges::minmax(view.NodePoints, {}, &DevicePoint::X);
        const auto [top, bottom] = std::ranges::minmax(view.NodePoints, {}, &DevicePoint::Y);
        const int across = right.X - left.X, down = bottom.Y - top.Y;
        const double margin = 0.1 * std::min(across, down);
        EXPECT_NEAR(std::max((across + 2 * margin) / size.Width, (down + 2 * margin) / size.Height), 1, 0.02) << seed;
        EXPECT_NEAR(left.X + right.X, size.Width, 4) << seed;
        EXPECT_NEAR(top.Y + bottom.Y, size.Height, 4) << seed;
    }
    settings.Displacement = {.Scale = 100000, .Fiducial = 2};
    EXPECT_FALSE(DisplacedBounds(scene(), {400, 400}, 96)) << "longer than the window";
}

} // namespace
