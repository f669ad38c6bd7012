// Puts a picture onto a surface in any size. Knows no files and no devices.
#pragma once

#include "platform/raster/PixelSurface.h"

class QImage;

/// Each pixel of `target` (corners in any order, the picture upright all the same) takes the picture's pixel that its
/// middle lies over; the picture's transparency holds. The same pixels for any part of the target that is on the
/// surface.
void stretchPicture(const PixelSurface& surface, const DeviceRect& target, const QImage& picture);
