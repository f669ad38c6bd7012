// A self-contained plot of two axes: series of points, scales, a title, captions and reference lines, drawn on a device
// that it is handed. It knows neither windows nor results.
//
// One axis is the base (positions or times), the other the plot (the values); `Orientation` says which of them runs
// across the page. Nothing here fails: what cannot be done is left out and the fields keep what they held.
#pragma once

#include "platform/base/Literals.h"
#include "platform/device/DeviceContext.h"
#include "plot/PlotData.h"

#include <QImage>
#include <functional>
#include <optional>

class clsPlot : public PlotData {
public:
    clsPlot();

    // --- the plot as a whole

    int Orientation = 0;                   ///< 0 the base axis runs across, any other value up the page
    DeviceContext* hDrawDC = nullptr;      ///< borrowed; what `Redraw` draws on when it gets none
    DeviceContext* hSimulatedDC = nullptr; ///< borrowed; when not null, its resolution sizes every font
    /// The draw area in device units, to be set before drawing.
    int DrawLeft = 0, DrawTop = 0, DrawWidth = -1, DrawHeight = -1;
    /// 1 filled, 2 `Picture` once in the middle, 3 tiled, 4 stretched, 5 filled with a raised edge, 6 with a sunken
    /// edge; any other value paints nothing.
    int BackStyle = 1;
    ColorRef BackColor = 0xffffff;
    QImage Picture;
    int DotSize = 2;     ///< radius in device units
    bool Outline = true; ///< frame round the plot rectangle
    ColorRef OutlineColor = 0;
    int OutlineWidth = 1;
    ColorRef DataLabelColor = 0x800000; ///< kept, not used in drawing
    FontReference DataLabelFont;        ///< kept, not used in drawing
    bool PickupLineDraw = false;        ///< reference lines also beneath the series
    int GraphTitlePos = 3;              ///< 0 left edge, 1 top, 2 right edge, any other value bottom
    QString GraphTitle;
    ColorRef GraphTitleColor = 0;
    FontReference GraphTitleFont;
    QString ScaleMask;     ///< what the numbers at both axes are written by; empty for as few digits as usually do
    QString PictureFolder; ///< where `StyleSave` puts the picture; the program's folder unless set

    static QString name() { return u"clsPlot"_s; }
    static QString Version() { return u"1.09b"_s; }
    static QString Copyright() { return u"Copyright (c) 2026 the Velorin developers"_s; }

    /// Called by `Redraw` with the device in use, before anything is painted and after everything is. They may change
    /// the plot in any way, but neither replace themselves nor call `Redraw`; an exception of theirs leaves `Redraw`,
    /// with the device as it was found. They go along with copies of the plot and then still refer to what they did.
    std::function<void(DeviceContext&)> BeginPaint, EndPaint;

    // --- the styles that a user can choose: value and Japanese name by row from 0, and number of rows. A row beyond
    // the table has value 0 and no name, but for dots, whose value is the row's absolute value up to the number of
    // rows.

    static int SupportedDotStyle(int row);
    static QString SupportedDotStyleDescription(int row);
    static int SupportedDotStyleCount();
    static int SupportedLineStyle(int row); ///< `PenStyle`
    static QString SupportedLineStyleDescription(int row);
    static int SupportedLineStyleCount();
    static int SupprotedDotFillStyle(int row); ///< hatch of a brush, -1 no brush, 8 solid
    static QString SupprotedDotFillStyleDescription(int row);
    static int SupprotedDotFillStyleCount();

    // --- drawing

    void SetDrawArea(int left, int top, int width, int height);
    /// The plot rectangle of the last `Redraw`.
    void GetDataPlotArea(int& left, int& top, int& width, int& height) const;
    PlotArea DataPlotArea() const { return dataPlotArea; }
    /// Device position of a value across and a value up the page, by the mapping of the last `Redraw` of a series.
    void ConvertPoint(float x, float y, int& px, int& py) const;

    // --- finding points, by the mapping of the last `Redraw`; hidden series and points that are not finite count as if
    // they weren't there

    /// The point that lies nearest to `place`, the one drawn last of equally near ones, or, when none lies within
    /// `reach`, the nearer end of the nearest line. None when that is further off than `reach` too.
    std::optional<PlotPoint> NearestPoint(DevicePoint place, int reach) const;
    /// The point itself; nothing when there is no such point.
    std::optional<PlotPoint> PointAt(int series, int point) const;
    /// From a point `points` further along its series, and `series` further among the series that show, as far as there
    /// are any; the first point of all when there is none to start from.
    std::optional<PlotPoint> PointBeside(const std::optional<PlotPoint>& from, int series, int points) const;

    /// Finds limits and steps of the scales that are automatic, as `Redraw` does first: the limits are those of the
    /// finite values in all series, hidden ones included; without any such value the limits that a scale has are
    /// rounded again.
    void FindScales();

    /// Draws everything on `hDC`, or on `hDrawDC` when that is null; nothing when both are. A `hSim` that isn't null
    /// takes the place of `hSimulatedDC` and stays there.
    void Redraw(DeviceContext* hDC, DeviceContext* hSim);

