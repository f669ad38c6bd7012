// Leaf helpers that every layer of a picture draws with: pens, brushes, fonts, text by an anchor. They keep nothing;
// what a select call gives back goes to `RestoreObject` when the layer is done.
#pragma once

#include "app/mdTips.h"
#include "platform/base/Rounding.h"
#include "platform/device/DeviceContext.h"

namespace mdTips {
/// Each selects and gives back what was selected before. A geometric pen keeps its dash style at widths above 1; a
/// `hatch` of 8 or below 0 is a solid brush.
Pen SelectSolidPen(DeviceContext& device, ColorRef color, int width, int style);
Pen SelectGeometricPen(DeviceContext& device, int style, int width, ColorRef color);
Brush SelectBrush(DeviceContext& device, ColorRef color, int hatch);

/// The font at its size in points on `ref`, which may be another device than the one drawn on. `escapement` is in
/// tenths of a degree. The face is cut to the 32 bytes of code page 932 that a font request holds.
Font SelectFontFor(DeviceContext& device, const DeviceContext& ref, const FontObject& font, int escapement);

void RestoreObject(DeviceContext& device, const Pen& old);
void RestoreObject(DeviceContext& device, const Brush& old);
void RestoreObject(DeviceContext& device, const Font& old);

/// A size in points, rounded to whole ones, as device units.
int PointsToDevice(const DeviceContext& device, double points);

DeviceSize MeasureText(const DeviceContext& device, const QString& text);

/// `anchor` says which point of the text lies on (x, y): 1 to 3 its top from left to right, 4 to 6 its middle, 7 to 9
/// its bottom; any other acts as 1.
void DrawAnchoredText(DeviceContext& device, int x, int y, const QString& text, int anchor);

/// Device units per millimetre, as the whole width gives them, or the whole height; 0 for a device of no millimetres.
float UnitsPerMillimetre(const DeviceContext& device, bool across = true);

/// A frame of two units inside the rectangle that makes it look raised or sunken, in grey tones of its own.
void DrawEdge(DeviceContext& device, const DeviceRect& rect, bool raised);

/// number * numerator / denominator, a half rounded away from zero; -1 when that can't be or isn't a 32-bit number.
int MulDiv(int number, int numerator, int denominator);
} // namespace mdTips
