#include "plot/PlotData.h"

namespace {

/// `DataAdd` makes no more series than this for a number that it is given.
constexpr int mostSeries = 1'000'000;

/// The entry of a number counted from 1.
template<class Vector>
auto& entryAt(Vector& entries, int number) {
    if (number < 1 || std::size_t(number) > entries.size())
        throw SubscriptError();
    return entries[std::size_t(number - 1)];
}

template<class Record>
const Record& ofScale(const std::array<Record, 2>& records, int scale) {
    if (scale != PlotData::ScaleBase && scale != PlotData::ScalePlot)
        throw SubscriptError();
    return records[std::size_t(scale)];
}

template<class Record>
void removeAt(std::vector<Record>& records, int number) {
    records.erase(records.begin() + (number - 1));
}

} // namespace

FontReference PlotData::gothic(double points, bool bold) {
    return std::make_shared<FontObject>(FontObject{.Name = u"ＭＳ ゴシック"_s, .Size = points, .Bold = bold});
}

PlotData::PlotData() {
    for (PlotScale& scale : scales)
        scale.ScaleFont = gothic(7);
    for (PlotScaleLabel& label : scaleLabels)
        label.ScaleLabelFont = gothic(10, true);
}

PlotSeries& PlotData::seriesAt(int number) {
    return entryAt(seriesList, number);
}

const PlotSeries& PlotData::seriesAt(int number) const {
    return entryAt(seriesList, number);
}

PickupLine& PlotData::lineAt(int number) {
    return entryAt(pickupLines, number);
}

const PickupLine& PlotData::lineAt(int number) const {
    return entryAt(pickupLines, number);
}

const PlotScale& PlotData::scaleAt(int scale) const {
    return ofScale(scales, scale);
}

const PlotScaleLabel& PlotData::scaleLabelAt(int scale) const {
    return ofScale(scaleLabels, scale);
}

int PlotData::DataLegendAdd() {
    seriesList.emplace_back();
    return DataLegendCount();
}

void PlotData::DataLegendRemove(int number) {
    if (number >= 1 && number <= DataLegendCount())
        removeAt(seriesList, number);
}

int PlotData::DataAdd(int number, float base, float plot) {
    if (number < 1 || number > std::max(mostSeries, DataLegendCount()))
        return -1;
    if (number > DataLegendCount())
        seriesList.resize(std::size_t(number));
    PlotSeries& target = seriesList[std::size_t(number - 1)];
    target.BaseValues.push_back(base);
    target.PlotValues.push_back(plot);
    return int(target.BaseValues.size());
}

void PlotData::DataRemove(int number, int point) {
    if (point < 1 || point > DataCount(number))
        return;
    PlotSeries& target = seriesAt(number);
    removeAt(target.BaseValues, point);
    removeAt(target.PlotValues, point);
}

void PlotData::DataClear(int number) {
    if (number < 1 || number > DataLegendCount())
        return;
    PlotSeries blank;
    blank.DataLineWidth = 0;
    blank.DataDotFillStyle = 0;
    seriesAt(number) = blank;
}

int PlotData::DataCount(int number) const {
    return number >= 1 && number <= DataLegendCount() ? int(seriesAt(number).BaseValues.size()) : -1;
}

QString PlotData::DataLabel(int number) const {
    return number >= 1 && number <= DataLegendCount() ? seriesAt(number).DataLabel : QString();
}

void PlotData::SetDataLabel(int number, const QString& value) {
    if (number >= 1 && number <= DataLegendCount())
        seriesAt(number).DataLabel = value;
}

float PlotData::DataBase(int number, int point) const {
    return float(entryAt(seriesAt(number).BaseValues, point));
}

float PlotData::DataPlot(int number, int point) const {
    return float(entryAt(seriesAt(number).PlotValues, point));
}

int PlotData::PickupLineAdd(float value, int type, ColorRef color, int width, int style) {
    pickupLines.push_back({type, color, style, width, value});
    return PickupLineCount();
}

void PlotData::PickupLineRemove(int number) {
    if (number == 0)
        number = PickupLineCount();
    if (number >= 1 && number <= PickupLineCount())
        removeAt(pickupLines, number);
}
