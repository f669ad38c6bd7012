// The ranked layer of a picture in memory: sheets of ranks, a pixel in each byte, one for each thread that adds.
// Touches the picture only when it is put on it.
#pragma once

#include "platform/device/RankedLayer.h"
#include "platform/raster/PixelSurface.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

class RankedSheets final : public RankedLayer {
public:
    /// Of what lies on `surface`; the picture must outlive the layer and stay where it is. `stopIfAsked` is called by
    /// each call and may throw.
    RankedSheets(const PixelSurface& surface, int threadLimit, std::function<void()> stopIfAsked);
    ~RankedSheets() override;

    void Add(std::span<const DevicePoint> points, std::span<const Polygon> polygons) override;
    void Put(int first, std::span<const ColorRef> inks) override;

private:
    class Sheet;

    std::unique_ptr<Sheet> takeSheet();
    void giveBack(std::unique_ptr<Sheet> sheet);
    void merge();

    PixelSurface surface;
    int threads;
    std::function<void()> stop;
    std::mutex guard; ///< of what follows
    std::condition_variable givenBack;
    int sheetsToMake;
    std::vector<std::unique_ptr<Sheet>> sheets; ///< to which nobody adds now; after `merge` the one that has all
};
