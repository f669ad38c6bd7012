// What a plot holds: its series with their points, two scales with captions, and reference lines. Draws nothing.
//
// Series, points and reference lines count from 1, scales from 0. What takes a bad index says so below; for all else a
// number that there isn't is passed over.
#pragma once

#include "plot/PlotRecords.h"

#include <array>

class PlotData {
public:
    /// Index of a scale; `ScaleBoth` in writes alone.
    enum : int { ScaleBase = 0, ScalePlot = 1, ScaleBoth = 2 };

    PlotData();

    // --- series

    int DataLegendAdd(); ///< the new series' number
    void DataLegendRemove(int series);
    void DataLegendClear() { seriesList.clear(); }
    int DataLegendCount() const { return int(seriesList.size()); }

    /// Appends a point, and before it series until there is one of that number; the series' number of points. Nothing
    /// and -1 for a series below 1 or beyond any sensible number.
    int DataAdd(int series, float base, float plot);
    void DataRemove(int series, int point);
    /// Leaves a blank record: label, styles and points go, width and fill style become 0.
    void DataClear(int series);
    int DataCount(int series) const; ///< -1 for a series that there isn't

    // Throw a SubscriptError for a series that there isn't.
    ColorRef DataDotColor(int series) const { return seriesAt(series).DataDotColor; }
    void SetDataDotColor(int series, ColorRef value) { seriesAt(series).DataDotColor = value; }
    ColorRef DataDotFillColor(int series) const { return seriesAt(series).DataDotFillColor; }
    void SetDataDotFillColor(int series, ColorRef value) { seriesAt(series).DataDotFillColor = value; }
    int DataDotFillStyle(int series) const { return seriesAt(series).DataDotFillStyle; }
    void SetDataDotFillStyle(int series, int value) { seriesAt(series).DataDotFillStyle = value; }
    int DataDotStyle(int series) const { return seriesAt(series).DataDotStyle; }
    void SetDataDotStyle(int series, int value) { seriesAt(series).DataDotStyle = value; }
    bool DataLegendHidden(int series) const { return seriesAt(series).DataLegendHidden; }
    void SetDataLegendHidden(int series, bool value) { seriesAt(series).DataLegendHidden = value; }
    ColorRef DataLineColor(int series) const { return seriesAt(series).DataLineColor; }
    void SetDataLineColor(int series, ColorRef value) { seriesAt(series).DataLineColor = value; }
    int DataLineStyle(int series) const { return seriesAt(series).DataLineStyle; }
    void SetDataLineStyle(int series, int value) { seriesAt(series).DataLineStyle = value; }
    int DataLineWidth(int series) const { return seriesAt(series).DataLineWidth; }
    void SetDataLineWidth(int series, int value) { seriesAt(series).DataLineWidth = value; }

    /// Empty, and nothing, for a series that there isn't.
    QString DataLabel(int series) const;
    void SetDataLabel(int series, const QString& value);

    // Throw a SubscriptError for a series or a point that there isn't.
    float DataBase(int series, int point) const;
    float DataPlot(int series, int point) const;

    // --- scales: reading takes 0 or 1, writing `ScaleBoth` as well; any other index throws a SubscriptError

