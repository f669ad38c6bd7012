// What explains a picture: scale boxes, colour bar, numbers on the mesh, and the header of a slide show. They draw over
// the scene and lay nothing out but themselves.
#pragma once

#include "view/scene/mdScene.h"

/// What of the document is left for legends: they stand at its right edge and move `Top` down as they take their place.
using LegendRect = DeviceRect;

namespace mdScene {

// `ref` gives the resolution that fonts take their size from, everywhere in this header; texts are measured on
// `device`, which is the one that has the font selected. So a preview on the screen lays its legends out as the page
// will.

/// The legends that are switched on and have something to tell, one below the other from the top of `document`.
void DrawLegends(DeviceContext& device, const DeviceContext& ref, const PlotConverter& converter,
                 const DeviceRect& document, const Scene& scene, const PaintContext& context);

/// A bar, for a vector an arrow, as long as some power of ten is drawn: the largest that takes up to a quarter of
/// `rect`. `scale` is in device units per unit; one of exactly 0 draws nothing.
void DrawScaleLegend(DeviceContext& device, const DeviceContext& ref, double scale, LegendRect& rect,
                     const PlotConverter& converter, const Scene& scene, const PaintContext& context, bool isVector);

/// The colours of the bands with the values between them, the highest on top. Nothing keeps it inside `rect`.
void DrawContourLegend(DeviceContext& device, const DeviceContext& ref, const PaintContext& context, LegendRect& rect,
                       const PlotConverter& converter, const Scene& scene);

/// Whether the number format has too few digits to tell the lowest two numbers of that legend apart. Knows the ranges
/// that cost no search: those of the step and of the settings, without a difference.
bool AreBandsWrittenAlike(const Scene& scene);

/// The current item's values, at the nodes in use or at the elements of its type; a value is taken at the object's own
/// index, and where there is none nothing is drawn. What lies outside the device's visible area is left out.
void DrawValues(DeviceContext& device, const DeviceContext& ref, const Scene& scene);

/// One line from `leftTop`: step, time, item and vector, as the settings of the slide show say.
void DrawHeader(DeviceContext& device, const Scene& scene, DevicePoint leftTop);

/// Selects one of the settings' font strings; gives back the font selected before.
Font SelectFontString(DeviceContext& device, const DeviceContext& ref, const QString& fontString);

} // namespace mdScene
