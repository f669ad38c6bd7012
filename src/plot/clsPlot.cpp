// The order in which a plot is drawn; the stages stand in files of their own.
#include "plot/clsPlot.h"

#include "app/mdApplication.h"

namespace {

/// Puts a device back as it was, also when an exception passes.
class DeviceKeeper {
public:
    explicit DeviceKeeper(DeviceContext& kept) : device(kept) { device.SaveDC(); }
    DeviceKeeper(const DeviceKeeper&) = delete;
    DeviceKeeper& operator=(const DeviceKeeper&) = delete;
    ~DeviceKeeper() { device.RestoreDC(); }

private:
    DeviceContext& device;
};

} // namespace

clsPlot::clsPlot()
    : DataLabelFont(gothic(10)), GraphTitleFont(gothic(11, true)), PictureFolder(mdApplication::ProgramFolder()) {}

void clsPlot::SetDrawArea(int left, int top, int width, int height) {
    DrawLeft = left;
    DrawTop = top;
    DrawWidth = width;
    DrawHeight = height;
}

void clsPlot::GetDataPlotArea(int& left, int& top, int& width, int& height) const {
    left = dataPlotArea.Left;
    top = dataPlotArea.Top;
    width = dataPlotArea.Width;
    height = dataPlotArea.Height;
}

void clsPlot::Redraw(DeviceContext* hDC, DeviceContext* hSim) {
    DeviceContext* const target = hDC ? hDC : hDrawDC;
    if (!target)
        return;
    if (hSim)
        hSimulatedDC = hSim;
    DeviceContext& device = *target;
    const DeviceKeeper keeper(device);
    if (BeginPaint)
        BeginPaint(device);
    PrepareScales(device);
    Frame frame{device, {DrawLeft, DrawTop, DrawWidth, DrawHeight}};
    LayoutTitleAndLabels(frame);
    dataPlotArea = frame.Area;
    if (!seriesList.empty()) {
        DrawAxes(frame);
        dataPlotArea = frame.Area;
        DrawSeries(device);
    }
    DrawPickupLines(device);
    if (EndPaint)
        EndPaint(device);
}