    bool ScaleDraw(int scale) const { return scaleAt(scale).ScaleDraw; }
    void SetScaleDraw(int scale, bool value) { setScale(scale, &PlotScale::ScaleDraw, value); }
    bool ScaleAutomatic(int scale) const { return scaleAt(scale).ScaleAutomatic; }
    void SetScaleAutomatic(int scale, bool value) { setScale(scale, &PlotScale::ScaleAutomatic, value); }
    bool ScaleReverse(int scale) const { return scaleAt(scale).ScaleReverse; }
    void SetScaleReverse(int scale, bool value) { setScale(scale, &PlotScale::ScaleReverse, value); }
    bool ScalePosReverse(int scale) const { return scaleAt(scale).ScalePosReverse; }
    void SetScalePosReverse(int scale, bool value) { setScale(scale, &PlotScale::ScalePosReverse, value); }
    int ScaleType(int scale) const { return scaleAt(scale).ScaleType; }
    void SetScaleType(int scale, int value) { setScale(scale, &PlotScale::ScaleType, value); }
    int ScaleValueDraw(int scale) const { return scaleAt(scale).ScaleValueDraw; }
    void SetScaleValueDraw(int scale, int value) { setScale(scale, &PlotScale::ScaleValueDraw, value); }
    ColorRef ScaleLineColor(int scale) const { return scaleAt(scale).ScaleLineColor; }
    void SetScaleLineColor(int scale, ColorRef value) { setScale(scale, &PlotScale::ScaleLineColor, value); }
    int ScaleLineStyle(int scale) const { return scaleAt(scale).ScaleLineStyle; }
    void SetScaleLineStyle(int scale, int value) { setScale(scale, &PlotScale::ScaleLineStyle, value); }
    int ScaleLineWidth(int scale) const { return scaleAt(scale).ScaleLineWidth; }
    void SetScaleLineWidth(int scale, int value) { setScale(scale, &PlotScale::ScaleLineWidth, value); }
    FontReference ScaleFont(int scale) const { return scaleAt(scale).ScaleFont; }
    void SetScaleFont(int scale, const FontReference& value) { setScale(scale, &PlotScale::ScaleFont, value); }
    ColorRef ScaleFontColor(int scale) const { return scaleAt(scale).ScaleFontColor; }
    void SetScaleFontColor(int scale, ColorRef value) { setScale(scale, &PlotScale::ScaleFontColor, value); }
    bool GridDraw(int scale) const { return scaleAt(scale).GridDraw; }
    void SetGridDraw(int scale, bool value) { setScale(scale, &PlotScale::GridDraw, value); }
    ColorRef GridColor(int scale) const { return scaleAt(scale).GridColor; }
    void SetGridColor(int scale, ColorRef value) { setScale(scale, &PlotScale::GridColor, value); }
    int GridStyle(int scale) const { return scaleAt(scale).GridStyle; }
    void SetGridStyle(int scale, int value) { setScale(scale, &PlotScale::GridStyle, value); }
    int GridWidth(int scale) const { return scaleAt(scale).GridWidth; }
    void SetGridWidth(int scale, int value) { setScale(scale, &PlotScale::GridWidth, value); }
    float ScaleMax(int scale) const { return scaleAt(scale).ScaleMax; }
    void SetScaleMax(int scale, float value) { setScale(scale, &PlotScale::ScaleMax, value); }
    float ScaleMin(int scale) const { return scaleAt(scale).ScaleMin; }
    void SetScaleMin(int scale, float value) { setScale(scale, &PlotScale::ScaleMin, value); }
    float ScaleMScale(int scale) const { return scaleAt(scale).ScaleMScale; }
    void SetScaleMScale(int scale, float value) { setScale(scale, &PlotScale::ScaleMScale, value); }
    float ScaleHScale(int scale) const { return scaleAt(scale).ScaleHScale; }
    void SetScaleHScale(int scale, float value) { setScale(scale, &PlotScale::ScaleHScale, value); }
    QString ScaleLabel(int scale) const { return scaleLabelAt(scale).ScaleLabel; }
    void SetScaleLabel(int scale, const QString& value) { setScale(scale, &PlotScaleLabel::ScaleLabel, value); }
    FontReference ScaleLabelFont(int scale) const { return scaleLabelAt(scale).ScaleLabelFont; }
    void SetScaleLabelFont(int scale, const FontReference& value) {
        setScale(scale, &PlotScaleLabel::ScaleLabelFont, value);
    }
    ColorRef ScaleLabelColor(int scale) const { return scaleLabelAt(scale).ScaleLabelColor; }
    void SetScaleLabelColor(int scale, ColorRef value) { setScale(scale, &PlotScaleLabel::ScaleLabelColor, value); }

    // --- reference lines

    int PickupLineAdd(float value, int type, ColorRef color, int width, int style); ///< the new line's number
    void PickupLineRemove(int line);                                                ///< 0 is the last line
    void PickupLineClear() { pickupLines.clear(); }
    int PickupLineCount() const { return int(pickupLines.size()); }

    // Throw a SubscriptError for a line that there isn't.
    ColorRef PickupLineColor(int line) const { return lineAt(line).PickupLineColor; }
    void SetPickupLineColor(int line, ColorRef value) { lineAt(line).PickupLineColor = value; }
    int PickupLineWidth(int line) const { return lineAt(line).PickupLineWidth; }
    void SetPickupLineWidth(int line, int value) { lineAt(line).PickupLineWidth = value; }
    int PickupLineStyle(int line) const { return lineAt(line).PickupLineStyle; }
    void SetPickupLineStyle(int line, int value) { lineAt(line).PickupLineStyle = value; }
    int PickupLineType(int line) const { return lineAt(line).PickupLineType; }
    void SetPickupLineType(int line, int value) { lineAt(line).PickupLineType = value; }
    float PickupLineValue(int line) const { return lineAt(line).PickupLineValue; }
    void SetPickupLineValue(int line, float value) { lineAt(line).PickupLineValue = value; }

protected:
    /// The face that texts of a plot have unless another is chosen.
    static FontReference gothic(double points, bool bold = false);

    std::vector<PlotSeries> seriesList;
    std::array<PlotScale, 2> scales;
    std::array<PlotScaleLabel, 2> scaleLabels;
    std::vector<PickupLine> pickupLines;

private:
    PlotSeries& seriesAt(int number);
    const PlotSeries& seriesAt(int number) const;
    const PlotScale& scaleAt(int scale) const;
    const PlotScaleLabel& scaleLabelAt(int scale) const;
    PickupLine& lineAt(int number);
    const PickupLine& lineAt(int number) const;
    template<class Record, class T>
    void setScale(int scale, T Record::*field, const std::type_identity_t<T>& value);
    std::array<PlotScale, 2>& records(PlotScale*) { return scales; }
    std::array<PlotScaleLabel, 2>& records(PlotScaleLabel*) { return scaleLabels; }
};

template<class Record, class T>
void PlotData::setScale(int scale, T Record::*field, const std::type_identity_t<T>& value) {
    if (scale < ScaleBase || scale > ScaleBoth)
        throw SubscriptError();
    auto& both = records(static_cast<Record*>(nullptr));
    for (int i = ScaleBase; i <= ScalePlot; ++i)
        if (scale == i || scale == ScaleBoth)
            both[std::size_t(i)].*field = value;
}
