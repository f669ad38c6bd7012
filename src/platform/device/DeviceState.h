// What every device remembers: what is selected, where lines go on, the clip, and what `SaveDC` keeps of them. Draws
// nothing.
#pragma once

#include "platform/device/DeviceMeasures.h"

#include <functional>
#include <optional>
#include <type_traits>
#include <vector>

/// Where a line has come to: the point, and how far into the dash pattern its pen is there.
struct PathPosition {
    DevicePoint Point;
    double DashLength = 0; ///< of use to a device that draws the dashes itself
};

struct DeviceState {
    Pen LinePen;
    Brush AreaBrush;
    Font TextFont;
    ColorRef TextColor = 0;
    int RasterMode = RasterMode::CopyPen;
    PathPosition Position;
    std::optional<DeviceRect> Clip; ///< normalised
};

/// A device without the drawing. Nobody is told of a change: what a device makes of the state (a look, a font, the clip
/// of what it draws with) it compares with the state when it is about to draw; see `Kept`.
class StatefulDevice : public DeviceContext {
public:
    /// When set it is asked before each area and each long run of lines, on any thread that draws them; after a no the
    /// call throws `DrawingStopped`, and what has been drawn is of no use. Traces don't ask.
    std::function<bool()> GoesOn;

    void SaveDC() override;
    void RestoreDC() override;
    Pen SelectPen(const Pen& pen) override;
    Brush SelectBrush(const Brush& brush) override;
    Font SelectFont(const Font& font) override;
    void SetTextColor(ColorRef color) override;
    void SetRop2(int mode) override;
    void ClipRect(const DeviceRect& rect) override;
    void ClipNone() override;
    void MoveTo(DevicePoint point) override;

    int GetDeviceCaps(DeviceCaps caps) const override { return measures.Get(caps); }
    std::optional<DeviceRect> VisibleArea() const override { return measures.VisibleArea(state.Clip, state.LinePen); }

protected:
    /// Black pen, white brush and the system's font.
    explicit StatefulDevice(const DeviceMeasures& deviceMeasures);
    void stopIfAsked() const;

    const DeviceMeasures measures;
    DeviceState state;

private:
    std::vector<DeviceState> saved;
};

/// A value made of a part of the state, kept until that part is another.
template<class Key, class Value>
class Kept {
public:
    /// `wanted` is a key or a tuple of references to its parts.
    template<class Wanted, class Make>
    Value& For(const Wanted& wanted, const Make& make) {
        // What converts to a value may refer to what goes when `make` returns.
        static_assert(std::is_same_v<std::invoke_result_t<Make>, Value>);
        if (!value || !(key == wanted)) {
            value.reset();
            key = wanted;
            value.emplace(make());
        }
        return *value;
    }

private:
    Key key;
    std::optional<Value> value;
};
