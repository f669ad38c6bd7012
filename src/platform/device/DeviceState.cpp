#include "platform/device/DeviceState.h"

#include "platform/device/DrawingStopped.h"

#include <utility>

StatefulDevice::StatefulDevice(const DeviceMeasures& deviceMeasures) : measures(deviceMeasures) {
    state.LinePen = stockPen(Stock::BlackPen);
    state.AreaBrush = stockBrush(Stock::WhiteBrush);
    state.TextFont = stockFont(Stock::SystemFont, measures.DotsPerInchY);
}

void StatefulDevice::stopIfAsked() const {
    if (GoesOn && !GoesOn())
        throw DrawingStopped();
}

void StatefulDevice::SaveDC() {
    saved.push_back(state);
}

void StatefulDevice::RestoreDC() {
    if (saved.empty())
        return;
    state = std::move(saved.back());
    saved.pop_back();
}

Pen StatefulDevice::SelectPen(const Pen& pen) {
    return std::exchange(state.LinePen, pen);
}

Brush StatefulDevice::SelectBrush(const Brush& brush) {
    return std::exchange(state.AreaBrush, brush);
}

Font StatefulDevice::SelectFont(const Font& font) {
    return std::exchange(state.TextFont, font);
}

void StatefulDevice::SetTextColor(ColorRef color) {
    state.TextColor = color;
}

void StatefulDevice::SetRop2(int mode) {
    state.RasterMode = mode;
}

void StatefulDevice::ClipRect(const DeviceRect& rect) {
    state.Clip = normalised(rect);
}

void StatefulDevice::ClipNone() {
    state.Clip.reset();
}

void StatefulDevice::MoveTo(DevicePoint point) {
    state.Position = {point, 0};
}
