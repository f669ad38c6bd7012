#include "app/settingsTable.h"

namespace settingsTable {
namespace {
std::uint32_t* word(std::int32_t& number) {
    return reinterpret_cast<std::uint32_t*>(&number);
}

Field fieldOf(bool& field) {
    return &field;
}
Field fieldOf(std::int32_t& field) {
    return &field;
}
Field fieldOf(ColorRef& field) {
    return &field;
}
Field fieldOf(double& field) {
    return &field;
}
Field fieldOf(QString& field) {
    return &field;
}
Field fieldOf(std::array<int, 4>& field) {
    return Words{{word(field[0]), word(field[1]), word(field[2]), word(field[3])}, 4};
}
Field fieldOf(LineStyle& field) {
    return Words{{word(field.Width), word(field.Style), &field.Color}, 3};
}

/// A field of a record, and one of a section of the settings; with an index, of an array there.
template<auto Member, class Record>
Field of(Record& record) {
    return fieldOf(record.*Member);
}
template<auto Member, int Index, class Record>
Field of(Record& record) {
    return fieldOf((record.*Member)[Index]);
}
template<auto Section, auto Member>
Field in(ApplicationSettings& settings) {
    return fieldOf(settings.*Section.*Member);
}
template<auto Section, auto Member, int Index>
Field in(ApplicationSettings& settings) {
    return fieldOf((settings.*Section.*Member)[Index]);
}

constexpr auto window = &ApplicationSettings::Window;
constexpr auto page = &ApplicationSettings::Page;
constexpr auto style = &ApplicationSettings::Style;
constexpr auto slides = &ApplicationSettings::SlideShow;

constexpr Row<ApplicationSettings> general[] = {
    {u"Auto Install", in<window, &WindowSettings::AutoInstall>},
    {u"Auto Save", in<window, &WindowSettings::AutoSave>},
    {u"Restore Last File", in<window, &WindowSettings::RestoreLastFile>},
    {u"Restore Window Status", in<window, &WindowSettings::RestoreWindowStatus>},
    {u"Toolbar", in<window, &WindowSettings::Toolbar>},
    // The tool bar's state stands for both bars from one run to the next.
    {.Name = u"Statusbar",
     .Of = in<window, &WindowSettings::Statusbar>,
     .Written = in<window, &WindowSettings::Toolbar>},
    {u"Help", in<window, &WindowSettings::Help>},
    {u"Window State", in<window, &WindowSettings::WindowState>},
    {u"Window Pos", in<window, &WindowSettings::WindowPos>},
    {u"Scale Mode", in<window, &WindowSettings::ScaleMode>, 0, 1},
    {.Name = u"Mesh", .Of = in<window, &WindowSettings::Mesh>, .True = -1},
    {u"Printer", in<page, &PageSettings::Printer>},
    {u"Paper Size", in<page, &PageSettings::PaperSize>},
    {u"Orientation", in<page, &PageSettings::Orientation>},
    {u"Margin", in<page, &PageSettings::Margin>},
    {u"Frame", in<page, &PageSettings::Frame>},
    {u"Frame Size", in<page, &PageSettings::FrameSize>},
    {u"Line-1", in<style, &StyleSettings::LineStyles, 0>},
    {u"Line-2", in<style, &StyleSettings::LineStyles, 1>},
    {u"Line-3", in<style, &StyleSettings::LineStyles, 2>},
    {u"Line-4", in<style, &StyleSettings::LineStyles, 3>},
    {u"Font-1", in<style, &StyleSettings::FontStrings, 0>},
    {u"Font-2", in<style, &StyleSettings::FontStrings, 1>},
    {u"Font-3", in<style, &StyleSettings::FontStrings, 2>},
    {u"Font-4", in<style, &StyleSettings::FontStrings, 3>},
    {u"Real Format", in<style, &StyleSettings::RealFormat>},
    {u"SS Interval", in<slides, &SlideShowSettings::Interval>},
    {u"SS At First", in<slides, &SlideShowSettings::AtFirst>},
    {u"SS Restore Step", in<slides, &SlideShowSettings::RestoreStep>},
    {u"SS Automatic Contour Value", in<slides, &SlideShowSettings::AutomaticContourValue>},
    {u"SS Contour Divide", in<slides, &SlideShowSettings::ContourDivide>},
    {u"SS Paint Header", in<slides, &SlideShowSettings::PaintHeader>},
    {u"SS Header Step", in<slides, &SlideShowSettings::HeaderStep>},
    {u"SS Header Time", in<slides, &SlideShowSettings::HeaderTime>},
    {u"SS Header Contour", in<slides, &SlideShowSettings::HeaderContour>},
    {u"SS Header Vector", in<slides, &SlideShowSettings::HeaderVector>},
    {u"Scale Denominator", in<page, &PageSettings::ScaleDenominator>, 0},
    {u"Scale Unit", in<page, &PageSettings::ScaleUnit>, 0, 2},
    {.Name = u"Picture Folder", .Of = in<window, &WindowSettings::PictureFolder>, .Optional = true},
    {.Name = u"Fit Displaced", .Of = in<window, &WindowSettings::FitDisplaced>, .Optional = true},
    {.Name = u"Derive Stresses", .Of = in<window, &WindowSettings::DeriveStresses>, .Optional = true},
    {.Name = u"Follow File", .Of = in<window, &WindowSettings::FollowFile>, .Optional = true},
    {.Name = u"Point Tip", .Of = in<window, &WindowSettings::PointTip>, .Optional = true},
    {.Name = u"Fade Mesh", .Of = in<window, &WindowSettings::FadeMesh>, .Optional = true},
};

constexpr Row<GraphDefaults> graph[] = {
    {u"Plot Legend", of<&GraphDefaults::PlotLegend>},
    {u"Plot Scale", of<&GraphDefaults::PlotScale>},
    {u"Plot Grid", of<&GraphDefaults::PlotGrid>},
    {u"Dot Size", of<&GraphDefaults::DotSize>, 1},
    {u"Line Size", of<&GraphDefaults::LineSize>, 1},
    {u"Legend Position", of<&GraphDefaults::LegendPosition>},
    {u"Legends", [](GraphDefaults& g) -> Field { return std::int32_t(g.LegendStyles.size()); }},
    {u"Font-0", of<&GraphDefaults::GraphFonts, 0>},
    {u"Font-1", of<&GraphDefaults::GraphFonts, 1>},
    {u"Font-2", of<&GraphDefaults::GraphFonts, 2>},
    {u"Font-3", of<&GraphDefaults::GraphFonts, 3>},
    {u"Label-0", of<&GraphDefaults::GraphLabels, 0>},
    {u"Label-1", of<&GraphDefaults::GraphLabels, 1>},
    {u"Label-2", of<&GraphDefaults::GraphLabels, 2>},
    {u"Label-3", of<&GraphDefaults::GraphLabels, 3>},
    {u"Label-4", of<&GraphDefaults::GraphLabels, 4>},
    {u"Scale Format", of<&GraphDefaults::ScaleFormat>, 0, 2},
    {u"Scale Mask", of<&GraphDefaults::ScaleMask>},
    {u"Current Step", of<&GraphDefaults::ShowCurrentStep>},
};

constexpr Row<PageLabel> label[] = {
    {u"Print", of<&PageLabel::Print>},
    {u"Text", of<&PageLabel::Text>},
    {u"Font", of<&PageLabel::Font>},
    {u"Position", of<&PageLabel::Position>},
};

constexpr Row<ContourSettings> contour[] = {
    {.Name = u"Legend", .Of = of<&ContourSettings::Legend>, .Absent = true},
    {.Name = u"Reverse", .Of = of<&ContourSettings::Reverse>},
    {.Name = u"Color", .Of = of<&ContourSettings::ColorIndex>, .Least = 0, .Most = 5, .Absent = 4},
    {.Name = u"Divide", .Of = of<&ContourSettings::Divide>, .Least = 0, .Absent = 20},
    {.Name = u"Min Color", .Of = of<&ContourSettings::Colors, 0>, .Absent = 0},
    {.Name = u"Mid Color", .Of = of<&ContourSettings::Colors, 1>, .Absent = 0x808080},
    {.Name = u"Max Color", .Of = of<&ContourSettings::Colors, 2>, .Absent = 0xffffff},
    {.Name = u"Preset", .Of = of<&ContourSettings::Preset>, .Least = 0, .Most = 3, .Absent = 0, .Optional = true},
    {.Name = u"Legend Name", .Of = of<&ContourSettings::LegendName>, .Absent = false, .Optional = true},
    {.Name = u"Legend Range", .Of = of<&ContourSettings::LegendRange>, .Absent = false, .Optional = true},
};

constexpr Row<DisplacementSettings> displacement[] = {
    {.Name = u"Legend", .Of = of<&DisplacementSettings::Legend>, .Absent = true},
    {.Name = u"Original", .Of = of<&DisplacementSettings::Original>, .Absent = false},
    {.Name = u"Fiducial", .Of = of<&DisplacementSettings::Fiducial>, .Least = 0, .Most = 2, .Absent = 2},
    {.Name = u"Scale", .Of = of<&DisplacementSettings::Scale>, .Least = 0, .Absent = 200},
};

constexpr Row<VectorSettings> vector[] = {
    {.Name = u"Legend", .Of = of<&VectorSettings::Legend>, .Absent = true},
    {.Name = u"Fiducial", .Of = of<&VectorSettings::Fiducial>, .Least = 0, .Most = 2, .Absent = 2},
    {.Name = u"Scale", .Of = of<&VectorSettings::Scale>, .Least = 0, .Absent = 200},
};
} // namespace

std::span<const Row<ApplicationSettings>> General() {
    return general;
}
std::span<const Row<GraphDefaults>> Graph() {
    return graph;
}
std::span<const Row<PageLabel>> Label() {
    return label;
}
std::span<const Row<ContourSettings>> Contour() {
    return contour;
}
std::span<const Row<DisplacementSettings>> Displacement() {
    return displacement;
}
std::span<const Row<VectorSettings>> Vector() {
    return vector;
}

Field FieldOf(LegendStyle& style) {
    return Words{{word(style.LineStyle), &style.LineColor, word(style.DotStyle), &style.DotColor}, 4};
}
} // namespace settingsTable
