// The plot's data and the order in which it is drawn; the stages of the drawing stand in files of their own.
#include "plot/clsPlot.h"

#include "app/mdApplication.h"

namespace {

/// `DataAdd` makes no more series than this for a number that it is given.
constexpr int mostSeries = 1'000'000;

FontReference gothic(double points, bool bold = false) {
    return std::make_shared<FontObject>(FontObject{.Name = u"ＭＳ ゴシック"_qs, .Size = points, .Bold = bold});
}

/// The entry of a number counted from 1.
template<class Vector>
auto& entryAt(Vector& entries, int number) {
    if (number < 1 || std::size_t(number) > entries.size())
        throw SubscriptError();
    return entries[std::size_t(number - 1)];
}

template<class Record>
const Record& ofScale(const std::array<Record, 2>& records, int scale) {
    if (scale != clsPlot::ScaleBase && scale != clsPlot::ScalePlot)
        throw SubscriptError();
    return records[std::size_t(scale)];
}

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

template<class Record>
void removeAt(std::vector<Record>& records, int number) {
    records.erase(records.begin() + (number - 1));
}

} // namespace

clsPlot::clsPlot()
    : DataLabelFont(gothic(10)), GraphTitleFont(gothic(11, true)), PictureFolder(mdApplication::ProgramFolder()) {
    for (PlotScale& scale : scales)
        scale.ScaleFont = gothic(7);
    for (PlotScaleLabel& label : scaleLabels)
        label.ScaleLabelFont = gothic(10, true);
}

PlotSeries& clsPlot::seriesAt(int number) {
    return entryAt(seriesList, number);
}

const PlotSeries& clsPlot::seriesAt(int number) const {
    return entryAt(seriesList, number);
}

PickupLine& clsPlot::lineAt(int number) {
    return entryAt(pickupLines, number);
}

const PickupLine& clsPlot::lineAt(int number) const {
    return entryAt(pickupLines, number);
}

const PlotScale& clsPlot::scaleAt(int scale) const {
    return ofScale(scales, scale);
}

const PlotScaleLabel& clsPlot::scaleLabelAt(int scale) const {
    return ofScale(scaleLabels, scale);
}

int clsPlot::DataLegendAdd() {
    seriesList.emplace_back();
    return DataLegendCount();
}

void clsPlot::DataLegendRemove(int number) {
    if (number >= 1 && number <= DataLegendCount())
        removeAt(seriesList, number);
}

int clsPlot::DataAdd(int number, float base, float plot) {
    if (number < 1 || number > std::max(mostSeries, DataLegendCount()))
        return -1;
    if (number > DataLegendCount())
        seriesList.resize(std::size_t(number));
    PlotSeries& target = seriesList[std::size_t(number - 1)];
    target.BaseValues.push_back(base);
    target.PlotValues.push_back(plot);
    return int(target.BaseValues.size());
}

void clsPlot::DataRemove(int number, int point) {
    if (point < 1 || point > DataCount(number))
        return;
    PlotSeries& target = seriesAt(number);
    removeAt(target.BaseValues, point);
    removeAt(target.PlotValues, point);
}

void clsPlot::DataClear(int number) {
    if (number < 1 || number > DataLegendCount())
        return;
    PlotSeries blank;
    blank.DataLineWidth = 0;
    blank.DataDotFillStyle = 0;
    seriesAt(number) = blank;
}

int clsPlot::DataCount(int number) const {
    return number >= 1 && number <= DataLegendCount() ? int(seriesAt(number).BaseValues.size()) : -1;
}

QString clsPlot::DataLabel(int number) const {
    return number >= 1 && number <= DataLegendCount() ? seriesAt(number).DataLabel : QString();
}

void clsPlot::SetDataLabel(int number, const QString& value) {
    if (number >= 1 && number <= DataLegendCount())
        seriesAt(number).DataLabel = value;
}

float clsPlot::DataBase(int number, int point) const {
    return float(entryAt(seriesAt(number).BaseValues, point));
}

float clsPlot::DataPlot(int number, int point) const {
    return float(entryAt(seriesAt(number).PlotValues, point));
}

int clsPlot::PickupLineAdd(float value, int type, Colour colour, int width, int style) {
    pickupLines.push_back({type, colour, style, width, value});
    return PickupLineCount();
}

void clsPlot::PickupLineRemove(int number) {
    if (number == 0)
        number = PickupLineCount();
    if (number >= 1 && number <= PickupLineCount())
        removeAt(pickupLines, number);
}

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
