// The records of a plot: its series, axes, captions and reference lines, and the error of a bad index. Plain values;
// what draws them is clsPlot.
#pragma once

#include "app/mdTips.h"
#include "platform/base/Geometry.h"
#include "platform/base/Rounding.h"

#include <memory>
#include <stdexcept>
#include <vector>

/// A font that several places may hold: a change shows in all of them. Null is no font, and text then keeps the one
/// that the device has.
using FontReference = std::shared_ptr<FontObject>;

/// What the accessors of a plot throw for a series, point, scale or line that there isn't.
struct SubscriptError : std::out_of_range {
    SubscriptError() : std::out_of_range("subscript out of range") {}
};

/// One data series. Both value arrays always have the same length; points arrive as singles.
struct PlotSeries {
    QString DataLabel;
    ColorRef DataLineColor = 0;
    int DataLineStyle = 0; ///< `PenStyle`
    int DataLineWidth = 1; ///< device units
    int DataDotStyle = 0;  ///< `DotStyle`
    ColorRef DataDotColor = 0;
    ColorRef DataDotFillColor = 0;
    int DataDotFillStyle = -1; ///< hatch of the dots' brush, 8 solid; -1 takes the brush that the device has
    std::vector<double> BaseValues;
    std::vector<double> PlotValues;
    bool DataLegendHidden = false;
};

/// What stands for a point.
namespace DotStyle {
enum : int { None = 0, Circle = 1, Square = 2, Triangle = 3, Cross = 4 };
}

/// One axis.
struct PlotScale {
    bool ScaleDraw = true;        ///< draw the axis and its numbers
    bool ScaleAutomatic = true;   ///< find limits and steps from the data at every `Redraw`
    bool ScaleReverse = false;    ///< swap the ends
    bool ScalePosReverse = false; ///< kept and saved; has no effect on drawing
    int ScaleType = 0;            ///< 0 ticks and numbers, 1 a line with an arrow head at the larger values
    int ScaleValueDraw = 0;       ///< numbers: 0 at every major tick, 1 at the first and the last, other: none
    ColorRef ScaleLineColor = 0;
    int ScaleLineStyle = 0;
    int ScaleLineWidth = 1;
    ColorRef ScaleFontColor = 0;
    FontReference ScaleFont;
    bool GridDraw = true; ///< lines at the inner major ticks
    ColorRef GridColor = 0x808080;
    int GridStyle = 0;
    int GridWidth = 1;
    float ScaleMax = 0, ScaleMin = 0;
    float ScaleMScale = 0, ScaleHScale = 0; ///< major and minor step
    /// The same four as drawn: exchanged and negated on an axis that runs against the device's coordinates.
    float WorkMax = 0, WorkMin = 0, WorkMScale = 0, WorkHScale = 0;

    float WorkRange() const { return WorkMax - WorkMin; }
    /// Has ticks of both kinds, and room is kept for its numbers.
    bool HasTicks() const { return ScaleDraw && ScaleType == 0; }
};

/// The caption of one axis.
struct PlotScaleLabel {
    QString ScaleLabel;
    ColorRef ScaleLabelColor = 0;
    FontReference ScaleLabelFont;
};

/// One reference line across the plot.
struct PickupLine {
    int PickupLineType = 0; ///< 0 marks a base value, 1 a plot value, 2 draws both
    ColorRef PickupLineColor = 0;
    int PickupLineStyle = 0;
    int PickupLineWidth = 0;
    float PickupLineValue = 0;
};

/// A rectangle of the page in device units.
struct PlotArea {
    int Left = 0, Top = 0, Width = 0, Height = 0;
    bool operator==(const PlotArea&) const = default;
};

/// A point of a series, both from 1, and where the last `Redraw` put it.
struct PlotPoint {
    int Series = 0;
    int Point = 0;
    DevicePoint Place;
    bool operator==(const PlotPoint&) const = default;
};

/// From values to device positions: across the page and up the page. Positions beyond the device's range are its ends.
struct PlotMapping {
    int Left = 0, Top = 0; ///< of the plot rectangle
    float SmallestAcross = 0, SmallestUp = 0;
    float UnitsAcross = 0, UnitsUp = 0; ///< device units per value

    int Across(double value) const { return Round((value - SmallestAcross) * UnitsAcross + Left); }
    int Up(double value) const { return Round((value - SmallestUp) * UnitsUp + Top); }
};