    /// Rounds limits outwards to whole major steps of 1, 2 or 5 times a power of ten; the minor step is a fifth of the
    /// major one. Every intermediate result is a single, which shows in limits near a multiple: (2, 1) becomes
    /// (2, 0.8). A `max` below `min` gives a major step of 1 and leaves the minor one; limits that lie no finite
    /// distance apart leave all four as they are.
    static void GetMemoriScale(float& max, float& min, float& major, float& minor);

    /// One dot and one line, drawn as those of a series but in styles of their own. A `radius` below 1 means `DotSize`;
    /// `spare` is not read.
    void SpecialPlot_Dot(DeviceContext& device, int dotStyle, ColorRef color, ColorRef fillColor, int fillStyle,
                         int spare, int x, int y, int radius) const;
    void SpecialPlot_Line(DeviceContext& device, int style, ColorRef color, int width, int x1, int y1, int x2,
                          int y2) const;

    static bool PreCheckPrinterDCCaps(int, int) { return false; }

    // --- files, in code page 932 with CR LF at the end of lines; LF alone is read as well. A file that can't be
    // written stays as it was.

    /// Title, labels and points at four significant digits, texts as they are. An earlier file is replaced.
    void CsvSave(const QString& path) const;
    /// Without `keep` the series are cleared first. The file's first series goes to series 1, and so on, also with
    /// `keep`, where its points come behind those that are there. A point is left out when it has no plot value or a
    /// number beyond single precision; a series without points isn't made for its label alone. Takes the first 64 MB.
    void CsvLoad(const QString& path, bool keep);
    /// Background and scales. A picture in use is written to `PictureFolder` as "_back.bmp". A scale without a font has
    /// no keys of a font.
    void StyleSave(const QString& path) const;
    /// Takes what the file (its first MB) names and leaves all else. `GridWidth` does not come back from a file of
    /// `StyleSave`, which spells its key in another way than is read here, and `GridColor` comes back as 0. A picture
    /// is BMP, GIF, JPEG or PNG of up to 32 million pixels. Line widths are held within 0 to 32767, sizes of fonts
    /// within 1638 points and their names within 255 characters; no name, a size that is no number or below 1, and a
    /// limit or step beyond single precision change nothing. Limits and steps are otherwise taken as they are, and it
    /// is for `Redraw` to bound the number of ticks they make.
    void StyleLoad(const QString& path);

private:
    /// What the stages of a `Redraw` hand on: the rectangle that is left, and the margin between its parts.
    struct Frame {
        DeviceContext& Device;
        PlotArea Area;
        int Margin = 0;
    };
    /// Sides of an area, numbered as `GraphTitlePos`.
    enum class Edge : int { Left = 0, Top = 1, Right = 2, Bottom = 3 };

    // The axis that runs across the page, and the one that runs up.
    int scaleAcross() const { return Orientation == 0 ? ScaleBase : ScalePlot; }
    int scaleUp() const { return Orientation == 0 ? ScalePlot : ScaleBase; }

    // The stages of `Redraw`, in their order.
    /// The scales, and the ground that everything is drawn on.
    void PrepareScales(DeviceContext& device);
    void LayoutTitleAndLabels(Frame& frame);
    void DrawAxes(Frame& frame);
    void DrawSeries(DeviceContext& device) const;
    void DrawPickupLines(DeviceContext& device) const;

    void setAutomaticScale(int scale);
    /// Leaves pen and brush as they were last needed; stands between `SaveDC` and `RestoreDC`, clipped to the draw
    /// area.
    void paintBackground(DeviceContext& device) const;
    void tilePicture(DeviceContext& device, const DeviceRect& area) const;
    /// Writes `label` along the middle of the area's edge and takes that strip, and `gap` more, off the area.
    void placeText(Frame& frame, Edge edge, const PlotScaleLabel& label, int gap) const;
    QString numberAt(const PlotScale& scale, float value) const;
    /// Leaves the plot rectangle in the frame and gives the length of a major tick.
    int makeRoomForNumbers(Frame& frame) const;
    void setMapping(const PlotArea& area);
    void drawLinesBeneath(DeviceContext& device) const;
    /// The device position of a point of a series; none when it is not finite.
    std::optional<DevicePoint> placeOf(const PlotSeries& series, std::size_t index) const;
    /// The device positions of a series' points. A point that is not finite has none and interrupts the line: given
    /// back are the ends of the stretches between such points.
    std::vector<std::size_t> placePoints(const PlotSeries& series, std::vector<DevicePoint>& points) const;
    // A reference line across the plot rectangle, in the pen that is selected.
    void drawVerticalLine(DeviceContext& device, const PickupLine& line) const;
    void drawHorizontalLine(DeviceContext& device, const PickupLine& line) const;
    /// The font, turned by tenths of a degree, in the size of `hSimulatedDC` if there is one; gives back what was
    /// selected before.
    Font selectPlotFont(DeviceContext& device, const FontReference& font, int turn) const;

    PlotArea dataPlotArea;
    PlotMapping mapping;
};
