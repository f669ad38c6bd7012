// What a device answers about its size and resolution. Plain values; draws nothing.
#pragma once

#include "platform/DeviceContext.h"

#include <cmath>

/// Sizes in device units; the dots per inch must be above 0.
struct DeviceMeasures {
    int Width = 0;
    int Height = 0;
    int DotsPerInchX = 96;
    int DotsPerInchY = 96;

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
        }
        return 0;
    }
};
