#include "property/drawingElementTable.h"

namespace drawingElements {

namespace {

using S = ApplicationSettings;

constexpr Held atLeast0{0};

constexpr Element elements[] = {
    {u"currentstep", &ResultModel::CurrentStep},
    {.Path = u"difference/std",
     .Value = [](S& s) -> int& { return s.Difference.StandardStep; },
     .OnCommandLine = atLeast0,
     .Shift = 1},
    {.Path = u"difference/dsp", .Value = [](S& s) -> bool& { return s.Difference.ApplyDisplacement; }, .IsDigit = true},
    {.Path = u"difference/vct", .Value = [](S& s) -> bool& { return s.Difference.ApplyVector; }, .IsDigit = true},
    {.Path = u"difference/cnt", .Value = [](S& s) -> bool& { return s.Difference.ApplyContour; }, .IsDigit = true},
    {.Path = u"difference/val", .Value = [](S& s) -> bool& { return s.Difference.ApplyValue; }, .IsDigit = true},
    {u"value/disp", [](S& s) -> bool& { return s.ValueDisplay; }},
    {.Path = u"header/disp", .Value = [](S& s) -> bool& { return s.HeaderDisplay; }, .Optional = true},
    {u"displacement/legend", [](S& s) -> bool& { return s.Displacement.Legend; }},
    {u"displacement/orgmesh", [](S& s) -> bool& { return s.Displacement.Original; }},
    {u"displacement/fid", [](S& s) -> int& { return s.Displacement.Fiducial; }, {0, 2}, {0, 3}},
    {u"displacement/scale", [](S& s) -> int& { return s.Displacement.Scale; }, atLeast0},
    {u"vector/legend", [](S& s) -> bool& { return s.Vector.Legend; }},
    {u"vector/fid", [](S& s) -> int& { return s.Vector.Fiducial; }, {0, 2}},
    {u"vector/scale", [](S& s) -> int& { return s.Vector.Scale; }, atLeast0},
    {u"vector/items", [](S& s) -> VectorSettings& { return s.Vector; }},
    {u"contour/legend", [](S& s) -> bool& { return s.Contour.Legend; }},
    {.Path = u"contour/legendname", .Value = [](S& s) -> bool& { return s.Contour.LegendName; }, .Optional = true},
    {.Path = u"contour/legendrange", .Value = [](S& s) -> bool& { return s.Contour.LegendRange; }, .Optional = true},
    {u"contour/reverse", [](S& s) -> bool& { return s.Contour.Reverse; }},
    {u"contour/item", &ResultModel::CurrentItem},
    {u"contour/values/automatic", [](S& s) -> bool& { return s.Contour.Automatic; }},
    {u"contour/values/max", [](S& s) -> float& { return s.Contour.MaxValue; }},
    {u"contour/values/min", [](S& s) -> float& { return s.Contour.MinValue; }},
    {u"contour/values/div", [](S& s) -> int& { return s.Contour.Divide; }, atLeast0},
    {.Path = u"contour/values/range",
     .Value = [](S& s) -> int& { return s.Contour.Range; },
     .InFile = {0, 2},
     .Optional = true},
    {u"contour/colors/index", [](S& s) -> int& { return s.Contour.ColorIndex; }, {0, 5}},
    {u"contour/colors/min", [](S& s) -> ColorRef& { return s.Contour.Colors[0]; }},
    {u"contour/colors/mid", [](S& s) -> ColorRef& { return s.Contour.Colors[1]; }},
    {u"contour/colors/max", [](S& s) -> ColorRef& { return s.Contour.Colors[2]; }},
    {.Path = u"contour/colors/preset",
     .Value = [](S& s) -> int& { return s.Contour.Preset; },
     .InFile = {0, 3},
     .Optional = true},
};

} // namespace

std::span<const Element> Elements() {
    return elements;
}

} // namespace drawingElements
