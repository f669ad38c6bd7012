// Everything the user can set, as plain records with their defaults, so that `settings = {}` is a reset. Nothing here
// reads or stores a setting. Lengths on paper are tenths of a millimetre, window sizes twips, times milliseconds.
#pragma once

#include "platform/base/Geometry.h"
#include "platform/base/Literals.h"

#include <QList>
#include <QString>
#include <array>

struct LineStyle {
    int Width = 1; ///< tenths of a millimetre
    int Style = 0; ///< `PenStyle`
    ColorRef Color = 0;
    bool operator==(const LineStyle&) const = default;
};

/// Two items of a model that together make a vector; -1 for an item not chosen.
struct VectorItemSet {
    QString Name;
    int Horz = -1;
    int Vert = -1;
    bool operator==(const VectorItemSet&) const = default;
};

/// One line of text on a printed page.
struct PageLabel {
    QString Text; ///< with its macros
    bool Print = false;
    int Position = 0; ///< 0 to 17, row of the table of places on the page
    QString Font;     ///< font string
    bool operator==(const PageLabel&) const = default;
};

struct PageSettings {
    QString Printer;                               ///< empty: the system's default
    int Orientation = 2;                           ///< 1 portrait, 2 landscape
    int PaperSize = 9;                             ///< printer paper code
    std::array<int, 4> Margin{200, 200, 200, 200}; ///< left, top, right, bottom
    bool Frame = true;
    int FrameSize = 3;
    int LabelCount = 0;
    QList<PageLabel> Labels;
    double ScaleDenominator = 0; ///< N of a page at 1:N; 0 when the model is fitted to the page
    int ScaleUnit = 0;           ///< of the model's coordinates: 0 millimetres, 1 centimetres, 2 metres
    bool operator==(const PageSettings&) const = default;
};

struct VectorSettings {
    int ItemSetCount = 0;
    int DefaultItemSet = -1; ///< index in `ItemSets` of the set in use, -1 none
    QList<VectorItemSet> ItemSets;
    bool Legend = true;
    int Scale = 200;
    int Fiducial = 2; ///< scale mode, 0 to 2
    bool operator==(const VectorSettings&) const = default;
};

struct DisplacementSettings {
    bool Legend = true;
    int Scale = 200;
    int Fiducial = 2;      ///< scale mode, 0 to 3
    bool Original = false; ///< also draw the mesh before displacement
    bool operator==(const DisplacementSettings&) const = default;
};

/// Whose range a contour has.
namespace ContourRange {
enum : int {
    AsStands = 0, ///< that of the step in view when `Automatic`, otherwise the one that stands in the settings
    AllSteps = 1, ///< likewise; what stands there has been found over all steps of the file
    Visible = 2   ///< that of what is to be seen in the picture
};
}

/// Published colour maps that take the place of the user's three colours.
namespace ColorPreset {
enum : int { None = 0, Viridis = 1, Cividis = 2, Diverging = 3 };
}

struct ContourSettings {
    int ColorIndex = 4;                                    ///< colour scheme, 0 to 5
    std::array<ColorRef, 3> Colors{0, 0x808080, 0xffffff}; ///< of the minimum, the middle and the maximum
    bool Legend = true;
    bool Reverse = false;
    float MaxValue = 0; ///< counts when `Automatic` is false
    float MinValue = 0; ///< counts when `Automatic` is false
    int Divide = 20;    ///< number of bands
    bool Automatic = true;
    int Range = ContourRange::AsStands;
    int Preset = ColorPreset::None; ///< counts when `ColorIndex` is the user's scheme
    bool LegendName = false;        ///< the legend names the item
    bool LegendRange = false;       ///< and tells whose range it shows
    bool operator==(const ContourSettings&) const = default;
};

/// How one series of a graph is drawn; the numbers are those of the plot's style tables.
struct LegendStyle {
    int LineStyle = 0;
    ColorRef LineColor = 0;
    int DotStyle = 0;
    ColorRef DotColor = 0;
    bool operator==(const LegendStyle&) const = default;
};

/// What the numbers at the axes of a graph are written by.
namespace ScaleFormat {
enum : int {
    Standard = 0, ///< as few digits as usually do
    Options = 1,  ///< `RealFormat`
    Mask = 2      ///< `ScaleMask`
};
}

