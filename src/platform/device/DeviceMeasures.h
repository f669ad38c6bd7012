// What a device answers about its size and resolution. Plain values; draws nothing.
#pragma once

#include "platform/device/DeviceContext.h"

#include <algorithm>
#include <cmath>
#include <optional>

/// Sizes in device units; the dots per inch must be above 0.
struct DeviceMeasures {
    int Width = 0;
    int Height = 0;
    int DotsPerInchX = 96;
    int DotsPerInchY = 96;
    /// The sheet on which the device lies, and where; without a sheet all 0.
    int SheetWidth = 0, SheetHeight = 0;
    int OffsetX = 0, OffsetY = 0;

    /// What a clip leaves of the device; empty, and at the origin, when it leaves nothing.
    DeviceRect Visible(const std::optional<DeviceRect>& clip) const {
        const DeviceRect whole{0, 0, Width, Height};
        return intersection(whole, clip.value_or(whole));
    }
    /// The answer to `VisibleArea`.
    DeviceRect VisibleArea(const std::optional<DeviceRect>& clip, const Pen& pen) const {
        const DeviceRect rect = Visible(clip);
        // No device is so large that a wider pen than this could matter.
        const int reach = std::clamp(pen.Width, 1, 1 << 20);
        return {rect.Left - reach, rect.Top - reach, rect.Right + reach, rect.Bottom + reach};
    }

    /// The answer to `GetDeviceCaps`; millimetres are rounded to the nearest, 0 for a measure that does not exist.
    int Get(DeviceCaps caps) const {
        switch (caps) {
        case DeviceCaps::HorzSize:
            return int(std::lround(Width * 25.4 / DotsPerInchX));
        case DeviceCaps::VertSize:
            return int(std::lround(Height * 25.4 / DotsPerInchY));
        case DeviceCaps::HorzRes:
            return Width;
        case DeviceCaps::VertRes:
            return Height;
        case DeviceCaps::LogPixelsX:
            return DotsPerInchX;
        case DeviceCaps::LogPixelsY:
            return DotsPerInchY;
        case DeviceCaps::PhysicalWidth:
            return SheetWidth;
        case DeviceCaps::PhysicalHeight:
            return SheetHeight;
        case DeviceCaps::PhysicalOffsetX:
            return OffsetX;
        case DeviceCaps::PhysicalOffsetY:
            return OffsetY;
        }
        return 0;
    }
};