/// What a new graph starts from.
struct GraphDefaults {
    std::array<QString, 5> GraphLabels{u"%item%%name%"_s, u"経過時間"_s, u"%item%"_s, u"位置"_s, u"%item%"_s};
    std::array<QString, 4> GraphFonts{u"\"ＭＳ Ｐゴシック\",12,b"_s, u"\"ＭＳ Ｐゴシック\",10,b"_s,
                                      u"\"ＭＳ Ｐゴシック\",9"_s, u"\"ＭＳ Ｐゴシック\",9"_s};
    bool PlotLegend = true;
    int LegendPosition = 2;
    bool PlotGrid = true;
    bool PlotScale = true;
    int DotSize = 10;
    int LineSize = 3;
    /// In rotation, one a series; may be empty.
    QList<LegendStyle> LegendStyles = DefaultStyles();
    int ScaleFormat = ScaleFormat::Standard;
    QString ScaleMask = u"0.000"_s; ///< number mask
    bool ShowCurrentStep = true;    ///< a line in a history at the step of the main window
    static QList<LegendStyle> DefaultStyles();
    bool operator==(const GraphDefaults&) const = default;
};

struct SlideShowSettings {
    int Interval = 500; ///< milliseconds
    bool AtFirst = true;
    bool RestoreStep = false;
    bool AutomaticContourValue = true;
    int ContourDivide = 20;
    bool PaintHeader = true;
    bool HeaderStep = true;
    bool HeaderTime = false;
    bool HeaderContour = true;
    bool HeaderVector = false;
    bool operator==(const SlideShowSettings&) const = default;
};

struct StyleSettings {
    /// Displaced mesh, mesh before displacement, vector, line element.
    std::array<LineStyle, 4> LineStyles{LineStyle{1, 0, 0x8000}, LineStyle{1, 1, 0x8080ff}, LineStyle{1, 0, 0xc00000},
                                        LineStyle{5, 0, 0x8000}};
    /// Displacement legend, vector legend, contour legend, values.
    std::array<QString, 4> FontStrings{u"Arial, 11"_s, u"Arial, 11"_s, u"Arial, 11"_s, u"Arial, 11"_s};
    QString RealFormat = u"0.000"_s; ///< number mask
    bool operator==(const StyleSettings&) const = default;
};

struct DifferenceSettings {
    int StandardStep = -1; ///< the reference step, -1 none
    bool ApplyDisplacement = false;
    bool ApplyVector = false;
    bool ApplyContour = false;
    bool ApplyValue = false;
    bool operator==(const DifferenceSettings&) const = default;
};

struct WindowSettings {
    bool Toolbar = true;
    bool Statusbar = true;
    int ScaleMode = 0;
    bool Mesh = true;
    bool RestoreWindowStatus = true;
    int WindowState = -1;           ///< 0 normal, 1 minimised, 2 maximised, -1 never stored
    std::array<int, 4> WindowPos{}; ///< left, top, width, height in twips
    bool RestoreLastFile = false;
    bool AutoSave = true;
    bool AutoInstall = true;
    QString Help;                ///< the help folder, with its trailing separator
    QString PictureFolder;       ///< that of the picture saved last; empty: beside the result file
    bool FitDisplaced = false;   ///< fitting the picture counts the displaced mesh
    bool FollowFile = false;     ///< the open file is read anew whenever somebody has written to it
    bool PointTip = true;        ///< tell what lies under the resting mouse
    bool FadeMesh = false;       ///< draw edges faintly where they lie close together
    bool DeriveStresses = false; ///< opened files get equivalent and principal stresses
    bool operator==(const WindowSettings&) const = default;
};

struct ApplicationSettings {
    PageSettings Page;
    bool ValueDisplay = false;  ///< draw the item's values at the nodes or elements
    bool HeaderDisplay = false; ///< draw the header also without a slide show
    VectorSettings Vector;
    DisplacementSettings Displacement;
    ContourSettings Contour;
    GraphDefaults Graph;
    SlideShowSettings SlideShow;
    StyleSettings Style;
    DifferenceSettings Difference;
    WindowSettings Window;
    bool operator==(const ApplicationSettings&) const = default;
};

/// Resets everything and fills in what depends on the machine: the printer, empty when there is none, and the help
/// folder, "Help" beside a program folder named "bin" in any case and beneath any other one. Optical drives are not
/// searched for a help folder.
void SetDefaults(ApplicationSettings& settings, const QString& programFolder, const QString& defaultPrinter);
